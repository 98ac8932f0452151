// Ejecting a sheet, the power settings, what the backend's name changes, and the published table of
// models.
#include "dialog_fixture.h"
#include "support/messages.h"

#include <kestrelsettingui.h>

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QWidget>

#include <gtest/gtest.h>

using namespace kestrel::test;

namespace {

class Maintenance : public DialogTest
{
protected:
    void TearDown() override { destroy(); } // before the scanner

    bool longPaperShown() const { return !widget("long_paper_scan").isHidden(); }

    FakeScanner scanner = fullScanner();
};

} // namespace

TEST_F(Maintenance, TheEjectButtonPressesTheScanners)
{
    bind(scanner);
    show();
    scanner.clearJournal();
    click(button("eject_paper_manual"));
    click(button("eject_paper_manual"));
    const std::vector<Call> sets = scanner.journal().of(CallKind::Set);
    ASSERT_EQ(sets.size(), 2U);
    for (const Call& set : sets) {
        EXPECT_EQ(set.name, "eject-paper");
        EXPECT_TRUE(set.nullValue);
    }
    EXPECT_EQ(scanner.journal().count(CallKind::Start), 0);
}

TEST_F(Maintenance, ARefusedEjectIsPassedOver)
{
    bind(scanner);
    show();
    scanner.failOption(CallKind::Set, "eject-paper", SANE_STATUS_DEVICE_BUSY);
    click(button("eject_paper_manual"));
    EXPECT_TRUE(dialog().isVisible());
}

TEST_F(Maintenance, WithoutAHandleNothingIsEjected)
{
    show();
    press(button("eject_paper_manual")); // never bound
    bind(scanner);
    scanner.clearJournal();
    dialog().sane_handle = nullptr;
    press(button("eject_paper_manual"));
    EXPECT_TRUE(scanner.journal().calls().empty()) << scanner.journal().text();
}

TEST_F(Maintenance, AScannerWithoutAnEjectButtonIsNotHarmed)
{
    scanner.remove("eject-paper");
    bind(scanner);
    scanner.clearJournal();
    press(button("eject_paper_manual"));
    EXPECT_TRUE(scanner.journal().sets().empty());
}

TEST_F(Maintenance, TheEjectButtonEjectsWhenItsGroupIsNotShown)
{
    scanner.option("eject-paper-opposite-side").inactive();
    bind(scanner);
    ASSERT_TRUE(widget("eject_paper_groupBox").isHidden());
    scanner.clearJournal();
    press(button("eject_paper_manual"));
    EXPECT_EQ(scanner.journal().setsOf("eject-paper").size(), 1U);
}

TEST_F(Maintenance, AnEjectOptionThatIsATextGetsNone)
{
    scanner.option("eject-paper").type(SANE_TYPE_STRING).size(16);
    bind(scanner);
    scanner.clearJournal();
    press(button("eject_paper_manual"));
    EXPECT_EQ(scanner.journal().sets(), Strings{"eject-paper="});
}

TEST_F(Maintenance, APowerTimeIsSentForItsSwitchAlone)
{
    bind(scanner);
    bar("powersaving_time").setEnabled(false);
    bar("poweroff_time").setEnabled(false);
    scanner.clearJournal();
    dialog().setPowerManager();
    EXPECT_EQ(scanner.journal().sets(), (Strings{"powersaving=Enable", "powersaving-time=15",
                                                 "poweroff=Enable", "poweroff-time=120"}));
}

// What is stored is in force when the scanner has other values, as after it was switched off.
TEST_F(Maintenance, BindingSendsThePowerSettingsThatWereConfirmed)
{
    bind(scanner);
    button("powersaving").setChecked(false);
    bar("poweroff_time").setValue(200);
    press(button("sure"));
    scanner.option("powersaving").string("Enable");
    scanner.option("poweroff-time").word(120);
    scanner.clearJournal();
    bind(scanner);
    const Strings sets = scanner.journal().sets();
    ASSERT_GE(sets.size(), 3U);
    EXPECT_EQ(Strings(sets.end() - 3, sets.end()),
              (Strings{"powersaving=Disable", "poweroff=Enable", "poweroff-time=200"}));
    EXPECT_EQ(scanner.journal().setsOf("powersaving").size(), 1U);
    EXPECT_EQ(scanner.journal().setsOf("poweroff-time").size(), 1U);
}

TEST_F(Maintenance, ARefusedPowerSettingDoesNotKeepTheOthersBack)
{
    bind(scanner);
    const Strings all{"powersaving=Enable", "powersaving-time=15", "poweroff=Enable",
                      "poweroff-time=120"};
    for (const char* refused : {"powersaving", "powersaving-time", "poweroff", "poweroff-time"}) {
        for (const SANE_Status status :
             {SANE_STATUS_DEVICE_BUSY, SANE_STATUS_INVAL, SANE_STATUS_IO_ERROR}) {
            scanner.mend();
            scanner.failOption(CallKind::Set, refused, status);
            scanner.clearJournal();
            dialog().setPowerManager();
            EXPECT_EQ(scanner.journal().sets(), all) << refused << ' ' << status;
        }
    }
}

