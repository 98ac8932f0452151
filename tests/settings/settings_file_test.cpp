#include "settings/settings_file.h"

#include "settings_folder.h"

#include <QCoreApplication>

#include <sys/stat.h>

using namespace kestrel;
using namespace kestrel::test;

namespace {

const QString keyA = QStringLiteral("ScannerA/brightness");

} // namespace

TEST(SettingsFile, SavedValuesAreOnTheDisk)
{
    const SettingsFolder folder;
    const SettingsHandle settings = openSettings(folder.filePath());
    settings->setValue(keyA, QStringLiteral("12"));
    settings->setValue(QStringLiteral("UserTemplates/usertemplate_index"), 2);
    EXPECT_TRUE(saveSettings(*settings));
    EXPECT_EQ(folder.bytes(),
              "[ScannerA]\nbrightness=12\n\n[UserTemplates]\nusertemplate_index=2\n");
    EXPECT_EQ(folder.files(), QStringList(QStringLiteral("ScannerA.ini")));
}

TEST(SettingsFile, SavingTwiceWithoutChangesLeavesTheFileUntouched)
{
    const SettingsFolder folder;
    const SettingsHandle settings = openSettings(folder.filePath());
    settings->setValue(keyA, QStringLiteral("12"));
    ASSERT_TRUE(saveSettings(*settings));
    struct stat before
    {
    };
    struct stat after
    {
    };
    const QByteArray name = QFile::encodeName(folder.filePath());
    ASSERT_EQ(::stat(name.constData(), &before), 0);
    EXPECT_TRUE(saveSettings(*settings));
    ASSERT_EQ(::stat(name.constData(), &after), 0);
    EXPECT_EQ(before.st_ino, after.st_ino);
}

TEST(SettingsFile, MissingFoldersAreMade)
{
    const SettingsFolder folder;
    const QString path = folder.filePath(QStringLiteral("a/b/ScannerA.ini"));
    const SettingsHandle settings = openSettings(path);
    EXPECT_TRUE(folder.files().isEmpty()) << "opening alone writes nothing";
    settings->setValue(keyA, QStringLiteral("12"));
    EXPECT_TRUE(saveSettings(*settings));
    EXPECT_EQ(readAfterRestart(path), (Values{{keyA, QStringLiteral("12")}}));
}

TEST(SettingsFile, TwoObjectsSeeEachOthersUnsavedValues)
{
    int argc = 1;
    char name[] = "test";
    char* argv[] = {name, nullptr};
    const QCoreApplication application(argc, argv);
    const SettingsFolder folder;
    const SettingsHandle dialog = openSettings(folder.filePath());
    const SettingsHandle manager = openSettings(folder.filePath());
    ASSERT_NE(manager.get(), dialog.get());
    dialog->setValue(keyA, QStringLiteral("12"));
    EXPECT_EQ(manager->value(keyA).toString(), QStringLiteral("12"));
    manager->setValue(keyA, QStringLiteral("13"));
    EXPECT_EQ(dialog->value(keyA).toString(), QStringLiteral("13"));
    EXPECT_TRUE(saveSettings(*manager));
    EXPECT_EQ(readAfterRestart(folder.filePath()), (Values{{keyA, QStringLiteral("13")}}));
}

TEST(SettingsFile, WhatNobodySavedIsSavedByTheEventLoop)
{
    int argc = 1;
    char name[] = "test";
    char* argv[] = {name, nullptr};
    const QCoreApplication application(argc, argv);
    const SettingsFolder folder;
    const SettingsHandle settings = openSettings(folder.filePath());
    settings->setValue(keyA, QStringLiteral("12"));
    EXPECT_EQ(folder.bytes(), QByteArray());
    QCoreApplication::sendPostedEvents(settings.get());
    EXPECT_EQ(folder.bytes(), "[ScannerA]\nbrightness=12\n");
}

TEST(SettingsFile, ClosingSaves)
{
    const SettingsFolder folder;
    openSettings(folder.filePath())->setValue(keyA, QStringLiteral("12"));
    EXPECT_EQ(folder.bytes(), "[ScannerA]\nbrightness=12\n");
}

