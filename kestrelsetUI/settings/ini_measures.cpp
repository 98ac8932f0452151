#include "settings/ini_measures.h"

#include "settings/ini_line_reader.h"
#include "settings/ini_names.h"

#include <algorithm>

namespace kestrel {

namespace {

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

// Most keys are what they look like, and have no groups in them.
bool isPlainKey(Span text)
{
    return std::none_of(text.begin, text.end,
                        [](char c) { return c == '%' || c == '\\' || c == '/'; });
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
            addKey(trimmed({line.text.begin, line.equals}));
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
        bracket = findByte(bracket, end, ']');
        measures.nameWork += bracket - line.begin;
    }

    void addKey(Span text)
    {
        if (!isPlainKey(text)) {
            addKey(unescapeKey(text));
            return;
        }
        const qint64 length = text.end - text.begin;
        measures.longestName = std::max(measures.longestName, length);
        measures.nameWork += (prefixLength + length) * (1 + prefixSlashes);
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

} // namespace

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
