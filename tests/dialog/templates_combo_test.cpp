// The list of templates in the main dialog: at the start, picked, confirmed, thrown away.
#include "config_manager.h"

using namespace kestrel;
using namespace kestrel::test;

namespace {

const QString nameA = QStringLiteral("A");
const QString nameB = QStringLiteral("B");

class TemplateCombo : public TemplatesBench
{
};

} // namespace

TEST_F(TemplateCombo, ANewDialogOffersTheWorkingEntryAlone)
{
    EXPECT_EQ(items(templates()), QStringList(working));
    bind(m_scanner);
    EXPECT_EQ(items(templates()), QStringList(working));
}

TEST_F(TemplateCombo, TheStoredListIsShownFromTwoEntriesOn)
{
    struct Row
    {
        const char* text;
        QStringList shown;
    };
    const QString office = QStringLiteral("Office");
    for (const Row& row :
         {Row{"", {working}}, Row{";;", {working}}, Row{"自订", {working}},
          // One entry is no list, whatever it is called.
          Row{"Office", {working}}, Row{";Office;", {working}},
          Row{"自订;Office", {working, office}}, Row{";自订;;Office;", {working, office}},
          // The first entry keeps its stored text here.
          Row{"第一;Office", {QStringLiteral("第一"), office}},
          Row{"Office;Office", {office, office}},
          Row{"自订; Office ", {working, QStringLiteral(" Office ")}}}) {
        prepare({{QStringLiteral("ScannerAconfig_version/config_version"), QStringLiteral("102")},
                 {list, QString::fromUtf8(row.text)}});
        restart(m_scanner);
        EXPECT_EQ(items(templates()), row.shown) << row.text;
        EXPECT_EQ(templates().currentIndex(), 0) << row.text;
    }
}

TEST_F(TemplateCombo, TheConfirmedTemplateOpens)
{
    struct Row
    {
        const char* index;
        int selected;
        int brightness;
    };
    for (const Row& row :
         {Row{"0", 0, 50}, Row{"1", 1, 1}, Row{"2", 2, 2}, Row{"02", 2, 2},
          // Beyond the list, or no number: the working configuration.
          Row{"3", 0, 50}, Row{"2147483647", 0, 50}, Row{"-1", 0, 50}, Row{"x", 0, 50},
          Row{"1x", 0, 50}, Row{"1.0", 0, 50}, Row{"0x1", 0, 50}}) {
        start({nameA, nameB}, QString::fromUtf8(row.index));
        EXPECT_EQ(templates().currentIndex(), row.selected) << row.index;
        EXPECT_EQ(brightness(), row.brightness) << row.index;
        EXPECT_EQ(onDisk(storedIndex), QString::fromUtf8(row.index));
    }
    start({nameA, nameB});
    EXPECT_EQ(templates().currentIndex(), 0);
    EXPECT_EQ(brightness(), 50);
}

TEST_F(TemplateCombo, WithoutAListTheIndexIsNotConsulted)
{
    start({}, QStringLiteral("1"));
    EXPECT_EQ(items(templates()), QStringList(working));
    EXPECT_EQ(brightness(), 50);
}

TEST_F(TemplateCombo, AConfirmedTemplateWithoutAGroupLeavesTheWorkingSettings)
{
    start({nameA}, QStringLiteral("1"));
    dialog().settings->remove(nameA);
    ASSERT_TRUE(saveSettings(*dialog().settings));
    restart(m_scanner);
    EXPECT_EQ(templates().currentIndex(), 1);
    EXPECT_EQ(brightness(), 50);
}

TEST_F(TemplateCombo, PickingLoadsTheTemplate)
{
    start({nameA, nameB});
    dialog().show();
    settle();
    for (const auto& [index, expected] : {std::pair(2, 2), std::pair(1, 1), std::pair(0, 50)}) {
        select(templates(), index);
        EXPECT_EQ(brightness(), expected);
    }
}

