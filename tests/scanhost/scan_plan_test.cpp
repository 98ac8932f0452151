#include <scan_plan.h>

#include "support/models.h"

#include <gtest/gtest.h>

namespace {

using kestrel::imagesPerSide;
using kestrel::PaperSource;
using kestrel::planFor;
using kestrel::ScanAnswers;
using kestrel::ScannerDevice;
using kestrel::test::FakeOption;
using kestrel::test::FakeScanner;

class Plan : public testing::Test
{
protected:
    void SetUp() override { ASSERT_EQ(m_device.open({"plan:0", "", "", ""}), SANE_STATUS_GOOD); }

    FakeScanner m_scanner{"plan:0"};
    ScannerDevice m_device;
    ScanAnswers m_answers;
};

} // namespace

TEST(ImagesPerSide, OneForEachKindTwiceWhenSplit)
{
    EXPECT_EQ(imagesPerSide("", false), 1);
    EXPECT_EQ(imagesPerSide("No Multi-Stream", false), 1);
    EXPECT_EQ(imagesPerSide("No Multi-Stream", true), 2);
    EXPECT_EQ(imagesPerSide("Gray + BW", false), 2);
    EXPECT_EQ(imagesPerSide("Color + Gray + BW", false), 3);
    EXPECT_EQ(imagesPerSide("Color + Gray + BW", true), 6);
}

TEST_F(Plan, FeederRunsUntilItIsEmpty)
{
    m_answers.duplex = true;
    m_answers.split = true;
    EXPECT_EQ(planFor(m_device, m_answers).imageLimit, 0);
    m_answers.source = PaperSource::Automatic;
    EXPECT_EQ(planFor(m_device, m_answers).imageLimit, 0);
}

TEST_F(Plan, FlatbedEndsAfterItsImages)
{
    m_answers.source = PaperSource::Flatbed;
    EXPECT_EQ(planFor(m_device, m_answers).imageLimit, 1);
    m_answers.split = true;
    EXPECT_EQ(planFor(m_device, m_answers).imageLimit, 2);
    m_scanner.add(FakeOption::text("multistream-list", "Color + BW"));
    EXPECT_EQ(planFor(m_device, m_answers).imageLimit, 4);
}

TEST_F(Plan, SeveralOriginalsOnTheGlassAreCountedByTheScanner)
{
    m_answers.source = PaperSource::Flatbed;
    m_scanner.add(FakeOption::boolean("flatbed-multi-crop", true));
    EXPECT_EQ(planFor(m_device, m_answers).imageLimit, 0);
    m_scanner.option("flatbed-multi-crop").word(0);
    EXPECT_EQ(planFor(m_device, m_answers).imageLimit, 1);
}

TEST_F(Plan, SingleSheetCountsBothSides)
{
    m_answers.singleSheet = true;
    m_answers.duplex = true;
    EXPECT_EQ(planFor(m_device, m_answers).imageLimit, 2);
}

TEST_F(Plan, ScannersOwnResolutionCounts)
{
    m_answers.dpi = 333;
    EXPECT_EQ(planFor(m_device, m_answers).dpi, 333);
    m_scanner.add(FakeOption::integer("resolution", 300));
    EXPECT_EQ(planFor(m_device, m_answers).dpi, 300);
    m_scanner.option("resolution").word(0);
    EXPECT_EQ(planFor(m_device, m_answers).dpi, 333);
}

TEST_F(Plan, FixedPointResolutionIsRead)
{
    m_scanner.add(FakeOption::fixed("resolution", 150.0));
    EXPECT_EQ(planFor(m_device, m_answers).dpi, 150);
}

TEST_F(Plan, UnreadableOptionsDoNotCount)
{
    m_answers.dpi = 200;
    m_answers.source = PaperSource::Flatbed;
    m_scanner.add(FakeOption::integer("resolution", 300).inactive());
    m_scanner.add(FakeOption::integer("multistream-list", 3));
    EXPECT_EQ(planFor(m_device, m_answers).dpi, 200);
    EXPECT_EQ(planFor(m_device, m_answers).imageLimit, 1);
}

TEST_F(Plan, OddOptionListsDoNoHarm)
{
    m_scanner.add(FakeOption::integer("x", 1).unnamed());
    m_scanner.add(FakeOption::integer("y", 1).undescribed());
    m_scanner.add(FakeOption::text("text", "").size(0));
    m_scanner.add(FakeOption::text("huge", "").size(0x7fffffff));
    m_scanner.add(FakeOption::text("serial-number", "A1"));
    EXPECT_EQ(m_device.textOption("serial-number").value_or(""), "A1");
    EXPECT_FALSE(m_device.textOption("text").has_value());
    EXPECT_FALSE(m_device.textOption("huge").has_value());
    EXPECT_FALSE(m_device.textOption("y").has_value());
    for (const SANE_Word count : {0, 1, -5, 100'000}) {
        m_scanner.reportCount(count);
        EXPECT_EQ(m_device.textOption("serial-number").has_value(), count > 5) << count;
    }
    m_scanner.hideCount();
    EXPECT_FALSE(m_device.textOption("serial-number").has_value());
    m_device.close();
    EXPECT_FALSE(m_device.textOption("serial-number").has_value());
}

TEST(Summary, NamesWhatIsSet)
{
    ScanAnswers answers;
    answers.dpi = 300;
    answers.duplex = true;
    EXPECT_EQ(kestrel::summaryOf(answers), QStringLiteral("300 dpi · 文档进纸器 · 双面"));
    answers = {};
    answers.source = PaperSource::Flatbed;
    answers.split = true;
    answers.pauseSeconds = 15;
    EXPECT_EQ(kestrel::summaryOf(answers), QStringLiteral("平板 · 单面 · 拆分图像 · 间隔 15 秒"));
}
