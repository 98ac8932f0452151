// docs/settings.md: the numbers in its rules are those of the library.
#include "dialog/dialog_fixture.h"
#include "docs/settings_notes.h"
#include "rules/bounds.h"
#include "rules/gamma.h"

#include <QComboBox>
#include <QVariant>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

using namespace kestrel;
using namespace kestrel::test;

namespace {

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

TEST_F(SettingsRules, PowerOffIsNeverBelowPowerSaving)
{
    expectRule("powersaving_time", "Raises the time until power off to its own value.");
    expectRule("poweroff_time", "Never below the time until power saving.");
    put("powersaving_time", 20);
    put("poweroff_time", 20);
    put("powersaving_time", 21);
    EXPECT_EQ(widget("poweroff_time").property("value").toDouble(), 21);
}
