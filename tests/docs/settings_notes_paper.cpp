// What there is to say about the paper and how it runs.
#include "docs/settings_notes_parts.h"

#include "scanner/value_tables.h"

namespace kestrel::test {

namespace {

constexpr Step notCentred{"center_alignment", 0};
constexpr Step automaticCrop{"autocropdeskew", 1};
constexpr Step noUltrasonic{"ultrasonic", 0};
constexpr Step lengthDetection{"length_detection", 1};

} // namespace

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
                        .rule("Shown with the backend `kestrel_adv` alone, and hidden where the "
                              "option is inactive.")
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

} // namespace kestrel::test
