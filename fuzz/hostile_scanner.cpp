#include "hostile_scanner.h"

#include "support/models.h"

#include <limits>
#include <string>
#include <tuple>
#include <vector>

using kestrel::test::CallKind;
using kestrel::test::FakeFrame;
using kestrel::test::FakeOption;
using kestrel::test::FakeScanner;

namespace kestrel::fuzz {

namespace {

constexpr int kMostChanges = 24;
// Larger counts are walked to their end with every setting: that is time, not a finding.
constexpr int kMostReported = 600;
// A frame beyond this is worth its time only once in a while.
constexpr double kLargeFrame = 1 << 20;
constexpr std::size_t kMostFrameBytes = 2000;
constexpr int kMostLies = 1000;
constexpr int kMostSensible = 10'000; // pixels a row

const std::vector<std::string>& texts()
{
    static const std::vector<std::string> kTexts = {"",
                                                    "Automatic",
                                                    "automatic",
                                                    "Flatbed",
                                                    "ADF Front",
                                                    "ADF Back",
                                                    "ADF Duplex",
                                                    "Enable",
                                                    "Disable",
                                                    "Lineart",
                                                    "Gray",
                                                    "Color",
                                                    "Document",
                                                    "Dynamic Threshold",
                                                    "None",
                                                    "Auto",
                                                    "Moire",
                                                    "White",
                                                    "Page Number",
                                                    "Memory Size",
                                                    "0",
                                                    "1",
                                                    "638:2b1f",
                                                    ":",
                                                    ":::",
                                                    "%1%2",
                                                    "扫描仪",
                                                    "\xff\xfe\x80",
                                                    std::string(63, 'x'),
                                                    std::string(64, 'y'),
                                                    std::string(300, 'z')};
    return kTexts;
}

std::string anyText(Input& input)
{
    return input.flag() ? input.pick(texts()) : input.text(80);
}

SANE_Status anyStatus(Input& input)
{
    return static_cast<SANE_Status>(input.below(16));
}

CallKind anyKind(Input& input)
{
    static const std::vector<CallKind> kKinds = {CallKind::Describe, CallKind::Get,
                                                 CallKind::Set,      CallKind::Start,
                                                 CallKind::Read,     CallKind::Parameters};
    return input.pick(kKinds);
}

std::vector<std::string> anyTexts(Input& input)
{
    std::vector<std::string> entries;
    for (int count = input.below(6); count > 0; --count) {
        entries.push_back(anyText(input));
    }
    return entries;
}

std::vector<SANE_Word> anyWords(Input& input)
{
    std::vector<SANE_Word> words;
    for (int count = input.below(6); count > 0; --count) {
        words.push_back(input.integer());
    }
    return words;
}

std::vector<unsigned char> anyBytes(Input& input)
{
    const std::string bytes = input.text(80);
    return {bytes.begin(), bytes.end()};
}

void change(Input& input, FakeOption& option)
{
    switch (input.below(14)) {
    case 0:
        option.type(static_cast<SANE_Value_Type>(input.below(8)));
        break;
    case 1:
        option.size(input.integer());
        break;
    case 2:
        option.cap(static_cast<SANE_Int>(input.byte()));
        break;
    case 3:
        std::apply([&option](auto... words) { option.range(words...); }, input.integers<3>());
        break;
    case 4:
        option.words(anyWords(input));
        break;
    case 5:
        option.strings(anyTexts(input));
        break;
    case 6:
        option.unconstrained();
        break;
    case 7:
        option.nullConstraint();
        break;
    case 8:
        option.bytes(anyBytes(input));
        break;
    case 9:
        option.word(input.integer());
        break;
    case 10:
        option.string(anyText(input));
        break;
    case 11:
        option.unnamed();
        break;
    case 12:
        option.undescribed();
        break;
    default:
        option.inactive(input.flag());
    }
}

/// What a device does when it is asked, apart from its options.
void misbehave(Input& input, FakeScanner& scanner, const std::string& name)
{
    switch (input.below(8)) {
    case 0:
        saidOptions() = input.below(kMostReported) - 2;
        scanner.reportCount(saidOptions());
        break;
    case 1:
        scanner.hideCount();
        break;
    case 2: {
        const int which = input.below(400) + 1;
        const CallKind kind = anyKind(input);
        scanner.failNth(kind, which, anyStatus(input));
        break;
    }
    case 3: {
        const int calls = input.below(2000);
        scanner.failAllAfter(calls, anyStatus(input));
        break;
    }
    case 4:
    case 5: {
        const CallKind kind = anyKind(input);
        scanner.failOption(kind, name, anyStatus(input));
        break;
    }
    default: { // setting one option moves the limits of another
        const SANE_Word min = input.integer();
        const SANE_Word max = input.integer();
        const bool inactive = input.flag();
        scanner.onSet(name, [name, min, max, inactive](FakeScanner& self) {
            for (const char* const other : {"br-y", "br-x", "source"}) {
                if (self.has(other)) {
                    self.option(other).range(min, max).inactive(inactive);
                }
            }
        });
    }
    }
}

FakeScanner plausibleScanner(Input& input)
{
    switch (input.below(8)) {
    case 0:
        return FakeScanner();
    case 1:
        return test::feederScanner();
    case 2:
        return test::flatbedScanner();
    case 3:
        return test::a3Scanner();
    case 4:
        return test::flatbedAndFeederScanner();
    default:
        return test::fullScanner();
    }
}

} // namespace

FakeScanner hostileScanner(Input& input)
{
    saidOptions() = std::numeric_limits<int>::max();
    FakeScanner scanner = plausibleScanner(input);
    static const std::vector<std::string> kNames = test::fullScanner().names();
    for (int changes = input.below(kMostChanges); changes > 0; --changes) {
        const std::string& name = input.pick(kNames);
        if (!scanner.has(name) || input.byte() % 16 == 0) {
            scanner.add(FakeOption::integer(name, 0)); // there may be one of this name already
        }
        if (input.byte() % 4 == 0) {
            misbehave(input, scanner, name);
        } else {
            change(input, scanner.option(name));
        }
        if (input.byte() % 16 == 0) {
            scanner.remove(name);
        }
    }
    // A driver may also be wrong about how much it has read.
    readLie() = {input.byte() % 16 == 0 ? kMostLies : 0, input.integer()};
    for (int frames = input.below(3); frames > 0; --frames) {
        addFrame(input, scanner);
    }
    return scanner;
}

void addFrame(Input& input, FakeScanner& scanner)
{
    FakeFrame frame;
    const auto length = [&input] { return input.flag() ? input.below(200) : input.integer(); };
    SANE_Parameters& parameters = frame.parameters;
    parameters.format = input.flag() ? SANE_FRAME_RGB : static_cast<SANE_Frame>(input.below(8));
    parameters.last_frame = input.byte();
    parameters.bytes_per_line = length();
    parameters.pixels_per_line = length();
    if (input.flag() && parameters.pixels_per_line > -kMostSensible &&
        parameters.pixels_per_line < kMostSensible) {
        parameters.bytes_per_line = 3 * parameters.pixels_per_line + input.below(8);
    }
    parameters.lines = length();
    parameters.depth = input.flag() ? 8 : input.flag() ? 1 : input.integer();
    const double announced = 1.0 * parameters.bytes_per_line * parameters.lines;
    const double pixels = 1.0 * parameters.pixels_per_line * parameters.lines;
    if ((announced > kLargeFrame || pixels > kLargeFrame) && input.byte() % 64 != 0) {
        parameters.lines = 10;
    }
    frame.bytes = anyBytes(input);
    const std::size_t wanted = static_cast<std::size_t>(input.below(kMostFrameBytes));
    while (!frame.bytes.empty() && frame.bytes.size() < wanted) {
        frame.bytes.push_back(frame.bytes[frame.bytes.size() / 2]);
    }
    for (int chunks = input.below(4); chunks > 0; --chunks) {
        frame.chunks.push_back(input.flag() ? input.byte() : input.integer());
    }
    frame.start = input.byte() % 8 == 0 ? anyStatus(input) : SANE_STATUS_GOOD;
    frame.parametersStatus = input.byte() % 8 == 0 ? anyStatus(input) : SANE_STATUS_GOOD;
    // A device that says "good" and never brings a byte more is cut short by the length of 0.
    frame.end = input.byte() % 4 == 0 ? anyStatus(input) : SANE_STATUS_EOF;
    scanner.addFrame(frame);
}

int& saidOptions()
{
    static int count = 0;
    return count;
}

ReadLie& readLie()
{
    static ReadLie lie;
    return lie;
}

} // namespace kestrel::fuzz
