/// @file
/// The notes, a topic each: they append theirs.
#pragma once

#include "docs/settings_notes.h"

#include <vector>

namespace kestrel::test {

void addImage(std::vector<Note>& notes);
void addColourDetection(std::vector<Note>& notes);
void addPaper(std::vector<Note>& notes);
void addMultifeed(std::vector<Note>& notes);
void addAdvanced(std::vector<Note>& notes);
void addEnhancement(std::vector<Note>& notes);

} // namespace kestrel::test