TEST_F(TemplateCombo, TheFirstEntryLoadsTheDevicesGroupWhateverItIsCalled)
{
    start({nameA});
    store(list, QStringLiteral("B;A"));
    store(QStringLiteral("B/brightness"), QStringLiteral("99"));
    bind(m_scanner);
    ASSERT_EQ(templates().itemText(0), nameB);
    EXPECT_EQ(brightness(), 50);
    templates().setCurrentIndex(1);
    EXPECT_EQ(brightness(), 1);
    templates().setCurrentIndex(0);
    EXPECT_EQ(brightness(), 50);
    setBrightness(51);
    ok();
    EXPECT_EQ(onDisk(QStringLiteral("ScannerA/brightness")), QStringLiteral("51"));
    EXPECT_EQ(onDisk(QStringLiteral("B/brightness")), QStringLiteral("99"));
}

TEST_F(TemplateCombo, PickingATemplateWithoutAGroupLeavesTheControls)
{
    start({nameA, QStringLiteral("Gone")});
    dialog().settings->remove(QStringLiteral("Gone"));
    templates().setCurrentIndex(1);
    const QStringList before = state();
    templates().setCurrentIndex(2);
    expectState(before);
}

TEST_F(TemplateCombo, PickingWritesNothing)
{
    start({nameA, nameB}, QStringLiteral("1"));
    const QByteArray before = bytes();
    templates().setCurrentIndex(2);
    templates().setCurrentIndex(0);
    settle();
    EXPECT_EQ(bytes(), before);
}

TEST_F(TemplateCombo, OkUpdatesThePickedTemplateInPlace)
{
    start({nameA, nameB});
    templates().setCurrentIndex(2);
    setBrightness(-33);
    ok();
    EXPECT_EQ(onDisk(QStringLiteral("B/brightness")), QStringLiteral("-33"));
    EXPECT_EQ(onDisk(QStringLiteral("A/brightness")), QStringLiteral("1"));
    EXPECT_EQ(onDisk(QStringLiteral("ScannerA/brightness")), QStringLiteral("50"));
    EXPECT_EQ(onDisk(QStringLiteral("ScannerAdefault/brightness")), QStringLiteral("60"));
    EXPECT_EQ(onDisk(storedIndex), QStringLiteral("2"));
    EXPECT_EQ(onDisk(list), QStringLiteral("自订;A;B"));
    restart(m_scanner);
    EXPECT_EQ(templates().currentIndex(), 2);
    EXPECT_EQ(brightness(), -33);
}

TEST_F(TemplateCombo, OkOnTheWorkingEntryLeavesTheTemplates)
{
    start({nameA}, QStringLiteral("1"));
    templates().setCurrentIndex(0);
    setBrightness(-44);
    ok();
    EXPECT_EQ(onDisk(QStringLiteral("ScannerA/brightness")), QStringLiteral("-44"));
    EXPECT_EQ(onDisk(QStringLiteral("A/brightness")), QStringLiteral("1"));
    EXPECT_EQ(onDisk(storedIndex), QStringLiteral("0"));
}

TEST_F(TemplateCombo, OkWritesAWholeGroup)
{
    start({nameA});
    templates().setCurrentIndex(1);
    ok();
    int keys = 0;
    for (const auto& entry : onDisk()) {
        keys += entry.first.startsWith(QStringLiteral("A/")) ? 1 : 0;
    }
    EXPECT_EQ(keys, 63);
}

TEST_F(TemplateCombo, LeavingWithoutOkBringsTheConfirmedEntryBack)
{
    for (const auto& [index, confirmed] :
         {std::pair("0", 50), std::pair("1", 1), std::pair("2", 2)}) {
        for (const int picked : {0, 1, 2}) {
            start({nameA, nameB}, QString::fromUtf8(index));
            const QByteArray before = bytes();
            templates().setCurrentIndex(picked);
            setBrightness(-77);
            cancel();
            EXPECT_EQ(templates().currentIndex(), QString::fromUtf8(index).toInt());
            EXPECT_EQ(brightness(), confirmed) << index << ' ' << picked;
            settle();
            EXPECT_EQ(bytes(), before);
        }
    }
}

