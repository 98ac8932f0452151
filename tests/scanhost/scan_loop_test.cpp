#include <scan_loop.h>
#include <status_text.h>

#include "support/fake_scanner.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

namespace {

using kestrel::Page;
using kestrel::PageStore;
using kestrel::ScanEnd;
using kestrel::ScanEvents;
using kestrel::scanImages;
using kestrel::ScanPlan;
using kestrel::test::CallKind;
using kestrel::test::FakeFrame;
using kestrel::test::FakeScanner;

FakeFrame grayFrame(SANE_Byte level, int width = 4, int lines = 6)
{
    FakeFrame frame;
    frame.parameters.format = SANE_FRAME_GRAY;
    frame.parameters.last_frame = SANE_TRUE;
    frame.parameters.depth = 8;
    frame.parameters.pixels_per_line = width;
    frame.parameters.bytes_per_line = width;
    frame.parameters.lines = lines;
    frame.bytes.assign(static_cast<std::size_t>(width * lines), level);
    return frame;
}

class ScanLoop : public testing::Test
{
protected:
    ScanEnd scan(const ScanPlan& plan = {200, 0})
    {
        ScanEvents events;
        events.imageStarted = [this](int number) { m_started.push_back(number); };
        events.imageProgress = [this](int number, int permille) {
            m_progress.emplace_back(number, permille);
            if (m_stopAt > 0 && number == m_stopAt) {
                m_stop = true;
            }
        };
        events.pageReady = [this](const Page& page) { m_pages.push_back(page); };
        return scanImages(m_scanner.handle(), plan, m_store, m_stop, events);
    }

    int level(std::size_t page) const { return qGray(QImage(m_pages.at(page).file).pixel(0, 0)); }

    int calls(CallKind kind) const { return m_scanner.journal().count(kind); }

    FakeScanner m_scanner;
    QTemporaryDir m_dir;
    PageStore m_store{m_dir.path()};
    std::atomic<bool> m_stop{false};
    int m_stopAt = 0;
    std::vector<int> m_started;
    std::vector<std::pair<int, int>> m_progress;
    std::vector<Page> m_pages;
};

} // namespace

TEST_F(ScanLoop, ScansUntilTheStackIsUsedUpAndThatIsNoError)
{
    m_scanner.addFrame(grayFrame(10)).addFrame(grayFrame(20)).addFrame(grayFrame(30));
    const ScanEnd end = scan();
    EXPECT_EQ(end.kind, ScanEnd::Kind::Finished);
    EXPECT_EQ(end.images, 3);
    EXPECT_EQ(end.message, QString());
    EXPECT_EQ(m_started, (std::vector<int>{1, 2, 3}));
    ASSERT_EQ(m_pages.size(), 3u);
    EXPECT_EQ(level(0), 10);
    EXPECT_EQ(level(2), 30);
    EXPECT_EQ(m_pages[0].dpi, 200);
    EXPECT_EQ(calls(CallKind::Start), 4);
    EXPECT_EQ(calls(CallKind::Cancel), 1);
}

TEST_F(ScanLoop, NoPaperAtAllIsSaid)
{
    const ScanEnd end = scan();
    EXPECT_EQ(end.kind, ScanEnd::Kind::Failed);
    EXPECT_TRUE(end.message.contains(QStringLiteral("没有纸张")));
    EXPECT_FALSE(end.deviceLost);
    EXPECT_EQ(calls(CallKind::Cancel), 1);
}

TEST_F(ScanLoop, LimitEndsTheScanWithoutAskingForMore)
{
    m_scanner.addFrame(grayFrame(1)).addFrame(grayFrame(2)).addFrame(grayFrame(3));
    const ScanEnd end = scan({200, 2});
    EXPECT_EQ(end.kind, ScanEnd::Kind::Finished);
    EXPECT_EQ(end.images, 2);
    EXPECT_EQ(calls(CallKind::Start), 2);
    EXPECT_EQ(m_scanner.framesLeft(), 1);
}

TEST_F(ScanLoop, FewerImagesThanTheLimitAreAllRight)
{
    m_scanner.addFrame(grayFrame(1));
    const ScanEnd end = scan({200, 4});
    EXPECT_EQ(end.kind, ScanEnd::Kind::Finished);
    EXPECT_EQ(end.images, 1);
}

TEST_F(ScanLoop, EveryStatusAtTheStartIsSaidInItsWords)
{
    for (const SANE_Status status :
         {SANE_STATUS_UNSUPPORTED, SANE_STATUS_DEVICE_BUSY, SANE_STATUS_INVAL, SANE_STATUS_JAMMED,
          SANE_STATUS_COVER_OPEN, SANE_STATUS_IO_ERROR, SANE_STATUS_NO_MEM,
          SANE_STATUS_ACCESS_DENIED, static_cast<SANE_Status>(15)}) {
        m_scanner.failNth(CallKind::Start, 1, status);
        const ScanEnd end = scan();
        EXPECT_EQ(end.kind, ScanEnd::Kind::Failed) << status;
        EXPECT_EQ(end.message, kestrel::statusText(status)) << status;
        EXPECT_EQ(end.deviceLost, status == SANE_STATUS_IO_ERROR || status == SANE_STATUS_INVAL);
        m_scanner.mend();
    }
}

TEST_F(ScanLoop, PagesBeforeAJamAreKept)
{
    m_scanner.addFrame(grayFrame(1)).addFrame(grayFrame(2));
    FakeFrame jammed = grayFrame(3);
    jammed.bytes.resize(7);
    jammed.end = SANE_STATUS_JAMMED;
    m_scanner.addFrame(jammed);
    const ScanEnd end = scan();
    EXPECT_EQ(end.kind, ScanEnd::Kind::Failed);
    EXPECT_EQ(end.images, 2);
    EXPECT_EQ(m_pages.size(), 2u);
    EXPECT_EQ(end.message, kestrel::statusText(SANE_STATUS_JAMMED));
    EXPECT_EQ(calls(CallKind::Cancel), 1);
}

