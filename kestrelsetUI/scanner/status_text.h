/// @file
/// What the user is told when a scan that the dialog started fails.
#pragma once

#include <sane/sane.h>

namespace kestrel {

/// The message for a status of sane_start().
/// @return a text in UTF-8, or null for a status that is not worth a message
const char* statusText(SANE_Status status) noexcept;

} // namespace kestrel
