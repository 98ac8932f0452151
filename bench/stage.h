/// @file
/// What the benchmarks work on: scanners, settings folders, dialogs.
#pragma once

#include "support/dialog_probe.h"
#include "support/fake_scanner.h"
#include "support/host.h"

#include <QByteArray>
#include <QSettings>
#include <QString>

namespace kestrel::bench {

/// @return a scanner with every option that the dialog knows, and unknown ones evenly between them
/// @param unknownBehindEach how many unknown options follow each known one
kestrel::test::FakeScanner scannerWith(int unknownBehindEach);

/// Unknown options behind each known one that make some 750 of some 75.
constexpr int kTenfold = 9;

/// @return the settings file of a scanner that was confirmed, with so many templates of all keys
const QByteArray& settingsFile(int templates);

QString templateName(int number);

/// Name of the scanner, and of its groups in the settings file.
inline QString scannerName()
{
    return QStringLiteral("ScannerA");
}
inline QString settingsFileName()
{
    return QStringLiteral("ScannerA.ini");
}

/// Binds as a host does.
void bind(kestrel::test::DialogProbe& dialog, kestrel::test::FakeScanner& scanner,
          const kestrel::test::TempConfigDir& folder);

/// A dialog that is bound to a scanner with a settings file of so many templates.
class Stage
{
public:
    explicit Stage(int templates = 0, int unknownBehindEach = 0);
    ~Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    kestrel::test::DialogProbe& dialog() { return m_dialog; }
    kestrel::test::FakeScanner& scanner() { return m_scanner; }
    const kestrel::test::TempConfigDir& folder() const { return m_folder; }

private:
    kestrel::test::TempConfigDir m_folder;
    kestrel::test::FakeScanner m_scanner;
    kestrel::test::DialogProbe m_dialog;
};

/// Closes what a dialog leaves behind of its last binding.
void closeSettings(kestrel::test::DialogProbe& dialog);

} // namespace kestrel::bench
