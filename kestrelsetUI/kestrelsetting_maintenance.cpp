// The information tab, the backend's peculiarities, power and paper ejection.
#include "kestrelsetting.h"

#include "system/system_info.h"
#include "ui_kestrelsetting.h"

#include <QDebug>

#include <strings.h>

using namespace kestrel;

void KestrelSettingUI::getOsInfo()
{
    system_text += osInfoText();
}

void KestrelSettingUI::getCpuInfo()
{
    system_text += cpuInfoText();
}

void KestrelSettingUI::getMemoryInfo()
{
    system_text += memoryInfoText();
}

void KestrelSettingUI::showScannerInfo()
{
    ui->scanner_info->clear();
    ui->scanner_info->setPlainText(system_text + serial_text + counter_text);
}

void KestrelSettingUI::getScannerRollerCount()
{
    vendor_driver.readCounters(counters);
}

void KestrelSettingUI::setScannerInfo()
{
    getScannerRollerCount();
    counter_text.clear();
    if (device_kind == 1 || device_kind == 2) {
        counter_text +=
            QStringLiteral("自动分纸滚轮/垫片次数：%1\n").arg(counters.separation_roller_count);
        counter_text += QStringLiteral("自动进纸滚轮次数：%1\n").arg(counters.feed_roller_count);
    }
    if (device_kind == 0 || device_kind == 2) {
        counter_text += QStringLiteral("平台扫描次数：%1\n").arg(counters.flatbed_scan_count);
    }
    showScannerInfo();
}

void KestrelSettingUI::lockFunctionByVid(unsigned int /*vid*/, const char* backend)
{
    const char* const name = backend != nullptr ? backend : "";
    qDebug() << name;
    if (strcasecmp(name, "kestrel_adv") != 0) {
        ui->long_paper_scan->hide();
    }
}

void KestrelSettingUI::setPowerManager()
{
    const auto sendTimed = [this](const char* option, const QAbstractButton* enabled,
                                  const char* timeOption, const QAbstractSlider* time) {
        kst_SetParam(option, enabled->isChecked() ? "Enable" : "Disable");
        if (enabled->isChecked()) {
            send(timeOption, QStringLiteral("%1").arg(time->value()));
        }
    };
    sendTimed("powersaving", ui->powersaving, "powersaving-time", ui->powersaving_time);
    sendTimed("poweroff", ui->poweroff, "poweroff-time", ui->poweroff_time);
}

void KestrelSettingUI::on_eject_paper_manual_clicked()
{
    kst_SetParam("eject-paper", nullptr);
}
