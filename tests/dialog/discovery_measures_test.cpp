// Numbers that come from a scanner by a way of their own.
#include "discovery_fixture.h"

#include <QAbstractSlider>
#include <QSpinBox>

#include <gtest/gtest.h>

using namespace kestrel::test;

namespace {

using DiscoveryMeasures = DialogTest;

} // namespace

TEST_F(DiscoveryMeasures, TheFlatbedsLengthIsInWholeMillimetres)
{
    for (const auto& [most, length] : {std::pair(297.9, 297), std::pair(297.0, 297)}) {
        FakeScanner scanner = scannerWith(
            Option::choice("source", {"Flatbed", "ADF Front", "Automatic"}, "ADF Front"));
        scanner.add(Option::fixed("br-y", 100.0).limits(0.0, most));
        bind(scanner);
        EXPECT_EQ(dialog().flatbed_max_length, length) << most;
    }
}

// The word that stands in for a value larger than a word is the last one that was read: a read that
// failed in between brought none.
TEST_F(DiscoveryMeasures, AFailedReadIsNotTheWordReadLast)
{
    FakeScanner scanner = scannerWith(Option::integer("brightness", 17));
    scanner.add(Option::integer("contrast", 5));
    scanner.add(Option::integer("binarization-value", 3).size(8));
    scanner.failOption(CallKind::Get, "contrast", SANE_STATUS_INVAL);
    bar("binarization_value").setValue(9);
    bind(scanner);
    EXPECT_EQ(bar("brightness_set").value(), 17);
    EXPECT_EQ(bar("binarization_value").value(), 17);
}

// Asking a scanner for what it does not offer at present is a fault of its own to some drivers.
TEST_F(DiscoveryMeasures, WhatIsInactiveIsNotReadWhereTheControlHidesForIt)
{
    for (const char* const option : {"padscan-count", "roller-count", "prefeed"}) {
        const auto reads = [this, option](bool inactive) {
            FakeScanner scanner = fullScanner();
            scanner.option(option).inactive(inactive);
            bind(scanner);
            const std::vector<Call> calls = scanner.journal().of(CallKind::Get);
            return std::count_if(calls.begin(), calls.end(),
                                 [option](const Call& call) { return call.name == option; });
        };
        EXPECT_EQ(reads(false), 1) << option;
        EXPECT_EQ(reads(true), 0) << option;
    }
}

TEST_F(DiscoveryMeasures, LongPaperIsAfterwardsAsItWasBefore)
{
    for (const bool on : {false, true}) {
        FakeScanner scanner = fullScanner();
        scanner.option("long-paper-scan").word(on ? 1 : 0);
        bind(scanner);
        const Strings asked = on ? Strings{"1", "0", "1"} : Strings{"1", "0"};
        EXPECT_EQ(scanner.journal().setsOf("long-paper-scan"), asked) << on;
        EXPECT_EQ(scanner.option("long-paper-scan").decoded(), on ? "1" : "0");
    }
}
