// docs/settings.md says what the dialog does: every option, value and limit in it is tried out.
#include "dialog/dialog_fixture.h"
#include "docs/settings_document.h"
#include "docs/settings_notes.h"
#include "settings/settings_table.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QComboBox>
#include <QFile>
#include <QRadioButton>
#include <QVariant>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <ostream>
#include <set>

using namespace kestrel;
using namespace kestrel::test;

namespace {

using Sent = std::map<std::string, std::string>;
using Names = std::set<std::string>;

std::string nameOf(const std::string& set)
{
    return set.substr(0, set.find('='));
}

const char* propertyOf(const QWidget& control)
{
    if (qobject_cast<const QComboBox*>(&control) != nullptr) {
        return "currentIndex";
    }
    return qobject_cast<const QAbstractButton*>(&control) != nullptr ? "checked" : "value";
}

class SettingsDocument : public DialogTest
{
protected:
    SettingsDocument()
    {
        bindForTexts(m_scanner);
        show();
        EXPECT_TRUE(reveal(widget("length_detection")));
        // From the same start whatever the scanner said: both sides, the feeder, an area of A5.
        dialog().setMask(36);
        for (const Step& step : {Step{"source", 0}, Step{"scanrange_setting", 3}}) {
            put(step);
        }
    }

    void put(const Step& step)
    {
        if (step.control == sideMode) {
            dialog().setMask(static_cast<int>(step.value));
        } else if (step.control == previewArea) {
            dialog().use_preview_area = step.value != 0;
        } else {
            QWidget& control = widget(std::string(step.control).c_str());
            const auto* const radio = qobject_cast<const QRadioButton*>(&control);
            if (radio != nullptr && step.value == 0) {
                // Of two radio buttons one is on: the other one puts this one out.
                for (QAbstractButton* const button : radio->group()->buttons()) {
                    button->setChecked(button != radio);
                }
            }
            control.setProperty(propertyOf(control), step.value);
            ASSERT_EQ(control.property(propertyOf(control)).toDouble(), step.value) << step.control;
        }
    }

    void prepare(const Note& note)
    {
        for (const Step& step : note.state) {
            put(step);
        }
    }

    /// The value that a control has not.
    double other(const char* name) const
    {
        const QWidget& control = widget(name);
        const double value = control.property(propertyOf(control)).toDouble();
        if (qobject_cast<const QComboBox*>(&control) != nullptr ||
            qobject_cast<const QAbstractButton*>(&control) != nullptr) {
            return value == 0 ? 1 : 0;
        }
        return value < control.property("maximum").toDouble() ? value + 1 : value - 1;
    }

    void change(const Note& note, const char* control)
    {
        if (control == nullptr) {
            put({sideMode, note.change});
        } else {
            put({control, note.hasChange ? note.change : other(control)});
        }
    }

    /// What is sent now, by option.
    Sent send()
    {
        m_scanner.clearJournal();
        dialog().setAllParam();
        m_order = m_scanner.journal().sets();
        dialog().setPowerManager();
        Sent sent;
        for (const std::string& set : m_scanner.journal().sets()) {
            sent[nameOf(set)] = set.substr(set.find('=') + 1);
        }
        return sent;
    }

    static Names differences(const Sent& before, const Sent& after)
    {
        Names names;
        for (const auto* const sent : {&before, &after}) {
            for (const auto& [name, value] : *sent) {
                const auto left = before.find(name);
                const auto right = after.find(name);
                if (left == before.end() || right == after.end() || left->second != right->second) {
                    names.insert(name);
                }
            }
        }
        return names;
    }

    FakeScanner m_scanner = fullScanner();
    Strings m_order; ///< of the last send()
};

struct Case
{
    const Note* note;
    std::string control; ///< empty for the side mode

    std::string name() const { return control.empty() ? "side_mode" : control; }
};

void PrintTo(const Case& one, std::ostream* out)
{
    *out << one.name();
}

std::vector<Case> cases()
{
    std::vector<Case> all;
    for (const Setting& setting : settingsTable()) {
        if (setting.encoding != Encoding::CustomResolution) {
            all.push_back(
                {&noteOn(setting.key), setting.control != nullptr ? setting.control : ""});
        }
    }
    for (const Note& note : unstoredNotes()) {
        const std::string name(note.key);
        all.push_back({&note, name.substr(1, name.size() - 2)});
    }
    return all;
}

template <typename Condition>
std::vector<Case> casesWith(Condition condition)
{
    std::vector<Case> chosen = cases();
    chosen.erase(std::remove_if(chosen.begin(), chosen.end(),
                                [condition](const Case& one) { return !condition(*one.note); }),
                 chosen.end());
    return chosen;
}

class SettingTest : public SettingsDocument, public testing::WithParamInterface<Case>
{
protected:
    const Note& note() const { return *GetParam().note; }
    const char* control() const
    {
        return GetParam().control.empty() ? nullptr : GetParam().control.c_str();
    }
};

using SettingInDocument = SettingTest;
class ValuesInDocument : public SettingTest
{
};
class LimitsInDocument : public SettingTest
{
};

const auto caseName = [](const testing::TestParamInfo<Case>& info) { return info.param.name(); };

} // namespace