TEST_F(ScanLoop, ScannersOwnStopButtonIsNoFailure)
{
    FakeFrame stopped = grayFrame(3);
    stopped.end = SANE_STATUS_CANCELLED;
    m_scanner.addFrame(grayFrame(1)).addFrame(stopped);
    const ScanEnd end = scan();
    EXPECT_EQ(end.kind, ScanEnd::Kind::Cancelled);
    EXPECT_EQ(end.images, 1);
}

TEST_F(ScanLoop, StopIsHeardWithinAPage)
{
    FakeFrame slow = grayFrame(2, 100, 100);
    slow.chunks = {100};
    m_scanner.addFrame(grayFrame(1)).addFrame(slow).addFrame(grayFrame(3));
    m_stopAt = 2;
    const ScanEnd end = scan();
    EXPECT_EQ(end.kind, ScanEnd::Kind::Cancelled);
    EXPECT_EQ(end.images, 1);
    EXPECT_EQ(m_pages.size(), 1u);
    EXPECT_EQ(calls(CallKind::Cancel), 1);
    EXPECT_EQ(m_progress.back().first, 2);
}

TEST_F(ScanLoop, StopBeforeTheStartScansNothing)
{
    m_scanner.addFrame(grayFrame(1));
    m_stop = true;
    EXPECT_EQ(scan().kind, ScanEnd::Kind::Cancelled);
    EXPECT_EQ(calls(CallKind::Start), 0);
}

TEST_F(ScanLoop, ProgressReachesTheEndOfEachPage)
{
    FakeFrame frame = grayFrame(1, 10, 10);
    frame.chunks = {30};
    m_scanner.addFrame(frame);
    scan();
    EXPECT_EQ(m_progress,
              (std::vector<std::pair<int, int>>{{1, 300}, {1, 600}, {1, 900}, {1, 1000}}));
}

TEST_F(ScanLoop, UnknownLengthIsReportedOnce)
{
    FakeFrame frame = grayFrame(1, 10, 10);
    frame.parameters.lines = -1;
    frame.chunks = {30};
    m_scanner.addFrame(frame);
    const ScanEnd end = scan();
    EXPECT_EQ(end.images, 1);
    EXPECT_EQ(m_pages.at(0).pixels, QSize(10, 10));
    EXPECT_EQ(m_progress, (std::vector<std::pair<int, int>>{{1, -1}}));
}

TEST_F(ScanLoop, SeparateColourFramesAreRefusedInWords)
{
    FakeFrame red = grayFrame(1);
    red.parameters.format = SANE_FRAME_RED;
    red.parameters.last_frame = SANE_FALSE;
    m_scanner.addFrame(red);
    const ScanEnd end = scan();
    EXPECT_EQ(end.kind, ScanEnd::Kind::Failed);
    EXPECT_TRUE(end.message.contains(QStringLiteral("红、绿、蓝")));
    EXPECT_EQ(calls(CallKind::Cancel), 1);
}

TEST_F(ScanLoop, EmptyImageIsAFailureInWords)
{
    FakeFrame empty = grayFrame(1);
    empty.bytes.clear();
    m_scanner.addFrame(empty);
    const ScanEnd end = scan();
    EXPECT_EQ(end.kind, ScanEnd::Kind::Failed);
    EXPECT_TRUE(end.message.contains(QStringLiteral("没有送来图像数据")));
}

TEST_F(ScanLoop, ParametersThatCannotBeReadEndTheScan)
{
    FakeFrame frame = grayFrame(1);
    frame.parametersStatus = SANE_STATUS_IO_ERROR;
    m_scanner.addFrame(frame);
    const ScanEnd end = scan();
    EXPECT_EQ(end.kind, ScanEnd::Kind::Failed);
    EXPECT_TRUE(end.deviceLost);
    EXPECT_EQ(calls(CallKind::Cancel), 1);
}

TEST_F(ScanLoop, FullDiskIsAFailureInWords)
{
    QFile file(m_dir.filePath("file"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    PageStore nowhere(m_dir.filePath("file/below"));
    m_scanner.addFrame(grayFrame(1));
    const ScanEnd end = scanImages(m_scanner.handle(), {}, nowhere, m_stop, {});
    EXPECT_EQ(end.kind, ScanEnd::Kind::Failed);
    EXPECT_FALSE(end.message.isEmpty());
    EXPECT_EQ(end.images, 0);
}

TEST_F(ScanLoop, DifferentKindsOfImagesMayFollowEachOther)
{
    FakeFrame colour = grayFrame(0, 2, 2);
    colour.parameters.format = SANE_FRAME_RGB;
    colour.parameters.bytes_per_line = 6;
    colour.bytes.assign(12, 77);
    FakeFrame bilevel = grayFrame(0, 9, 2);
    bilevel.parameters.depth = 1;
    bilevel.parameters.bytes_per_line = 2;
    bilevel.bytes.assign(4, 0xff);
    m_scanner.addFrame(colour).addFrame(grayFrame(50)).addFrame(bilevel);
    EXPECT_EQ(scan().images, 3);
    EXPECT_EQ(QImage(m_pages.at(0).file).pixel(1, 1), qRgb(77, 77, 77));
    EXPECT_EQ(level(1), 50);
    EXPECT_EQ(QImage(m_pages.at(2).file).depth(), 1);
    EXPECT_EQ(level(2), 0);
}
