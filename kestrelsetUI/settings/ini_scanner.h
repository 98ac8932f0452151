/// @file
/// Reads the bytes of an INI file as the toolkit's reader does, but without turning any value into
/// an object.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

namespace kestrel {

/// Whether a value in @p data would make the toolkit's reader rebuild a serialized object
/// ("@Variant(...)" or "@DateTime(...)", in any escaped or quoted disguise). Such a reader trusts
/// the sizes and nesting depths it finds, which throws or overflows the stack in the host. Settings
/// files of ours hold plain texts only; a text that happens to begin like that is written with a
/// doubled "@".
bool holdsSerializedObject(const QByteArray& data);

/// Whether a value begins with @p marker (ASCII, beginning with "@") after unescaping.
bool holdsValueStartingWith(const QByteArray& data, const QByteArray& marker);

/// The elements of each value by full key ("Group/key"); several elements make a list. Escapes for
/// texts that begin with "@" are still in place. A key that stands there twice is there twice; a
/// line that is no pair of key and value stands under an empty key.
QMultiHash<QString, QStringList> readIniEntries(const QByteArray& data);

/// What the toolkit has to do with a file, counted instead of tried.
struct IniMeasures
{
    qint64 lines = 0;       ///< groups and keys
    qint64 longestName = 0; ///< of a group or a key, in characters
    /// Characters that are looked at or moved for names: the reader looks for the end of a group's
    /// name beyond its line, and superfluous slashes are taken out of a full key one by one, each
    /// of them moving the rest.
    qint64 nameWork = 0;
};

/// Takes time in proportion to the size of @p data, whatever it holds.
IniMeasures measureIni(const QByteArray& data);

} // namespace kestrel
