#pragma once

#include <optional>
#include <string>

#include <sane/sane.h>

namespace kestrel::sim {

/// The name of @p status as it stands in the journal and in the configuration file, for example
/// "no-docs".
const char* statusName(SANE_Status status) noexcept;

/// The status called @p name, or nothing when there is none of that name.
std::optional<SANE_Status> statusFromName(const std::string& name);

} // namespace kestrel::sim
