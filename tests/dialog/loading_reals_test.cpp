// Lengths, times and the gamma as they come from the file.
#include "config_loading.h"

#include <array>
#include <cmath>

using namespace kestrel;
using namespace kestrel::test;

namespace {

using LoadingReals = LoadingValues;

} // namespace

TEST_F(LoadingReals, WaitingTimesAreTruncated)
{
    for (const auto& [text, value] :
         {std::pair("7.99", "7"), std::pair("7", "7"), std::pair("1e2", "100"),
          std::pair("0.99", "0"), std::pair("-0.5", "0"), std::pair("abc", "0"),
          std::pair("1e300", "120"), std::pair("-1e300", "0"), std::pair("nan", "0"),
          std::pair("inf", "120"), std::pair("-inf", "0")}) {
        put(get<QWidget>("waitingjob_time"), QStringLiteral("55"));
        load("waitingjob_time", text);
        EXPECT_EQ(shown(get<QWidget>("waitingjob_time")), QLatin1String(value)) << text;
        EXPECT_EQ(shown(get<QWidget>("waitingjob_value")), QLatin1String(value)) << text;
    }
}

TEST_F(LoadingReals, RealsAreHeldInTheControlsRange)
{
    struct Row
    {
        const char* key;
        const char* control;
        double lowest;
        double highest;
    };
    for (const Row& row :
         {Row{"crop_adjust_top", "crop_adjust_top", -15.0, 15.0},
          Row{"crop_adjust_bottom", "crop_adjust_bottom", -15.0, 15.0},
          Row{"crop_adjust_left", "crop_adjust_left", -15.0, 15.0},
          Row{"crop_adjust_right", "crop_adjust_right", -15.0, 15.0},
          Row{"prefeed_time", "prefeed_time", 0.0, 5.0},
          // What is left of the sheet below A4.
          Row{"additional_length_detection_length", "length_detection_value", 0.0, 58.6},
          Row{"br_x", "br_x", 0.0, 215.9}, Row{"br_y", "br_y", 0.0, 355.6},
          Row{"tl_x", "tl_x", 0.0, 5.9}, Row{"tl_y", "tl_y", 0.0, 58.6}}) {
        const auto expect = [&](const char* text, double value) {
            loadDefaults();
            load(row.key, text);
            EXPECT_NEAR(get<QDoubleSpinBox>(row.control).value(), value, 1e-9)
                << row.key << ' ' << text;
        };
        const double two = std::min(2.5, row.highest);
        expect("2.5", two);
        expect("2.5e0", two);
        expect("99999", row.highest);
        expect("1e999", row.highest);
        expect("inf", row.highest);
        expect("-99999", row.lowest);
        expect("-inf", row.lowest);
        expect("nan", 0.0);
        expect("abc", 0.0);
        expect("2,5", 0.0);
        expect("0x2", 0.0);
    }
}

TEST_F(LoadingReals, OffsetsAreReadInSinglePrecision)
{
    // In double precision the box would round this up; the nearest single number lies below.
    const char* const text = "3.0500000001";
    ASSERT_LT(static_cast<double>(std::strtof(text, nullptr)), 3.05);
    for (const auto& [key, value] : {std::pair("tl_x", 3.0), std::pair("tl_y", 3.0)}) {
        loadDefaults();
        load(key, text);
        EXPECT_NEAR(get<QDoubleSpinBox>(key).value(), value, 1e-9) << key;
    }
    loadDefaults();
    load("crop_adjust_top", text);
    EXPECT_NEAR(get<QDoubleSpinBox>("crop_adjust_top").value(), 3.1, 1e-9);
}

TEST_F(LoadingReals, TheGammaTableFollowsTheStoredNumber)
{
    const auto table = [](double gamma) {
        const auto exponent = static_cast<double>(static_cast<float>(1.0 / gamma));
        std::array<int, 256> entries{};
        for (std::size_t i = 1; i < entries.size(); ++i) {
            entries[i] = static_cast<int>(std::lround(
                255.0 * (std::pow(static_cast<double>(i), exponent) / std::pow(255.0, exponent))));
        }
        return entries;
    };
    struct Row
    {
        const char* text;
        int slider;
        double gamma;
    };
    for (const Row& row :
         {Row{"100", 100, 1.0}, Row{"220", 220, 2.2}, Row{"30", 30, 0.3}, Row{"300", 300, 3.0},
          Row{"115", 115, 1.15},
          // Beyond the slider's range the table still follows.
          Row{"29", 30, 0.29}, Row{"1", 30, 0.01}, Row{"301", 300, 3.01}, Row{"1000", 300, 10.0}}) {
        loadDefaults();
        load("gamma", row.text);
        EXPECT_EQ(get<QAbstractSlider>("gamma_set").value(), row.slider) << row.text;
        EXPECT_EQ(dialog().gamma_table, table(row.gamma)) << row.text;
    }
    load("gamma", "100");
    for (int i = 0; i < 256; ++i) {
        ASSERT_EQ(dialog().gamma_table.at(static_cast<std::size_t>(i)), i);
    }
    load("gamma", "220");
    EXPECT_EQ(dialog().gamma_table[128],
              static_cast<int>(std::lround(255.0 * std::pow(128.0 / 255.0, 1.0 / 2.2))));
    EXPECT_EQ(get<QDoubleSpinBox>("gamma_value").value(), 2.2);
}

TEST_F(LoadingReals, AGammaOfZeroOrLessChangesNothing)
{
    load("gamma", "150");
    const QStringList before = state();
    for (const char* const text : {"0", "-1", "-220", "abc", "1.5", "-2147483648"}) {
        load("gamma", text);
        expectState(before, text);
    }
}
