#include "settings/settings_snapshot.h"

#include "settings/ini_line_reader.h"
#include "settings/ini_names.h"
#include "settings/ini_scanner.h"
#include "settings/ini_sections.h"
#include "settings/ini_value_reader.h"
#include "settings/open_group.h"

#include <QSet>
#include <QSettings>

#include <algorithm>
#include <array>

namespace kestrel {

namespace {

bool isWrittenAsText(const QVariant& value)
{
    switch (static_cast<QMetaType::Type>(value.type())) {
    case QMetaType::QString:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Bool:
    case QMetaType::Double:
        return true;
    default:
        return false;
    }
}

QString withoutEscape(const QString& text)
{
    if (text.startsWith(QLatin1String("@@"))) {
        return text.mid(1);
    }
    const QLatin1String opening("@String(");
    if (text.startsWith(opening) && text.endsWith(QLatin1Char(')'))) {
        return text.mid(opening.size(), text.size() - opening.size() - 1);
    }
    return text;
}

// Names that the toolkit reads from files made by others, and then writes to one and the same line:
// "/x" and "x".
QSet<QString> sharedLines(const Snapshot& snapshot)
{
    QSet<QString> shared;
    for (auto entry = snapshot.keyBegin(); entry != snapshot.keyEnd(); ++entry) {
        const QString plain = entry->startsWith(QLatin1Char('/')) ? entry->mid(1) : QString();
        const bool isWrittenPlain = !plain.isNull() && !plain.contains(QLatin1Char('/'));
        if (isWrittenPlain && snapshot.contains(plain)) {
            shared.insert(plain);
        }
    }
    return shared;
}

// Whether a value in the file is no more than its characters.
bool isPlain(Span text)
{
    static constexpr std::array meaningful = {'"', '\\', ',', '@'};
    return std::find_first_of(text.begin, text.end, meaningful.begin(), meaningful.end()) ==
           text.end;
}

bool isValue(Span text, const QString& wanted)
{
    if (isPlain(text)) {
        const Span value = trimmed(text);
        return wanted == QLatin1String(value.begin, static_cast<int>(value.end - value.begin));
    }
    const QStringList elements = ValueReader(text).elements();
    return elements.size() == 1 && withoutEscape(elements.first()) == wanted;
}

// Names that the toolkit would tidy up before it looks for them.
bool isOddName(const QString& key)
{
    return key.isEmpty() || key.startsWith(QLatin1Char('/')) || key.endsWith(QLatin1Char('/')) ||
           key.contains(QLatin1String("//"));
}

/// Compares lines with what the toolkit holds. A "no" is to be looked at closely.
class LineComparison
{
public:
    explicit LineComparison(const QSettings& settings) : settings(settings) {}

    bool isHeld(const Line& line)
    {
        if (*line.text.begin == '[') {
            prefix = groupPrefix(line.text);
            return true;
        }
        ++values;
        if (line.equals == nullptr) {
            return false;
        }
        key.resize(0);
        key += prefix;
        appendUnescaped(trimmed({line.text.begin, line.equals}), key);
        if (isOddName(key)) {
            return false;
        }
        const QVariant wanted = settings.value(key);
        return isWrittenAsText(wanted) &&
               isValue({line.equals + 1, line.text.end}, wanted.toString());
    }

