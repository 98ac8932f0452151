// Applying the settings where something is missing.
#include "apply_fixture.h"

using namespace kestrel::test;

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

// The stand-in keeps 64 bytes of a text: the last of them has to be its terminator.
TEST_F(Apply, ACustomResolutionOfAnyLengthIsCutToWhatAValueHolds)
{
    auto& resolutions = combo("resolution_gengel_slide");
    for (const int length : {62, 63, 64, 65, 300}) {
        resolutions.removeItem(7);
        resolutions.addItem(QStringLiteral("custom-") + QString(length, QLatin1Char('4')));
        choose("resolution_gengel_slide", 7);
        const std::string expected(static_cast<std::size_t>(std::min(length, 63)), '4');
        EXPECT_EQ(sent("resolution"), Strings{expected}) << length;
    }
}
