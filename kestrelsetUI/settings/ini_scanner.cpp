#include "settings/ini_scanner.h"

#include "settings/ini_line_reader.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace kestrel {

namespace {

int digitValue(char c, int base)
{
    int value = -1;
    if (c >= '0' && c <= '9') {
        value = c - '0';
    } else if (c >= 'a' && c <= 'f') {
        value = c - 'a' + 10;
    } else if (c >= 'A' && c <= 'F') {
        value = c - 'A' + 10;
    }
    return value < base ? value : -1;
}

/// Takes one value apart into its elements.
class ValueReader
{
public:
    explicit ValueReader(Span text) : at(text.begin), end(text.end) {}

    QStringList elements()
    {
        skipBlanks();
        while (at < end) {
            const char c = *at++;
            if (c == '\\') {
                readEscape();
            } else if (c == '"') {
                quoted = true;
                inQuotes = !inQuotes;
                if (!inQuotes) {
                    skipBlanks();
                }
            } else if (c == ',' && !inQuotes) {
                finishElement();
                skipBlanks();
            } else {
                element += QLatin1Char(c);
            }
        }
        finishElement();
        return result;
    }

private:
    void skipBlanks()
    {
        while (at < end && (*at == ' ' || *at == '\t')) {
            ++at;
        }
    }

    void finishElement()
    {
        while (!quoted && element.size() > keep &&
               (element.endsWith(QLatin1Char(' ')) || element.endsWith(QLatin1Char('\t')))) {
            element.chop(1);
        }
        result.append(element);
        element.clear();
        keep = 0;
        quoted = false;
    }

    void readEscape()
    {
        if (at >= end) {
            return;
        }
        static constexpr char names[] = "abfnrtv\"?'\\";
        static constexpr char meanings[] = "\a\b\f\n\r\t\v\"?'\\";
        const char c = *at++;
        if (const char* const known = c == '\0' ? nullptr : std::strchr(names, c)) {
            element += QLatin1Char(meanings[known - names]);
        } else if (c == 'x') {
            if (at < end && digitValue(*at, 16) >= 0) {
                readNumber(16);
            }
        } else if (digitValue(c, 8) >= 0) {
            --at;
            readNumber(8);
        } else if (isLineEnd(c) && at < end && isLineEnd(*at) && *at != c) {
            ++at;
        }
        keep = element.size();
    }

    // As many digits as there are; the low 16 bits of the number are the character.
    void readNumber(int base)
    {
        std::uint32_t number = 0;
        for (int digit = 0; at < end && (digit = digitValue(*at, base)) >= 0; ++at) {
            number = number * static_cast<std::uint32_t>(base) + static_cast<std::uint32_t>(digit);
        }
        element += QChar(static_cast<ushort>(number & 0xFFFFU));
    }

    const char* at;
    const char* end;
    QStringList result;
    QString element;
    int keep = 0; ///< trailing blanks up to here came from escapes and stay
    bool quoted = false;
    bool inQuotes = false;
};

QString unescapeKey(Span text)
{
    QString result;
    for (const char* at = text.begin; at < text.end; ++at) {
        if (*at == '\\') {
            result += QLatin1Char('/');
            continue;
        }
        const bool isLong = *at == '%' && at + 1 < text.end && at[1] == 'U';
        const char* const digits = at + (isLong ? 2 : 1);
        const int count = isLong ? 4 : 2;
        if (*at == '%' && text.end - digits >= count) {
            bool ok = false;
            const ushort code = QByteArray(digits, count).toUShort(&ok, 16);
            if (ok) {
                result += QChar(code);
                at = digits + count - 1;
                continue;
            }
        }
        result += QLatin1Char(*at);
    }
    return result;
}

Span trimmed(Span text)
{
    while (text.begin < text.end && isSpace(*text.begin)) {
        ++text.begin;
    }
    while (text.begin < text.end && isSpace(text.end[-1])) {
        --text.end;
    }
    return text;
}

/// The prefix of the keys that follow the line "[...]".
QString groupPrefix(Span line)
{
    const auto length = static_cast<std::size_t>(line.end - line.begin);
    const void* const bracket = std::memchr(line.begin, ']', length);
    const Span name = trimmed(
        {line.begin + 1, bracket != nullptr ? static_cast<const char*>(bracket) : line.end});
    const QByteArray raw(name.begin, static_cast<int>(name.end - name.begin));
    if (raw.compare("general", Qt::CaseInsensitive) == 0) {
        return {};
    }
    if (raw.compare("%general", Qt::CaseInsensitive) == 0) {
        return QString::fromLatin1(raw.mid(1)) + QLatin1Char('/');
    }
    return unescapeKey(name) + QLatin1Char('/');
}

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

// Slashes that follow another one; a full key is complete without them.
qint64 superfluousSlashes(const QString& name, bool isAfterSlash)
{
    qint64 count = 0;
    for (const QChar c : name) {
        const bool isSlash = c == QLatin1Char('/');
        count += isSlash && isAfterSlash ? 1 : 0;
        isAfterSlash = isSlash;
    }
    return count;
}

/// Measures a file from its first line to its last.
class Measuring
{
public:
    explicit Measuring(const QByteArray& data)
        : bracket(data.constData()), end(data.constData() + data.size())
    {
    }

    void add(const Line& line)
    {
        ++measures.lines;
        if (*line.text.begin == '[') {
            addGroup(line.text);
        } else if (line.equals != nullptr) {
            addKey(unescapeKey(trimmed({line.text.begin, line.equals})));
        }
    }

    const IniMeasures& result() const { return measures; }

private:
    void addGroup(Span line)
    {
        const QString prefix = groupPrefix(line);
        prefixLength = prefix.size();
        prefixSlashes = superfluousSlashes(prefix, true);
        measures.longestName = std::max(measures.longestName, prefixLength - 1);
        if (bracket < line.begin) {
            bracket = line.begin;
        }
        bracket = std::find(bracket, end, ']');
        measures.nameWork += bracket - line.begin;
    }

    void addKey(const QString& key)
    {
        const qint64 trailing = key.endsWith(QLatin1Char('/')) ? 1 : 0;
        const qint64 slashes = prefixSlashes + superfluousSlashes(key, true) + trailing;
        measures.longestName = std::max<qint64>(measures.longestName, key.size());
        measures.nameWork += (prefixLength + key.size()) * (1 + slashes);
    }

    IniMeasures measures;
    const char* bracket; ///< the next one, from the last group on
    const char* end;
    qint64 prefixLength = 0;
    qint64 prefixSlashes = 0;
};

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

IniMeasures measureIni(const QByteArray& data)
{
    Measuring measuring(data);
    LineReader reader(data);
    Line line{};
    while (reader.next(line)) {
        measuring.add(line);
    }
    return measuring.result();
}

} // namespace kestrel
