/// @file
/// The walk over a scanner's options, in the files that share it.
#pragma once

#include "kestrelsetting.h"
#include "scanner/sane_device.h"
#include "scanner/value_tables.h"

#include <QComboBox>

class QAbstractButton;

/// One walk over the options of the device.
class KestrelSettingUI::Discovery
{
public:
    explicit Discovery(KestrelSettingUI& dialog)
        : dialog_(dialog), ui_(*dialog.ui), device_(dialog.sane_handle)
    {
    }

    // The walk (_discovery)
    void startAfresh();
    void walk(const kestrel::SaneDevice::OptionCount& count);
    // What follows from it (_measures)
    void measureLongPaper();
    void measureFlatbed();
    void listPaperSizes();
    /// The scanner did not tell all.
    bool isHalfAsked() const { return half_asked_; }
    /// Nor is that its way: it may tell more the next time.
    bool isHalfDescribed() const { return half_described_; }

private:
    struct Row
    {
        const char* name;
        void (*handle)(Discovery&);
    };
    static const Row* row(const char* name);
    bool areForGood(const std::vector<int>& gaps,
                    const kestrel::SaneDevice::OptionCount& count) const;
    void noteSilence();

    // The option at hand (_options)
    bool active() const { return kestrel::isActive(*option_); }
    std::optional<SANE_Word> word();
    std::optional<QByteArray> text() const { return device_.readText(index_, *option_); }
    std::optional<double> lengthMm();

    // How an option's value meets its control (_options)
    template <typename Control>
    void integer(Control* control);
    template <typename Control>
    void integerRange(Control* control);
    void lengthRange(QDoubleSpinBox* control);
    void length(QDoubleSpinBox* control);
    void area(QDoubleSpinBox* control, QDoubleSpinBox* offset, QDoubleSpinBox* extent);
    void check(QAbstractButton* control);
    void onOff(QAbstractButton* control);
    template <std::size_t Size>
    void choice(QComboBox* control, const kestrel::tables::Texts<Size>& table);
    void counter(std::uint32_t& count, const char* pattern);

    // Options that need more (_options)
    void source();
    void resolution();
    void crop();
    void longPaper();
    void background();
    void backgroundList();
    void prefeed();
    void blankPage();
    void cacheDefault();
    void powerOffTime();
    void serialNumber();
    void deviceInfo();

    std::optional<SANE_Fixed> areaMaximum(int index);

    KestrelSettingUI& dialog_;
    Ui_KestrelSetting& ui_;
    kestrel::SaneDevice device_;
    int index_ = 0;
    const SANE_Option_Descriptor* option_ = nullptr;
    SANE_Word lastWord_ = 0;
    bool half_asked_ = false;
    bool half_described_ = false;
};

template <typename Control>
void KestrelSettingUI::Discovery::integer(Control* control)
{
    if (const auto value = word()) {
        control->setValue(kestrel::wholeUnits(*option_, *value));
    }
}

template <typename Control>
void KestrelSettingUI::Discovery::integerRange(Control* control)
{
    if (const auto range = kestrel::wordRange(*option_)) {
        control->setRange(kestrel::wholeUnits(*option_, range->min),
                          kestrel::wholeUnits(*option_, range->max));
    }
    control->setSingleStep(1);
}

template <std::size_t Size>
void KestrelSettingUI::Discovery::choice(QComboBox* control,
                                         const kestrel::tables::Texts<Size>& table)
{
    const auto value = text();
    const int index = value ? kestrel::tables::indexIn(table, value->constData()) : -1;
    if (index >= 0) {
        control->setCurrentIndex(index);
    }
}
