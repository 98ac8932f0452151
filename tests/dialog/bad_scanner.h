/// @file
/// What the tests with scanners that answer badly have in common.
#pragma once

#include "dialog_fixture.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QSpinBox>

#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <string>
#include <vector>

namespace kestrel::test {

using Option = FakeOption;

/// A dialog that is bound to one bad scanner after the other.
class BadScanner : public DialogTest
{
protected:
    /// What is checked after a binding, while the scanner is still there: the dialog works.
    void expectUsable()
    {
        EXPECT_FALSE(dialog().updating);
        EXPECT_GE(combo("scanrange_setting").count(), 7);
        dialog().setAllParam();
        dialog().setPowerManager();
        show();
        press(button("cancel"));
    }
};

} // namespace kestrel::test
