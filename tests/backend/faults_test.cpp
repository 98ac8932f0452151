// Everything that can be made to go wrong does, exactly as configured.
#include "backend/sim_env.h"

#include <thread>

#include <gtest/gtest.h>

using kestrel::test::SimImage;
using kestrel::test::SimSession;

namespace {

const std::string small = "[sim]\nstack = 5\n";

SimSession& prepared(SimSession& session)
{
    EXPECT_EQ(session.set("resolution", "72"), SANE_STATUS_GOOD);
    return session;
}

/// The first image of a scanner without faults. libsane knows one session at a time.
SimImage scanFaultless()
{
    SimSession session(small);
    return prepared(session).scan();
}

} // namespace

TEST(SimFaults, AStartCanFailInEveryWay)
{
    for (const auto& [name, status] : {std::pair{"jammed", SANE_STATUS_JAMMED},
                                       {"cover-open", SANE_STATUS_COVER_OPEN},
                                       {"no-docs", SANE_STATUS_NO_DOCS},
                                       {"busy", SANE_STATUS_DEVICE_BUSY},
                                       {"io-error", SANE_STATUS_IO_ERROR},
                                       {"no-mem", SANE_STATUS_NO_MEM},
                                       {"access-denied", SANE_STATUS_ACCESS_DENIED},
                                       {"inval", SANE_STATUS_INVAL},
                                       {"unsupported", SANE_STATUS_UNSUPPORTED},
                                       {"cancelled", SANE_STATUS_CANCELLED}}) {
        SimSession session(small + "fault = start 2 " + name + "\n");
        prepared(session);
        EXPECT_EQ(session.scan().started, SANE_STATUS_GOOD);
        EXPECT_EQ(session.scan().started, status) << name;
        EXPECT_EQ(session.journal().back(), std::string("start ") + name);
        EXPECT_EQ(session.scan().started, SANE_STATUS_GOOD) << "the fault is over";
    }
}

TEST(SimFaults, AStarMeansEveryStart)
{
    SimSession session(small + "fault = start * cover-open\n");
    prepared(session);
    EXPECT_EQ(session.scan().started, SANE_STATUS_COVER_OPEN);
    EXPECT_EQ(session.scan().started, SANE_STATUS_COVER_OPEN);
}

TEST(SimFaults, AReadFailsAfterSoManyBytes)
{
    for (const int bytes : {0, 1, 5000, 100000}) {
        SimSession session(small + "fault = read 1 " + std::to_string(bytes) + " io-error\n");
        const SimImage image = prepared(session).scan(4096);
        EXPECT_EQ(image.ended, SANE_STATUS_IO_ERROR);
        EXPECT_EQ(image.bytes.size(), static_cast<std::size_t>(bytes));
        SANE_Byte byte = 0;
        SANE_Int length = 0;
        EXPECT_EQ(sane_read(session.handle(), &byte, 1, &length), SANE_STATUS_IO_ERROR);
        sane_cancel(session.handle());
        EXPECT_EQ(session.scan().ended, SANE_STATUS_EOF) << "the next image is whole";
    }
}

TEST(SimFaults, ADeviceVanishesInMidScan)
{
    SimSession session(small + "fault = vanish 1 5000\n");
    const SimImage image = prepared(session).scan();
    EXPECT_EQ(image.bytes.size(), 5000U);
    EXPECT_EQ(image.ended, SANE_STATUS_IO_ERROR);
    SANE_Parameters parameters{};
    SANE_Word count = 0;
    EXPECT_EQ(sane_start(session.handle()), SANE_STATUS_IO_ERROR);
    EXPECT_EQ(sane_get_parameters(session.handle(), &parameters), SANE_STATUS_IO_ERROR);
    EXPECT_EQ(sane_control_option(session.handle(), 0, SANE_ACTION_GET_VALUE, &count, nullptr),
              SANE_STATUS_IO_ERROR);
    const SANE_Device** list = nullptr;
    ASSERT_EQ(sane_get_devices(&list, SANE_TRUE), SANE_STATUS_GOOD);
    for (; *list != nullptr; ++list) {
        EXPECT_STRNE((*list)->name, "kestrel_adv:sim");
    }
    SANE_Handle again = nullptr;
    EXPECT_EQ(sane_open("kestrel_adv:sim", &again), SANE_STATUS_IO_ERROR);
}

