#include "form_facts.h"
#include "manager_bench.h"

#include <QTest>

using namespace kestrel;
using namespace kestrel::test;

namespace {

using Manager = ManagerBench;

const QString working = QStringLiteral("自订");

QStringList withWorking(const QStringList& names)
{
    return QStringList(working) + names;
}

} // namespace

TEST_F(Manager, FormAsDesigned)
{
    EXPECT_EQ(manager.objectName(), QStringLiteral("EditTemplate"));
    EXPECT_EQ(manager.windowTitle(), QStringLiteral("编辑使用者设置"));
    expectFixedSize(manager, QSize(520, 152));
    for (const WidgetFacts& facts :
         {WidgetFacts{"label_template", "QLabel", "使用者设置", {10, 30, 81, 25}},
          {"usertemplate", "QComboBox", nullptr, {90, 30, 171, 25}},
          {"template_add", "QPushButton", "添加", {270, 30, 111, 25}},
          {"template_remove", "QPushButton", "删除", {390, 30, 111, 25}},
          {"template_rename", "QPushButton", "修改名称", {270, 60, 111, 25}},
          {"template_reset", "QPushButton", "重设", {390, 60, 111, 25}},
          {"template_reset_2", "QPushButton", "离开", {390, 110, 111, 25}}}) {
        expectWidget(manager, facts);
    }
    EXPECT_EQ(child<QLabel>(manager, "label_template").styleSheet(),
              QStringLiteral("border:none;"));
    EXPECT_EQ(items(combo()), QStringList(working));
    EXPECT_EQ(nameDialog().parent(), &manager);
    EXPECT_LT(manager.metaObject()->indexOfSignal("addUserTemplate(QString)"),
              manager.metaObject()->indexOfSignal("resetCurrentUserTemplate(bool)"));
}

TEST(ManagerForm, LabelHasRoomUnderLargeFonts)
{
    for (const int pixels : {12, 16, 18, 24}) {
        const HostFont font(pixels);
        const EditTemplate manager;
        expectReadable(child<QLabel>(manager, "label_template"));
    }
}

TEST_F(Manager, FreshFileShowsTheWorkingEntryAloneAndNothingCanBeDoneToIt)
{
    manager.setPathINI(path());
    EXPECT_EQ(items(combo()), QStringList(working));
    press(button("template_remove"));
    press(button("template_rename"));
    press(button("template_reset"));
    EXPECT_EQ(items(combo()), QStringList(working));
    EXPECT_TRUE(file().allKeys().isEmpty());
    manager.close();
    EXPECT_EQ(closed.at(0).at(0).toBool(), false);
}

TEST_F(Manager, ShowsTheStoredListAsStored)
{
    file().setValue(list, QStringLiteral("第一;;Office;Photo;"));
    manager.setPathINI(path());
    EXPECT_EQ(items(combo()), (QStringList{QStringLiteral("第一"), QStringLiteral("Office"),
                                           QStringLiteral("Photo")}));
    file().setValue(list, QString());
    manager.setPathINI(path());
    EXPECT_EQ(items(combo()), QStringList(working));
}

TEST_F(Manager, AddingAnnouncesTheTemplateBeforeTheListIsWritten)
{
    manager.setPathINI(path());
    QString listMeanwhile = QStringLiteral("not told");
    QObject::connect(&manager, &EditTemplate::addUserTemplate, [&](const QString& name) {
        listMeanwhile = file().value(list).toString();
        file().setValue(name + QStringLiteral("/source"), QStringLiteral("2"));
    });
    clickAndEnter("template_add", QStringLiteral("Office"));
    ASSERT_EQ(added.count(), 1);
    EXPECT_EQ(added.at(0).at(0).toString(), QStringLiteral("Office"));
    EXPECT_EQ(listMeanwhile, QString());
    EXPECT_EQ(items(combo()), withWorking({QStringLiteral("Office")}));
    EXPECT_EQ(combo().currentIndex(), 0);
    EXPECT_EQ(onDisk(list), QStringLiteral("自订;Office"));
    EXPECT_EQ(onDisk(QStringLiteral("Office/source")), QStringLiteral("2"));
}