TEST_F(TemplateCombo, LeavingBeforeAnythingWasConfirmedKeepsWhatIsShown)
{
    start({nameA});
    templates().setCurrentIndex(1);
    setBrightness(-77);
    cancel();
    EXPECT_EQ(templates().currentIndex(), 1);
    EXPECT_EQ(brightness(), -77);
}

TEST_F(TemplateCombo, LeavingWithAnIndexThatIsNoNumberGoesBackToTheWorkingSettings)
{
    start({nameA}, QStringLiteral("x"));
    templates().setCurrentIndex(1);
    cancel();
    EXPECT_EQ(templates().currentIndex(), 0);
    EXPECT_EQ(brightness(), 50);
}

TEST_F(TemplateCombo, LeavingWithAnIndexBeyondTheListStillThrowsEditsAway)
{
    start({nameA}, QStringLiteral("7"));
    for (const auto& [picked, expected] : {std::pair(1, 1), std::pair(0, 50)}) {
        templates().setCurrentIndex(picked);
        setBrightness(-77);
        cancel();
        EXPECT_EQ(templates().currentIndex(), picked);
        EXPECT_EQ(brightness(), expected);
    }
}

TEST_F(TemplateCombo, TheDefaultButtonSavesNothing)
{
    start({nameA}, QStringLiteral("1"));
    const QByteArray before = bytes();
    press(get<QAbstractButton>("default_setting"));
    EXPECT_EQ(brightness(), 60);
    EXPECT_EQ(templates().currentIndex(), 1);
    settle();
    EXPECT_EQ(bytes(), before);
    cancel();
    EXPECT_EQ(brightness(), 1);
    EXPECT_EQ(bytes(), before);
}

TEST_F(TemplateCombo, DefaultsConfirmedGoIntoThePickedTemplate)
{
    start({nameA}, QStringLiteral("1"));
    press(get<QAbstractButton>("default_setting"));
    ok();
    EXPECT_EQ(onDisk(QStringLiteral("A/brightness")), QStringLiteral("60"));
    EXPECT_EQ(onDisk(QStringLiteral("ScannerA/brightness")), QStringLiteral("50"));
    EXPECT_EQ(onDisk(QStringLiteral("ScannerAdefault/brightness")), QStringLiteral("60"));
}

TEST_F(TemplateCombo, ATemplateOfTheDevicesNameSharesItsGroup)
{
    start({QStringLiteral("ScannerA"), QStringLiteral("ScannerAdefault")});
    templates().setCurrentIndex(1);
    setBrightness(-12);
    ok();
    EXPECT_EQ(onDisk(QStringLiteral("ScannerA/brightness")), QStringLiteral("-12"));
    templates().setCurrentIndex(0);
    EXPECT_EQ(brightness(), -12);
    templates().setCurrentIndex(2);
    setBrightness(-13);
    ok();
    templates().setCurrentIndex(0);
    press(get<QAbstractButton>("default_setting"));
    EXPECT_EQ(brightness(), -13);
}

TEST_F(TemplateCombo, ANewDialogSurvivesEveryTemplateOperation)
{
    dialog().loadConfig(nameA);
    dialog().writeConfig(nameA);
    dialog().writeDefaultConfig(nameA);
    dialog().addUserTemplateConfig(nameA);
    dialog().resetCurrentUserTemplate(true);
    dialog().resetCurrentUserTemplate(false);
    EXPECT_EQ(dialog().setButtonTemplage(1), 0);
    press(get<QAbstractButton>("default_setting"));
    templates().addItem(nameA);
    templates().setCurrentIndex(1);
    ok();
    cancel();
    EXPECT_EQ(dialog().settings, nullptr);
    EXPECT_EQ(templates().currentIndex(), 1);
}
