/// @file
/// A whole session of a user with a scanner, to be repeated while something else goes wrong.
#pragma once

#include "support/dialog_probe.h"

#include <QByteArray>
#include <QMap>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <string>
#include <vector>

class QSettings;

namespace kestrel::test {

/// @return whether the long form of a walk is asked for: KESTREL_RELIABILITY=full
bool isFullForm();

using Texts = QMap<QString, QString>;

/// @return every key of a settings file with its text; nothing without a file
Texts readSettingsFile(const QString& path);

/// Closes every message box that comes, whatever it says.
class BoxCloser : public QObject
{
public:
    BoxCloser();
    /// @return the texts so far
    const QStringList& texts() const { return m_texts; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QStringList m_texts;
};

/// One dialog, from its creation to its end. What it leaves behind of its settings is deleted with
/// it, so that thousands of sessions fit into a process.
class UserSession
{
public:
    UserSession();
    ~UserSession();
    Q_DISABLE_COPY_MOVE(UserSession)

    void bind(SANE_Handle handle, const char* folder, const char* name = "ScannerA");
    void preview();
    /// Changes some settings: one of each kind of control. @p variant picks the values, 0 or 1.
    void edit(int variant);
    void ok();
    void apply();
    /// What a user does, one after the other: all of the above with the edits of @p variant.
    void run(SANE_Handle handle, const char* folder, int variant);

    /// Deletes the dialog alone, as a host does.
    void end();

    /// @return what every control holds, by object name
    Texts controls() const;
    DialogProbe& dialog() { return *m_dialog; }

private:
    void keepSettings();

    std::unique_ptr<DialogProbe> m_dialog;
    std::vector<QSettings*> m_left;
};

} // namespace kestrel::test
