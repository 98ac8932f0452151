// One setting and its control: the text that the control gives, and what a text makes of it.
#include "kestrelsetting.h"

#include "kestrelsetting_controls.h"
#include "rules/gamma.h"
#include "settings/settings_table.h"
#include "settings/text_codec.h"
#include "ui_kestrelsetting.h"

using namespace kestrel;

namespace {

constexpr int kResolutionItemsWithCustom = 8;

/// The property of a control that holds a setting.
const char* valueProperty(Encoding encoding)
{
    switch (encoding) {
    case Encoding::Index:
        return "currentIndex";
    case Encoding::Bool:
    case Encoding::Orientation:
    case Encoding::Centering:
    case Encoding::BookRotation:
    case Encoding::EnableWord:
        return "checked";
    default:
        return "value";
    }
}

bool has(const QComboBox* list, int index)
{
    return index >= 0 && index < list->count();
}

void setCustomResolution(QComboBox* list, const QString& text)
{
    const bool present = list->count() == kResolutionItemsWithCustom;
    if (text.isEmpty()) {
        if (present) {
            list->removeItem(customResolutionItem);
        }
    } else if (!present) {
        list->addItem(text);
    } else if (list->itemText(customResolutionItem) != text) {
        list->setItemText(customResolutionItem, text);
    }
}

} // namespace

/// The control of a setting; bound by object name, once.
QWidget* KestrelSettingUI::control(const Setting& setting) const
{
    const auto name = QString::fromLatin1(setting.control);
    auto found = setting_controls.constFind(name);
    if (found == setting_controls.constEnd()) {
        found = setting_controls.insert(name, ui->tabWidget->findChild<QWidget*>(name));
    }
    return *found;
}

QString KestrelSettingUI::settingText(const Setting& setting) const
{
    const auto value = [&] { return control(setting)->property(valueProperty(setting.encoding)); };
    switch (setting.encoding) {
    case Encoding::Mask:
        return integerText(multistream_mask.bits());
    case Encoding::CustomResolution:
        return ui->resolution_gengel_slide->count() == kResolutionItemsWithCustom
                   ? ui->resolution_gengel_slide->itemText(customResolutionItem)
                   : QString();
    case Encoding::Real:
    case Encoding::SingleReal:
        return realText(value().toDouble());
    case Encoding::Bool:
    case Encoding::Orientation:
    case Encoding::Centering:
    case Encoding::BookRotation:
        return boolText(value().toBool());
    case Encoding::EnableWord:
        return enableText(value().toBool());
    case Encoding::Index:
    case Encoding::Integer:
    case Encoding::Gamma:
    case Encoding::TruncatedReal:
        break;
    }
    return integerText(value().toInt());
}

void KestrelSettingUI::loadSetting(const Setting& setting, const QString& text)
{
    const auto set = [&](const QVariant& value) {
        control(setting)->setProperty(valueProperty(setting.encoding), value);
    };
    switch (setting.encoding) {
    case Encoding::Mask:
        loadSideMode(SideMode(parseMask(text)));
        break;
    case Encoding::Index:
        if (has(static_cast<QComboBox*>(control(setting)), parseInteger(text))) {
            set(parseInteger(text));
        }
        break;
    case Encoding::CustomResolution:
        setCustomResolution(ui->resolution_gengel_slide, text);
        break;
    case Encoding::Integer:
        set(parseInteger(text));
        break;
    case Encoding::Gamma:
        if (const int gamma = parseInteger(text); gamma > 0) {
            set(gamma);
            // The table follows the stored number also where the slider can't.
            SetupGammaTable1(gamma_table.data(), gammaExponent(gamma));
        }
        break;
    case Encoding::Real:
        set(parseReal(text));
        break;
    case Encoding::SingleReal:
        set(parseSingleReal(text));
        break;
    case Encoding::TruncatedReal:
        set(parseTruncated(text));
        break;
    case Encoding::Bool:
        set(parseBool(text));
        break;
    case Encoding::EnableWord:
        set(parseEnable(text));
        break;
    case Encoding::Orientation:
        portrait = parseBool(text);
        (portrait ? ui->vertical_range : ui->horizontal_range)->setChecked(true);
        break;
    case Encoding::Centering:
        loadCentering(parseBool(text));
        break;
    case Encoding::BookRotation:
        if (const int book = parseInteger(text); book == 0 || book == 1) {
            (book == 1 ? ui->rotation_book : ui->rotation_fanfold)->setChecked(true);
        }
        break;
    }
}

void KestrelSettingUI::loadSideMode(SideMode mask)
{
    multistream_mask = mask;
    if (mask.detects()) {
        ui->color_detection_image_front->setChecked(mask.detects(Side::Front));
        ui->color_detection_image_back->setChecked(mask.detects(Side::Back));
    } else {
        // The back first: with the automatic source the front can't go before it.
        ui->color_detection_image_back->setChecked(false);
        ui->color_detection_image_front->setChecked(false);
    }
    ui->groupBox_front_autodetection->setEnabled(ui->color_detection_image_front->isChecked());
    ui->groupBox_back_autodetection->setEnabled(ui->color_detection_image_back->isChecked());
    if (!mask.detects()) {
        static constexpr std::array kOrder = {Mode::FrontColour,     Mode::FrontGray,
                                              Mode::FrontBlackWhite, Mode::BackColour,
                                              Mode::BackGray,        Mode::BackBlackWhite};
        for (const auto mode : kOrder) {
            ui->buttonGroup_multistream->button(idOf(mode))->setChecked(mask.has(mode));
        }
    }
}

void KestrelSettingUI::loadCentering(bool on)
{
    ui->center_alignment->setChecked(on);
    if (on) {
        ui->tl_x->setValue((ui->br_x->maximum() - ui->br_x->value()) * 0.5);
    }
    ui->tl_x_label->setEnabled(!on);
    ui->tl_x->setEnabled(!on);
}