TEST(SettingsFile, ClosingWithNothingToSaveLeavesTheDiskAlone)
{
    int argc = 1;
    char name[] = "test";
    char* argv[] = {name, nullptr};
    const QCoreApplication application(argc, argv);
    const SettingsFolder folder;
    const QString path = folder.filePath(QStringLiteral("a/b/ScannerA.ini"));
    openSettings(path).reset();
    EXPECT_TRUE(folder.files().isEmpty());
    SettingsHandle settings = openSettings(path);
    settings->setValue(keyA, QStringLiteral("12"));
    ASSERT_TRUE(saveSettings(*settings));
    ASSERT_TRUE(QDir(folder.filePath(QStringLiteral("a"))).removeRecursively());
    settings.reset();
    EXPECT_TRUE(folder.files().isEmpty());
}

TEST(SettingsFile, ClosingSavesWhatCouldNotBeSavedBefore)
{
    int argc = 1;
    char name[] = "test";
    char* argv[] = {name, nullptr};
    const QCoreApplication application(argc, argv);
    const SettingsFolder folder;
    const QString obstacle = folder.filePath(QStringLiteral("ScannerA.ini.lock"));
    for (const bool isSavedByTheEventLoop : {false, true}) {
        ASSERT_TRUE(QDir().mkdir(obstacle));
        const QString value = isSavedByTheEventLoop ? QStringLiteral("13") : QStringLiteral("12");
        SettingsHandle settings = openSettings(folder.filePath());
        settings->setValue(keyA, value);
        if (isSavedByTheEventLoop) {
            QCoreApplication::sendPostedEvents(settings.get());
        } else {
            EXPECT_FALSE(saveSettings(*settings));
        }
        ASSERT_TRUE(QDir().rmdir(obstacle));
        settings.reset();
        EXPECT_EQ(readAfterRestart(folder.filePath()), (Values{{keyA, value}}));
    }
}

TEST(SettingsFile, ClosingSavesWithAnApplicationToo)
{
    int argc = 1;
    char name[] = "test";
    char* argv[] = {name, nullptr};
    const QCoreApplication application(argc, argv);
    const SettingsFolder folder;
    openSettings(folder.filePath())->setValue(keyA, QStringLiteral("12"));
    EXPECT_EQ(folder.bytes(), "[ScannerA]\nbrightness=12\n");
}

TEST(SettingsFile, IsNotSavedInTheMiddleOfAGroup)
{
    const SettingsFolder folder;
    const SettingsHandle settings = openSettings(folder.filePath());
    settings->beginGroup(QStringLiteral("ScannerA"));
    settings->setValue(QStringLiteral("brightness"), QStringLiteral("12"));
    EXPECT_FALSE(saveSettings(*settings));
    EXPECT_EQ(folder.bytes(), QByteArray());
    settings->endGroup();
    EXPECT_TRUE(saveSettings(*settings));
}

TEST(SettingsFile, LinkToAFileStaysALink)
{
    const SettingsFolder folder;
    folder.write("[ScannerA]\nbrightness=1\n", QStringLiteral("real.ini"));
    ASSERT_TRUE(QFile::link(QStringLiteral("real.ini"), folder.filePath()));
    const SettingsHandle settings = openSettings(folder.filePath());
    EXPECT_EQ(settings->value(keyA).toString(), QStringLiteral("1"));
    settings->setValue(keyA, QStringLiteral("12"));
    EXPECT_TRUE(saveSettings(*settings));
    EXPECT_TRUE(QFileInfo(folder.filePath()).isSymLink());
    EXPECT_EQ(folder.bytes(QStringLiteral("real.ini")), "[ScannerA]\nbrightness=12\n");
    EXPECT_EQ(folder.files().size(), 2);
}

TEST(SettingsFile, ThousandTemplatesAreSavedAndReadBack)
{
    const SettingsFolder folder;
    {
        const SettingsHandle settings = openSettings(folder.filePath());
        for (int i = 0; i < 1000; ++i) {
            settings->beginGroup(QStringLiteral("模板%1").arg(i));
            for (int key = 0; key < 63; ++key) {
                settings->setValue(QStringLiteral("some_setting_%1").arg(key), QString::number(i));
            }
            settings->endGroup();
        }
        EXPECT_TRUE(saveSettings(*settings));
    }
    const Values values = readAfterRestart(folder.filePath());
    EXPECT_EQ(values.size(), 63000);
    EXPECT_EQ(values.value(QStringLiteral("模板999/some_setting_62")).toString(),
              QStringLiteral("999"));
}
