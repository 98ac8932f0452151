// The functions that hosts call, through the pointer they get.
#include "dialog_fixture.h"
#include "support/message_boxes.h"

#include <kestrelsettingui.h>

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QSignalSpy>
#include <QSpinBox>

#include <widgets/picturebox.h>

#include <gtest/gtest.h>

#include <memory>

using namespace kestrel::test;

namespace {

using HostFunctions = DialogTest;

} // namespace

TEST_F(HostFunctions, CreateMakesADialogThatIsNotShown)
{
    QWidget parent;
    auto* const owned = static_cast<QDialog*>(creatKestrelSetUI(&parent));
    EXPECT_EQ(owned->parentWidget(), &parent);
    EXPECT_FALSE(owned->isVisible());
    const std::unique_ptr<QDialog> free(static_cast<QDialog*>(creatKestrelSetUI(nullptr)));
    EXPECT_EQ(free->parent(), nullptr);
    EXPECT_NE(qobject_cast<KestrelSettingUI*>(free.get()), nullptr);
}

TEST_F(HostFunctions, InitWithANullHandleDoesNothing)
{
    ScannerIdentity record = identity();
    initKestrelSetUI(dialog().host(), nullptr, &record, dir().path());
    EXPECT_TRUE(dialog().config_path.isEmpty());
    EXPECT_TRUE(dialog().device_name.isEmpty());
    EXPECT_EQ(dialog().settings, nullptr);
}

TEST_F(HostFunctions, InitWithANullHandleLeavesAnEarlierBindingAlone)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    const QString path = dialog().config_path;
    QSettings* const settings = dialog().settings;
    scanner.clearJournal();
    ScannerIdentity other = identity("Other", "avision_adv", 1, 2);
    initKestrelSetUI(dialog().host(), nullptr, &other, "/elsewhere");
    EXPECT_EQ(dialog().config_path, path);
    EXPECT_EQ(dialog().settings, settings);
    EXPECT_EQ(dialog().device_name, QStringLiteral("ScannerA"));
    EXPECT_EQ(dialog().backend_name, QStringLiteral("kestrel_adv"));
    EXPECT_EQ(dialog().sane_handle, scanner.handle());
    EXPECT_TRUE(scanner.journal().calls().empty());
}

TEST_F(HostFunctions, SetDeviceSwapsTheHandleAndNothingElse)
{
    FakeScanner first = fullScanner();
    FakeScanner second = flatbedScanner();
    bind(first);
    QSettings* const settings = dialog().settings;
    const QStringList sources = itemsOf("source");
    first.clearJournal();
    setDevice(dialog().host(), second.handle());
    EXPECT_EQ(dialog().sane_handle, second.handle());
    EXPECT_TRUE(second.journal().calls().empty());
    EXPECT_EQ(dialog().settings, settings);
    EXPECT_EQ(itemsOf("source"), sources);
    dialog().setPowerManager();
    EXPECT_TRUE(first.journal().calls().empty());
    EXPECT_FALSE(second.journal().sets().empty());
}

TEST_F(HostFunctions, SetDeviceIgnoresANullHandle)
{
    FakeScanner scanner = fullScanner();
    setDevice(dialog().host(), nullptr);
    EXPECT_EQ(dialog().sane_handle, nullptr);
    setDevice(dialog().host(), scanner.handle());
    setDevice(dialog().host(), nullptr);
    EXPECT_EQ(dialog().sane_handle, scanner.handle());
}

TEST_F(HostFunctions, TheMembersBehindThemReportNullHandles)
{
    FakeScanner scanner = fullScanner();
    EXPECT_FALSE(dialog().set_device(nullptr));
    EXPECT_FALSE(dialog().set_device(nullptr, nullptr, nullptr));
    EXPECT_TRUE(dialog().set_device(scanner.handle()));
}

TEST_F(HostFunctions, ShowWindowRunsTheDialogAndReturnsItsResult)
{
    for (const int result : {0, 1, 7}) {
        const WhenShown shown(dialog(), [this, result] {
            EXPECT_TRUE(dialog().isVisible());
            EXPECT_EQ(QApplication::activeModalWidget(), &dialog());
            dialog().done(result);
        });
        EXPECT_EQ(showWindow(dialog().host()), result);
        EXPECT_FALSE(dialog().isVisible());
    }
}

