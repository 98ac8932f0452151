/// @file
/// A few words about the computer, as procfs has them.
#pragma once

#include <QString>

namespace kestrel {

/// The kernel's version line under its heading.
/// @param path the file to read; when it can't be opened a line on standard output says so and the
///        heading stands alone
QString osInfoText(const char* path = "/proc/version");

/// The model of the first processor, with the tab and colon that the file puts before it.
/// @param path the file to read; when it can't be opened the heading stands alone, without a
/// newline
QString cpuInfoText(const char* path = "/proc/cpuinfo");

/// Memory in all and free memory, padding and unit as the file has them.
/// @param path the file to read; when it can't be opened the text is empty
QString memoryInfoText(const char* path = "/proc/meminfo");

} // namespace kestrel