TEST_F(Manager, AddingAppendsToTheStoredTextAndIsNoChange)
{
    store(withWorking({QStringLiteral("A")}));
    file().setValue(list, QStringLiteral("自订;;A"));
    manager.setPathINI(path());
    clickAndEnter("template_add", QStringLiteral("B"));
    EXPECT_EQ(onDisk(list), QStringLiteral("自订;;A;B"));
    manager.close();
    EXPECT_EQ(closed.at(0).at(0).toBool(), false);
}

TEST_F(Manager, AddingStartsWithAnEmptyName)
{
    manager.setPathINI(path());
    clickAndEnter("template_add", QStringLiteral("A"));
    QString offered = QStringLiteral("not seen");
    const WhenShown user(nameDialog(), [&] {
        offered = nameDialog().getTemplateName();
        EXPECT_EQ(nameDialog().focusWidget()->objectName(), QStringLiteral("lineEdit"));
        nameDialog().reject();
    });
    press(button("template_add"));
    EXPECT_EQ(offered, QString());
}

TEST_F(Manager, CancelledNamesChangeNothing)
{
    store(withWorking({QStringLiteral("A")}));
    manager.setPathINI(path());
    combo().setCurrentIndex(1);
    clickAndCancel("template_add");
    clickAndCancel("template_rename");
    EXPECT_EQ(items(combo()), withWorking({QStringLiteral("A")}));
    EXPECT_EQ(added.count(), 0);
    EXPECT_EQ(onDisk(list), QStringLiteral("自订;A"));
    manager.close();
    EXPECT_EQ(closed.at(0).at(0).toBool(), false);
}

TEST_F(Manager, NamesAreTakenTwiceInAnotherLetterCaseOnly)
{
    store(withWorking({QStringLiteral("Office")}));
    manager.setPathINI(path());
    {
        MessageBoxes boxes;
        boxes.answer(QMessageBox::Ok);
        clickAndEnter("template_add", QStringLiteral("Office"));
        ASSERT_EQ(boxes.shown().size(), 1U);
        EXPECT_EQ(boxes.shown().front().title, QStringLiteral("提示"));
        EXPECT_EQ(boxes.shown().front().text, QStringLiteral("已存在当前模板"));
        EXPECT_EQ(boxes.shown().front().icon, QMessageBox::Critical);
        EXPECT_FALSE(boxes.shown().front().hadParent);
    }
    EXPECT_EQ(added.count(), 0);
    EXPECT_EQ(onDisk(list), QStringLiteral("自订;Office"));
    clickAndEnter("template_add", QStringLiteral("office"));
    EXPECT_EQ(onDisk(list), QStringLiteral("自订;Office;office"));
}

