// The simulator's configuration file, line by line.
#include "config.h"
#include "option.h"

#include <sstream>

#include <gtest/gtest.h>

using namespace kestrel::sim;

namespace {

Config parse(const std::string& text)
{
    std::istringstream in(text);
    return parseConfig(in);
}

} // namespace

TEST(SimConfig, AnEmptyFileHasNoDevices)
{
    const Config config = parse("\n  \n# a comment\n");
    EXPECT_TRUE(config.devices.empty());
    EXPECT_TRUE(config.complaints.empty());
    EXPECT_TRUE(config.journal.empty());
}

TEST(SimConfig, SectionsAreDevicesWithTheirModel)
{
    const Config config =
        parse("journal = /tmp/j\n[ one ]\nmodel = Q1410A\n[two]\nmodel = Q110F\n");
    EXPECT_EQ(config.journal, "/tmp/j");
    ASSERT_EQ(config.devices.size(), 2U);
    EXPECT_EQ(config.devices[0].name, "one");
    EXPECT_GT(config.devices[0].feeder.width, 297);
    EXPECT_FALSE(config.devices[1].hasFeeder());
    EXPECT_TRUE(config.devices[1].hasFlatbed());
}

TEST(SimConfig, SettingsAreTaken)
{
    const Config config = parse("[d]\nserial = A B\nusb-id = 1:2\nfeeder-area = 100 x 200.5\n"
                                "dpi-list = 100, 200\nstack = 7\nreload = never\nlong-paper = 900\n"
                                "pad-lines = 3\nunknown-lines = yes\ncolor-fringe = 0.5\n");
    EXPECT_TRUE(config.complaints.empty());
    const DeviceModel& device = config.devices.at(0);
    EXPECT_EQ(device.serial, "A B");
    EXPECT_EQ(device.usbId, "1:2");
    EXPECT_EQ(device.feeder.width, 100);
    EXPECT_EQ(device.feeder.height, 200.5);
    EXPECT_EQ(device.dpiList, (std::vector<int>{100, 200}));
    EXPECT_EQ(device.stack, 7);
    EXPECT_EQ(device.reload, Reload::Never);
    EXPECT_EQ(device.longPaperMm, 900);
    EXPECT_EQ(device.faults.padLines, 3);
    EXPECT_TRUE(device.faults.unknownLines);
    EXPECT_EQ(device.faults.colorFringeMm, 0.5);
}

TEST(SimConfig, FaultsAreTaken)
{
    const Config config =
        parse("[d]\nfault = start 3 jammed\nfault = start * busy\n"
              "fault = read 2 500 io-error\nfault = vanish 1 10\nfault = open no-mem\n");
    EXPECT_TRUE(config.complaints.empty());
    const Faults& faults = config.devices.at(0).faults;
    ASSERT_EQ(faults.starts.size(), 2U);
    EXPECT_EQ(faults.starts[0].image, 3);
    EXPECT_EQ(faults.starts[1].image, 0);
    EXPECT_EQ(faults.starts[1].status, SANE_STATUS_DEVICE_BUSY);
    ASSERT_EQ(faults.reads.size(), 2U);
    EXPECT_EQ(faults.reads[0].afterBytes, 500U);
    EXPECT_FALSE(faults.reads[0].vanishes);
    EXPECT_TRUE(faults.reads[1].vanishes);
    EXPECT_EQ(faults.open, SANE_STATUS_NO_MEM);
}

TEST(SimConfig, WhatMakesNoSenseIsNamed)
{
    for (const char* line : {"nonsense",
                             "unknown = 1",
                             "stack = many",
                             "stack = 1.5",
                             "reload = soon",
                             "feeder-area = 5",
                             "feeder-area = 0x0",
                             "prefeed = maybe",
                             "dpi-list = 100, x",
                             "sheets = novel",
                             "[]",
                             "[x",
                             "fault = start",
                             "fault = start x jammed",
                             "fault = start 1 broken",
                             "fault = read 1 -5 io-error",
                             "fault = vanish 1",
                             "fault = burn 1 2",
                             "option.x = 1",
                             "option.x.color = 1",
                             "option..value = 1",
                             "journal = late"}) {
        const Config config = parse(std::string("[d]\nserial = S\n") + line + "\nusb-id = U\n");
        ASSERT_EQ(config.complaints.size(), 1U) << line;
        EXPECT_EQ(config.complaints[0], std::string("line 3: ") + line);
        EXPECT_EQ(config.devices.at(0).serial, "S");
        EXPECT_EQ(config.devices.at(0).usbId, "U") << "the rest is read";
    }
}

TEST(SimConfig, ASettingBeforeAnySectionIsAMistake)
{
    EXPECT_EQ(parse("stack = 3\n").complaints.size(), 1U);
}

TEST(SimNearestWord, StaysWhereItIsPermitted)
{
    EXPECT_EQ(nearestWord(std::monostate{}, 12345), 12345);
    EXPECT_EQ(nearestWord(SANE_Range{-5, 5, 0}, 3), 3);
    EXPECT_EQ(nearestWord(std::vector<SANE_Word>{}, 9), 9);
}

TEST(SimNearestWord, GoesToTheGridOfARange)
{
    const SANE_Range range{-10, 23, 8}; // -10 -2 6 14 22
    EXPECT_EQ(nearestWord(range, -100), -10);
    EXPECT_EQ(nearestWord(range, -7), -10);
    EXPECT_EQ(nearestWord(range, -6), -2) << "half a step goes up";
    EXPECT_EQ(nearestWord(range, 17), 14);
    EXPECT_EQ(nearestWord(range, 18), 22);
    EXPECT_EQ(nearestWord(range, 100), 22);
}

TEST(SimNearestWord, DoesNotOverflow)
{
    const SANE_Range all{INT32_MIN, INT32_MAX, 3};
    EXPECT_EQ(nearestWord(all, INT32_MIN), INT32_MIN);
    EXPECT_EQ(nearestWord(all, INT32_MAX), INT32_MAX);
    EXPECT_EQ(nearestWord(std::vector<SANE_Word>{INT32_MIN, INT32_MAX}, -5), INT32_MIN);
}

TEST(SimNearestWord, TakesTheFirstOfTwoAsNear)
{
    EXPECT_EQ(nearestWord(std::vector<SANE_Word>{100, 200}, 150), 100);
    EXPECT_EQ(nearestWord(std::vector<SANE_Word>{100, 200}, 151), 200);
}
