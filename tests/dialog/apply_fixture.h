/// @file
/// What the tests of applying the settings have in common.
#pragma once

#include "dialog_fixture.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QSpinBox>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace kestrel::test {

inline const QString feeder = QStringLiteral("文档进纸器");
inline const QString flatbed = QStringLiteral("平板");
inline const QString automatic = QStringLiteral("自动选择纸张来源");
/// What an option got that was not sent.
inline const Strings nothing;

/// A dialog bound to a scanner that takes every value as text.
class Apply : public DialogTest
{
protected:
    Apply() : m_scanner(fullScanner()) { bindForTexts(m_scanner); }

    void choose(const char* name, int index)
    {
        combo(name).setCurrentIndex(index);
        ASSERT_EQ(combo(name).currentIndex(), index) << name;
    }
    void chooseText(const char* name, const QString& text)
    {
        combo(name).setCurrentText(text);
        ASSERT_EQ(combo(name).currentText(), text) << name;
    }
    void check(const char* name, bool on = true) { button(name).setChecked(on); }

    /// Applies the settings afresh.
    const Journal& apply()
    {
        m_scanner.clearJournal();
        dialog().setAllParam();
        m_journal = m_scanner.journal();
        return m_journal;
    }
    /// @return the texts sent to an option when the settings are applied
    Strings sent(const char* option) { return apply().setsOf(option); }
    /// @return where an option stands in the sequence of the last apply(); -1 when it was not sent
    int position(const std::string& option) const
    {
        const std::vector<Call> sets = m_journal.of(CallKind::Set);
        const auto found = std::find_if(sets.begin(), sets.end(),
                                        [&](const Call& call) { return call.name == option; });
        return found == sets.end() ? -1 : static_cast<int>(found - sets.begin());
    }

    FakeScanner m_scanner;
    Journal m_journal;
};

} // namespace kestrel::test
