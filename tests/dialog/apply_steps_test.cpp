// Applying the settings, step by step: which control decides what is sent.
#include "dialog_fixture.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QSpinBox>

#include <gtest/gtest.h>

#include <algorithm>

using namespace kestrel::test;

namespace {

const QString feeder = QStringLiteral("文档进纸器");
const QString flatbed = QStringLiteral("平板");
const QString automatic = QStringLiteral("自动选择纸张来源");

class Apply : public DialogTest
{
protected:
    Apply() : m_scanner(fullScanner()) { bindForTexts(m_scanner); }

    void choose(const char* name, int index)
    {
        combo(name).setCurrentIndex(index);
        ASSERT_EQ(combo(name).currentIndex(), index) << name;
    }
    void chooseText(const char* name, const QString& text)
    {
        combo(name).setCurrentText(text);
        ASSERT_EQ(combo(name).currentText(), text) << name;
    }
    void check(const char* name, bool on = true) { button(name).setChecked(on); }

    /// Applies the settings afresh.
    const Journal& apply()
    {
        m_scanner.clearJournal();
        dialog().setAllParam();
        m_journal = m_scanner.journal();
        return m_journal;
    }
    /// @return the texts sent to an option when the settings are applied
    Strings sent(const char* option) { return apply().setsOf(option); }
    /// @return where an option stands in the sequence of the last apply(); -1 when it was not sent
    int position(const std::string& option) const
    {
        const std::vector<Call> sets = m_journal.of(CallKind::Set);
        const auto found = std::find_if(sets.begin(), sets.end(),
                                        [&](const Call& call) { return call.name == option; });
        return found == sets.end() ? -1 : static_cast<int>(found - sets.begin());
    }

    FakeScanner m_scanner;
    Journal m_journal;
};

const Strings nothing;

} // namespace

TEST_F(Apply, TheFeederGoesByTheMask)
{
    chooseText("source", feeder);
    for (int mask = 0; mask < 256; ++mask) {
        dialog().setMask(mask);
        dialog().double_side = false;
        const bool frontDetection = (mask & 64) != 0;
        const bool backDetection = (mask & 128) != 0;
        const bool back = (mask & 56) != 0;
        const bool front = (mask & 7) != 0;
        std::string expected = "ADF Front";
        if (frontDetection && backDetection) {
            expected = "ADF Duplex";
        } else if (frontDetection) {
            expected = "ADF Front";
        } else if (backDetection) {
            expected = "ADF Back";
        } else if (back && front) {
            expected = "ADF Duplex";
        } else if (back) {
            expected = "ADF Back";
        }
        EXPECT_EQ(sent("source"), Strings{expected}) << mask;
        EXPECT_EQ(dialog().double_side, expected == "ADF Duplex") << mask;
        EXPECT_EQ(m_journal.setsOf("auto-scan-source-setting"), nothing) << mask;
    }
}

TEST_F(Apply, TheDuplexFlagIsTakenBack)
{
    chooseText("source", feeder);
    dialog().setMask(36);
    apply();
    EXPECT_TRUE(dialog().double_side);
    for (const int mask : {4, 32, 64, 128, 0}) {
        dialog().double_side = true;
        dialog().setMask(mask);
        apply();
        EXPECT_FALSE(dialog().double_side) << mask;
    }
}

TEST_F(Apply, TheAutomaticSourceNamesItsFeederSide)
{
    chooseText("source", automatic);
    for (int mask = 0; mask < 256; ++mask) {
        dialog().setMask(mask);
        const bool detection = mask >= 64;
        const bool duplex = detection ? (mask & 192) == 192 : (mask & 56) != 0 && (mask & 7) != 0;
        dialog().double_side = !duplex;
        EXPECT_EQ(sent("source"), (Strings{"Automatic"})) << mask;
        EXPECT_EQ(m_journal.setsOf("auto-scan-source-setting"),
                  (Strings{duplex ? "ADF Duplex" : "ADF Front"}))
            << mask;
        EXPECT_EQ(dialog().double_side, duplex) << mask;
        EXPECT_EQ(position("auto-scan-source-setting"), position("source") + 1);
    }
}

TEST_F(Apply, TheFlatbedIsNeverDuplex)
{
    chooseText("source", flatbed);
    for (const int mask : {4, 36, 63, 192, 255}) {
        dialog().setMask(mask);
        dialog().double_side = true;
        EXPECT_EQ(sent("source"), (Strings{"Flatbed"})) << mask;
        EXPECT_FALSE(dialog().double_side) << mask;
        EXPECT_EQ(m_journal.setsOf("auto-scan-source-setting"), nothing);
    }
}

