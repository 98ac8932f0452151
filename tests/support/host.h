/// @file
/// What a host gives to the dialog: its record of the scanner and a folder for the settings files.
#pragma once

#include <kestrelsettingui.h>

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

namespace kestrel::test {

/// @return a host record; names longer than their field are cut
ScannerIdentity identity(const char* name = "ScannerA", const char* backend = "kestrel_adv",
                         std::uint32_t vid = 0x0638, std::uint32_t pid = 0xc141);

/// A folder of its own for settings files; it goes when the object does.
class TempConfigDir
{
public:
    TempConfigDir();

    /// @return the folder as hosts give it, without a slash at its end
    const char* path() const { return m_path.constData(); }
    /// @return the path of a file in it
    QString file(const QString& name) const;
    /// @return the bytes of a file in it, empty when there is none
    QByteArray read(const QString& name) const;
    /// Writes a file in it.
    void write(const QString& name, const QByteArray& bytes) const;

private:
    QTemporaryDir m_dir;
    QByteArray m_path;
};

} // namespace kestrel::test
