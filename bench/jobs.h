/// @file
/// The topics: each brings its benchmarks and the rows that compare them.
#pragma once

#include "table.h"

namespace kestrel::bench {

void addDialogRows(Table& table);
void addSettingsRows(Table& table);
void addTemplatesRows(Table& table);
void addPreviewRows(Table& table);
void addPixelsRows(Table& table);

} // namespace kestrel::bench
