// The resolution list with its one custom entry.
#include "kestrelsetting.h"

#include "dialogs/customresolution.h"
#include "ui_kestrelsetting.h"

namespace {

constexpr int kCustomItem = 7;
constexpr int kDefaultItem = 3; // 200 dpi

bool hasCustomItem(const QComboBox* list)
{
    return list->count() == kCustomItem + 1;
}

} // namespace

int KestrelSettingUI::get_resolution()
{
    const QString text = ui->resolution_gengel_slide->currentText();
    if (ui->resolution_gengel_slide->currentIndex() != kCustomItem) {
        return text.toInt();
    }
    return text.split(QStringLiteral("custom-")).value(1).toInt();
}

void KestrelSettingUI::on_customresolution_clicked()
{
    const auto* const list = ui->resolution_gengel_slide;
    custom_resolution->setCustomResolution(hasCustomItem(list) ? list->itemText(kCustomItem)
                                                               : QString());
    custom_resolution->exec();
}

void KestrelSettingUI::getCustomResolution(QString text)
{
    auto* const list = ui->resolution_gengel_slide;
    if (text.isEmpty()) {
        // One too far, so that it never holds: after a removal the list picks its own current item.
        const bool reset = list->currentIndex() == kCustomItem + 1;
        list->removeItem(kCustomItem);
        if (reset) {
            list->setCurrentIndex(kDefaultItem);
        }
    } else if (!hasCustomItem(list)) {
        list->addItem(text);
    } else if (list->itemText(kCustomItem) != text) {
        list->setItemText(kCustomItem, text);
    }
}