    /// How many lines have had a value.
    int count() const { return values; }

private:
    const QSettings& settings;
    QString prefix;
    QString key;
    int values = 0;
};

// The answer for nearly all files, in one walk without a copy of what they hold.
bool holdsLineByLine(const QByteArray& content, const QSettings& settings)
{
    LineComparison comparison(settings);
    LineReader reader(content);
    Line line{};
    while (reader.next(line)) {
        if (!comparison.isHeld(line)) {
            return false;
        }
    }
    return comparison.count() == settings.allKeys().size();
}

// A value that goes on in the next line would change what the following sections mean.
bool endsInItsLine(const Line& line)
{
    return findByte(line.text.begin, line.text.end, '\n') == line.text.end;
}

bool holdsSection(const Section& section, LineComparison& comparison)
{
    const QByteArray text = QByteArray::fromRawData(
        section.text.begin, static_cast<int>(section.text.end - section.text.begin));
    LineReader reader(text);
    Line line{};
    while (reader.next(line)) {
        if (!endsInItsLine(line) || !comparison.isHeld(line)) {
            return false;
        }
    }
    return true;
}

int countOfKeys(QSettings& settings, const QString& group)
{
    const OpenGroup open(settings, group);
    return settings.allKeys().size();
}

bool isOfAny(const QStringList& prefixes, const Section& section)
{
    return section.isNamed() && prefixes.contains(section.prefix());
}

// Finds the next section that is of none of the groups.
bool nextOther(SectionReader& reader, const QStringList& prefixes, Section& section)
{
    while (reader.next(section)) {
        if (!isOfAny(prefixes, section)) {
            return true;
        }
    }
    return false;
}

// Lines are counted because the toolkit can't read back every name that it takes over from a file
// made by others.
bool holdsInAnyForm(const QByteArray& content, const Snapshot& snapshot)
{
    const QMultiHash<QString, QStringList> entries = readIniEntries(content);
    const QSet<QString> shared = sharedLines(snapshot);
    if (entries.size() != snapshot.size() - shared.size()) {
        return false;
    }
    for (auto wanted = snapshot.cbegin(); wanted != snapshot.cend(); ++wanted) {
        // Asked for an odd name, the toolkit tells of the name that it tidies it up to.
        if (!isWrittenAsText(wanted.value()) || shared.contains(wanted.key()) ||
            isOddName(wanted.key())) {
            continue;
        }
        const QList<QStringList> found = entries.values(wanted.key());
        const auto isWanted = [&wanted](const QStringList& elements) {
            return elements.size() == 1 && withoutEscape(elements.first()) == wanted->toString();
        };
        if (!found.isEmpty() && std::none_of(found.cbegin(), found.cend(), isWanted)) {
            return false;
        }
    }
    return true;
}

} // namespace

Snapshot snapshotOf(const QSettings& settings)
{
    Snapshot snapshot;
    const QStringList keys = settings.allKeys();
    snapshot.reserve(keys.size());
    for (const QString& key : keys) {
        // A line without a key is kept by the toolkit, but can't be asked for.
        snapshot.insert(key, key.isEmpty() ? QVariant() : settings.value(key));
    }
    return snapshot;
}

void tellAll(QSettings& settings, const Snapshot& snapshot)
{
    for (auto entry = snapshot.cbegin(); entry != snapshot.cend(); ++entry) {
        if (!entry.key().isEmpty()) {
            settings.setValue(entry.key(), entry.value());
        }
    }
}

// A cut file lacks lines at its end or the end of its last line; a file with holes has other
// values.
bool holds(const QByteArray& content, const QSettings& settings)
{
    const bool isCut = !content.isEmpty() && !content.endsWith('\n');
    return !isCut &&
           (holdsLineByLine(content, settings) || holdsInAnyForm(content, snapshotOf(settings)));
}

bool holdsGroups(const QByteArray& content, QSettings& settings, const QStringList& groups,
                 const QByteArray& before)
{
    if (groups.isEmpty() || !content.endsWith('\n')) {
        return false;
    }
    QStringList prefixes;
    int keys = 0;
    for (const QString& group : groups) {
        prefixes.append(group + QLatin1Char('/'));
        keys += countOfKeys(settings, group);
    }
    LineComparison comparison(settings);
    SectionReader now(content);
    SectionReader earlier(before);
    Section section{};
    Section other{};
    while (now.next(section)) {
        const bool isHeld = isOfAny(prefixes, section) ? holdsSection(section, comparison)
                                                       : nextOther(earlier, prefixes, other) &&
                                                             isSame(section.text, other.text);
        if (!isHeld) {
            return false;
        }
    }
    return comparison.count() == keys && !nextOther(earlier, prefixes, other);
}

} // namespace kestrel