TEST(SimFaults, OpeningCanFail)
{
    try {
        const SimSession session("[sim]\nfault = open busy\n");
        FAIL() << "it opened";
    } catch (const std::runtime_error& error) {
        EXPECT_NE(std::string(error.what()).find(sane_strstatus(SANE_STATUS_DEVICE_BUSY)),
                  std::string::npos);
    }
}

TEST(SimFaults, ShortReadsGiveTheSameImage)
{
    const SimImage expected = scanFaultless();
    SimSession session(small + "short-reads = 997\nreload = cancel\n");
    prepared(session);
    ASSERT_EQ(sane_start(session.handle()), SANE_STATUS_GOOD);
    std::array<SANE_Byte, 32768> buffer{};
    SANE_Int length = 0;
    ASSERT_EQ(sane_read(session.handle(), buffer.data(), 32768, &length), SANE_STATUS_GOOD);
    EXPECT_EQ(length, 997);
    sane_cancel(session.handle());
    EXPECT_EQ(session.scan().bytes, expected.bytes);
}

TEST(SimFaults, PaddedLinesHoldTheSamePixels)
{
    const SimImage expected = scanFaultless();
    SimSession session(small + "pad-lines = 13\n");
    const SimImage padded = prepared(session).scan();
    EXPECT_EQ(padded.parameters.pixels_per_line, expected.parameters.pixels_per_line);
    EXPECT_EQ(padded.parameters.bytes_per_line, expected.parameters.bytes_per_line + 13);
    EXPECT_EQ(padded.rows(), expected.rows());
    EXPECT_EQ(padded.at(0.7, 0.6), expected.at(0.7, 0.6));
}

TEST(SimFaults, TheNumberOfLinesCanBeUnknown)
{
    SimSession session(small + "unknown-lines = yes\n");
    const SimImage image = prepared(session).scan();
    EXPECT_EQ(image.parameters.lines, -1);
    EXPECT_EQ(image.rows(), 1009);
    EXPECT_EQ(image.ended, SANE_STATUS_EOF);
}

TEST(SimFaults, GrayFramesComeInsteadOfColor)
{
    SimSession session(small + "gray-for-color = yes\n");
    ASSERT_EQ(session.text("mode"), "Color");
    const SimImage image = prepared(session).scan();
    EXPECT_EQ(image.parameters.format, SANE_FRAME_GRAY);
    EXPECT_EQ(image.parameters.depth, 8);
    EXPECT_EQ(image.bytes.size(),
              static_cast<std::size_t>(image.parameters.pixels_per_line * image.parameters.lines));
}

TEST(SimFaults, SlowReadsDeliverTheSame)
{
    const SimImage expected = scanFaultless();
    SimSession session(small + "read-delay-ms = 1\n");
    EXPECT_EQ(prepared(session).scan(1000000).bytes, expected.bytes);
}

TEST(SimFaults, ASlowReadEndsWhenAnotherThreadCancels)
{
    SimSession session(small + "read-delay-ms = 1000000000\n");
    prepared(session);
    ASSERT_EQ(sane_start(session.handle()), SANE_STATUS_GOOD);
    SANE_Status status = SANE_STATUS_GOOD;
    std::thread reader([&session, &status] {
        SANE_Byte byte = 0;
        SANE_Int length = 0;
        status = sane_read(session.handle(), &byte, 1, &length);
    });
    sane_cancel(session.handle());
    reader.join();
    EXPECT_EQ(status, SANE_STATUS_CANCELLED);
    EXPECT_EQ(session.set("brightness", "1"), SANE_STATUS_GOOD) << "the scanner is free again";
}