TEST_F(Maintenance, WithPowerSavingOffAndRefusedPowerOffIsSentAllTheSame)
{
    bind(scanner);
    button("powersaving").setChecked(false);
    scanner.failOption(CallKind::Set, "powersaving", SANE_STATUS_UNSUPPORTED);
    scanner.clearJournal();
    dialog().setPowerManager();
    EXPECT_EQ(scanner.journal().sets(),
              (Strings{"powersaving=Disable", "poweroff=Enable", "poweroff-time=120"}));
}

TEST_F(Maintenance, OnlyOneBackendHasLongPaperHoweverItIsWritten)
{
    struct Row
    {
        const char* backend;
        bool shown;
    };
    for (const Row& row : {Row{"kestrel_adv", true},
                           {"KESTREL_ADV", true},
                           {"Kestrel_Adv", true},
                           {"kEsTrEl_aDv", true},
                           {"avision_adv", false},
                           {"", false},
                           {"kestrel_adv ", false},
                           {"kestrel", false},
                           {"kestrel_advanced", false},
                           {nullptr, false}}) {
        widget("long_paper_scan").show();
        dialog().lockFunctionByVid(0, row.backend);
        EXPECT_EQ(longPaperShown(), row.shown) << (row.backend != nullptr ? row.backend : "null");
    }
}

TEST_F(Maintenance, TheRightBackendDoesNotBringLongPaperBack)
{
    widget("long_paper_scan").hide();
    dialog().lockFunctionByVid(0, "kestrel_adv");
    EXPECT_FALSE(longPaperShown());
}

TEST_F(Maintenance, TheVendorsNumberChangesNothing)
{
    for (const unsigned int vid : {0U, 0x0638U, 0xffffffffU}) {
        widget("long_paper_scan").show();
        dialog().lockFunctionByVid(vid, "Kestrel_adv");
        EXPECT_TRUE(longPaperShown()) << vid;
        dialog().lockFunctionByVid(vid, "avision_adv");
        EXPECT_FALSE(longPaperShown()) << vid;
    }
}

TEST_F(Maintenance, TheNameOfTheBackendIsLogged)
{
    const DebugLines debug;
    dialog().lockFunctionByVid(1, "Some_Backend");
    dialog().lockFunctionByVid(1, nullptr);
    const std::vector<DebugLine> lines = debug.from("lockFunctionByVid");
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0].text, QStringLiteral("Some_Backend"));
    EXPECT_EQ(lines[1].text, QString());
}

TEST_F(Maintenance, BindingGoesByTheHostsBackend)
{
    bind(scanner, "ScannerA", "KESTREL_adv");
    EXPECT_TRUE(longPaperShown());
    bind(scanner, "ScannerB", "avision_adv");
    EXPECT_FALSE(longPaperShown());
    bind(scanner, "ScannerC", "kestrel_ADV");
    EXPECT_TRUE(longPaperShown());
}

TEST_F(Maintenance, TheBackendIsLookedAtBeforeTheScannerIsAsked)
{
    bool asked = false;
    widget("long_paper_scan").show();
    scanner.before(CallKind::Describe, [this, &asked](FakeScanner&) {
        asked = true;
        EXPECT_FALSE(longPaperShown());
    });
    bind(scanner, "ScannerA", "avision_adv");
    EXPECT_TRUE(asked);
}

TEST_F(Maintenance, WithoutAVendorLibraryTheCountersAreTheScannersOptions)
{
    struct Row
    {
        FakeScanner (*make)();
        QString lines;
    };
    const QString rollers = QStringLiteral("自动分纸滚轮/垫片次数：1234\n自动进纸滚轮次数：5678\n");
    const QString flatbed = QStringLiteral("平台扫描次数：0\n");
    for (const Row& row :
         {Row{flatbedScanner, flatbed}, Row{feederScanner, rollers},
          Row{fullScanner, rollers + flatbed}, Row{flatbedAndFeederScanner, flatbed},
          Row{feederAndFlatbedScanner, rollers}}) {
        scanner = row.make();
        bind(scanner);
        dialog().setScannerInfo();
        EXPECT_EQ(dialog().counter_text, row.lines);
        EXPECT_EQ(information(),
                  dialog().system_text + QStringLiteral("序列号:  KS-2024-0042\n") + row.lines);
    }
}

TEST(ModelTable, NamesThreeModelsAndTheirNumbers)
{
    const std::vector<std::string> names(std::begin(kestrel_model_names),
                                         std::end(kestrel_model_names));
    const std::vector<std::string> numbers(std::begin(kestrel_model_product_ids),
                                           std::end(kestrel_model_product_ids));
    EXPECT_EQ(names, (Strings{"Q1410A", "Q2380F", "Q150A"}));
    EXPECT_EQ(numbers, (Strings{"c141", "c238", "c150"}));
}
