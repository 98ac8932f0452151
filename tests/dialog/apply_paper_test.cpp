// Applying the settings: crop, scan area and paper handling.
#include "apply_fixture.h"

using namespace kestrel::test;

TEST_F(Apply, LongPaper)
{
    for (const bool on : {true, false}) {
        check("long_paper_scan", on);
        EXPECT_EQ(sent("long-paper-scan"), Strings{on ? "1" : "0"});
    }
}

TEST_F(Apply, AutomaticCropSendsItsMarginsAndNoArea)
{
    chooseText("source", flatbed);
    ASSERT_EQ(combo("autocropdeskew").count(), 3);
    real("crop_adjust_top").setValue(1.5);
    real("crop_adjust_bottom").setValue(-2.0);
    real("crop_adjust_left").setValue(0.1);
    real("crop_adjust_right").setValue(10.0);
    for (int i = 0; i < 3; ++i) {
        choose("autocropdeskew", i);
        dialog().use_preview_area = i == 1;
        EXPECT_EQ(sent("autocropdeskew"), Strings{i == 0 ? "0" : "1"});
        EXPECT_EQ(m_journal.setsOf("flatbed-multi-crop"), Strings{i == 2 ? "1" : "0"});
        for (const auto& [name, value] :
             {std::pair("crop-adjust-top", "1.5"), std::pair("crop-adjust-bottom", "-2"),
              std::pair("crop-adjust-left", "0.1"), std::pair("crop-adjust-right", "10")}) {
            EXPECT_EQ(m_journal.setsOf(name), i == 0 ? nothing : Strings{value}) << name;
        }
        for (const char* name : {"center-alignment", "tl-x", "tl-y", "br-x", "br-y"}) {
            EXPECT_EQ(m_journal.setsOf(name).size(), i == 0 ? 1U : 0U) << name;
        }
    }
}

TEST_F(Apply, TheCropChoiceStandsInTheSequenceWhereCropIs)
{
    apply();
    EXPECT_EQ(position("autocropdeskew"), position("long-paper-scan") + 1);
    EXPECT_EQ(position("flatbed-multi-crop"), position("autocropdeskew") + 1);
}

TEST_F(Apply, ACentredAreaHasNoLeftOffset)
{
    check("center_alignment", true);
    real("br_x").setValue(210.0);
    real("br_y").setValue(297.0);
    real("tl_y").setValue(5.0);
    ASSERT_EQ(real("br_x").value(), 210.0);
    ASSERT_EQ(real("br_y").value(), 297.0);
    apply();
    EXPECT_EQ(m_journal.setsOf("center-alignment"), (Strings{"1"}));
    EXPECT_EQ(m_journal.setsOf("tl-x"), (Strings{"0"}));
    EXPECT_EQ(m_journal.setsOf("br-x"), (Strings{"210"}));
    EXPECT_EQ(m_journal.setsOf("br-y"), (Strings{"302"}));
    EXPECT_EQ(m_journal.setsOf("tl-y"), (Strings{"5"}));
}

TEST_F(Apply, AFreeAreaIsSentAsItsEdges)
{
    check("center_alignment", false);
    real("br_x").setValue(100.3);
    real("br_y").setValue(200.2);
    real("tl_x").setValue(10.4);
    real("tl_y").setValue(20.5);
    ASSERT_EQ(real("tl_x").value(), 10.4);
    apply();
    EXPECT_EQ(m_journal.setsOf("center-alignment"), (Strings{"0"}));
    EXPECT_EQ(m_journal.setsOf("tl-x"), (Strings{"10.4"}));
    EXPECT_EQ(m_journal.setsOf("br-x"), (Strings{"110.7"}));
    EXPECT_EQ(m_journal.setsOf("br-y"), (Strings{"220.7"}));
    EXPECT_EQ(m_journal.setsOf("tl-y"), (Strings{"20.5"}));
}

