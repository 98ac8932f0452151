/// @file
/// Shared libraries that are all there.
#pragma once

#include <QString>

namespace kestrel {

/// Whether a file is a shared library for this kind of process, with everything in it that is
/// mapped when it is loaded. The loader does not look: a library that was copied in part ends the
/// process with SIGBUS in the middle of dlopen(). What the bytes say is not checked.
/// @param path the file; a missing one, a folder, a pipe or a device is none, and is not opened
bool isWholeLibrary(const QString& path);

} // namespace kestrel
