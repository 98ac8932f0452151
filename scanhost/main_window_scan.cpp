#include "main_window.h"

#include "identity.h"
#include "message_bar.h"
#include "scan_plan.h"
#include "status_text.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QProgressBar>

#include <algorithm>

namespace kestrel {

namespace {

/// The mouse pointer says "wait" while one of these lives.
class WaitCursor
{
public:
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
    Q_DISABLE_COPY_MOVE(WaitCursor)
};

} // namespace

void MainWindow::findDevices(const QString& deviceName)
{
    m_activity->setText(tr("正在查找扫描仪…"));
    m_progress->setRange(0, 0);
    m_task.start([this] { m_found = SaneLibrary::devices(&m_foundStatus); },
                 [this, deviceName] { devicesFound(deviceName); });
    updateActions();
}

void MainWindow::devicesFound(const QString& wanted)
{
    // A scanner of the network may be usable by its name without being announced.
    const auto isWanted = [&](const ScannerInfo& info) { return info.name == wanted; };
    if (!wanted.isEmpty() && std::none_of(m_found.begin(), m_found.end(), isWanted)) {
        m_found.push_back({wanted, {}, {}, {}});
    }
    m_devices.setDevices(std::move(m_found));
    m_activity->clear();
    // Without a wish the scanner that was open stays the choice, if it is still there.
    const int row = m_devices.rowOf(wanted.isEmpty() ? m_device.info().name : wanted);
    if (const ScannerInfo* info = m_devices.at(std::max(row, 0))) {
        m_deviceBox->setCurrentIndex(std::max(row, 0));
        openDevice(*info);
    } else if (m_foundStatus != SANE_STATUS_GOOD) {
        m_messages->showMessage(tr("查找扫描仪失败：%1").arg(statusText(m_foundStatus)));
    } else {
        m_messages->showMessage(tr("没有找到扫描仪。请接通电源和电缆，然后点“刷新”。"));
    }
    updateActions();
    emit ready();
    closeIfWanted();
}

void MainWindow::openDevice(const ScannerInfo& info)
{
    const WaitCursor cursor;
    const ScannerInfo chosen = info;
    m_settings.reset();
    m_deviceLost = false;
    m_answers = {};
    const SANE_Status status = m_device.open(chosen);
    if (status == SANE_STATUS_GOOD) {
        const QString ids = m_device.textOption("device-info").value_or(QString());
        const QString serial = m_device.textOption("serial-number").value_or(QString());
        m_settings = std::make_unique<SettingsDialog>(this);
        m_settings->bind(m_device.handle(), makeIdentity(chosen.name, chosen.model, ids),
                         m_configDir);
        m_answers = m_settings->answers();
        m_summary->setToolTip(serial.isEmpty() ? chosen.name
                                               : tr("%1，序列号 %2").arg(chosen.name, serial));
        setWindowTitle(tr("%1 - 扫描").arg(chosen.title()));
        m_messages->showMessage({});
    } else {
        setWindowTitle(tr("扫描"));
        m_messages->showMessage(tr("无法打开 %1：%2").arg(chosen.title(), openStatusText(status)));
    }
    updateActions();
}

bool MainWindow::reopenDevice()
{
    const WaitCursor cursor;
    const SANE_Status status = m_device.open(ScannerInfo(m_device.info()));
    if (status != SANE_STATUS_GOOD) {
        m_messages->showMessage(
            tr("无法打开 %1：%2").arg(m_device.info().title(), openStatusText(status)));
        return false;
    }
    // The same scanner: the dialog keeps its settings and only gets the new handle.
    m_settings->replaceHandle(m_device.handle());
    m_deviceLost = false;
    return true;
}

void MainWindow::showSettings()
{
    if (!m_settings || m_worker.isRunning()) {
        return;
    }
    m_settings->exec();
    m_answers = m_settings->answers();
    updateActions();
}

void MainWindow::startScan()
{
    if (!m_settings || m_worker.isRunning()) {
        return;
    }
    m_messages->showMessage({});
    if (m_deviceLost && !reopenDevice()) {
        updateActions();
        emit scanEnded();
        return;
    }
    m_stopping = false;
    m_answers = m_settings->apply();
    m_activity->setText(tr("正在启动扫描仪…"));
    m_progress->setRange(0, 0);
    m_worker.start(m_device.handle(), planFor(m_device, m_answers), m_store);
    updateActions();
}

void MainWindow::stopScan()
{
    if (m_secondsLeft > 0) {
        m_pause.stop();
        m_secondsLeft = 0;
        m_activity->clear();
        updateActions();
        emit scanEnded();
        return;
    }
    m_activity->setText(tr("正在停止…"));
    m_stopping = true;
    m_worker.cancel();
}

void MainWindow::scanFinished(const ScanEnd& end)
{
    m_deviceLost = end.deviceLost;
    m_activity->setText(end.images > 0 ? tr("已扫描 %1 张图像").arg(end.images) : QString());
    if (end.kind == ScanEnd::Kind::Failed) {
        m_messages->showMessage(
            end.images > 0 ? tr("扫描中断：%1（已保留 %2 张图像）").arg(end.message).arg(end.images)
                           : end.message);
    }
    updateActions();
    if (m_closing) {
        close();
        return;
    }
    // The wish to stop may have come when the sheet was as good as done.
    if (end.kind == ScanEnd::Kind::Finished && m_answers.pauseSeconds > 0 && !m_stopping) {
        waitForNextSheet();
        return;
    }
    emit scanEnded();
}

void MainWindow::waitForNextSheet()
{
    m_secondsLeft = m_answers.pauseSeconds + 1;
    m_pause.start();
    countDown();
    updateActions();
}

void MainWindow::countDown()
{
    if (--m_secondsLeft > 0) {
        m_activity->setText(tr("请放好下一页，%1 秒后继续扫描；点“取消”结束").arg(m_secondsLeft));
        return;
    }
    m_pause.stop();
    startScan();
}

} // namespace kestrel