TEST(SimFaults, OptionsCanBeMissing)
{
    SimSession session(small + "option.mode.missing = yes\noption.br-y.missing = yes\n");
    EXPECT_EQ(session.find("mode"), 0);
    EXPECT_EQ(session.find("br-y"), 0);
    EXPECT_NE(session.find("br-x"), 0);
    EXPECT_EQ(prepared(session).scan().parameters.format, SANE_FRAME_RGB);
}

TEST(SimFaults, OptionsCanBeInactiveForGood)
{
    SimSession session(small +
                       "option.despeckle-ratio.inactive = yes\noption.prefeed.inactive = yes\n");
    EXPECT_FALSE(session.isActive("prefeed"));
    session.set("despeckle", "1");
    EXPECT_FALSE(session.isActive("despeckle-ratio"));
    EXPECT_TRUE(session.isActive("despeckle-dotsnumber"));
}

TEST(SimFaults, ConstraintsCanBeOdd)
{
    const SimSession session("[sim]\n"
                             "option.brightness.constraint = none\n"
                             "option.contrast.constraint = words\n"
                             "option.resolution.constraint = words 100 200\n"
                             "option.br-x.constraint = range 10 5 0\n"
                             "option.source.constraint = texts\n"
                             "option.mode.constraint = texts Color|Infra Red\n");
    EXPECT_EQ(session.describe("brightness").constraint_type, SANE_CONSTRAINT_NONE);
    EXPECT_EQ(session.describe("contrast").constraint.word_list[0], 0);
    EXPECT_EQ(session.describe("resolution").constraint.word_list[2], 200);
    EXPECT_EQ(session.describe("br-x").constraint.range->max, SANE_FIX(5));
    EXPECT_EQ(session.describe("source").constraint.string_list[0], nullptr);
    EXPECT_STREQ(session.describe("mode").constraint.string_list[1], "Infra Red");
}

TEST(SimFaults, DescriptionsCanBeNullOrUnnamed)
{
    const SimSession session("[sim]\noption.source.null = yes\noption.mode.unnamed = yes\n");
    // The group comes first, then these two.
    EXPECT_EQ(sane_get_option_descriptor(session.handle(), 2), nullptr);
    ASSERT_NE(sane_get_option_descriptor(session.handle(), 3), nullptr);
    EXPECT_EQ(sane_get_option_descriptor(session.handle(), 3)->name, nullptr);
}

TEST(SimFaults, TheOptionCountCanBeWrong)
{
    for (const int count : {0, 1, 5, 100000}) {
        const SimSession session("[sim]\noption-count = " + std::to_string(count) + "\n");
        SANE_Int answered = -1;
        sane_control_option(session.handle(), 0, SANE_ACTION_GET_VALUE, &answered, nullptr);
        EXPECT_EQ(answered, count);
        EXPECT_EQ(sane_get_option_descriptor(session.handle(), 90000), nullptr);
    }
}

TEST(SimFaults, ReadsAndSetsOfAnOptionCanFail)
{
    SimSession session(
        "[sim]\noption.contrast.read-status = io-error\noption.mode.set-status = busy\n");
    SANE_Word word = 42;
    EXPECT_EQ(sane_control_option(session.handle(), session.find("contrast"), SANE_ACTION_GET_VALUE,
                                  &word, nullptr),
              SANE_STATUS_IO_ERROR);
    EXPECT_EQ(word, 42);
    EXPECT_EQ(session.set("contrast", "4"), SANE_STATUS_GOOD);
    EXPECT_EQ(session.set("mode", "Gray"), SANE_STATUS_DEVICE_BUSY);
    EXPECT_EQ(session.text("mode"), "Color");
}

TEST(SimFaults, AnOptionCanClaimAnotherSize)
{
    const SimSession session("[sim]\noption.serial-number.size = 300\noption.contrast.size = 64\n"
                             "option.binarization-value.size = 0\n");
    EXPECT_EQ(session.describe("serial-number").size, 300);
    EXPECT_EQ(session.text("serial-number"), "KS0000001");
    EXPECT_EQ(session.describe("contrast").size, 64);
    EXPECT_EQ(session.word("contrast"), 0);
    EXPECT_EQ(session.describe("binarization-value").size, 0);
}
