// Templates removed, renamed and reset in the manager, as the main dialog shows it.
#include "config_manager.h"

using namespace kestrel;
using namespace kestrel::test;

namespace {

const QString nameA = QStringLiteral("A");
const QString nameB = QStringLiteral("B");
const QString nameC = QStringLiteral("C");

using TemplateChanges = TemplatesBench;

} // namespace

TEST_F(TemplateChanges, RemovingDeletesTheGroupAndGoesBackToTheWorkingSettings)
{
    start({nameA, nameB, nameC});
    templates().setCurrentIndex(2);
    openManager([this] { remove(2); });
    EXPECT_EQ(items(templates()), withWorking({nameA, nameC}));
    EXPECT_EQ(templates().currentIndex(), 0);
    EXPECT_EQ(brightness(), 50);
    EXPECT_EQ(onDisk(list), QStringLiteral("自订;A;C"));
    EXPECT_EQ(onDisk(storedIndex), QStringLiteral("0"));
    EXPECT_EQ(keysOnDisk(nameB), 0);
    EXPECT_EQ(onDisk(QStringLiteral("C/brightness")), QStringLiteral("3"));
    restart(m_scanner);
    EXPECT_EQ(items(templates()), withWorking({nameA, nameC}));
    templates().setCurrentIndex(2);
    EXPECT_EQ(brightness(), 3);
}

TEST_F(TemplateChanges, RemovingTheConfirmedTemplateForgetsIt)
{
    start({nameA, nameB}, QStringLiteral("2"));
    openManager([this] { remove(2); });
    EXPECT_EQ(onDisk(storedIndex), QStringLiteral("0"));
    restart(m_scanner);
    EXPECT_EQ(templates().currentIndex(), 0);
    EXPECT_EQ(brightness(), 50);
}

TEST_F(TemplateChanges, RenamingKeeps47KeysUnderTheNewName)
{
    start({nameA});
    templates().setCurrentIndex(1);
    get<QAbstractSlider>("gamma_set").setValue(111);
    setBrightness(11);
    ok();
    ASSERT_EQ(keysOnDisk(nameA), 63);
    openManager([this] { rename(1, nameB); });
    EXPECT_EQ(items(templates()), withWorking({nameB}));
    EXPECT_EQ(onDisk(list), QStringLiteral("自订;B"));
    EXPECT_EQ(keysOnDisk(nameA), 0);
    EXPECT_EQ(keysOnDisk(nameB), 47);
    EXPECT_EQ(onDisk(QStringLiteral("B/brightness")), QStringLiteral("11"));
    EXPECT_EQ(onDisk(QStringLiteral("B/gamma")), QStringLiteral("(none)"));
}

TEST_F(TemplateChanges, ARenamedTemplateLeavesTheControlsThatItLost)
{
    start({nameA});
    templates().setCurrentIndex(1);
    ok();
    openManager([this] { rename(1, nameB); });
    get<QAbstractSlider>("gamma_set").setValue(123);
    get<QComboBox>("split_image").setCurrentIndex(2);
    get<QComboBox>("rotate").setCurrentIndex(1);
    templates().setCurrentIndex(1);
    EXPECT_EQ(get<QAbstractSlider>("gamma_set").value(), 123);
    EXPECT_EQ(get<QComboBox>("split_image").currentIndex(), 2);
    EXPECT_EQ(get<QComboBox>("rotate").currentIndex(), 0);
}

TEST_F(TemplateChanges, RenamingToTheSameNameLosesTheGroup)
{
    start({nameA});
    openManager([this] { rename(1, nameA); });
    EXPECT_EQ(onDisk(list), QStringLiteral("自订;A"));
    EXPECT_EQ(keysOnDisk(nameA), 0);
    const QStringList before = state();
    templates().setCurrentIndex(1);
    expectState(before);
}

TEST_F(TemplateChanges, RenamingToATakenNameIsNotRefused)
{
    start({nameA, nameB});
    openManager([this] { rename(1, nameB); });
    EXPECT_EQ(items(templates()), withWorking({nameB, nameB}));
    EXPECT_EQ(onDisk(QStringLiteral("B/brightness")), QStringLiteral("1"));
}

TEST_F(TemplateChanges, ResettingRemovesEveryTemplate)
{
    start({nameA, nameB, nameC});
    templates().setCurrentIndex(3);
    openManager([this] { press(managerButton("template_reset")); });
    EXPECT_EQ(items(templates()), QStringList(working));
    EXPECT_EQ(brightness(), 50);
    EXPECT_EQ(onDisk(list), working);
    for (const QString& name : {nameA, nameB, nameC}) {
        EXPECT_EQ(keysOnDisk(name), 0);
    }
    EXPECT_EQ(groupsOnDisk(),
              (QStringList{QStringLiteral("ScannerA"), QStringLiteral("ScannerAconfig_version"),
                           QStringLiteral("ScannerAdefault"), QStringLiteral("UserTemplates")}));
}

TEST_F(TemplateChanges, ResettingLeavesTheStoredIndex)
{
    start({nameA, nameB}, QStringLiteral("2"));
    openManager([this] { press(managerButton("template_reset")); });
    EXPECT_EQ(onDisk(storedIndex), QStringLiteral("2"));
    EXPECT_EQ(templates().currentIndex(), 0);
    EXPECT_EQ(brightness(), 50);
    setBrightness(-4);
    cancel();
    EXPECT_EQ(brightness(), 50);
    restart(m_scanner);
    EXPECT_EQ(templates().currentIndex(), 0);
    EXPECT_EQ(brightness(), 50);
}

TEST_F(TemplateChanges, PresetsAreProtected)
{
    start({nameA, nameB});
    store(QStringLiteral("UserTemplates/preset_template_num"), QStringLiteral("2"));
    ASSERT_TRUE(saveSettings(*dialog().settings));
    restart(m_scanner);
    openManager([this] {
        remove(1);
        managed().setCurrentIndex(1);
        press(managerButton("template_rename"));
    });
    EXPECT_EQ(onDisk(list), QStringLiteral("自订;A;B"));
    openManager([this] { remove(2); });
    EXPECT_EQ(onDisk(list), QStringLiteral("自订;A"));
    EXPECT_EQ(onDisk(QStringLiteral("A/brightness")), QStringLiteral("1"));
}
