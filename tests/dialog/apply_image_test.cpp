// Applying the settings: the picture.
#include "apply_fixture.h"

using namespace kestrel::test;

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
