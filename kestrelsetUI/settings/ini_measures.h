/// @file
/// How much work a file makes for the toolkit's reader.
#pragma once

#include <QByteArray>

namespace kestrel {

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