TEST_P(SettingInDocument, ReachesExactlyTheOptionsThatAreNamedInTheOrderThatIsNamed)
{
    prepare(note());
    const Sent before = send();
    change(note(), control());
    Names named(note().options.begin(), note().options.end());
    named.insert(note().others.begin(), note().others.end());
    EXPECT_EQ(differences(before, send()), named);

    const auto& order = sendingOrder();
    auto place = order.begin();
    for (const std::string& set : m_order) {
        place = std::find(place, order.end(), nameOf(set));
        ASSERT_NE(place, order.end()) << set << " comes too late, or is not named";
        ++place;
    }
}

TEST_P(ValuesInDocument, AreWhatTheEntriesSend)
{
    prepare(note());
    for (std::size_t i = 0; i < note().values.size(); ++i) {
        put({control(), static_cast<double>(i)});
        EXPECT_EQ(send()[note().options.front()], note().values[i]);
    }
    EXPECT_EQ(combo(control()).count(), static_cast<int>(note().values.size()));
}

TEST_P(LimitsInDocument, ComeFromTheOptionThatIsNamed)
{
    const auto maximum = [this](int limit) {
        FakeScanner scanner = fullScanner();
        auto& option = scanner.option(note().limits);
        option.type() == SANE_TYPE_FIXED ? option.limits(0, limit) : option.range(0, limit);
        // What the heights are measured by must not give other ones.
        scanner.onSet("source", [](FakeScanner&) {});
        scanner.onSet("long-paper-scan", [](FakeScanner&) {});
        bind(scanner);
        return widget(control()).property("maximum").toDouble();
    };
    EXPECT_EQ(maximum(120), 120);
    EXPECT_EQ(maximum(130), 130);
}

INSTANTIATE_TEST_SUITE_P(Each, SettingInDocument, testing::ValuesIn(cases()), caseName);
INSTANTIATE_TEST_SUITE_P(Each, ValuesInDocument, testing::ValuesIn(casesWith([](const Note& note) {
                             return !note.values.empty();
                         })),
                         caseName);
INSTANTIATE_TEST_SUITE_P(Each, LimitsInDocument, testing::ValuesIn(casesWith([](const Note& note) {
                             return note.limits != nullptr;
                         })),
                         caseName);

TEST_F(SettingsDocument, NothingElseTakesItsLimitsFromTheScanner)
{
    const auto limits = [this](double wider) {
        FakeScanner scanner = fullScanner();
        for (const std::string& name : scanner.names()) {
            auto& option = scanner.option(name);
            const auto* const descriptor = option.descriptor();
            if (descriptor->constraint_type == SANE_CONSTRAINT_RANGE && name != "resolution") {
                const SANE_Range range = *descriptor->constraint.range;
                option.range(range.min, range.max + static_cast<SANE_Word>(wider * 65536));
            }
        }
        bind(scanner);
        std::map<std::string, double> found;
        for (const Case& one : casesWith([](const Note& note) { return note.limits == nullptr; })) {
            if (!one.control.empty()) {
                const QVariant most = widget(one.control.c_str()).property("maximum");
                // The preview's lengths share the limits of the area; the sheet's length follows
                // it.
                if (most.isValid() && one.control.rfind("offset_", 0) != 0 &&
                    one.control != "length_detection_value") {
                    found[one.control] = most.toDouble();
                }
            }
        }
        return found;
    };
    EXPECT_EQ(limits(0), limits(1));
}

TEST_F(SettingsDocument, TheCustomResolutionReachesTheOptionThatIsNamed)
{
    QComboBox& list = combo("resolution_gengel_slide");
    const Sent before = send();
    list.addItem(QStringLiteral("custom-250"));
    list.setCurrentIndex(list.count() - 1);
    const Sent after = send();
    EXPECT_EQ(differences(before, after), Names{"resolution"});
    EXPECT_EQ(after.at("resolution"), "250");
}

TEST_F(SettingsDocument, ANoteBelongsToEachKeyAndAKeyToEachNote)
{
    Names keys;
    for (const Setting& setting : settingsTable()) {
        keys.insert(setting.key);
    }
    Names noted;
    for (const Note& note : settingNotes()) {
        EXPECT_TRUE(noted.insert(note.key).second) << note.key << " has two notes";
    }
    EXPECT_EQ(noted, keys);
}

TEST_F(SettingsDocument, EveryOptionThatIsSentIsNamedAtItsSetting)
{
    Names named;
    for (const auto* const notes : {&settingNotes(), &unstoredNotes()}) {
        for (const Note& note : *notes) {
            named.insert(note.options.begin(), note.options.end());
            named.insert(note.others.begin(), note.others.end());
        }
    }
    const Names order(sendingOrder().begin(), sendingOrder().end());
    Names sent = order;
    for (const char* const power :
         {"powersaving", "powersaving-time", "poweroff", "poweroff-time"}) {
        sent.insert(power);
    }
    EXPECT_EQ(named, sent);
    for (const std::string& option : sent) {
        EXPECT_TRUE(m_scanner.has(option)) << option;
    }
}

TEST_F(SettingsDocument, TheFileIsWhatTheProgramWrites)
{
    QFile file(QStringLiteral(SETTINGS_MD));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << SETTINGS_MD;
    EXPECT_EQ(file.readAll().toStdString(), settingsDocument().toStdString())
        << "write it anew with the target settings_doc_update";
}
