#include "rules/side_mode.h"

#include <cstddef>
#include <utility>

namespace kestrel {

namespace {

/// The kinds of image in the order in which a side takes over what the other one has.
constexpr std::array<int, 3> kTakeOverOrder{2, 1, 0};
/// The boxes in the order in which they are shown from the mask.
constexpr std::array<Mode, kModeCount> kShowOrder{Mode::FrontColour,     Mode::FrontGray,
                                                  Mode::FrontBlackWhite, Mode::BackColour,
                                                  Mode::BackGray,        Mode::BackBlackWhite};

constexpr Mode modeOn(Side side, int kind) noexcept
{
    return static_cast<Mode>(side == Side::Front ? kind : kind + 3);
}

/// The click being worked out: mask and boxes change together, and every box write is noted.
class Steps
{
public:
    explicit Steps(const MultistreamClick& click) : m_boxes(click.boxes)
    {
        m_outcome.mask = click.mask;
    }

    bool isChecked(Mode mode) const noexcept
    {
        return m_boxes[static_cast<std::size_t>(idOf(mode))];
    }
    unsigned front() const noexcept { return m_outcome.mask.modes(Side::Front); }
    unsigned back() const noexcept { return m_outcome.mask.modes(Side::Back); }
    bool nothingChosen() const noexcept { return m_outcome.mask.isEmpty(); }
    bool sidesDiffer() const noexcept { return front() != back(); }

    void chooseImageButton(Mode mode) { m_outcome.imageButton = mode; }
    void setBit(Mode mode, bool on) { m_outcome.mask = m_outcome.mask.with(mode, on); }
    void setBoxAndBit(Mode mode, bool on)
    {
        m_boxes[static_cast<std::size_t>(idOf(mode))] = on;
        m_outcome.boxes.push_back({mode, on});
        setBit(mode, on);
    }
    MultistreamOutcome takeOutcome() { return std::move(m_outcome); }

private:
    ModeBoxes m_boxes;
    MultistreamOutcome m_outcome;
};

/// Both sides produce, but not the same: the other side follows the clicked mode, and the clicked
/// side gains whatever else the other one has.
void makeSidesEqual(Steps& steps, Mode clicked)
{
    steps.setBoxAndBit(partnerOf(clicked), steps.isChecked(clicked));
    if (!steps.sidesDiffer()) {
        return;
    }
    for (const int kind : kTakeOverOrder) {
        const Mode own = modeOn(sideOf(clicked), kind);
        if (own != clicked && steps.isChecked(partnerOf(own))) {
            steps.setBoxAndBit(own, true);
        }
    }
}

} // namespace

ModeBoxes boxesOf(SideMode mask) noexcept
{
    ModeBoxes boxes{};
    for (int id = 0; id < kModeCount; ++id) {
        boxes[static_cast<std::size_t>(id)] = mask.has(static_cast<Mode>(id));
    }
    return boxes;
}

MultistreamOutcome setMultistream(const MultistreamClick& click)
{
    Steps steps(click);
    const Mode clicked = click.clicked;
    const bool chosen = steps.isChecked(clicked);
    if (chosen) {
        steps.chooseImageButton(clicked);
    }
    steps.setBit(clicked, chosen);
    // A disabled side skips the rules between the sides, but the last image can't be removed there
    // either.
    if (steps.nothingChosen() && !click.sideEnabled) {
        steps.setBoxAndBit(clicked, true);
        return steps.takeOutcome();
    }
    if (steps.nothingChosen()) {
        steps.setBoxAndBit(clicked, true);
    }
    if (steps.front() != 0 && steps.back() != 0 && steps.sidesDiffer()) {
        makeSidesEqual(steps, clicked);
    }
    // With automatic source selection the sheet may lie on the flatbed, which has a front only.
    if (sideOf(clicked) == Side::Front && click.automaticSource && steps.front() == 0) {
        steps.setBoxAndBit(clicked, true);
    }
    return steps.takeOutcome();
}

DetectionOutcome detectionRule(bool front, bool back, SideMode mask)
{
    const bool on = front || back;
    DetectionOutcome outcome{!on, on, front, back, !on, on, {}};
    outcome.boxes.reserve(kModeCount);
    for (const Mode mode : kShowOrder) {
        outcome.boxes.push_back({mode, !on && mask.has(mode)});
    }
    return outcome;
}

CropListChange cropListChange(std::optional<ScanSource> source, bool flatbedMultiCrop,
                              int itemCount) noexcept
{
    const bool flatbedInvolved = source == ScanSource::Flatbed || source == ScanSource::Automatic;
    if (flatbedMultiCrop && flatbedInvolved) {
        return itemCount == 2 ? CropListChange::Append : CropListChange::None;
    }
    return itemCount == 3 ? CropListChange::ResetAndDrop : CropListChange::None;
}

std::optional<Multistream> multistreamValue(SideMode mask) noexcept
{
    if (mask.detects()) {
        return std::nullopt;
    }
    struct Row
    {
        unsigned modes;
        Multistream value;
    };
    // Either side decides, and the order decides between sides that differ.
    constexpr std::array<Row, 4> rows{{{3, Multistream::GrayBlackWhite},
                                       {5, Multistream::ColourBlackWhite},
                                       {6, Multistream::ColourGray},
                                       {7, Multistream::ColourGrayBlackWhite}}};
    for (const Row& row : rows) {
        if (mask.modes(Side::Front) == row.modes || mask.modes(Side::Back) == row.modes) {
            return row.value;
        }
    }
    return Multistream::None;
}

const char* modeValue(SideMode mask, std::string_view backendName) noexcept
{
    if (mask.detects()) {
        return backendName == "avision_adv" ? "Auto Color Detection" : "Auto Detection";
    }
    const unsigned modes = mask.modes(Side::Front) | mask.modes(Side::Back);
    if ((modes & 4U) != 0) {
        return "Color";
    }
    return (modes & 2U) != 0 ? "Gray" : "Lineart";
}

SourceDecision decideSource(ScanSource source, SideMode mask) noexcept
{
    const bool front = mask.detects() ? mask.detects(Side::Front) : mask.modes(Side::Front) != 0;
    const bool back = mask.detects() ? mask.detects(Side::Back) : mask.modes(Side::Back) != 0;
    const bool duplex = front && back;
    switch (source) {
    case ScanSource::Flatbed:
        return {SaneSource::Flatbed, std::nullopt, false};
    case ScanSource::Automatic:
        return {SaneSource::Automatic, duplex ? AutoSource::AdfDuplex : AutoSource::AdfFront,
                duplex};
    case ScanSource::Feeder:
        break;
    }
    if (duplex) {
        return {SaneSource::AdfDuplex, std::nullopt, true};
    }
    return {back ? SaneSource::AdfBack : SaneSource::AdfFront, std::nullopt, false};
}

} // namespace kestrel
