#include "settings/settings_file.h"

#include "settings_folder.h"

#include <QCoreApplication>

#include <iterator>
#include <random>
#include <string>

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
    const SettingsFolder folder;
    const SettingsHandle dialog = openSettings(folder.filePath());
    const SettingsHandle manager = openSettings(folder.filePath());
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

TEST(SettingsFile, UnknownKeysAndGroupsSurviveEverySave)
{
    const SettingsFolder folder;
    folder.write(
        "; by hand\nloose=1\n[ScannerA]\nbrightness=1\nfuture_key=x, y\nsize=@Size(1 2)\n"
        "bytes=@ByteArray(\\0\\x1)\nat=@@home\n[%E6%96%B0 group]\nempty=\nquoted=\" a;b \"\n"
        "[%General]\nk=v\n");
    const Values before = readAfterRestart(folder.filePath());
    ASSERT_EQ(before.size(), 9);
    Values expected = before;
    for (int round = 1; round <= 3; ++round) {
        const SettingsHandle settings = openSettings(folder.filePath());
        settings->setValue(keyA, QString::number(round));
        EXPECT_TRUE(saveSettings(*settings));
        expected[keyA] = QString::number(round);
        EXPECT_EQ(readAfterRestart(folder.filePath()), expected);
    }
}

TEST(SettingsFile, ChangesOfAnotherProgramAreMerged)
{
    const SettingsFolder folder;
    folder.write("[ScannerA]\nbrightness=1\ncontrast=1\n");
    const SettingsHandle settings = openSettings(folder.filePath());
    settings->setValue(keyA, QStringLiteral("12"));
    folder.write("[ScannerA]\nbrightness=1\ncontrast=1234\n[B]\nx=1\n");
    EXPECT_TRUE(saveSettings(*settings));
    EXPECT_EQ(readAfterRestart(folder.filePath()),
              (Values{{keyA, QStringLiteral("12")},
                      {QStringLiteral("ScannerA/contrast"), QStringLiteral("1234")},
                      {QStringLiteral("B/x"), QStringLiteral("1")}}));
}

TEST(SettingsFile, OtherEncodingsStayTheBytesTheyWere)
{
    const SettingsFolder folder;
    const QByteArray gb18030 = "\xD7\xD4\xB6\xA9;\xB0\xEC";
    folder.write("[UserTemplates]\nusertemplate=\"" + gb18030 + "\"\n");
    const SettingsHandle settings = openSettings(folder.filePath());
    settings->setValue(keyA, QStringLiteral("12"));
    EXPECT_TRUE(saveSettings(*settings));
    EXPECT_EQ(readAfterRestart(folder.filePath())
                  .value(QStringLiteral("UserTemplates/usertemplate"))
                  .toString()
                  .toLatin1(),
              gb18030);
}

TEST(SettingsFile, CutFileKeepsWhatCanBeRead)
{
    const SettingsFolder folder;
    const QByteArray whole = "[ScannerA]\nbrightness=1\ncontrast=22\n[UserTemplates]\n"
                             "usertemplate=\"\\x81ea\\x8ba2;Office\"\nusertemplate_index=1\n";
    for (int length = 0; length <= whole.size(); ++length) {
        const QString name = QStringLiteral("cut%1.ini").arg(length);
        folder.write(whole.left(length), name);
        const Values before = readAfterRestart(folder.filePath(name));
        const SettingsHandle settings = openSettings(folder.filePath(name));
        settings->setValue(QStringLiteral("new/key"), QStringLiteral("1"));
        EXPECT_TRUE(saveSettings(*settings)) << length;
        Values expected = before;
        expected.insert(QStringLiteral("new/key"), QStringLiteral("1"));
        EXPECT_EQ(readAfterRestart(folder.filePath(name)), expected) << length;
    }
}

TEST(SettingsFile, BinaryFileIsSurvived)
{
    const SettingsFolder folder;
    QByteArray noise;
    unsigned state = 12345;
    for (int i = 0; i < 100000; ++i) {
        state = state * 1103515245U + 12345U;
        noise += static_cast<char>(state >> 16U);
    }
    folder.write(noise);
    const SettingsHandle settings = openSettings(folder.filePath());
    settings->setValue(keyA, QStringLiteral("12"));
    EXPECT_TRUE(saveSettings(*settings));
    EXPECT_EQ(readAfterRestart(folder.filePath()).value(keyA).toString(), QStringLiteral("12"));
}

TEST(SettingsFile, AnyTextThatCanBeReadCanBeSavedWithIt)
{
    const std::string pieces[] = {"@Size(1 2)",
                                  "@",
                                  "\"",
                                  "\\",
                                  "\\x",
                                  "40",
                                  ",",
                                  ";",
                                  "=",
                                  "\n",
                                  "\r",
                                  " ",
                                  "\t",
                                  "[",
                                  "]",
                                  "\n[",
                                  "]\n",
                                  "%",
                                  "%U",
                                  "%2F",
                                  "/",
                                  "//",
                                  "k",
                                  "=1\n",
                                  "[General]\n",
                                  "[%general]\n",
                                  "[%GENERAL]\n",
                                  "\xE8\x87\xAA",
                                  std::string(1, '\0'),
                                  "\v",
                                  "\xA0"};
    std::mt19937 random(20240502); // NOLINT(cert-msc51-cpp)
    std::uniform_int_distribution<std::size_t> piece(0, std::size(pieces) - 1);
    const SettingsFolder folder;
    for (int round = 0; round < 160; ++round) {
        QByteArray data;
        for (int left = round % 40; left > 0; --left) {
            data += QByteArray::fromStdString(pieces[piece(random)]);
        }
        const QString name = QStringLiteral("%1.ini").arg(round);
        folder.write(data, name);
        const SettingsHandle settings = openSettings(folder.filePath(name));
        settings->setValue(keyA, QString::number(round));
        EXPECT_TRUE(saveSettings(*settings)) << data.toHex().constData();
        EXPECT_EQ(readAfterRestart(folder.filePath(name)).value(keyA).toString(),
                  QString::number(round))
            << data.toHex().constData();
    }
}

TEST(SettingsFile, NamesThatShareALineDoNotKeepFromSaving)
{
    const SettingsFolder folder;
    folder.write("x=1\n%2Fx=2\n=3\n%2F=4\n");
    const SettingsHandle settings = openSettings(folder.filePath());
    settings->setValue(keyA, QStringLiteral("12"));
    EXPECT_TRUE(saveSettings(*settings));
    EXPECT_EQ(readAfterRestart(folder.filePath()).value(keyA).toString(), QStringLiteral("12"));
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
