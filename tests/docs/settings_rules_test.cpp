// docs/settings.md: the numbers in its rules are those of the library.
#include "dialog/dialog_fixture.h"
#include "docs/settings_notes.h"
#include "rules/bounds.h"
#include "rules/gamma.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QVariant>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

using namespace kestrel;
using namespace kestrel::test;

namespace {

// Entries of the list of sources, and bits of the images.
constexpr int kFeeder = 0;
constexpr int kFlatbed = 1;
constexpr int kAutomatic = 2;
constexpr int kFrontColour = 4;
constexpr int kBackColour = 32;
constexpr int kFrontDetection = 64;
constexpr int kDetection = 192;

class SettingsRules : public DialogTest
{
protected:
    SettingsRules() { bind(m_scanner); }

    void put(const char* name, int value)
    {
        QWidget& control = widget(name);
        const bool list = qobject_cast<const QComboBox*>(&control) != nullptr;
        control.setProperty(list ? "currentIndex" : "value", value);
    }

    /// Expects that a rule of a setting says this; the numbers in it come from the library.
    static void expectRule(const char* key, const std::string& words)
    {
        const auto& rules = noteOn(key).rules;
        EXPECT_TRUE(std::any_of(rules.begin(), rules.end(),
                                [&words](const auto& rule) {
                                    return std::string(rule).find(words) != std::string::npos;
                                }))
            << key << ": " << words;
    }

    /// @return "MIN to MAX and VALUE", as a number's control has them
    std::string limitsAndValue(const char* name) const
    {
        const auto number = [&control = widget(name)](const char* property) {
            return control.property(property).toString().toStdString();
        };
        return number("minimum") + " to " + number("maximum") + " and " + number("value");
    }

    FakeScanner m_scanner = fullScanner();
};

} // namespace

TEST_F(SettingsRules, TheThresholdHasTheLimitsThatAreNamed)
{
    // Apart from the panel around it, which the chosen images enable.
    const auto enabled = [this] {
        return widget("binarization_value")
            .isEnabledTo(widget("binarization_value_widget").parentWidget());
    };
    std::string words;
    for (const int entry : {1, 0}) {
        put("binarization", entry);
        words = limitsAndValue("binarization_value") + " for entry " + std::to_string(entry) +
                (words.empty() ? ". Entry 2 disables it." : ", ") + words;
        EXPECT_TRUE(enabled());
    }
    expectRule("binarization", words);
    put("binarization", 2);
    EXPECT_FALSE(enabled());
}

TEST_F(SettingsRules, TheNumberOfDotsRaisesTheSizeWhereItIsNamed)
{
    std::string words;
    int last = 0;
    for (int dots = 0; dots <= 1000; ++dots) {
        const int least = minimumDespeckleRatio(dots).value_or(0);
        if (least != last) {
            words += (words.empty() ? "to " : ", ") + std::to_string(least) + " from " +
                     std::to_string(dots) + (words.empty() ? " dots on" : "");
            last = least;
        }
    }
    expectRule("despeckle_ratios", words + ".");
}

TEST_F(SettingsRules, TheGammaTableFollowsTheFormulaThatIsNamed)
{
    expectRule("gamma", "a table of " + std::to_string(kGammaTableSize) +
                            " entries: 255 times (i / 255) to the power of 100 / gamma.");
    for (const int gamma : {kGammaSliderMin, 100, 220, kGammaSliderMax}) {
        std::array<int, kGammaTableSize> table{};
        setupGammaTable(table.data(), gammaExponent(gamma));
        for (std::size_t i = 0; i < table.size(); ++i) {
            EXPECT_NEAR(table[i], 255 * std::pow(static_cast<double>(i) / 255, 100.0 / gamma), 0.51)
                << gamma << ", " << i;
        }
    }
}

TEST_F(SettingsRules, ATypedGammaIsCutAsIsNamed)
{
    expectRule("gamma", "cut, not rounded, to hundredths: 1.15 becomes 1.14.");
    show();
    type(real("gamma_value"), QStringLiteral("1.15"));
    EXPECT_EQ(real("gamma_value").value(), 1.14);
    EXPECT_EQ(bar("gamma_set").value(), 114);
}

TEST_F(SettingsRules, TheAutomaticSourceKeepsTheLastImageOfTheFront)
{
    expectRule("multistream",
               "With the automatic source the last image of the front can't be unchecked");
    put("source", kAutomatic);
    press(button("rear_color"));
    press(button("front_color"));
    EXPECT_EQ(dialog().mask(), kFrontColour | kBackColour);
    // A front that has none, as the feeder allows, does not get one.
    put("source", kFeeder);
    press(button("front_color"));
    ASSERT_EQ(dialog().mask(), kBackColour);
    put("source", kAutomatic);
    EXPECT_EQ(dialog().mask(), kBackColour);
    EXPECT_FALSE(checked("front_color"));
}

TEST_F(SettingsRules, TheFlatbedDropsDetectionThoughItsButtonStaysChecked)
{
    expectRule("source", "It drops colour detection, too, though the button of the front stays "
                         "checked: switched anew, it counts.");
    put("source", kFeeder);
    press(button("color_detection_image_back"));
    press(button("color_detection_image_front"));
    ASSERT_EQ(dialog().mask() & kDetection, kDetection);
    put("source", kFlatbed);
    EXPECT_EQ(dialog().mask() & kDetection, 0);
    EXPECT_TRUE(checked("color_detection_image_front"));
    EXPECT_FALSE(checked("color_detection_image_back"));
    press(button("color_detection_image_front"));
    press(button("color_detection_image_front"));
    EXPECT_EQ(dialog().mask() & kDetection, kFrontDetection);
}

TEST_F(SettingsRules, LongPaperIsShownWithTheBackendThatIsNamed)
{
    expectRule("long_paper_scan", "Shown with the backend `kestrel_adv` alone, and hidden where "
                                  "the option is inactive.");
    const auto shown = [this](FakeScanner& scanner, const char* backend) {
        bind(scanner, "ScannerA", backend);
        return !widget("long_paper_scan").isHidden();
    };
    EXPECT_TRUE(shown(m_scanner, "kestrel_adv"));
    EXPECT_FALSE(shown(m_scanner, "avision_adv"));
    FakeScanner inactive = fullScanner();
    inactive.option("long-paper-scan").inactive();
    EXPECT_FALSE(shown(inactive, "kestrel_adv"));
    FakeScanner without = fullScanner();
    without.remove("long-paper-scan");
    EXPECT_TRUE(shown(without, "kestrel_adv"));
}

TEST_F(SettingsRules, PowerOffIsNeverBelowPowerSaving)
{
    expectRule("powersaving_time", "Raises the time until power off to its own value.");
    expectRule("poweroff_time", "Never below the time until power saving.");
    put("powersaving_time", 20);
    put("poweroff_time", 20);
    put("powersaving_time", 21);
    EXPECT_EQ(widget("poweroff_time").property("value").toDouble(), 21);
}
