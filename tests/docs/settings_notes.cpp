#include "docs/settings_notes.h"

#include "scanner/value_tables.h"

#include <algorithm>
#include <stdexcept>

namespace kestrel::test {

namespace {

constexpr Step feeder{"source", 0};
constexpr Step notCentred{"center_alignment", 0};
constexpr Step automaticCrop{"autocropdeskew", 1};
constexpr Step noUltrasonic{"ultrasonic", 0};
constexpr Step lengthDetection{"length_detection", 1};
constexpr Step detectingColour{sideMode, 192};

void addImage(std::vector<Note>& notes)
{
    notes.push_back(
        Note("multistream", "", "Images of each side, and colour detection")
            .sends({"mode", "multistream-list", "source"})
            .given({feeder, {sideMode, 4}})
            .to(27)
            .rule("The sum of: front black-and-white 1, gray 2, colour 4; back 8, 16, 32; colour "
                  "detection of the front 64, of the back 128. A stored 0 counts as 4.")
            .rule("One image stays chosen at least: unchecking the last one checks it again.")
            .rule("When both sides give images, they give the same ones. The other side follows a "
                  "click, and the clicked side takes over what else the other side has.")
            .rule("Colour detection takes the place of the six boxes while it is on. Their choice "
                  "comes back when it is switched off.")
            .rule("With the automatic source the front always gives an image, and detection on the "
                  "back switches on detection on the front.")
            .rule("`mode` is `Lineart` for black-and-white alone, `Gray` without colour, else "
                  "`Color`. With colour detection it is `Auto Detection`, or `Auto Color "
                  "Detection` with the backend `avision_adv`, and `multistream-list` is not sent.")
            .rule("`multistream-list` is `No Multi-Stream` for one image a side, else the images "
                  "by name, for example `Gray + BW`."));
    notes.push_back(
        Note("source", "label_66", "Paper source")
            .sends({"source"})
            .moves({"auto-scan-source-setting"})
            .lists(tables::scanner_source)
            .given({feeder})
            .to(2)
            .rule("The list holds what the scanner offers, in its order. A scanner that offers "
                  "`Automatic` gets all three, in the order above.")
            .rule("The feeder sends `ADF Front`, `ADF Back` or `ADF Duplex`, as the images of the "
                  "sides ask; the flatbed `Flatbed`; the third entry `Automatic`, followed by "
                  "`auto-scan-source-setting` with `ADF Front` or `ADF Duplex`. "
                  "`isDoubleSideScan()` answers from what was sent.")
            .rule("The flatbed clears and disables the images of the back, disables multifeed "
                  "detection and enables the pause between two scans.")
            .rule("With the flatbed or the automatic source the crop list has its third entry, if "
                  "the scanner has the option `flatbed-multi-crop`. Without it the list goes back "
                  "to its first entry."));
    notes.push_back(Note("resolution", "resolution_label", "Resolution")
                        .sends({"resolution"})
                        .in("dpi")
                        .rule("The number on show is sent. The eighth entry, if there is one, is "
                              "the custom resolution."));
    notes.push_back(
        Note("custom_resolution", "", "The custom resolution, for example `custom-250`")
            .sends({"resolution"})
            .rule("Empty when there is none. It is made with the button `customresolution`, from "
                  "72 dpi up to what the option `resolution` allows. Choosing it sends the "
                  "number behind `custom-`."));
    notes.push_back(Note("brightness", "brightness_label", "Brightness").sends({"brightness"}));
    notes.push_back(Note("contrast", "contrast_label", "Contrast").sends({"contrast"}));
    notes.push_back(Note("gamma", "gamma_label", "Gamma, times 100")
                        .sends({"gamma-table"})
                        .to(100)
                        .rule("Sent as a table of 256 entries: 255 times (i / 255) to the power "
                              "of 100 / gamma. A number typed beside the slider is cut to "
                              "hundredths."));
    notes.push_back(
        Note("gray_doc_type", "label_59", "Kind of document for gray images")
            .sends({"gray_doc_type"})
            .as(tables::gray_doc_type)
            .rule("Sent with underscores in the name. When a scanner is bound, `gray-doc-type` is "
                  "read as well."));
    notes.push_back(Note("gray_value", "label_70", "Threshold for gray images")
                        .rule("Kept with the defaults alone, never read back and not sent."));
    notes.push_back(Note("binarization", "label_57", "Way to black-and-white")
                        .sends({"binarization"})
                        .as(tables::binarization_str)
                        .rule("Gives the threshold its limits and its usual value: 1 to 30 and 20 "
                              "for entry 0, 0 to 255 and 128 for entry 1. Entry 2 disables it.")
                        .given({{"binarization", 0}, {"binarization_value", 20}})
                        .moves({"binarization-value"}));
    notes.push_back(Note("binarization_value", "label_67", "Threshold for black-and-white")
                        .sends({"binarization-value"})
                        .rule("Not sent with entry 2 of `binarization`."));
    notes.push_back(Note("invert", "label_65", "Black on white or white on black")
                        .sends({"invert"})
                        .rule("Not among the defaults: loading them leaves it as it is."));
    notes.push_back(Note("color_register", "color_correction_label", "Colour correction")
                        .rule("Not sent. The host gets the index from `getCurrentFiletype()` and "
                              "does with it what it can."));
    notes.push_back(
        Note("redhead", "redhead", "Documents with red headings").sends({"color-register"}));
}

void addColourDetection(std::vector<Note>& notes)
{
    const char* const onlyFront =
        "Sent while colour detection of the front is on, the settings of the back as well.";
    notes.push_back(Note("acd_nocolor_mode_front", "label_34", "Image of a front without colour")
                        .sends({"auto-color-front-noncolor-mode"})
                        .as(tables::auto_nocolor_mode)
                        .given({detectingColour})
                        .rule(onlyFront));
    notes.push_back(Note("acd_mode_front", "label_38", "What counts as colour on the front")
                        .sends({"auto-color-front-mode"})
                        .as(tables::auto_color_detection_mode)
                        .given({detectingColour}));
    notes.push_back(Note("acd_sensitivity_front", "label_37", "Sensitivity of the front")
                        .sends({"auto-color-front-sensitivity"})
                        .given({detectingColour}));
    notes.push_back(Note("acd_nocolor_mode_back", "label_39", "Image of a back without colour")
                        .sends({"auto-color-back-noncolor-mode"})
                        .as(tables::auto_nocolor_mode)
                        .given({detectingColour}));
    notes.push_back(Note("acd_mode_back", "label_41", "What counts as colour on the back")
                        .sends({"auto-color-back-mode"})
                        .as(tables::auto_color_detection_mode)
                        .given({detectingColour}));
    notes.push_back(Note("acd_sensitivity_back", "label_40", "Sensitivity of the back")
                        .sends({"auto-color-back-sensitivity"})
                        .given({detectingColour}));
    notes.push_back(Note("color_dropout", "label_13", "Colour that is left out")
                        .sends({"color-dropout"})
                        .as(tables::color_dropout));
    notes.push_back(Note("adv_color_dropout", "adv_color_dropout", "Advanced treatment of it")
                        .sends({"adv-color-dropout"})
                        .rule("Enabled with a colour in `color_dropout`."));
}

void addPaper(std::vector<Note>& notes)
{
    notes.push_back(
        Note("autocropdeskew", "label_19", "Crop")
            .sends({"autocropdeskew", "flatbed-multi-crop"})
            .lists(tables::crop_option_label)
            .given({{"source", 1}, {"autocropdeskew", 0}, notCentred})
            .to(2)
            .moves({"center-alignment", "tl-x", "tl-y", "br-x", "br-y", "crop-adjust-top",
                    "crop-adjust-bottom", "crop-adjust-left", "crop-adjust-right"})
            .rule("`autocropdeskew` is 1 for the entries 1 and 2, `flatbed-multi-crop` for entry "
                  "2. The list holds what the scanner can do; see `source` for the third entry.")
            .rule("Entry 0 sends the area, the others the four crop adjustments in its place.")
            .rule("Any entry but 0 disables paper size, preview area and length detection, and "
                  "sets the four preview lengths to 0."));
    notes.push_back(Note("long_paper_scan", "long_paper_scan", "Long paper")
                        .sends({"long-paper-scan"})
                        .moves({"br-x", "br-y", "tl-x"})
                        .given({notCentred, {"scanrange_setting", 2}})
                        .rule("Shown with the backend `kestrel_adv`, where the option is active.")
                        .rule("Changes the largest height, and chooses the largest area."));
    notes.push_back(Note("vertical_range", "vertical_range", "Upright, or else across")
                        .rule("Not sent by itself: a click swaps width and height and centres the "
                              "area."));
    notes.push_back(
        Note("scanrange_setting", "scanrange_label", "Paper size")
            .sends({"br-x", "br-y"})
            .moves({"tl-x"})
            .given({notCentred, {"scanrange_setting", 3}})
            .to(2)
            .rule("The stored number counts the entries that this scanner has: some sizes are "
                  "there only when the scanner's area is larger, see below.")
            .rule("Sets width and height, across if that is chosen and there is room, and centres "
                  "the area. The last entry takes the whole area.")
            .rule("Goes to its first entry when the height is edited by hand, or the width of a "
                  "centred area."));
    notes.push_back(Note("center_alignment", "center_alignment", "Centred")
                        .sends({"center-alignment"})
                        .moves({"tl-x", "br-x"})
                        .rule("Centres the area and locks the left edge. While it is on, `tl-x` "
                              "is sent as 0 and `br-x` as the width."));
    notes.push_back(Note("br_x", "br_x_label", "Width of the area")
                        .sends({"br-x"})
                        .in("mm")
                        .within("br-x")
                        .given({notCentred, {"tl_x", 5}})
                        .rule("Sent as the right edge: width plus left edge."));
    notes.push_back(
        Note("br_y", "br_y_label", "Height of the area")
            .sends({"br-y"})
            .in("mm")
            .within("br-y")
            .given({notCentred, {"tl_y", 5}})
            .rule("Sent as the bottom edge: height plus top edge.")
            .rule("A height that has no room across the feed disables `horizontal_range`."));
    notes.push_back(Note("tl_x", "tl_x_label", "Left edge of the area")
                        .sends({"tl-x"})
                        .moves({"br-x"})
                        .in("mm")
                        .within("tl-x")
                        .given({notCentred, {"tl_x", 2}})
                        .rule("At most what the width leaves."));
    notes.push_back(Note("tl_y", "tl_y_label", "Top edge of the area")
                        .sends({"tl-y"})
                        .moves({"br-y"})
                        .in("mm")
                        .within("tl-y")
                        .given({{"tl_y", 2}})
                        .rule("At most what the height leaves. What both leave is the most that "
                              "length detection can be set to."));
    const char* const onlyAutomatic = "Sent with the entries 1 and 2 of `autocropdeskew`.";
    notes.push_back(Note("crop_adjust_top", "", "Crop adjustment at the top")
                        .sends({"crop-adjust-top"})
                        .in("mm")
                        .within("crop-adjust-top")
                        .given({automaticCrop})
                        .rule(onlyAutomatic));
    notes.push_back(Note("crop_adjust_bottom", "", "Crop adjustment at the bottom")
                        .sends({"crop-adjust-bottom"})
                        .in("mm")
                        .within("crop-adjust-bottom")
                        .given({automaticCrop})
                        .rule(onlyAutomatic));
    notes.push_back(Note("crop_adjust_left", "", "Crop adjustment at the left")
                        .sends({"crop-adjust-left"})
                        .in("mm")
                        .within("crop-adjust-left")
                        .given({automaticCrop})
                        .rule(onlyAutomatic));
    notes.push_back(Note("crop_adjust_right", "", "Crop adjustment at the right")
                        .sends({"crop-adjust-right"})
                        .in("mm")
                        .within("crop-adjust-right")
                        .given({automaticCrop})
                        .rule(onlyAutomatic));
    notes.push_back(Note("background_setting_combobox", "background_setting_label",
                         "Colour of the background beside the sheet")
                        .sends({"bg-color-setting"})
                        .as(tables::bg_color_setting)
                        .rule("The control is not shown; what is stored is sent."));
    notes.push_back(Note("prefeed", "prefeed", "Feed ahead")
                        .sends({"prefeed"})
                        .rule("Hidden where the option is inactive."));
    notes.push_back(Note("prefeed_time", "", "Time of feeding ahead")
                        .sends({"prefeed-time"})
                        .in("s")
                        .within("prefeed-time")
                        .rule("Enabled with `prefeed`."));
    notes.push_back(Note("waitingjob_time", "waitjob_label", "Pause between two flatbed scans")
                        .in("s")
                        .rule("Not sent: the host gets it from `getWaitingJobTime()` while the "
                              "flatbed is chosen. The control is not shown."));
}

void addMultifeed(std::vector<Note>& notes)
{
    notes.push_back(Note("ultrasonic", "ultrasonic", "Ultrasonic detection of double feeds")
                        .sends({"ultrasonic"})
                        .moves({"stop-scanning-after-multifeed"})
                        .given({{"length_detection", 0}})
                        .rule("The whole group is disabled with the flatbed."));
    notes.push_back(
        Note("additional_length_detection", "length_detection", "Detection of too long sheets")
            .sends({"additional-length-detection"})
            .moves({"additional-length-detection-length", "stop-scanning-after-multifeed"})
            .given({noUltrasonic})
            .rule("Disabled unless the crop is at its first entry."));
    notes.push_back(
        Note("additional_length_detection_length", "", "Length beyond the area that is allowed")
            .sends({"additional-length-detection-length"})
            .in("mm")
            .given({{"scanrange_setting", 3}, {"tl_y", 0}, lengthDetection})
            .rule("Sent only while the check box of length detection is on, and on the screen at "
                  "that moment."));
    notes.push_back(
        Note("stop_scanning_after_multifeed", "stop_scanning_after_multifeed",
             "Stop after a double feed")
            .sends({"stop-scanning-after-multifeed"})
            .given({{"ultrasonic", 1}})
            .rule("Enabled with either detection. Sent with ultrasonic detection, or with length "
                  "detection that is on the screen at that moment."));
}

void addAdvanced(std::vector<Note>& notes)
{
    notes.push_back(Note("rotate", "label_rotate", "Rotation")
                        .sends({"rotate"})
                        .as(tables::rotate_mode)
                        .to(4)
                        .moves({"auto-orientation-mode"}));
    notes.push_back(Note("auto_orientation_mode", "label_rotate_mode", "Way of finding what is up")
                        .sends({"auto-orientation-mode"})
                        .as(tables::auto_orientation_mode)
                        .given({{"rotate", 4}})
                        .rule("Enabled and sent with entry 4 of `rotate`."));
    notes.push_back(Note("split_image", "label_42", "Cut each side in two")
                        .sends({"split-image"})
                        .as(tables::splitimage)
                        .rule("`isSplitScan()` tells the host."));
    notes.push_back(
        Note("two_side_rotate", "rotation_book", "Pages turn like a book's")
            .sends({"flip-side-rotation"})
            .rule("Sends `Book` for 1, `Fanfold` for 0, the button `rotation_fanfold`."));
    notes.push_back(Note("remove_blankpage", "remove_blankpage", "Remove blank pages")
                        .sends({"blank-page-removal"})
                        .moves({"blank-page-threshold"})
                        .rule("The host can switch it with `setBlankPageFunc()`, which sends it at "
                              "once."));
    notes.push_back(Note("blankpage_threshold", "", "What counts as blank")
                        .sends({"blank-page-threshold"})
                        .given({{"remove_blankpage", 1}})
                        .rule("Enabled and sent with `remove_blankpage`."));
}

void addEnhancement(std::vector<Note>& notes)
{
    notes.push_back(Note("punch_hole_removal", "punch_hole_removal", "Remove punch holes")
                        .sends({"punch-hole-removal"}));
    notes.push_back(Note("despeckle", "despeckle", "Remove specks")
                        .sends({"despeckle"})
                        .moves({"despeckle-ratio", "despeckle-dotsnumber"}));
    notes.push_back(Note("despeckle_ratios", "label_51", "Size of a speck")
                        .sends({"despeckle-ratio"})
                        .in("pixels")
                        .given({{"despeckle", 1}})
                        .rule("Sent with `despeckle`. Raised by the number of dots: to 2 from 9 "
                              "dots on, 3 from 25, 4 from 49, 5 from 81, 6 from 121, 7 from 169, "
                              "8 from 225."));
    notes.push_back(Note("despeckle_dotsnumber", "label_50", "Dots in a speck")
                        .sends({"despeckle-dotsnumber"})

                        .given({{"despeckle", 1}})
                        .rule("Sent with `despeckle`."));
    notes.push_back(
        Note("background_processing", "label_46", "Treatment of the background")
            .sends({"background-processing"})
            .as(tables::backendground_processing)
            .moves({"background-processing-sensitivity", "background-processing-setting"})
            .rule("The entries 1 and 2 enable the two settings below, and send them."));
    notes.push_back(Note("background_processing_sensitivity", "label_47", "Its sensitivity")
                        .sends({"background-processing-sensitivity"})
                        .within("background-processing-sensitivity")
                        .given({{"background_processing", 1}}));
    notes.push_back(Note("background_processing_setting", "label_48", "Its way")
                        .sends({"background-processing-setting"})
                        .as(tables::backendground_setting)
                        .lists(tables::background_smoothing_label)
                        .given({{"background_processing", 1}})
                        .rule("With entry 2 of `background_processing` the list is 白色 (`White`), "
                              "自动 (`Auto`)."));
}

void addDevice(std::vector<Note>& notes)
{
    notes.push_back(Note("cachemode", "label_54", "Cache")
                        .sends({"cachemode"})
                        .as(tables::cachemode)
                        .given({{"cachemode", 2}, {"cachemode_page_num", 3}})
                        .to(1)
                        .moves({"cachemode-value", "cachemode-use-default"})
                        .rule("Shows the panel that belongs to it. `cachemode-value` carries the "
                              "number of pages for the entries 0 and 1, the memory for entry 2."));
    notes.push_back(Note("cachemode_value", "", "Memory")
                        .sends({"cachemode-value"})
                        .in("MB")
                        .within("cachemode-value")
                        .given({{"cachemode", 2}})
                        .rule("Sent with entry 2 of `cachemode`."));
    notes.push_back(Note("cachemode_use_default", "cachemode_use_default", "Memory as usual")
                        .sends({"cachemode-use-default"})
                        .given({{"cachemode", 2}})
                        .rule("Sent with entry 2 of `cachemode`. Disables the memory slider."));
    const char* const whenPower = "Sent when a scanner is bound and with OK, not before a scan.";
    notes.push_back(Note("powersaving", "powersaving", "Power saving")
                        .sends({"powersaving"})
                        .moves({"powersaving-time"})
                        .rule(whenPower));
    notes.push_back(Note("powersaving_time", "", "Time until power saving")
                        .sends({"powersaving-time"})
                        .in("min")
                        .within("powersaving-time")
                        .given({{"powersaving", 1}, {"powersaving_time", 20}})
                        .rule("Raises the time until power off to its own value. Sent with "
                              "`powersaving`."));
    notes.push_back(Note("poweroff", "poweroff", "Power off")
                        .sends({"poweroff"})
                        .moves({"poweroff-time"})
                        .rule(whenPower));
    notes.push_back(Note("poweroff_time", "", "Time until power off")
                        .sends({"poweroff-time"})
                        .in("min")
                        .within("poweroff-time")
                        .given({{"poweroff", 1}, {"poweroff_time", 100}})
                        .rule("Never below the time until power saving. Sent with `poweroff`. Only "
                              "the upper limit is the scanner's."));
    notes.push_back(
        Note("eject_paper_opposite_side", "eject_paper_opposite_side", "Eject to the other side")
            .sends({"eject-paper-opposite-side"})
            .rule("Hidden where the option is inactive."));
}

} // namespace

const std::vector<Note>& settingNotes()
{
    static const std::vector<Note> notes = [] {
        std::vector<Note> all;
        addImage(all);
        addColourDetection(all);
        addPaper(all);
        addMultifeed(all);
        addAdvanced(all);
        addEnhancement(all);
        addDevice(all);
        return all;
    }();
    return notes;
}

const std::vector<Note>& unstoredNotes()
{
    static const std::vector<Note> notes = [] {
        const std::vector<Step> onPreview{{previewArea, 1}, {"offset_w", 50}, {"offset_h", 60}};
        return std::vector<Note>{
            Note("(offset_x)", "offset_x_label", "Left edge of the area drawn on the preview")
                .sends({"tl-x", "br-x"})
                .in("mm")
                .given(onPreview),
            Note("(offset_y)", "offset_y_label", "Top edge of it")
                .sends({"tl-y", "br-y"})
                .in("mm")
                .given(onPreview),
            Note("(offset_w)", "offset_w_label", "Width of it")
                .sends({"br-x"})
                .in("mm")
                .given(onPreview),
            Note("(offset_h)", "offset_h_label", "Height of it")
                .sends({"br-y"})
                .in("mm")
                .given(onPreview),
            Note("(cachemode_page_num)", "", "Pages in the cache")
                .sends({"cachemode-value"})
                .given({{"cachemode", 1}}),
            Note("(cachemode_image_num_default)", "cachemode_image_num_default",
                 "No limit to the images")
                .sends({"cachemode-use-default"})
                .given({{"cachemode", 0}}),
            Note("(cachemode_image_num)", "", "Images in the cache, for the eye alone")
                .given({{"cachemode", 0}}),
        };
    }();
    return notes;
}

const Note& noteOn(const std::string& key)
{
    const auto& notes = settingNotes();
    const auto found =
        std::find_if(notes.begin(), notes.end(), [&](const Note& note) { return key == note.key; });
    if (found == notes.end()) {
        throw std::runtime_error("there is no note on " + key);
    }
    return *found;
}

} // namespace kestrel::test
