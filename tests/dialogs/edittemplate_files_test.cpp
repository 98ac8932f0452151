// The manager and what may be wrong with its file.
#include "manager_bench.h"

#include <QFile>

#include <sys/stat.h>

using namespace kestrel;
using namespace kestrel::test;

namespace {

using ManagerFile = ManagerBench;

const QString working = QStringLiteral("自订");

} // namespace

TEST_F(ManagerFile, WithoutAPathTheManagerWorksInMemory)
{
    clickAndEnter("template_add", QStringLiteral("A"));
    EXPECT_EQ(items(combo()), (QStringList{working, QStringLiteral("A")}));
    manager.setPathINI(QString());
    EXPECT_EQ(items(combo()), QStringList(working));
    clickAndEnter("template_add", QStringLiteral("B"));
    combo().setCurrentIndex(1);
    clickAndEnter("template_rename", QStringLiteral("C"));
    press(button("template_remove"));
    EXPECT_EQ(items(combo()), QStringList(working));
}

TEST_F(ManagerFile, PipeInPlaceOfTheFileIsLeftAlone)
{
    ASSERT_EQ(::mkfifo(QFile::encodeName(path()).constData(), 0600), 0);
    manager.setPathINI(path());
    clickAndEnter("template_add", QStringLiteral("A"));
    EXPECT_EQ(items(combo()), (QStringList{working, QStringLiteral("A")}));
    EXPECT_EQ(file().value(list).toString(), QStringLiteral("自订;A"))
        << "the dialog sees it in memory";
}

TEST_F(ManagerFile, AnotherDevicesFileReplacesTheList)
{
    store({working, QStringLiteral("A")});
    manager.setPathINI(path());
    const QString other = directory.filePath(QStringLiteral("ScannerB.ini"));
    manager.setPathINI(other);
    EXPECT_EQ(items(combo()), QStringList(working));
    clickAndEnter("template_add", QStringLiteral("B"));
    EXPECT_EQ(onDisk(list), QStringLiteral("自订;A"));
    manager.setPathINI(path());
    EXPECT_EQ(items(combo()), (QStringList{working, QStringLiteral("A")}));
    manager.setPathINI(other);
    EXPECT_EQ(items(combo()), (QStringList{working, QStringLiteral("B")}));
}

TEST_F(ManagerFile, GeneralInAnyLetterCaseIsRenamedAndRemovedLikeAnyOther)
{
    manager.setPathINI(path());
    QObject::connect(&manager, &EditTemplate::addUserTemplate, [this](const QString& name) {
        file().setValue(
            QString(name == QStringLiteral("general") ? QStringLiteral("%general") : name) +
                QStringLiteral("/source"),
            name);
    });
    clickAndEnter("template_add", QStringLiteral("general"));
    clickAndEnter("template_add", QStringLiteral("General"));
    EXPECT_EQ(onDisk(QStringLiteral("%general/source")), QStringLiteral("general"));
    EXPECT_EQ(onDisk(QStringLiteral("General/source")), QStringLiteral("General"));
    combo().setCurrentIndex(1);
    clickAndEnter("template_rename", QStringLiteral("GENERAL"));
    EXPECT_EQ(onDisk(QStringLiteral("%general/source")), QString());
    EXPECT_EQ(onDisk(QStringLiteral("%GENERAL/source")), QStringLiteral("general"));
    combo().setCurrentIndex(1);
    press(button("template_remove"));
    EXPECT_EQ(onDisk(QStringLiteral("%GENERAL/source")), QString());
    EXPECT_EQ(onDisk(QStringLiteral("General/source")), QStringLiteral("General"));
    EXPECT_EQ(onDisk(list), QStringLiteral("自订;General"));
}

TEST_F(ManagerFile, ThousandTemplatesCanBePickedRenamedRemovedAndReset)
{
    QStringList names{working};
    for (int i = 1; i <= 1000; ++i) {
        names.append(QStringLiteral("模板%1").arg(i));
    }
    store(names);
    manager.setPathINI(path());
    EXPECT_EQ(items(combo()), names);
    combo().setCurrentIndex(500);
    clickAndEnter("template_rename", QStringLiteral("新"));
    press(button("template_remove"));
    names.removeAt(500);
    EXPECT_EQ(items(combo()), names);
    EXPECT_EQ(onDisk(list), names.join(QLatin1Char(';')));
    press(button("template_reset"));
    EXPECT_EQ(onDisk(list), working);
    EXPECT_EQ(groups(), QStringList(QStringLiteral("UserTemplates")));
}

TEST_F(ManagerFile, HostThatTakesTheDialogAwayWhileANameIsAskedForIsSurvived)
{
    auto doomed = std::make_unique<EditTemplate>();
    doomed->setPathINI(path());
    auto& names = *doomed->findChild<AddUserTemplate*>();
    const WhenShown user(names, [&] { doomed.reset(); });
    press(child<QPushButton>(*doomed, "template_add"));
    EXPECT_EQ(doomed, nullptr);
}
