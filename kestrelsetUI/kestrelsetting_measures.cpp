// How large a sheet may be, once the options are known, and the paper sizes that this leaves.
#include "kestrelsetting_discovery.h"

#include "rules/paper_size.h"
#include "ui_kestrelsetting.h"

#include <QDebug>

using namespace kestrel;

/// The upper bound of an edge of the scan area at this moment.
std::optional<SANE_Fixed> KestrelSettingUI::Discovery::areaMaximum(int index)
{
    const auto* const option = index > 0 ? device_.descriptor(index) : nullptr;
    if (index > 0 && option == nullptr) {
        noteSilence();
    }
    const auto range = option != nullptr ? wordRange(*option) : std::nullopt;
    return range ? std::make_optional(fixedLength(*option, range->max)) : std::nullopt;
}

/// How long a sheet may be with and without long-paper scanning: the scanner is asked in both
/// states.
void KestrelSettingUI::Discovery::measureLongPaper()
{
    if (!dialog_.long_paper_available) {
        return;
    }
    // A scanner that can't tell keeps the one height it has.
    const auto known = mmToFixed(ui_.br_y->maximum());
    dialog_.long_paper_max_height = known;
    dialog_.normal_max_height = known;
    const int index = dialog_.long_paper_option;
    const auto* const option = device_.descriptor(index);
    if (option == nullptr) {
        noteSilence();
        return;
    }
    const auto size = option->size;
    const auto height = [&](SANE_Word on) {
        const bool isSet = device_.writeWord(index, on, size) == SANE_STATUS_GOOD;
        half_asked_ = half_asked_ || !isSet;
        return areaMaximum(dialog_.br_y_option);
    };
    const auto before = device_.readWord(index, *option);
    const auto longPaper = height(1);
    const auto normal = height(0);
    if (before.value_or(0) != 0) {
        device_.writeWord(index, *before, size);
    }
    dialog_.long_paper_max_height = longPaper.value_or(known);
    dialog_.normal_max_height = normal.value_or(known);
}

/// The longest sheet that the preview shows: the flatbed's where there is one beside the feeder.
void KestrelSettingUI::Discovery::measureFlatbed()
{
    auto length = static_cast<float>(ui_.br_y->maximum());
    if (dialog_.has_both_paths != 0) {
        const char* const flatbed = tables::at(tables::source, SaneSource::Flatbed);
        const auto* const option = device_.descriptor(dialog_.source_option);
        const auto status =
            device_.writeText(dialog_.source_option, flatbed, option != nullptr ? option->size : 0);
        qDebug() << dialog_.source_option << flatbed << status;
        dialog_.flatbed_max_length =
            static_cast<int>(fixedToMm(areaMaximum(dialog_.br_y_option).value_or(0)));
        qDebug() << dialog_.flatbed_max_length;
        length = static_cast<float>(dialog_.flatbed_max_length);
    }
    ui_.widget_5->setMaxHeight(length);
    ui_.preview_box->setMaxHeightAndStandrad(length, ui_.widget_5->getStandard());
}

/// The paper lists of both tabs; A4 is chosen, across the feed where the scanner takes A3.
void KestrelSettingUI::Discovery::listPaperSizes()
{
    const double width = ui_.br_x->maximum();
    const double height = ui_.br_y->maximum();
    for (const auto area : admittedAreas(width, height)) {
        ui_.scanrange_setting->addItem(scanAreaText(area));
        ui_.preview_scanrange->addItem(scanAreaText(area));
    }
    const auto a4 = scanAreaText(ScanArea::IsoA4);
    ui_.scanrange_setting->setCurrentIndex(
        ui_.scanrange_setting->findText(a4, Qt::MatchFixedString));
    if (admits(ScanArea::IsoA3, width, height)) {
        const auto& paper = paperSize(ScanArea::IsoA4);
        dialog_.updating = true;
        ui_.horizontal_range->setChecked(true);
        dialog_.portrait = false;
        ui_.br_x->setValue(paper.longMm);
        ui_.br_y->setValue(paper.shortMm);
        ui_.tl_x->setValue((width - ui_.br_x->value()) * 0.5);
        dialog_.updating = false;
    }
}
