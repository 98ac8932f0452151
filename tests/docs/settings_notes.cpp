#include "docs/settings_notes_parts.h"

#include "scanner/value_tables.h"

#include <algorithm>
#include <stdexcept>

namespace kestrel::test {

namespace {

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

const std::vector<std::string>& sendingOrder()
{
    // clang-format off
    static const std::vector<std::string> order{
        "source", "auto-scan-source-setting", "mode", "multistream-list", "brightness",
        "contrast", "gamma-table", "gray_doc_type", "binarization", "binarization-value",
        "invert", "resolution", "color-register", "auto-color-front-noncolor-mode",
        "auto-color-front-sensitivity", "auto-color-front-mode",
        "auto-color-back-noncolor-mode", "auto-color-back-sensitivity", "auto-color-back-mode",
        "color-dropout", "adv-color-dropout", "long-paper-scan", "autocropdeskew",
        "flatbed-multi-crop", "crop-adjust-top", "crop-adjust-bottom", "crop-adjust-left",
        "crop-adjust-right", "center-alignment", "tl-x", "br-x", "br-y", "tl-y",
        "bg-color-setting", "prefeed", "prefeed-time", "ultrasonic",
        "additional-length-detection", "additional-length-detection-length",
        "stop-scanning-after-multifeed", "rotate", "auto-orientation-mode",
        "flip-side-rotation", "blank-page-removal", "blank-page-threshold", "split-image",
        "punch-hole-removal", "background-processing", "background-processing-sensitivity",
        "background-processing-setting", "despeckle", "despeckle-ratio", "despeckle-dotsnumber",
        "cachemode", "cachemode-value", "cachemode-use-default", "eject-paper-opposite-side"};
    // clang-format on
    return order;
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
