/// @file
/// A scanner made from the bytes of a run: a plausible one at first, then whatever the bytes do to
/// it.
#pragma once

#include "input.h"
#include "support/fake_scanner.h"

#include <sane/sane.h>

namespace kestrel::fuzz {

/// @return a stand-in whose options, values, answers and frames come from @p input
test::FakeScanner hostileScanner(Input& input);

/// Adds an image to the stack.
void addFrame(Input& input, test::FakeScanner& scanner);

/// How many options the device says it has, option 0 included; calls beyond are refused.
int& saidOptions();

/// What sane_read() is made to say of the length it has read, instead of the truth.
struct ReadLie
{
    int times = 0; ///< so many times; a read that never ends is time, not a finding
    SANE_Int length = 0;
};
ReadLie& readLie();

} // namespace kestrel::fuzz
