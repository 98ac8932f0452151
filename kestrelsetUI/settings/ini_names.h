/// @file
/// The names of groups and keys in an INI file as the toolkit's reader sees them.
#pragma once

#include "settings/ini_line_reader.h"

#include <QString>

namespace kestrel {

/// @return @p text without white space at its ends.
Span trimmed(Span text);

/// @return whether unescapeKey() gives anything but the characters of @p text.
bool isEscaped(Span text);

/// Appends unescapeKey(text) to @p result.
void appendUnescaped(Span text, QString& result);

/// @return the name that stands in the file as @p text, percent escapes resolved.
QString unescapeKey(Span text);

/// @param line a line that begins with "[".
/// @return the prefix of the keys that follow it: empty, or ending with a slash.
QString groupPrefix(Span line);

} // namespace kestrel