TEST_F(HostFunctions, ShowWindowDropsThePreviewSelectionFirst)
{
    dialog().use_preview_area = true;
    QSignalSpy selected(&child<PreviewBoxUI>(dialog(), "preview_box"), &PreviewBoxUI::selected);
    const WhenShown shown(dialog(), [this, &selected] {
        EXPECT_FALSE(dialog().use_preview_area);
        ASSERT_EQ(selected.count(), 1);
        EXPECT_TRUE(selected.at(0).at(0).toRect().isNull());
        dialog().done(0);
    });
    showWindow(dialog().host());
}

TEST_F(HostFunctions, OkLetsShowWindowReturn)
{
    const WhenShown shown(dialog(), [this] { click(button("sure")); });
    showWindow(dialog().host());
    EXPECT_FALSE(dialog().isVisible());
}

TEST_F(HostFunctions, TheWindowCanBeShownAgainAndAgain)
{
    for (int round = 0; round < 3; ++round) {
        const WhenShown shown(dialog(), [this] { click(button("cancel")); });
        showWindow(dialog().host());
        EXPECT_FALSE(dialog().isVisible());
    }
}

TEST_F(HostFunctions, SetAllParamReachesTheScanner)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    scanner.clearJournal();
    setAllParamBySettingUI(dialog().host());
    EXPECT_TRUE(scanner.journal().wasSet("source"));
    EXPECT_TRUE(scanner.journal().wasSet("eject-paper-opposite-side"));
}

TEST_F(HostFunctions, ResolutionIsTheNumberThatIsShown)
{
    auto& resolution = combo("resolution_gengel_slide");
    const std::vector<int> expected{75, 100, 150, 200, 300, 400, 600};
    for (int i = 0; i < 7; ++i) {
        resolution.setCurrentIndex(i);
        EXPECT_EQ(getCurrentResolution(dialog().host()), expected[static_cast<std::size_t>(i)]);
    }
    resolution.addItem(QStringLiteral("custom-250"));
    resolution.setCurrentIndex(7);
    EXPECT_EQ(getCurrentResolution(dialog().host()), 250);
}

TEST_F(HostFunctions, FiletypeIsTheColourCorrection)
{
    EXPECT_EQ(getCurrentFiletype(dialog().host()), 2);
    for (int i = 0; i < 4; ++i) {
        combo("color_correction").setCurrentIndex(i);
        EXPECT_EQ(getCurrentFiletype(dialog().host()), i);
        EXPECT_EQ(dialog().get_color_correction(), i);
    }
}

TEST_F(HostFunctions, ScanSourceTypeIsWhatTheRulesSet)
{
    EXPECT_EQ(getScanSourceType(dialog().host()), 0);
    for (const int type : {1, 2, 0}) {
        dialog().scan_source_type = type;
        EXPECT_EQ(getScanSourceType(dialog().host()), type);
        EXPECT_EQ(dialog().get_scan_source_type(), type);
    }
}

TEST_F(HostFunctions, SingleScanIsNeverReported)
{
    EXPECT_EQ(isSingleScan(dialog().host()), 0);
    FakeScanner scanner = fullScanner();
    bind(scanner);
    EXPECT_EQ(isSingleScan(dialog().host()), 0);
    dialog().setMask(36);
    dialog().setAllParam();
    EXPECT_EQ(isSingleScan(dialog().host()), 0);
    dialog().setMask(4);
    dialog().setAllParam();
    EXPECT_EQ(isSingleScan(dialog().host()), 0);
}

TEST_F(HostFunctions, WaitingTimeIsZeroWithoutASource)
{
    bar("waitingjob_time").setValue(33);
    EXPECT_EQ(getWaitingJobTime(dialog().host()), 0);
}

