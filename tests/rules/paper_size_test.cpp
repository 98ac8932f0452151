#include "rules/paper_size.h"

#include <gtest/gtest.h>

using namespace kestrel;

namespace {

using Areas = std::vector<ScanArea>;

struct Expected
{
    const char* text;
    double shortMm;
    double longMm;
};

constexpr Expected kExpected[] = {
    {"\xE8\x87\xAA\xE5\xAE\x9A\xE4\xB9\x89\xE5\xB0\xBA\xE5\xAF\xB8", 0.0, 0.0},
    {"US Legal - 8.5 x 14 \xE8\x8B\xB1\xE5\xAF\xB8", 215.9, 279.4},
    {"US Letter - 8.5 x 11 \xE8\x8B\xB1\xE5\xAF\xB8", 215.9, 355.6},
    {"ISO A3 - 29.7 x 42.0 \xE5\x8E\x98\xE7\xB1\xB3", 297.0, 420.0},
    {"ISO A4 - 21.0 x 29.7 \xE5\x8E\x98\xE7\xB1\xB3", 210.0, 297.0},
    {"ISO A5 - 14.8 x 21.0 \xE5\x8E\x98\xE7\xB1\xB3", 148.0, 210.0},
    {"ISO A6 - 10.5 x 14.8 \xE5\x8E\x98\xE7\xB1\xB3", 105.0, 148.0},
    {"JIS B4 - 25.7 x 36.4 \xE5\x8E\x98\xE7\xB1\xB3", 257.0, 364.0},
    {"JIS B5 - 18.2 x 25.7 \xE5\x8E\x98\xE7\xB1\xB3", 182.0, 257.0},
    {"\xE6\x9C\x80\xE5\xA4\xA7\xE6\x89\xAB\xE6\x8F\x8F\xE8\x8C\x83\xE5\x9B\xB4", 0.0, 0.0},
};

} // namespace

TEST(PaperSizes, EveryRowHoldsItsTextToTheByteAndItsSize)
{
    ASSERT_EQ(scanarea.size(), std::size(kExpected));
    for (int row = 0; row < kScanAreaCount; ++row) {
        const auto area = static_cast<ScanArea>(row);
        EXPECT_EQ(paperSize(area).area, area);
        EXPECT_STREQ(paperSize(area).text, kExpected[row].text);
        EXPECT_EQ(paperSize(area).shortMm, kExpected[row].shortMm) << row;
        EXPECT_EQ(paperSize(area).longMm, kExpected[row].longMm) << row;
    }
}

TEST(PaperSizes, LegalAndLetterArePairedTheOtherWayRound)
{
    EXPECT_EQ(paperSize(ScanArea::UsLegal).longMm, 279.4);
    EXPECT_EQ(paperSize(ScanArea::UsLetter).longMm, 355.6);
}

TEST(PaperSizes, AreFoundByExactTextOnly)
{
    for (int row = 0; row < kScanAreaCount; ++row) {
        const auto area = static_cast<ScanArea>(row);
        EXPECT_EQ(scanAreaFromText(scanAreaText(area)), area);
    }
    EXPECT_EQ(scanAreaFromText(QString()), std::nullopt);
    EXPECT_EQ(scanAreaFromText(QStringLiteral("iso a4 - 21.0 x 29.7 厘米")), std::nullopt);
    EXPECT_EQ(scanAreaFromText(QStringLiteral("ISO A4 - 21.0 x 29.7 厘米 ")), std::nullopt);
    EXPECT_EQ(scanAreaFromText(QStringLiteral("ISO A4")), std::nullopt);
}

TEST(PaperSizes, LargePapersNeedMoreRoomThanTheyTake)
{
    struct Row
    {
        ScanArea area;
        double width;
        double height;
    };
    constexpr Row rows[] = {{ScanArea::UsLetter, 215.9, 355.6},
                            {ScanArea::IsoA3, 297.0, 420.0},
                            {ScanArea::JisB4, 257.0, 364.0}};
    for (const Row& row : rows) {
        EXPECT_FALSE(admits(row.area, row.width, row.height));
        EXPECT_FALSE(admits(row.area, row.width + 0.1, row.height));
        EXPECT_FALSE(admits(row.area, row.width, row.height + 0.1));
        EXPECT_TRUE(admits(row.area, row.width + 0.1, row.height + 0.1));
    }
}

TEST(PaperSizes, OtherPapersAreListedByEveryScanner)
{
    for (const ScanArea area :
         {ScanArea::Custom, ScanArea::UsLegal, ScanArea::IsoA4, ScanArea::IsoA5, ScanArea::IsoA6,
          ScanArea::JisB5, ScanArea::Maximum}) {
        EXPECT_TRUE(admits(area, 0.0, 0.0));
        EXPECT_TRUE(admits(area, 1000.0, 1000.0));
    }
}

TEST(PaperSizes, ListsOfSomeScanners)
{
    using A = ScanArea;
    const Areas smallest{A::Custom, A::UsLegal, A::IsoA4, A::IsoA5, A::IsoA6, A::JisB5, A::Maximum};
    EXPECT_EQ(admittedAreas(0.0, 0.0), smallest);
    EXPECT_EQ(admittedAreas(215.9, 355.6), smallest);
    EXPECT_EQ(admittedAreas(216.0, 356.0), (Areas{A::Custom, A::UsLegal, A::UsLetter, A::IsoA4,
                                                  A::IsoA5, A::IsoA6, A::JisB5, A::Maximum}));
    EXPECT_EQ(admittedAreas(297.0, 420.0),
              (Areas{A::Custom, A::UsLegal, A::UsLetter, A::IsoA4, A::IsoA5, A::IsoA6, A::JisB4,
                     A::JisB5, A::Maximum}));
    EXPECT_EQ(admittedAreas(304.8, 431.8).size(), 10U);
}

TEST(PaperSizes, PreviewRulesRowByRow)
{
    constexpr PreviewRule expected[] = {PreviewRule::CustomPortrait, PreviewRule::Untouched,
                                        PreviewRule::Untouched,      PreviewRule::A3,
                                        PreviewRule::Turnable,       PreviewRule::Turnable,
                                        PreviewRule::Turnable,       PreviewRule::Untouched,
                                        PreviewRule::Untouched,      PreviewRule::Maximum};
    for (int row = 0; row < kScanAreaCount; ++row) {
        EXPECT_EQ(paperSize(static_cast<ScanArea>(row)).preview, expected[row]) << row;
    }
}