TEST_F(Apply, WithoutASourceNoneIsSentAndTheDuplexFlagStays)
{
    combo("source").clear();
    for (const bool before : {true, false}) {
        dialog().double_side = before;
        dialog().setMask(36);
        EXPECT_EQ(sent("source"), nothing);
        EXPECT_EQ(dialog().double_side, before);
        EXPECT_EQ(m_journal.setsOf("mode"), (Strings{"Color"}));
    }
}

TEST_F(Apply, AnUnknownSourceTextIsNotSent)
{
    combo("source").clear();
    combo("source").addItem(QStringLiteral("别的"));
    EXPECT_EQ(sent("source"), nothing);
}

TEST_F(Apply, ModeAndMultistreamGoByTheMask)
{
    for (int mask = 0; mask < 64; ++mask) {
        dialog().setMask(mask);
        const int front = mask & 7;
        const int back = mask & 56;
        std::string mode = "Color";
        if (front < 4 && back < 32) {
            mode = front < 2 && back < 16 ? "Lineart" : "Gray";
        }
        std::string images = "No Multi-Stream";
        if (front == 3 || back == 24) {
            images = "Gray + BW";
        } else if (front == 5 || back == 40) {
            images = "Color + BW";
        } else if (front == 6 || back == 48) {
            images = "Color + Gray";
        } else if (front == 7 || back == 56) {
            images = "Color + Gray + BW";
        }
        EXPECT_EQ(sent("mode"), Strings{mode}) << mask;
        EXPECT_EQ(m_journal.setsOf("multistream-list"), Strings{images}) << mask;
    }
}

TEST_F(Apply, SingleModesOfTheFront)
{
    for (const auto& [mask, mode] :
         {std::pair(1, "Lineart"), std::pair(2, "Gray"), std::pair(4, "Color")}) {
        dialog().setMask(mask);
        EXPECT_EQ(sent("mode"), Strings{mode});
        EXPECT_EQ(m_journal.setsOf("multistream-list"), (Strings{"No Multi-Stream"}));
    }
}

TEST_F(Apply, DetectionReplacesModeAndMultistream)
{
    for (int mask = 64; mask < 256; ++mask) {
        dialog().setMask(mask);
        EXPECT_EQ(sent("mode"), (Strings{"Auto Detection"})) << mask;
        EXPECT_EQ(m_journal.setsOf("multistream-list"), nothing) << mask;
    }
}

TEST_F(Apply, TheDetectionModeIsNamedAfterTheBackend)
{
    dialog().setMask(192);
    for (const auto& [backend, mode] :
         {std::pair("avision_adv", "Auto Color Detection"),
          std::pair("kestrel_adv", "Auto Detection"), std::pair("AVISION_ADV", "Auto Detection"),
          std::pair("avision_adv2", "Auto Detection"), std::pair("avision_ad", "Auto Detection"),
          std::pair("", "Auto Detection")}) {
        dialog().backend_name = QString::fromLatin1(backend);
        EXPECT_EQ(sent("mode"), Strings{mode}) << backend;
    }
}

TEST_F(Apply, BrightnessAndContrastAreDecimal)
{
    for (const int value : {-100, -1, 0, 7, 100}) {
        bar("brightness_set").setValue(value);
        bar("contrast_set").setValue(-value);
        EXPECT_EQ(sent("brightness"), Strings{std::to_string(value)});
        EXPECT_EQ(m_journal.setsOf("contrast"), Strings{std::to_string(-value)});
    }
}

TEST_F(Apply, TheGammaTableIsSentAndTheColourTablesAreNot)
{
    dialog().SetupGammaTable1(dialog().gamma_table.data(), 0.5);
    EXPECT_EQ(sent("gamma-table"), (Strings{"{0,128,181,221,255}"}));
    for (const char* name : {"red-gamma-table", "green-gamma-table", "blue-gamma-table"}) {
        EXPECT_EQ(m_journal.setsOf(name), nothing) << name;
    }
}

TEST_F(Apply, GrayDocTypeIsSentWithUnderscores)
{
    const Strings table{"Document", "Photo", "Normal"};
    for (int i = 0; i < 3; ++i) {
        choose("gray_doc_type", i);
        EXPECT_EQ(sent("gray_doc_type"), Strings{table[static_cast<std::size_t>(i)]});
        EXPECT_EQ(m_journal.setsOf("gray-doc-type"), nothing);
    }
}

