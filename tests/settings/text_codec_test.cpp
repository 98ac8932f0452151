#include "settings/text_codec.h"

#include <gtest/gtest.h>

#include <limits>

using namespace kestrel;

namespace {

struct RealRow
{
    double value;
    const char* text;
};

struct IntegerRow
{
    const char* text;
    int value;
};

struct MaskRow
{
    const char* text;
    int mask;
};

} // namespace

TEST(SettingTexts, RealsHaveSixSignificantDigits)
{
    for (const RealRow& row : {RealRow{8.5, "8.5"},
                               {210, "210"},
                               {0.1, "0.1"},
                               {215.9, "215.9"},
                               {0, "0"},
                               {-1.25, "-1.25"},
                               {123456.7, "123457"},
                               {1e6, "1e+06"},
                               {2.0 / 3, "0.666667"},
                               {0.00001, "1e-05"}}) {
        EXPECT_EQ(realText(row.value), QLatin1String(row.text));
    }
}

TEST(SettingTexts, IntegersAreDecimal)
{
    EXPECT_EQ(integerText(0), QLatin1String("0"));
    EXPECT_EQ(integerText(-1), QLatin1String("-1"));
    EXPECT_EQ(integerText(std::numeric_limits<int>::min()), QLatin1String("-2147483648"));
}

TEST(SettingTexts, TextThatIsNoIntegerGivesZero)
{
    for (const IntegerRow& row : {IntegerRow{"12", 12},
                                  {"-3", -3},
                                  {"0", 0},
                                  {"", 0},
                                  {"abc", 0},
                                  {"0x10", 0},
                                  {"1.5", 0},
                                  {"12a", 0},
                                  {"010", 10},
                                  {"2147483647", 2147483647},
                                  {"2147483648", 0}}) {
        EXPECT_EQ(parseInteger(QLatin1String(row.text)), row.value) << row.text;
    }
}

TEST(SettingTexts, ChecksAreOneAndZero)
{
    EXPECT_EQ(boolText(true), QLatin1String("1"));
    EXPECT_EQ(boolText(false), QLatin1String("0"));
    EXPECT_TRUE(parseBool(QStringLiteral("1")));
    for (const char* const text : {"0", "2", "-1", "true", "yes", "Enable", "1.0"}) {
        EXPECT_FALSE(parseBool(QLatin1String(text))) << text;
    }
}

TEST(SettingTexts, OnlyTheExactWordEnables)
{
    EXPECT_EQ(enableText(true), QLatin1String("Enable"));
    EXPECT_EQ(enableText(false), QLatin1String("Disable"));
    EXPECT_TRUE(parseEnable(QStringLiteral("Enable")));
    for (const char* const text : {"Disable", "enable", "ENABLE", "Enable ", "1", "Enabled"}) {
        EXPECT_FALSE(parseEnable(QLatin1String(text))) << text;
    }
}

TEST(SettingTexts, TopLeftIsReadInSinglePrecision)
{
    EXPECT_EQ(parseSingleReal(QStringLiteral("0.1")), static_cast<double>(0.1F));
    EXPECT_NE(parseSingleReal(QStringLiteral("0.1")), 0.1);
    EXPECT_EQ(parseReal(QStringLiteral("0.1")), 0.1);
    EXPECT_EQ(parseSingleReal(QStringLiteral("3 mm")), 0.0);
    EXPECT_EQ(parseReal(QStringLiteral("3,5")), 0.0);
}

TEST(SettingTexts, NotANumberIsZero)
{
    EXPECT_EQ(parseReal(QStringLiteral("nan")), 0.0);
    EXPECT_EQ(parseSingleReal(QStringLiteral("nan")), 0.0);
    EXPECT_EQ(parseTruncated(QStringLiteral("nan")), 0);
}

TEST(SettingTexts, WaitingTimeIsTruncatedTowardsZero)
{
    for (const IntegerRow& row : {IntegerRow{"12.9", 12},
                                  {"-2.9", -2},
                                  {"7", 7},
                                  {"x", 0},
                                  {"1e3", 1000},
                                  {"1e300", std::numeric_limits<int>::max()},
                                  {"-1e300", std::numeric_limits<int>::min()},
                                  {"inf", std::numeric_limits<int>::max()}}) {
        EXPECT_EQ(parseTruncated(QLatin1String(row.text)), row.value) << row.text;
    }
}

TEST(SettingTexts, MaskFallsBackToFrontColour)
{
    for (const MaskRow& row : {MaskRow{"1", 1},
                               {"4", 4},
                               {"63", 63},
                               {"64", 64},
                               {"255", 255},
                               {"0", 4},
                               {"abc", 4},
                               {"-1", 4},
                               {"65536", 4},
                               {"1.0", 4}}) {
        EXPECT_EQ(parseMask(QLatin1String(row.text)), row.mask) << row.text;
    }
}

TEST(SettingTexts, MaskKeepsItsLowByte)
{
    EXPECT_EQ(parseMask(QStringLiteral("260")), 4);
    EXPECT_EQ(parseMask(QStringLiteral("256")), 0);
    EXPECT_EQ(parseMask(QStringLiteral("65535")), 255);
}