TEST_F(HostFunctions, WaitingTimeCountsOnTheFlatbedAlone)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    spin("waitingjob_value").setValue(33);
    ASSERT_EQ(spin("waitingjob_value").value(), 33);
    const std::vector<int> expected{0, 33, 0};
    for (int i = 0; i < 3; ++i) {
        combo("source").setCurrentIndex(i);
        EXPECT_EQ(getWaitingJobTime(dialog().host()), expected[static_cast<std::size_t>(i)])
            << combo("source").currentText().toStdString();
        EXPECT_EQ(dialog().get_waiting_job_time(), expected[static_cast<std::size_t>(i)]);
    }
}

TEST_F(HostFunctions, WaitingTimeGoesByTheTextNotTheIndex)
{
    FakeScanner scanner = flatbedAndFeederScanner();
    bind(scanner);
    spin("waitingjob_value").setValue(12);
    combo("source").setCurrentIndex(0);
    ASSERT_EQ(combo("source").currentText(), QStringLiteral("平板"));
    EXPECT_EQ(getWaitingJobTime(dialog().host()), 12);
    combo("source").setCurrentIndex(1);
    EXPECT_EQ(getWaitingJobTime(dialog().host()), 0);
}

TEST_F(HostFunctions, DuplexIsWhatWasSentLast)
{
    FakeScanner scanner = feederScanner();
    bind(scanner);
    EXPECT_FALSE(isDoubleSideScan(dialog().host()));
    dialog().setMask(36);
    EXPECT_FALSE(isDoubleSideScan(dialog().host()));
    setAllParamBySettingUI(dialog().host());
    EXPECT_TRUE(isDoubleSideScan(dialog().host()));
    dialog().setMask(4);
    EXPECT_TRUE(isDoubleSideScan(dialog().host()));
    setAllParamBySettingUI(dialog().host());
    EXPECT_FALSE(isDoubleSideScan(dialog().host()));
}

TEST_F(HostFunctions, SplitIsAnyChoiceButTheFirst)
{
    for (int i = 0; i < 3; ++i) {
        combo("split_image").setCurrentIndex(i);
        EXPECT_EQ(isSplitScan(dialog().host()), i != 0);
        EXPECT_EQ(dialog().is_split_scan(), i != 0);
    }
}

TEST_F(HostFunctions, BlankPageFunctionSaysWhetherItChangedAnything)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    scanner.clearJournal();
    EXPECT_TRUE(setBlankPageFunc(dialog().host(), true));
    EXPECT_FALSE(setBlankPageFunc(dialog().host(), true));
    EXPECT_TRUE(checked("remove_blankpage"));
    EXPECT_EQ(scanner.journal().sets(), (Strings{"blank-page-removal=1"}));
    EXPECT_TRUE(setBlankPageFunc(dialog().host(), false));
    EXPECT_FALSE(checked("remove_blankpage"));
    EXPECT_EQ(scanner.journal().sets(), (Strings{"blank-page-removal=1", "blank-page-removal=0"}));
}

TEST_F(HostFunctions, WithoutAButtonTemplateNothingIsSelected)
{
    combo("usertemplate").addItem(QStringLiteral("button1"));
    EXPECT_EQ(setButtonTemplage(dialog().host(), 2), 0);
    EXPECT_EQ(combo("usertemplate").currentIndex(), 0);
}

TEST_F(HostFunctions, TheProbeShowsADialogAndAnswers)
{
    const QWidgetList before = QApplication::topLevelWidgets();
    EXPECT_EQ(outGetStr(QStringLiteral("你好")), QStringLiteral("你好 hell"));
    EXPECT_EQ(outGetStr(QString()), QStringLiteral(" hell"));
    std::vector<std::unique_ptr<KestrelSettingUI>> probes;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        auto* const shown = qobject_cast<KestrelSettingUI*>(window);
        if (shown != nullptr && !before.contains(window)) {
            EXPECT_TRUE(shown->isVisible());
            EXPECT_EQ(shown->parent(), nullptr);
            probes.emplace_back(shown);
        }
    }
    EXPECT_EQ(probes.size(), 2U);
}

TEST_F(HostFunctions, DeletingTheDialogInAnyStateIsSafe)
{
    delete static_cast<QDialog*>(creatKestrelSetUI(nullptr));
    FakeScanner scanner = fullScanner();
    bind(scanner);
    show();
    destroy();
    EXPECT_EQ(scanner.journal().count(CallKind::Close), 0);
}