TEST_F(Apply, AScannerThatKnowsOnlyTheHyphensNeverGetsTheDocType)
{
    m_scanner.remove("gray_doc_type");
    EXPECT_EQ(sent("gray-doc-type"), nothing);
    EXPECT_EQ(m_journal.setsOf("binarization").size(), 1U);
}

TEST_F(Apply, DiffusionHasNoThreshold)
{
    const Strings table{"Dynamic Threshold", "Fixed Processing", "Diffusion"};
    for (int i = 0; i < 3; ++i) {
        choose("binarization", i);
        bar("binarization_value").setValue(23);
        EXPECT_EQ(sent("binarization"), Strings{table[static_cast<std::size_t>(i)]});
        EXPECT_EQ(m_journal.setsOf("binarization-value"), i == 2 ? nothing : Strings{"23"});
    }
}

TEST_F(Apply, InvertIsSentAsItsIndex)
{
    for (int i = 0; i < 2; ++i) {
        choose("invert", i);
        EXPECT_EQ(sent("invert"), Strings{std::to_string(i)});
    }
}

TEST_F(Apply, FixedResolutionsAreSentAsShown)
{
    const Strings table{"75", "100", "150", "200", "300", "400", "600"};
    for (int i = 0; i < 7; ++i) {
        choose("resolution_gengel_slide", i);
        EXPECT_EQ(sent("resolution"), Strings{table[static_cast<std::size_t>(i)]});
    }
}

TEST_F(Apply, TheCustomResolutionIsSentAsItsNumber)
{
    for (const auto& [text, number] : {std::pair("custom-250", "250"),
                                       std::pair("custom-1200", "1200"), std::pair("250", "0")}) {
        combo("resolution_gengel_slide").removeItem(7);
        combo("resolution_gengel_slide").addItem(QString::fromLatin1(text));
        choose("resolution_gengel_slide", 7);
        EXPECT_EQ(sent("resolution"), Strings{number}) << text;
    }
}

TEST_F(Apply, OfficialDocumentModeIsTheColourRegister)
{
    for (const bool on : {true, false}) {
        check("redhead", on);
        EXPECT_EQ(sent("color-register"), Strings{on ? "1" : "0"});
    }
}

TEST_F(Apply, DetectionSettingsGoWithTheFrontBitAlone)
{
    choose("acd_nocolor_mode_front", 1);
    choose("acd_mode_front", 1);
    choose("acd_nocolor_mode_back", 0);
    choose("acd_mode_back", 1);
    bar("acd_sensitivity_front").setValue(33);
    bar("acd_sensitivity_back").setValue(44);
    const Strings names{"auto-color-front-noncolor-mode", "auto-color-front-sensitivity",
                        "auto-color-front-mode",          "auto-color-back-noncolor-mode",
                        "auto-color-back-sensitivity",    "auto-color-back-mode"};
    const Strings values{"Gray", "33", "Ignore Paper Color", "BW", "44", "Ignore Paper Color"};
    for (const int mask : {0, 4, 63, 64, 68, 128, 132, 192, 255}) {
        dialog().setMask(mask);
        apply();
        for (std::size_t i = 0; i < names.size(); ++i) {
            EXPECT_EQ(m_journal.setsOf(names[i]), (mask & 64) != 0 ? Strings{values[i]} : nothing)
                << mask << " " << names[i];
        }
    }
    choose("acd_nocolor_mode_front", 0);
    choose("acd_mode_front", 0);
    dialog().setMask(64);
    EXPECT_EQ(sent("auto-color-front-noncolor-mode"), (Strings{"BW"}));
    EXPECT_EQ(m_journal.setsOf("auto-color-front-mode"), (Strings{"Normal"}));
}

TEST_F(Apply, ColourDropout)
{
    const Strings table{"No color dropout", "Red", "Green", "Blue"};
    for (int i = 0; i < 4; ++i) {
        choose("color_dropout", i);
        check("adv_color_dropout", i % 2 == 1);
        EXPECT_EQ(sent("color-dropout"), Strings{table[static_cast<std::size_t>(i)]});
        EXPECT_EQ(m_journal.setsOf("adv-color-dropout"), Strings{i % 2 == 1 ? "1" : "0"});
    }
}

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

