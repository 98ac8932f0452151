// Image modes of both sides, colour detection, binarisation, gamma, colour dropout.
#include "kestrelsetting.h"

#include "out_of_memory.h"
#include "rules/gamma.h"
#include "ui_kestrelsetting.h"

using namespace kestrel;

namespace {

constexpr int kDropoutTab = 2;
constexpr int kDetectionTab = 1;

QAbstractButton* box(const Ui_KestrelSetting& ui, Mode mode)
{
    return ui.buttonGroup_multistream->button(idOf(mode));
}

ModeBoxes boxes(const Ui_KestrelSetting& ui)
{
    ModeBoxes states{};
    for (int id = 0; id < kModeCount; ++id) {
        states.at(static_cast<std::size_t>(id)) = box(ui, static_cast<Mode>(id))->isChecked();
    }
    return states;
}

/// The button that opens a mode's settings panel.
QAbstractButton* imageButton(const Ui_KestrelSetting& ui, Mode mode)
{
    switch (mode) {
    case Mode::FrontBlackWhite:
        return ui.lineart_front_image;
    case Mode::FrontGray:
        return ui.gray_front_image;
    case Mode::FrontColour:
        return ui.color_front_image;
    case Mode::BackBlackWhite:
        return ui.lineart_back_image;
    case Mode::BackGray:
        return ui.gray_back_image;
    case Mode::BackColour:
        return ui.color_back_image;
    }
    return ui.test_button;
}

void setTabEnabled(QTabWidget* tabs, int index, bool on)
{
    tabs->setTabEnabled(index, on);
    // The bar measures its tabs only when a text is set; a disabled one has no width.
    tabs->setTabText(index, tabs->tabText(index));
}

void setBoxes(const Ui_KestrelSetting& ui, const std::vector<BoxWrite>& writes)
{
    for (const auto& [mode, checked] : writes) {
        box(ui, mode)->setChecked(checked);
    }
}

} // namespace

void KestrelSettingUI::setMultistream(int id)
{
    const auto mode = modeFromId(id);
    if (!mode) {
        return;
    }
    unlessOutOfMemory([&] {
        const auto* const container =
            sideOf(*mode) == Side::Front ? ui->front_widget : ui->rear_widget;
        const auto outcome =
            kestrel::setMultistream({*mode, multistream_mask, boxes(*ui), container->isEnabled(),
                                     currentSource() == ScanSource::Automatic});
        multistream_mask = outcome.mask;
        if (outcome.imageButton) {
            imageButton(*ui, *outcome.imageButton)->setChecked(true);
        }
        setBoxes(*ui, outcome.boxes);
    });
}

void KestrelSettingUI::on_color_detection_image_front_toggled(bool on)
{
    multistream_mask = multistream_mask.withDetection(Side::Front, on);
    color_detection_image();
}

void KestrelSettingUI::on_color_detection_image_back_toggled(bool on)
{
    multistream_mask = multistream_mask.withDetection(Side::Back, on);
    color_detection_image();
}

void KestrelSettingUI::color_detection_image()
{
    if (backDetectionNeedsFront(currentSource() == ScanSource::Automatic,
                                ui->color_detection_image_back->isChecked())) {
        ui->color_detection_image_front->setChecked(true);
    }
    unlessOutOfMemory([&] {
        const auto outcome =
            detectionRule(ui->color_detection_image_front->isChecked(),
                          ui->color_detection_image_back->isChecked(), multistream_mask);
        setTabEnabled(ui->tabWidget, kDropoutTab, outcome.dropoutTab);
        setTabEnabled(ui->tabWidget, kDetectionTab, outcome.detectionTab);
        ui->groupBox_front_autodetection->setEnabled(outcome.frontGroup);
        ui->groupBox_back_autodetection->setEnabled(outcome.backGroup);
        ui->front_widget->setEnabled(outcome.sideContainers);
        ui->rear_widget->setEnabled(outcome.sideContainers);
        (outcome.panelsOff ? ui->test_button : ui->color_front_image)->setChecked(true);
        setBoxes(*ui, outcome.boxes);
    });
}

void KestrelSettingUI::on_binarization_currentIndexChanged(int index)
{
    struct Limits
    {
        int min;
        int max;
        int value;
    };
    static constexpr std::array<Limits, 2> kLimits = {{{1, 30, 20}, {0, 255, 128}}};
    constexpr int kDiffusion = 2;
    if (index < 0 || index > kDiffusion) {
        return;
    }
    ui->binarization_value_widget->setEnabled(index != kDiffusion);
    if (index != kDiffusion) {
        const auto& limits = kLimits.at(static_cast<std::size_t>(index));
        ui->binarization_value->setRange(limits.min, limits.max);
        ui->spinBox_9->setRange(limits.min, limits.max);
        ui->binarization_value->setValue(limits.value);
    }
}

// Slider and spin box write each other; whichever was written does not write back, or truncation
// would pull the gamma down with every round.
void KestrelSettingUI::on_gamma_set_valueChanged(int v)
{
    showGamma(gammaFromSlider(v).value);
    SetupGammaTable1(gamma_table.data(), gammaExponent(v));
}

void KestrelSettingUI::on_gamma_value_valueChanged(double g)
{
    if (!showing_gamma) {
        const auto gamma = gammaFromValue(g);
        ui->gamma_set->setValue(gamma.slider);
        showGamma(gamma.value);
    }
}

// Setting a spin box to what it holds would still complete its text, between two keys of the user.
void KestrelSettingUI::showGamma(double gamma)
{
    if (ui->gamma_value->value() == gamma) {
        return;
    }
    showing_gamma = true;
    ui->gamma_value->setValue(gamma);
    showing_gamma = false;
}

void KestrelSettingUI::on_color_dropout_currentIndexChanged(int index)
{
    ui->adv_color_dropout->setEnabled(index != 0);
}
