/// @file
/// The side choices of a dialog on a scanner with feeder and flatbed.
#pragma once

#include "rules_sides.h"
#include "rules_user.h"

#include <gtest/gtest.h>

namespace kestrel::test {

class ModeRules : public SidesTest
{
protected:
    ModeRules() : scanner(fullScanner())
    {
        bind(scanner);
        show();
    }
    void TearDown() override { destroy(); } // before the scanner

    void clickBox(const char* name) { click(button(name)); }
    FakeScanner scanner;
};

} // namespace kestrel::test
