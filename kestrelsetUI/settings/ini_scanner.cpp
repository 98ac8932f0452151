#include "settings/ini_scanner.h"

#include "settings/ini_line_reader.h"
#include "settings/ini_names.h"
#include "settings/ini_value_reader.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace kestrel {

namespace {

// Cheap test for what can become an "@": nearly all files have none.
bool mayHoldAtSign(const QByteArray& data)
{
    if (data.contains('@')) {
        return true;
    }
    for (int i = data.indexOf('\\'); i >= 0; i = data.indexOf('\\', i + 1)) {
        const char next = i + 1 < data.size() ? data.at(i + 1) : '\0';
        const int base = next == 'x' ? 16 : 8;
        std::uint32_t number = 0;
        int digit = 0;
        for (int j = i + (next == 'x' ? 2 : 1);
             j < data.size() && (digit = digitValue(data.at(j), base)) >= 0; ++j) {
            number = number * static_cast<std::uint32_t>(base) + static_cast<std::uint32_t>(digit);
        }
        if ((number & 0xFFFFU) == '@') {
            return true;
        }
    }
    return false;
}

bool holdsAny(Span text, const char* characters)
{
    return std::find_first_of(text.begin, text.end, characters,
                              characters + std::strlen(characters)) != text.end;
}

} // namespace

bool holdsSerializedObject(const QByteArray& data)
{
    return holdsValueStartingWith(data, "@Variant(") || holdsValueStartingWith(data, "@DateTime(");
}

bool holdsValueStartingWith(const QByteArray& data, const QByteArray& marker)
{
    if (!mayHoldAtSign(data)) {
        return false;
    }
    // In a file with a mark the toolkit drops further marks inside the values.
    const bool isMarked = data.startsWith(byteOrderMark);
    const auto begins = [&marker, isMarked](QString element) {
        if (isMarked) {
            element.remove(QLatin1String(byteOrderMark));
        }
        return element.startsWith(QLatin1String(marker));
    };
    LineReader reader(data);
    Line line{};
    while (reader.next(line)) {
        if (line.equals == nullptr) {
            continue;
        }
        const Span value{line.equals + 1, line.text.end};
        if (holdsAny(value, "@\\")) {
            const QStringList elements = ValueReader(value).elements();
            if (std::any_of(elements.cbegin(), elements.cend(), begins)) {
                return true;
            }
        }
    }
    return false;
}

QMultiHash<QString, QStringList> readIniEntries(const QByteArray& data)
{
    QMultiHash<QString, QStringList> entries;
    QString prefix;
    LineReader reader(data);
    Line line{};
    while (reader.next(line)) {
        if (*line.text.begin == '[') {
            prefix = groupPrefix(line.text);
        } else if (line.equals == nullptr) {
            entries.insert(QString(), QStringList());
        } else {
            entries.insert(prefix + unescapeKey(trimmed({line.text.begin, line.equals})),
                           ValueReader({line.equals + 1, line.text.end}).elements());
        }
    }
    return entries;
}

} // namespace kestrel
