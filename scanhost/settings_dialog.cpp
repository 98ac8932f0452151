#include "settings_dialog.h"

#include <QDialog>
#include <QDir>

#include <new>

namespace kestrel {

SettingsDialog::SettingsDialog(QWidget* parent)
    : m_dialog(static_cast<QDialog*>(creatKestrelSetUI(parent)))
{
    if (!m_dialog) {
        throw std::bad_alloc();
    }
}

SettingsDialog::~SettingsDialog()
{
    // A parent that went first has deleted the dialog already.
    delete m_dialog.data();
}

void SettingsDialog::bind(void* handle, ScannerIdentity identity, const QString& configDir)
{
    QDir().mkpath(configDir);
    initKestrelSetUI(m_dialog, handle, &identity, configDir.toUtf8().constData());
}

void SettingsDialog::replaceHandle(void* handle)
{
    setDevice(m_dialog, handle);
}

void SettingsDialog::exec()
{
    showWindow(m_dialog);
}

ScanAnswers SettingsDialog::apply()
{
    setAllParamBySettingUI(m_dialog);
    return answers();
}

ScanAnswers SettingsDialog::answers() const
{
    ScanAnswers answers;
    answers.dpi = getCurrentResolution(m_dialog);
    answers.colourCorrection = getCurrentFiletype(m_dialog);
    switch (getScanSourceType(m_dialog)) {
    case 1:
        answers.source = PaperSource::Flatbed;
        break;
    case 2:
        answers.source = PaperSource::Automatic;
        break;
    default:
        answers.source = PaperSource::Feeder;
    }
    answers.singleSheet = isSingleScan(m_dialog) != 0;
    answers.duplex = isDoubleSideScan(m_dialog);
    answers.split = isSplitScan(m_dialog);
    answers.pauseSeconds = getWaitingJobTime(m_dialog);
    return answers;
}

bool SettingsDialog::chooseButton(int button)
{
    return setButtonTemplage(m_dialog, button) != 0;
}

void SettingsDialog::setBlankPageRemoval(bool on)
{
    setBlankPageFunc(m_dialog, on);
}

QDialog* SettingsDialog::dialog() const
{
    return m_dialog;
}

} // namespace kestrel
