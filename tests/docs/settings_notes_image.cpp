// What there is to say about the images and their colours.
#include "docs/settings_notes_parts.h"

#include "scanner/value_tables.h"

namespace kestrel::test {

namespace {

constexpr Step feeder{"source", 0};
constexpr Step detectingColour{sideMode, 192};

} // namespace

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
            .rule("With the automatic source the last image of the front can't be unchecked, and "
                  "detection on the back switches on detection on the front.")
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
                  "detection and enables the pause between two scans. It drops colour detection, "
                  "too, though the button of the front stays checked: switched anew, it counts.")
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
                              "of 100 / gamma. A number typed beside the slider is cut, not "
                              "rounded, to hundredths: 1.15 becomes 1.14."));
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

} // namespace kestrel::test
