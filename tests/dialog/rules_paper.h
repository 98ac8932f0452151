/// @file
/// A shown dialog on a scanner with everything.
#pragma once

#include "dialog_fixture.h"
#include "rules_user.h"

#include <QLabel>

#include <gtest/gtest.h>

namespace kestrel::test {

class PaperRules : public DialogTest
{
protected:
    PaperRules() : scanner(fullScanner())
    {
        bind(scanner);
        show();
    }
    void TearDown() override { destroy(); } // before the scanner

    QString label(const char* name) const { return static_cast<QLabel&>(widget(name)).text(); }
    /// Whether the widget itself has not been disabled, whatever stands around it.
    bool enabledItself(const char* name) const
    {
        return widget(name).isEnabledTo(widget(name).parentWidget());
    }

    FakeScanner scanner;
};

} // namespace kestrel::test
