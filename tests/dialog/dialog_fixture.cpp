#include "dialog_fixture.h"

#include <kestrelsettingui.h>

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QSettings>
#include <QSpinBox>
#include <QTextEdit>

#include <algorithm>

namespace kestrel::test {

DialogTest::DialogTest() : m_dialog(std::make_unique<DialogProbe>()) {}

DialogTest::~DialogTest()
{
    destroy();
    // The dialog never deletes its settings objects; they must not write when the folder is gone.
    for (QSettings* settings : m_leftBehind) {
        delete settings;
    }
}

void DialogTest::keepSettings()
{
    QSettings* const settings = m_dialog->settings;
    if (settings != nullptr &&
        std::count(m_leftBehind.begin(), m_leftBehind.end(), settings) == 0) {
        m_leftBehind.push_back(settings);
    }
}

void DialogTest::destroy()
{
    if (m_dialog) {
        keepSettings();
        m_dialog.reset();
    }
}

void DialogTest::bind(FakeScanner& scanner, const char* name, const char* backend)
{
    ScannerIdentity record = identity(name, backend);
    initKestrelSetUI(m_dialog->host(), scanner.handle(), &record, m_dir.path());
    keepSettings();
}

void DialogTest::bindForTexts(FakeScanner& scanner, const char* backend)
{
    bind(scanner, "ScannerA", backend);
    scanner.takeTexts();
    scanner.clearJournal();
}

void DialogTest::show()
{
    m_dialog->show();
    settle();
}

QWidget& DialogTest::widget(const char* name) const
{
    return child<QWidget>(*m_dialog, name);
}

QAbstractButton& DialogTest::button(const char* name) const
{
    return child<QAbstractButton>(*m_dialog, name);
}

QComboBox& DialogTest::combo(const char* name) const
{
    return child<QComboBox>(*m_dialog, name);
}

QAbstractSlider& DialogTest::bar(const char* name) const
{
    return child<QAbstractSlider>(*m_dialog, name);
}

QSpinBox& DialogTest::spin(const char* name) const
{
    return child<QSpinBox>(*m_dialog, name);
}

QDoubleSpinBox& DialogTest::real(const char* name) const
{
    return child<QDoubleSpinBox>(*m_dialog, name);
}

bool DialogTest::checked(const char* name) const
{
    return button(name).isChecked();
}

QStringList DialogTest::itemsOf(const char* name) const
{
    return items(combo(name));
}

QString DialogTest::information() const
{
    return child<QTextEdit>(*m_dialog, "scanner_info").toPlainText();
}

} // namespace kestrel::test
