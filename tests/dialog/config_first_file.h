/// @file
/// The settings file that the first binding of the full stand-in scanner makes, byte for byte.
#pragma once

#include <QByteArray>
#include <QList>

namespace kestrel::test {

/// The working group. The toolkit sorts the keys of a group.
inline const QList<QByteArray>& firstWorkingGroup()
{
    static const QList<QByteArray> lines{
        "acd_mode_back=0",
        "acd_mode_front=0",
        "acd_nocolor_mode_back=0",
        "acd_nocolor_mode_front=0",
        "acd_sensitivity_back=50",
        "acd_sensitivity_front=50",
        "additional_length_detection=Disable",
        "additional_length_detection_length=0",
        "adv_color_dropout=0",
        "auto_orientation_mode=0",
        "autocropdeskew=0",
        "background_processing=0",
        "background_processing_sensitivity=0",
        "background_processing_setting=0",
        "background_setting_combobox=0",
        "binarization=0",
        "binarization_value=20",
        "blankpage_threshold=50",
        "br_x=210",
        "br_y=297",
        "brightness=0",
        "cachemode=0",
        "cachemode_use_default=1",
        "cachemode_value=64",
        "center_alignment=1",
        "color_dropout=0",
        "color_register=2",
        "contrast=0",
        "crop_adjust_bottom=0",
        "crop_adjust_left=0",
        "crop_adjust_right=0",
        "crop_adjust_top=0",
        "custom_resolution=",
        "despeckle=0",
        "despeckle_dotsnumber=0",
        "despeckle_ratios=1",
        "eject_paper_opposite_side=0",
        "gamma=200",
        "gray_doc_type=0",
        "invert=0",
        "long_paper_scan=0",
        "multistream=4",
        "poweroff=Enable",
        "poweroff_time=120",
        "powersaving=Enable",
        "powersaving_time=15",
        "prefeed=0",
        "prefeed_time=1",
        "punch_hole_removal=0",
        "redhead=0",
        "remove_blankpage=0",
        "resolution=3",
        "rotate=0",
        "scanrange_setting=2",
        "source=0",
        "split_image=0",
        "stop_scanning_after_multifeed=1",
        "tl_x=3",
        "tl_y=0",
        "two_side_rotate=1",
        "ultrasonic=Enable",
        "vertical_range=1",
        "waitingjob_time=0",
    };
    return lines;
}

/// The default group of the same state: gray_value in the place of invert, and power-off after 240
/// minutes.
inline QList<QByteArray> firstDefaultGroup()
{
    QList<QByteArray> lines = firstWorkingGroup();
    lines.removeOne("invert=0");
    lines.insert(lines.indexOf("gray_doc_type=0") + 1, "gray_value=1");
    lines.replace(lines.indexOf("poweroff_time=120"), "poweroff_time=240");
    return lines;
}

/// The whole file of a device called ScannerA.
inline QByteArray firstFile()
{
    return "[ScannerA]\n" + firstWorkingGroup().join('\n') +
           "\n\n[ScannerAconfig_version]\nconfig_version=102\n\n[ScannerAdefault]\n" +
           firstDefaultGroup().join('\n') + "\n\n[UserTemplates]\npreset_template_num=1\n";
}

} // namespace kestrel::test
