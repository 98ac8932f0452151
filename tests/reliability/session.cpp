#include "reliability/session.h"

#include "support/host.h"
#include "support/user.h"

#include <kestrelsettingui.h>
#include <settings/settings_file.h>

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QApplication>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QEvent>
#include <QFile>
#include <QMessageBox>
#include <QPointer>
#include <QSettings>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>

namespace kestrel::test {

namespace {

/// What a control holds, as text; nothing for what holds no value.
QString held(const QWidget& control)
{
    if (const auto* const list = qobject_cast<const QComboBox*>(&control)) {
        return QString::number(list->currentIndex());
    }
    if (const auto* const button = qobject_cast<const QAbstractButton*>(&control)) {
        return button->isCheckable() ? QString::number(button->isChecked() ? 1 : 0) : QString();
    }
    if (const auto* const bar = qobject_cast<const QAbstractSlider*>(&control)) {
        return QString::number(bar->value());
    }
    if (const auto* const spin = qobject_cast<const QSpinBox*>(&control)) {
        return QString::number(spin->value());
    }
    if (const auto* const real = qobject_cast<const QDoubleSpinBox*>(&control)) {
        return QString::number(real->value());
    }
    return {};
}

} // namespace

bool isFullForm()
{
    return qgetenv("KESTREL_RELIABILITY") == "full";
}

Texts readSettingsFile(const QString& path)
{
    // The toolkit remembers files by name: what a process that starts now would read is read from a
    // copy.
    const QTemporaryDir elsewhere;
    const QString copy = elsewhere.filePath(QStringLiteral("copy.ini"));
    Texts texts;
    if (!QFile::copy(path, copy)) {
        return texts;
    }
    const QSettings file(copy, QSettings::IniFormat);
    for (const QString& key : file.allKeys()) {
        texts.insert(key, file.value(key).toString());
    }
    return texts;
}

BoxCloser::BoxCloser()
{
    qApp->installEventFilter(this);
}

bool BoxCloser::eventFilter(QObject* watched, QEvent* event)
{
    auto* const box = qobject_cast<QMessageBox*>(watched);
    if (box != nullptr && event->type() == QEvent::Show) {
        m_texts.append(box->text());
        QTimer::singleShot(0, box, &QMessageBox::accept);
    }
    return QObject::eventFilter(watched, event);
}

UserSession::UserSession() : m_dialog(std::make_unique<DialogProbe>()) {}

UserSession::~UserSession()
{
    end();
    // The toolkit's own way of closing waits for a stuck lock without limit.
    for (QSettings* settings : m_left) {
        SettingsCloser()(settings);
    }
}

void UserSession::end()
{
    if (m_dialog) {
        keepSettings();
        m_dialog.reset();
    }
}

void UserSession::keepSettings()
{
    QSettings* const settings = m_dialog->settings;
    if (settings != nullptr && std::count(m_left.begin(), m_left.end(), settings) == 0) {
        m_left.push_back(settings);
    }
}

void UserSession::bind(SANE_Handle handle, const char* folder, const char* name)
{
    ScannerIdentity record = identity(name);
    keepSettings();
    initKestrelSetUI(m_dialog->host(), handle, &record, folder);
    keepSettings();
}

void UserSession::preview()
{
    child<QAbstractButton>(*m_dialog, "preview").click();
}

void UserSession::edit(int variant)
{
    const bool other = variant != 0;
    child<QAbstractSlider>(*m_dialog, "brightness_set").setValue(other ? 33 : -21);
    child<QAbstractSlider>(*m_dialog, "contrast_set").setValue(other ? -12 : 45);
    child<QComboBox>(*m_dialog, "color_dropout").setCurrentIndex(other ? 2 : 1);
    child<QAbstractButton>(*m_dialog, "punch_hole_removal").setChecked(other);
    child<QAbstractButton>(*m_dialog, "ultrasonic").setChecked(other);
    child<QDoubleSpinBox>(*m_dialog, "crop_adjust_top").setValue(other ? 3.5 : -2.5);
    child<QAbstractSlider>(*m_dialog, "powersaving_time").setValue(other ? 90 : 45);
}

void UserSession::ok()
{
    child<QAbstractButton>(*m_dialog, "sure").click();
}

void UserSession::apply()
{
    setAllParamBySettingUI(m_dialog->host());
}

void UserSession::run(SANE_Handle handle, const char* folder, int variant)
{
    bind(handle, folder);
    preview();
    edit(variant);
    ok();
    apply();
}

Texts UserSession::controls() const
{
    Texts texts;
    for (const QWidget* control : m_dialog->findChildren<QWidget*>()) {
        const QString name = control->objectName();
        const QString text = held(*control);
        if (!text.isEmpty() && !name.isEmpty() && !name.startsWith(QLatin1String("qt_"))) {
            texts.insert(name, text);
        }
    }
    return texts;
}

} // namespace kestrel::test
