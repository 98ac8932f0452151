/// @file
/// A folder with a settings file for one test.
#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QSettings>
#include <QString>
#include <QTemporaryDir>
#include <QVariant>

#include <gtest/gtest.h>

#include <ostream>

inline void PrintTo(const QString& text, std::ostream* stream)
{
    *stream << '"' << text.toStdString() << '"';
}

namespace kestrel::test {

using Values = QMap<QString, QVariant>;

/// @return what a process that starts now would read from the file: the toolkit remembers files by
/// name, so a copy under a new name is read.
inline Values readAfterRestart(const QString& path)
{
    const QTemporaryDir elsewhere;
    const QString copy = elsewhere.filePath(QStringLiteral("copy.ini"));
    Values values;
    if (QFile::copy(path, copy)) {
        const QSettings settings(copy, QSettings::IniFormat);
        for (const QString& key : settings.allKeys()) {
            values.insert(key, key.isEmpty() ? QVariant() : settings.value(key));
        }
    }
    return values;
}

class SettingsFolder
{
public:
    QString filePath(const QString& name = QStringLiteral("ScannerA.ini")) const
    {
        return directory.filePath(name);
    }

    void write(const QByteArray& bytes, const QString& name = QStringLiteral("ScannerA.ini")) const
    {
        QFile file(filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }

    QByteArray bytes(const QString& name = QStringLiteral("ScannerA.ini")) const
    {
        QFile file(filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QStringList files() const
    {
        return QDir(directory.path())
            .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    }

private:
    QTemporaryDir directory;
};

inline QByteArray nameOf(const SettingsFolder& folder)
{
    return QFile::encodeName(folder.filePath());
}

} // namespace kestrel::test
