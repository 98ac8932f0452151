/// @file
/// Looking at a file that settings_writer writes.
#pragma once

#include "settings/ini_scanner.h"
#include "settings/settings_table.h"

#include <QByteArray>
#include <QFile>
#include <QString>

namespace kestrel::test {

/// @return the number that all keys of the group have; -1 if the group is not there, -2 if it is
/// torn.
inline int commonNumber(const QByteArray& content, const QString& group)
{
    const auto entries = readIniEntries(content);
    int number = -1;
    int count = 0;
    for (auto entry = entries.cbegin(); entry != entries.cend(); ++entry) {
        if (!entry.key().startsWith(group + QLatin1Char('/'))) {
            continue;
        }
        const int value = entry->size() == 1 ? entry->first().toInt() : -2;
        if (count++ > 0 && value != number) {
            return -2;
        }
        number = value;
    }
    return count == 0 || count == static_cast<int>(settingCount) ? number : -2;
}

/// @return the bytes of the file; one reading sees one state of it.
inline QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace kestrel::test
