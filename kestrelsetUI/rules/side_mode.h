/// @file
/// Which images a scan delivers for each side of the sheet, and what that means for the scanner.
///
/// Everything here is arithmetic on one byte, the side-mode mask, and on the six mode boxes that
/// show it. The dialog's slots read their controls, ask, and write what they are told, in the order
/// given.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace kestrel {

/// Number of mode boxes: three kinds of image on two sides.
constexpr int kModeCount = 6;

/// A mode box, its image button and its bit of the mask; the values are the ids of the button
/// groups.
enum class Mode : int
{
    FrontBlackWhite = 0,
    FrontGray = 1,
    FrontColour = 2,
    BackBlackWhite = 3,
    BackGray = 4,
    BackColour = 5,
};

enum class Side
{
    Front,
    Back
};

/// The mode with a button id, or nothing for an id that no mode box has.
constexpr std::optional<Mode> modeFromId(int id) noexcept
{
    return id >= 0 && id < kModeCount ? std::optional<Mode>(static_cast<Mode>(id)) : std::nullopt;
}
/// The button id of a mode, 0..5.
constexpr int idOf(Mode mode) noexcept
{
    return static_cast<int>(mode);
}
/// The side that a mode belongs to.
constexpr Side sideOf(Mode mode) noexcept
{
    return idOf(mode) < 3 ? Side::Front : Side::Back;
}
/// The same kind of image on the other side.
constexpr Mode partnerOf(Mode mode) noexcept
{
    return static_cast<Mode>((idOf(mode) + 3) % kModeCount);
}

/// The side-mode mask: bits 0-2 front black-and-white, gray, colour, bits 3-5 the same for the
/// back, bits 6 and 7 automatic colour detection of front and back.
class SideMode
{
public:
    /// Front colour alone, the choice of a new dialog.
    constexpr SideMode() noexcept = default;
    constexpr explicit SideMode(std::uint8_t bits) noexcept : m_bits(bits) {}

    constexpr std::uint8_t bits() const noexcept { return m_bits; }
    constexpr bool isEmpty() const noexcept { return m_bits == 0; }

    constexpr bool has(Mode mode) const noexcept { return (m_bits & bit(mode)) != 0; }
    constexpr SideMode with(Mode mode, bool on = true) const noexcept
    {
        return change(bit(mode), on);
    }

    /// The three mode bits of a side, shifted down: 1 black-and-white, 2 gray, 4 colour.
    constexpr unsigned modes(Side side) const noexcept
    {
        return side == Side::Front ? m_bits & 7U : (m_bits >> 3U) & 7U;
    }
    constexpr bool detects(Side side) const noexcept { return (m_bits & detectionBit(side)) != 0; }
    constexpr bool detects() const noexcept { return (m_bits & 0xC0U) != 0; }
    constexpr SideMode withDetection(Side side, bool on) const noexcept
    {
        return change(detectionBit(side), on);
    }

    /// What is left on the flatbed: the front modes. Front detection goes, too, although its button
    /// stays checked; it counts again when that button is toggled.
    constexpr SideMode onFlatbed() const noexcept
    {
        return SideMode(static_cast<std::uint8_t>(m_bits & 7U));
    }

    friend constexpr bool operator==(SideMode a, SideMode b) noexcept
    {
        return a.m_bits == b.m_bits;
    }
    friend constexpr bool operator!=(SideMode a, SideMode b) noexcept
    {
        return a.m_bits != b.m_bits;
    }

private:
    static constexpr unsigned bit(Mode mode) noexcept { return 1U << static_cast<unsigned>(mode); }
    static constexpr unsigned detectionBit(Side side) noexcept
    {
        return side == Side::Front ? 64U : 128U;
    }
    constexpr SideMode change(unsigned bits, bool on) const noexcept
    {
        return SideMode(static_cast<std::uint8_t>(on ? m_bits | bits : m_bits & ~bits));
    }

    std::uint8_t m_bits = 4;
};

/// Checked states of the six mode boxes of the image tab, by button id. They equal the mask while
/// colour detection is off and are all unchecked while it is on.
using ModeBoxes = std::array<bool, kModeCount>;

/// The box states that show a mask's mode bits.
ModeBoxes boxesOf(SideMode mask) noexcept;

/// One `setChecked` on a mode box.
struct BoxWrite
{
    Mode mode;
    bool checked;
    friend bool operator==(BoxWrite a, BoxWrite b) noexcept
    {
        return a.mode == b.mode && a.checked == b.checked;
    }
};

/// What the multistream rule has to know; read after the clicked box has changed and its twin
/// followed.
struct MultistreamClick
{
    Mode clicked;     ///< the box that was clicked, on whichever tab
    SideMode mask;    ///< the mask before the click
    ModeBoxes boxes;  ///< the image tab's boxes after the click
    bool sideEnabled; ///< the clicked side's container (`front_widget`, `rear_widget`) is enabled
    bool automaticSource; ///< the scanner chooses the paper source itself
};

