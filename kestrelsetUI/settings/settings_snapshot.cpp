#include "settings/settings_snapshot.h"

#include "settings/ini_scanner.h"

#include <QSet>
#include <QSettings>

#include <algorithm>

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
        const bool isWrittenPlain = !plain.isNull() && !plain.startsWith(QLatin1Char('/'));
        if (isWrittenPlain && snapshot.contains(plain)) {
            shared.insert(plain);
        }
    }
    return shared;
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
// values. Lines are counted because the toolkit can't read back every name that it takes over from
// a file made by others.
bool holds(const QByteArray& content, const Snapshot& snapshot)
{
    const QMultiHash<QString, QStringList> entries = readIniEntries(content);
    const QSet<QString> shared = sharedLines(snapshot);
    if (entries.size() != snapshot.size() - shared.size() ||
        (!content.isEmpty() && !content.endsWith('\n'))) {
        return false;
    }
    for (auto wanted = snapshot.cbegin(); wanted != snapshot.cend(); ++wanted) {
        if (!isWrittenAsText(wanted.value()) || shared.contains(wanted.key())) {
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

} // namespace kestrel