TEST_F(Apply, AutomaticOrientationNamesItsMode)
{
    const Strings rotations{"None", "90", "180", "270", "Auto Orientation"};
    const Strings modes{"Quick", "Full text", "Complexity"};
    for (int i = 0; i < 5; ++i) {
        choose("rotate", i);
        choose("auto_orientation_mode", i % 3);
        EXPECT_EQ(sent("rotate"), Strings{rotations[static_cast<std::size_t>(i)]});
        EXPECT_EQ(m_journal.setsOf("auto-orientation-mode"),
                  i == 4 ? Strings{modes[static_cast<std::size_t>(i % 3)]} : nothing);
    }
}

TEST_F(Apply, BookOrFanfold)
{
    check("rotation_book");
    EXPECT_EQ(sent("flip-side-rotation"), (Strings{"Book"}));
    check("rotation_fanfold");
    EXPECT_EQ(sent("flip-side-rotation"), (Strings{"Fanfold"}));
}

TEST_F(Apply, TheBlankPageThresholdGoesWithTheRemoval)
{
    bar("blankpage_threshold").setValue(61);
    for (const bool on : {true, false}) {
        check("remove_blankpage", on);
        EXPECT_EQ(sent("blank-page-removal"), Strings{on ? "1" : "0"});
        EXPECT_EQ(m_journal.setsOf("blank-page-threshold"), on ? Strings{"61"} : nothing);
    }
}

TEST_F(Apply, SplitAndPunchHoles)
{
    const Strings table{"None", "Horizontal", "Vertical"};
    for (int i = 0; i < 3; ++i) {
        choose("split_image", i);
        check("punch_hole_removal", i == 1);
        EXPECT_EQ(sent("split-image"), Strings{table[static_cast<std::size_t>(i)]});
        EXPECT_EQ(m_journal.setsOf("punch-hole-removal"), Strings{i == 1 ? "1" : "0"});
    }
}

TEST_F(Apply, BackgroundProcessingNamesTheSettingOfItsKind)
{
    bar("background_processing_sensitivity").setValue(7);
    choose("background_processing", 0);
    apply();
    EXPECT_EQ(m_journal.setsOf("background-processing"), (Strings{"None"}));
    EXPECT_EQ(m_journal.setsOf("background-processing-sensitivity"), nothing);
    EXPECT_EQ(m_journal.setsOf("background-processing-setting"), nothing);
    const Strings smooth{"Auto", "Moire"};
    const Strings removal{"White", "Auto"};
    for (int kind = 1; kind <= 2; ++kind) {
        choose("background_processing", kind);
        ASSERT_EQ(combo("background_processing_setting").count(), 2);
        for (int i = 0; i < 2; ++i) {
            choose("background_processing_setting", i);
            apply();
            EXPECT_EQ(m_journal.setsOf("background-processing"),
                      Strings{kind == 1 ? "Smooth" : "Removal"});
            EXPECT_EQ(m_journal.setsOf("background-processing-sensitivity"), (Strings{"7"}));
            EXPECT_EQ(m_journal.setsOf("background-processing-setting"),
                      Strings{(kind == 1 ? smooth : removal)[static_cast<std::size_t>(i)]});
        }
    }
}

TEST_F(Apply, DespeckleDetailsGoWithTheSwitch)
{
    spin("despeckle_dotsnumber").setValue(30);
    spin("despeckle_ratios").setValue(9);
    for (const bool on : {true, false}) {
        check("despeckle", on);
        EXPECT_EQ(sent("despeckle"), Strings{on ? "1" : "0"});
        EXPECT_EQ(m_journal.setsOf("despeckle-ratio"), on ? Strings{"9"} : nothing);
        EXPECT_EQ(m_journal.setsOf("despeckle-dotsnumber"), on ? Strings{"30"} : nothing);
    }
}

// Without a cache mode the page count is sent, though the image count is on show.
TEST_F(Apply, CacheModesSendTheirValues)
{
    bar("cachemode_image_num").setValue(90);
    bar("cachemode_page_num").setValue(17);
    bar("cachemode_value").setValue(123);
    for (const bool on : {true, false}) {
        check("cachemode_image_num_default", on);
        check("cachemode_use_default", !on);
        choose("cachemode", 0);
        EXPECT_EQ(sent("cachemode"), (Strings{"None"}));
        EXPECT_EQ(m_journal.setsOf("cachemode-value"), (Strings{"17"}));
        EXPECT_EQ(m_journal.setsOf("cachemode-use-default"), Strings{on ? "1" : "0"});
        choose("cachemode", 1);
        EXPECT_EQ(sent("cachemode"), (Strings{"Page Number"}));
        EXPECT_EQ(m_journal.setsOf("cachemode-value"), (Strings{"17"}));
        EXPECT_EQ(m_journal.setsOf("cachemode-use-default"), nothing);
        choose("cachemode", 2);
        EXPECT_EQ(sent("cachemode"), (Strings{"Memory Size"}));
        EXPECT_EQ(m_journal.setsOf("cachemode-value"), (Strings{"123"}));
        EXPECT_EQ(m_journal.setsOf("cachemode-use-default"), Strings{on ? "0" : "1"});
    }
}