TEST_F(Apply, TheAreaIsSentRightBottomBeforeTop)
{
    apply();
    EXPECT_EQ(position("tl-x"), position("center-alignment") + 1);
    EXPECT_EQ(position("br-x"), position("tl-x") + 1);
    EXPECT_EQ(position("br-y"), position("br-x") + 1);
    EXPECT_EQ(position("tl-y"), position("br-y") + 1);
}

TEST_F(Apply, AnAcceptedPreviewSelectionReplacesTheArea)
{
    check("center_alignment", true);
    real("offset_w").setValue(50.5);
    real("offset_h").setValue(60.0);
    real("offset_x").setValue(10.1);
    real("offset_y").setValue(20.2);
    dialog().use_preview_area = true;
    apply();
    EXPECT_EQ(m_journal.setsOf("center-alignment"), (Strings{"0"}));
    EXPECT_EQ(m_journal.setsOf("tl-x"), (Strings{"10.1"}));
    EXPECT_EQ(m_journal.setsOf("br-x"), (Strings{"60.6"}));
    EXPECT_EQ(m_journal.setsOf("br-y"), (Strings{"80.2"}));
    EXPECT_EQ(m_journal.setsOf("tl-y"), (Strings{"20.2"}));
}

TEST_F(Apply, APreviewSelectionThatWasNotAcceptedDoesNotCount)
{
    real("offset_w").setValue(50.5);
    real("offset_h").setValue(60.0);
    dialog().use_preview_area = false;
    EXPECT_EQ(sent("br-x"), (Strings{"210"}));
}

TEST_F(Apply, BackgroundColour)
{
    const Strings table{"No processing", "Black", "White"};
    for (int i = 0; i < 3; ++i) {
        choose("background_setting_combobox", i);
        EXPECT_EQ(sent("bg-color-setting"), Strings{table[static_cast<std::size_t>(i)]});
    }
}

TEST_F(Apply, PrefeedTimeIsAlwaysSent)
{
    real("prefeed_time").setValue(2.5);
    for (const bool on : {true, false}) {
        check("prefeed", on);
        EXPECT_EQ(sent("prefeed"), Strings{on ? "1" : "0"});
        EXPECT_EQ(m_journal.setsOf("prefeed-time"), (Strings{"2.5"}));
    }
}

TEST_F(Apply, MultifeedSwitchesAndWhatHangsOnThem)
{
    chooseText("source", feeder);
    show();
    ASSERT_TRUE(reveal(widget("length_detection")));
    real("length_detection_value").setMaximum(500.0);
    real("length_detection_value").setValue(12.5);
    for (const bool ultrasonic : {true, false}) {
        for (const bool length : {true, false}) {
            check("ultrasonic", ultrasonic);
            check("length_detection", length);
            check("stop_scanning_after_multifeed", length);
            apply();
            EXPECT_EQ(m_journal.setsOf("ultrasonic"), Strings{ultrasonic ? "Enable" : "Disable"});
            EXPECT_EQ(m_journal.setsOf("additional-length-detection"),
                      Strings{length ? "Enable" : "Disable"});
            EXPECT_EQ(m_journal.setsOf("additional-length-detection-length"),
                      length ? Strings{"12.5"} : nothing);
            EXPECT_EQ(m_journal.setsOf("stop-scanning-after-multifeed"),
                      ultrasonic || length ? Strings{length ? "1" : "0"} : nothing);
        }
    }
}

TEST_F(Apply, LengthDetectionCountsOnlyWhileItIsSeen)
{
    chooseText("source", feeder);
    check("ultrasonic", false);
    check("length_detection", true);
    check("stop_scanning_after_multifeed", true);
    ASSERT_FALSE(widget("length_detection").isVisible());
    apply();
    EXPECT_EQ(m_journal.setsOf("additional-length-detection"), (Strings{"Enable"}));
    EXPECT_EQ(m_journal.setsOf("additional-length-detection-length"), nothing);
    EXPECT_EQ(m_journal.setsOf("stop-scanning-after-multifeed"), nothing);
    check("ultrasonic", true);
    EXPECT_EQ(sent("stop-scanning-after-multifeed"), (Strings{"1"}));
}
