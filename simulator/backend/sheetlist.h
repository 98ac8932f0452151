#pragma once

#include <optional>
#include <string>
#include <vector>

#include "model.h"

namespace kestrel::sim {

/// "A4", "A5", "A6", "A3", "B5", "Letter", "Legal", "Card" or width x height in millimetres:
/// "210x297". Nothing when it is neither, or when a side is not within 10 to 10000 mm.
std::optional<SizeMm> parseSize(const std::string& text);

/// Sheets separated by commas, each "front[/back][:size][+x+y][@turned][~skew]", for example
/// "mixed/blank:A5@180". Nothing when one of them makes no sense.
std::optional<std::vector<Sheet>> parseSheets(const std::string& text);

} // namespace kestrel::sim
