/// @file
/// What the tests of the settings dialog start from.
#pragma once

#include "support/dialog_probe.h"
#include "support/host.h"
#include "support/models.h"
#include "support/user.h"

#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

class QAbstractButton;
class QAbstractSlider;
class QComboBox;
class QDoubleSpinBox;
class QSettings;
class QSpinBox;
class QWidget;

namespace kestrel::test {

using Strings = std::vector<std::string>;

/// A dialog, not bound and not shown, with a settings folder of its own.
class DialogTest : public testing::Test
{
protected:
    DialogTest();
    ~DialogTest() override;

    /// Binds the dialog as a host does. What the dialog leaves behind of an earlier binding is
    /// deleted with the fixture.
    void bind(FakeScanner& scanner, const char* name = "ScannerA",
              const char* backend = "kestrel_adv");
    /// Binds to @p scanner, forgets what was sent, and has everything else recorded as literal
    /// text.
    void bindForTexts(FakeScanner& scanner, const char* backend = "kestrel_adv");
    /// Has what the dialog holds as its settings now deleted with the fixture; bind() does it by
    /// itself.
    void keepSettings();
    void show();
    /// Deletes the dialog.
    void destroy();

    DialogProbe& dialog() { return *m_dialog; }
    const TempConfigDir& dir() const { return m_dir; }

    QWidget& widget(const char* name) const;
    QAbstractButton& button(const char* name) const;
    QComboBox& combo(const char* name) const;
    QAbstractSlider& bar(const char* name) const;
    QSpinBox& spin(const char* name) const;
    QDoubleSpinBox& real(const char* name) const;
    bool checked(const char* name) const;
    QStringList itemsOf(const char* name) const;
    /// @return the text of the information tab
    QString information() const;

private:
    TempConfigDir m_dir;
    std::unique_ptr<DialogProbe> m_dialog;
    std::vector<QSettings*> m_leftBehind;
};

} // namespace kestrel::test