TEST_F(Apply, EjectSideComesLast)
{
    for (const bool on : {true, false}) {
        check("eject_paper_opposite_side", on);
        EXPECT_EQ(sent("eject-paper-opposite-side"), Strings{on ? "1" : "0"});
        EXPECT_EQ(m_journal.sets().back(),
                  std::string("eject-paper-opposite-side=") + (on ? "1" : "0"));
    }
}

// What is looked up in a table by a combo without a current item is not sent.
TEST_F(Apply, CombosWithoutACurrentItemAreNotSent)
{
    dialog().setMask(64);
    for (const auto& [control, option] : {
             std::pair("gray_doc_type", "gray_doc_type"),
             std::pair("binarization", "binarization"),
             std::pair("color_dropout", "color-dropout"),
             std::pair("background_setting_combobox", "bg-color-setting"),
             std::pair("rotate", "rotate"),
             std::pair("split_image", "split-image"),
             std::pair("background_processing", "background-processing"),
             std::pair("cachemode", "cachemode"),
             std::pair("acd_nocolor_mode_front", "auto-color-front-noncolor-mode"),
             std::pair("acd_mode_front", "auto-color-front-mode"),
             std::pair("acd_nocolor_mode_back", "auto-color-back-noncolor-mode"),
             std::pair("acd_mode_back", "auto-color-back-mode"),
         }) {
        combo(control).setCurrentIndex(-1);
        EXPECT_EQ(sent(option), nothing) << control;
        EXPECT_TRUE(m_journal.wasSet("eject-paper-opposite-side")) << control;
    }
}

TEST_F(Apply, ABackgroundSettingWithoutACurrentItemIsNotSent)
{
    for (int kind = 1; kind <= 2; ++kind) {
        choose("background_processing", kind);
        combo("background_processing_setting").setCurrentIndex(-1);
        EXPECT_EQ(sent("background-processing-setting"), nothing);
        EXPECT_EQ(m_journal.setsOf("background-processing-sensitivity").size(), 1U);
    }
}

TEST_F(Apply, EmptiedCombosDoNoHarm)
{
    for (QComboBox* box : dialog().findChildren<QComboBox*>()) {
        box->clear();
    }
    apply();
    EXPECT_TRUE(m_journal.wasSet("eject-paper-opposite-side"));
    EXPECT_EQ(m_journal.setsOf("rotate"), nothing);
}

TEST_F(Apply, TheControlsCountAndNotTheFile)
{
    press(button("sure"));
    bar("brightness_set").setValue(81);
    EXPECT_EQ(sent("brightness"), (Strings{"81"}));
}

TEST_F(Apply, ItMayBeCalledAgainAndAgain)
{
    const Strings first = apply().sets();
    EXPECT_EQ(apply().sets(), first);
    EXPECT_EQ(apply().sets(), first);
}

TEST_F(Apply, FailedSetsDoNotStopTheSequence)
{
    const Strings whole = apply().sets();
    m_scanner.before(CallKind::Set, [](FakeScanner&) {});
    for (const std::string& name : m_scanner.names()) {
        m_scanner.failOption(CallKind::Set, name, SANE_STATUS_INVAL);
    }
    EXPECT_EQ(apply().sets(), whole);
}

TEST_F(Apply, EveryOptionMayBeMissing)
{
    const Strings whole = apply().sets();
    for (const std::string& entry : whole) {
        const std::string name = entry.substr(0, entry.find('='));
        FakeScanner scanner = fullScanner();
        scanner.remove(name);
        scanner.takeTexts();
        setDevice(dialog().host(), scanner.handle());
        dialog().setAllParam();
        Strings expected = whole;
        expected.erase(std::remove(expected.begin(), expected.end(), entry), expected.end());
        EXPECT_EQ(scanner.journal().sets(), expected) << name;
        setDevice(dialog().host(), m_scanner.handle());
    }
}

TEST_F(Apply, WithoutAScannerNothingIsSentAndNothingBreaks)
{
    dialog().sane_handle = nullptr;
    dialog().setMask(36);
    chooseText("source", feeder);
    apply();
    EXPECT_TRUE(m_journal.calls().empty());
}
