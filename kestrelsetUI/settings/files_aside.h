/// @file
/// Files that are put out of the way, and never deleted.
#pragma once

#include <QString>

namespace kestrel {

/// Renames what stands at @p path to the first free one of "PATH.bad-1", "PATH.bad-2", ...
/// @return false if that failed; everything is then where it was.
bool moveAside(const QString& path);

/// Gives the file at @p path the first free one of these names as a second name, or to a whole copy
/// where there are no second names: the first name is never without a file.
/// @return false if neither could be done.
bool keepAside(const QString& path);

/// Copies a file.
/// @param to a name that is free.
/// @return false if there is no whole copy; nothing stands at @p to then.
bool copyWhole(const QString& from, const QString& to);

} // namespace kestrel
