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

} // namespace kestrel
