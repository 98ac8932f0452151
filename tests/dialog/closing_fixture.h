/// @file
/// What the tests of leaving the dialog have in common.
#pragma once

#include "dialog_fixture.h"

#include <QAbstractButton>
#include <QDoubleSpinBox>
#include <QSettings>

#include <gtest/gtest.h>

namespace kestrel::test {

/// A dialog bound to a full scanner.
class Closing : public DialogTest
{
protected:
    Closing() : m_scanner(fullScanner())
    {
        bind(m_scanner);
        m_scanner.clearJournal();
    }

    /// The size of the preview selection as the spin boxes show it.
    void drawArea(double width, double height)
    {
        real("offset_w").setValue(width);
        real("offset_h").setValue(height);
        EXPECT_EQ(real("offset_w").value(), width);
        EXPECT_EQ(real("offset_h").value(), height);
    }

    QVariant storedIndex()
    {
        return dialog().settings->value(QStringLiteral("UserTemplates/usertemplate_index"));
    }

    FakeScanner m_scanner;
};

} // namespace kestrel::test