/// What the multistream rule wants written.
struct MultistreamOutcome
{
    SideMode mask;                   ///< the mask after the click
    std::optional<Mode> imageButton; ///< companion image button to check before the boxes
    std::vector<BoxWrite> boxes;     ///< boxes to set, in order; a box may already be as wanted
};

/// A mode box was clicked: at least one image stays chosen, and a side that was not clicked
/// follows.
///
/// The mask never comes back empty. From a mask whose sides are equal, or of which one is empty, it
/// comes back so. Sides that differ (only a file can bring them) are not mended beyond the clicked
/// mode.
MultistreamOutcome setMultistream(const MultistreamClick& click);

/// What follows from the two colour-detection buttons.
struct DetectionOutcome
{
    bool dropoutTab;             ///< `tab_colordrop` enabled
    bool detectionTab;           ///< `tab_color_detection` enabled
    bool frontGroup;             ///< `groupBox_front_autodetection` enabled
    bool backGroup;              ///< `groupBox_back_autodetection` enabled
    bool sideContainers;         ///< `front_widget` and `rear_widget` enabled
    bool panelsOff;              ///< check `test_button`; otherwise check `color_front_image`
    std::vector<BoxWrite> boxes; ///< boxes to set, in order
};

/// Whether back detection has to bring front detection with it. Checking the front button runs its
/// own rule, so this is asked, and written, before `detectionRule`.
constexpr bool backDetectionNeedsFront(bool automaticSource, bool back) noexcept
{
    return automaticSource && back;
}
/// The dialog for the states of the two detection buttons; the mask keeps its mode bits while
/// detection is on, so that turning it off restores them.
DetectionOutcome detectionRule(bool front, bool back, SideMode mask);

/// Paper source of the next scan. The values are the rows of the display table `scanner_source` and
/// what the host is told.
enum class ScanSource : int
{
    Feeder = 0,
    Flatbed = 1,
    Automatic = 2
};

/// The source with a row of the display table, or nothing for a text that is none of them (row -1).
constexpr std::optional<ScanSource> scanSourceFromRow(int row) noexcept
{
    return row >= 0 && row <= 2 ? std::optional<ScanSource>(static_cast<ScanSource>(row))
                                : std::nullopt;
}

/// Which controls a paper source brings into play.
struct SourceControls
{
    bool
        waitingJob; ///< `scan_waitingjob_widget` enabled: only the flatbed waits for the next sheet
    bool paperDetection; ///< `paper_detection` enabled: only a feeder can draw two sheets
    bool clearsBack;     ///< uncheck the back's boxes and detection, then `SideMode::onFlatbed`
};
constexpr SourceControls sourceControls(ScanSource source) noexcept
{
    const bool flatbed = source == ScanSource::Flatbed;
    return {flatbed, !flatbed, flatbed};
}
/// Whether `widget_rear` is enabled; an unknown source leaves the back to the user.
constexpr bool backControlsEnabled(std::optional<ScanSource> source) noexcept
{
    return source != ScanSource::Flatbed;
}

/// What becomes of the third item of the crop list, "several images on the flatbed".
enum class CropListChange
{
    None,
    Append,      ///< append the third item
    ResetAndDrop ///< select index 0, whatever was selected, then remove index 2
};
/// @param flatbedMultiCrop the scanner can tell several images on the flatbed apart
/// @param itemCount        items of the crop list now
CropListChange cropListChange(std::optional<ScanSource> source, bool flatbedMultiCrop,
                              int itemCount) noexcept;

/// Rows of the value table `Multistream`.
enum class Multistream : int
{
    None = 0,
    GrayBlackWhite = 1,
    ColourGray = 2,
    ColourBlackWhite = 3,
    ColourGrayBlackWhite = 4,
};
/// The value of "multistream-list", or nothing while colour detection is on (the option is not
/// sent).
std::optional<Multistream> multistreamValue(SideMode mask) noexcept;

/// The value of "mode": "Lineart", "Gray", "Color", or the detection value of that backend.
const char* modeValue(SideMode mask, std::string_view backendName) noexcept;

/// Rows of the value table `source`.
enum class SaneSource : int
{
    Automatic = 0,
    Flatbed = 1,
    AdfFront = 2,
    AdfBack = 3,
    AdfDuplex = 4
};
/// Rows of the value table `auto_scan_source_setting`.
enum class AutoSource : int
{
    AdfDuplex = 0,
    AdfFront = 1
};

/// How paper source and mask become scanner options and the duplex flag.
struct SourceDecision
{
    SaneSource source;
    std::optional<AutoSource>
        automatic; ///< "auto-scan-source-setting", only with the automatic source
    bool duplex;
};
SourceDecision decideSource(ScanSource source, SideMode mask) noexcept;

} // namespace kestrel