TEST_F(Manager, RemovingDeletesTheGroupAndForgetsTheIndex)
{
    store(withWorking({QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C")}));
    file().setValue(storedIndex, 3);
    manager.setPathINI(path());
    combo().setCurrentIndex(2);
    press(button("template_remove"));
    EXPECT_EQ(items(combo()), withWorking({QStringLiteral("A"), QStringLiteral("C")}));
    EXPECT_EQ(combo().currentIndex(), 0);
    EXPECT_EQ(onDisk(list), QStringLiteral("自订;A;C"));
    EXPECT_EQ(onDisk(storedIndex), QStringLiteral("0"));
    EXPECT_TRUE(keysOf(QStringLiteral("B")).isEmpty());
    EXPECT_EQ(keysOf(QStringLiteral("A")).size(), 63);
    EXPECT_EQ(keysOf(QStringLiteral("C")).size(), 63);
}

TEST_F(Manager, RemovingLeavesALooseKeyOfTheSameName)
{
    store(withWorking({QStringLiteral("A")}));
    file().setValue(QStringLiteral("A"), QStringLiteral("by hand"));
    manager.setPathINI(path());
    combo().setCurrentIndex(1);
    press(button("template_remove"));
    EXPECT_EQ(onDisk(QStringLiteral("A")), QStringLiteral("by hand"));
}

TEST_F(Manager, RenamingKeeps47KeysAndDropsTheOldGroup)
{
    store(withWorking({QStringLiteral("A")}));
    manager.setPathINI(path());
    combo().setCurrentIndex(1);
    clickAndEnter("template_rename", QStringLiteral("B"));
    EXPECT_EQ(items(combo()), withWorking({QStringLiteral("B")}));
    EXPECT_EQ(onDisk(list), QStringLiteral("自订;B"));
    EXPECT_TRUE(keysOf(QStringLiteral("A")).isEmpty());
    QStringList expected;
    for (const QString& key : renamedKeys()) {
        expected.append(key);
        EXPECT_EQ(onDisk(QStringLiteral("B/") + key), QStringLiteral("A") + key);
    }
    EXPECT_EQ(expected.size(), 47);
    expected.sort();
    EXPECT_EQ(keysOf(QStringLiteral("B")), expected);
    for (const char* const dropped :
         {"gamma", "redhead", "acd_nocolor_mode_front", "acd_mode_front", "acd_sensitivity_front",
          "acd_nocolor_mode_back", "acd_mode_back", "acd_sensitivity_back", "long_paper_scan",
          "background_setting_combobox", "waitingjob_time", "additional_length_detection",
          "additional_length_detection_length", "stop_scanning_after_multifeed", "split_image",
          "two_side_rotate"}) {
        EXPECT_FALSE(expected.contains(QLatin1String(dropped))) << dropped;
    }
}

TEST_F(Manager, RenamingOffersTheOldNameSelected)
{
    store(withWorking({QStringLiteral("A")}));
    manager.setPathINI(path());
    combo().setCurrentIndex(1);
    QString selected;
    const WhenShown user(nameDialog(), [&] {
        selected = child<QLineEdit>(nameDialog(), "lineEdit").selectedText();
        nameDialog().reject();
    });
    press(button("template_rename"));
    EXPECT_EQ(selected, QStringLiteral("A"));
}

TEST_F(Manager, RenamingToTheSameNameLosesTheGroup)
{
    store(withWorking({QStringLiteral("A")}));
    manager.setPathINI(path());
    combo().setCurrentIndex(1);
    clickAndEnter("template_rename", QStringLiteral("A"));
    EXPECT_EQ(onDisk(list), QStringLiteral("自订;A"));
    EXPECT_TRUE(keysOf(QStringLiteral("A")).isEmpty());
}

TEST_F(Manager, RenamingToAnExistingNameIsNotRefused)
{
    store(withWorking({QStringLiteral("A"), QStringLiteral("B")}));
    manager.setPathINI(path());
    combo().setCurrentIndex(1);
    clickAndEnter("template_rename", QStringLiteral("B"));
    EXPECT_EQ(onDisk(list), QStringLiteral("自订;B;B"));
    EXPECT_EQ(onDisk(QStringLiteral("B/source")), QStringLiteral("Asource"));
    EXPECT_EQ(onDisk(QStringLiteral("B/gamma")), QStringLiteral("Bgamma"));
}

TEST_F(Manager, CopyingWritesMissingKeysAsEmptyTexts)
{
    file().setValue(QStringLiteral("A/source"), QStringLiteral("2"));
    manager.setPathINI(path());
    manager.renameUserTemplate(QStringLiteral("A"), QStringLiteral("B"));
    EXPECT_EQ(keysOf(QStringLiteral("B")).size(), 47);
    EXPECT_EQ(file().value(QStringLiteral("B/source")).toString(), QStringLiteral("2"));
    EXPECT_EQ(file().value(QStringLiteral("B/rotate")).toString(), QString());
    EXPECT_TRUE(file().contains(QStringLiteral("B/rotate")));
    EXPECT_EQ(file().value(QStringLiteral("A/source")).toString(), QStringLiteral("2"));
}

TEST_F(Manager, ResetRemovesEveryTemplateAndLeavesTheIndex)
{
    store(withWorking({QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C")}));
    file().setValue(storedIndex, 3);
    file().setValue(QStringLiteral("ScannerA/source"), QStringLiteral("1"));
    manager.setPathINI(path());
    press(button("template_reset"));
    EXPECT_EQ(items(combo()), QStringList(working));
    EXPECT_EQ(onDisk(list), working);
    EXPECT_EQ(onDisk(storedIndex), QStringLiteral("3"));
    EXPECT_EQ(groups(), (QStringList{QStringLiteral("ScannerA"), QStringLiteral("UserTemplates")}));
}

TEST_F(Manager, PresetsAreProtected)
{
    store(withWorking({QStringLiteral("A"), QStringLiteral("B")}));
    file().setValue(presets, QStringLiteral("2"));
    manager.setPathINI(path());
    combo().setCurrentIndex(1);
    press(button("template_remove"));
    press(button("template_rename"));
    EXPECT_EQ(items(combo()), withWorking({QStringLiteral("A"), QStringLiteral("B")}));
    press(button("template_reset"));
    EXPECT_EQ(items(combo()), withWorking({QStringLiteral("A")}));
    EXPECT_EQ(onDisk(list), working) << "the working entry alone, whatever the preset count";
    EXPECT_EQ(keysOf(QStringLiteral("A")).size(), 63);
}

TEST_F(Manager, EmptyPresetNumberKeepsTheCountOfBefore)
{
    store(withWorking({QStringLiteral("A"), QStringLiteral("B")}));
    file().setValue(presets, QStringLiteral("2"));
    manager.setPathINI(path());
    file().setValue(presets, QString());
    manager.setPathINI(path());
    combo().setCurrentIndex(1);
    press(button("template_remove"));
    EXPECT_EQ(combo().count(), 3);
}

TEST_F(Manager, AnyStoredPresetNumberIsSurvived)
{
    for (const char* const number : {"-5", "0", "abc", "99", "2147483648"}) {
        store(withWorking({QStringLiteral("A")}));
        file().setValue(presets, QLatin1String(number));
        file().setValue(QStringLiteral("ScannerA/source"), QStringLiteral("1"));
        manager.setPathINI(path());
        combo().setCurrentIndex(-1);
        press(button("template_remove"));
        press(button("template_rename"));
        press(button("template_reset"));
        EXPECT_EQ(onDisk(QStringLiteral("ScannerA/source")), QStringLiteral("1")) << number;
    }
}

TEST_F(Manager, EveryWayOutReportsWhetherSomethingChangedAndForgetsIt)
{
    store(withWorking({QStringLiteral("A"), QStringLiteral("B")}));
    manager.setPathINI(path());
    const std::function<void()> waysOut[] = {
        [this] { click(button("template_reset_2")); },
        [this] { manager.close(); },
        [this] { QTest::keyClick(&manager, Qt::Key_Escape); },
    };
    const std::function<void()> changes[] = {
        [this] {
            combo().setCurrentIndex(1);
            clickAndEnter("template_rename", QStringLiteral("C"));
        },
        [this] {
            combo().setCurrentIndex(1);
            click(button("template_remove"));
        },
        [this] { click(button("template_reset")); },
    };
    for (int i = 0; i < 3; ++i) {
        for (const bool withChange : {true, false}) {
            const WhenShown user(manager, [&] {
                if (withChange) {
                    changes[i]();
                }
                waysOut[i]();
            });
            manager.exec();
            EXPECT_FALSE(manager.isVisible());
            ASSERT_EQ(closed.count(), 1) << i;
            EXPECT_EQ(closed.takeFirst().at(0).toBool(), withChange) << i;
        }
    }
}
