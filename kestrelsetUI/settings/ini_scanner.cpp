#include "settings/ini_scanner.h"

#include "settings/ini_line_reader.h"
#include "settings/ini_names.h"
#include "settings/ini_value_reader.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace kestrel {

namespace {

// The code of the character that an escape stands for, as far as it is written in digits.
ushort codeOfEscape(const char* backslash, const char* end)
{
    const bool isHex = end - backslash > 1 && backslash[1] == 'x';
    const int base = isHex ? 16 : 8;
    std::uint32_t number = 0;
    int digit = 0;
    for (const char* at = backslash + (isHex ? 2 : 1);
         at < end && (digit = digitValue(*at, base)) >= 0; ++at) {
        number = number * static_cast<std::uint32_t>(base) + static_cast<std::uint32_t>(digit);
    }
    return static_cast<ushort>(number);
}

// Cheap test for what can become an "@": nearly all files have none.
bool mayHoldAtSign(const QByteArray& data)
{
    const char* const begin = data.constData();
    const char* const end = begin + data.size();
    if (findByte(begin, end, '@') != end) {
        return true;
    }
    for (const char* at = findByte(begin, end, '\\'); at < end; at = findByte(at + 1, end, '\\')) {
        if (codeOfEscape(at, end) == '@') {
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
