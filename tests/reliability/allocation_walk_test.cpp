// The n-th allocation of the library's own code fails, for every n: in each exported function, and
// in what a user sets off.
#include "reliability/allocation_faults.h"
#include "reliability/stand_in.h"
#include "support/host.h"
#include "support/user.h"

#include <kestrelsetting.h>
#include <kestrelsettingui.h>

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QRadioButton>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <vector>

using namespace kestrel::test;

namespace {

const QString fileName = QStringLiteral("ScannerA.ini");

/// The test's own answers do not fail.
class CarefulBoxCloser : public BoxCloser
{
protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const AllocationPause pause;
        return BoxCloser::eventFilter(watched, event);
    }
};

/// @return the keys in which two settings files differ, with what they hold
std::string difference(const Texts& is, const Texts& wanted)
{
    QStringList keys = is.keys() + wanted.keys();
    keys.sort();
    keys.removeDuplicates();
    std::string text;
    for (const QString& key : qAsConst(keys)) {
        if (is.value(key) != wanted.value(key) || is.contains(key) != wanted.contains(key)) {
            text += QStringLiteral("%1 is '%2', not '%3'\n")
                        .arg(key, is.value(key), wanted.value(key))
                        .toStdString();
        }
    }
    return text;
}

/// @return whether the dialog says that no load was cut off
bool isLoaded(const KestrelSettingUI& dialog)
{
    struct State : KestrelSettingUI
    {
        static bool of(const KestrelSettingUI& ui) { return ui.*(&State::configuration_loaded); }
    };
    return State::of(dialog);
}

/// What a session shows, sends and leaves.
struct Outcome
{
    bool loaded;                   ///< no load was cut off when the user confirmed
    Texts stored;                  ///< by the user's OK
    std::vector<std::string> sent; ///< by the same dialog, bound once more
    Texts storedAgain;             ///< by an OK after that
};

/// What a new dialog makes of the file that was left.
struct NextSession
{
    Texts controls;
    std::vector<std::string> sent;
};

class AllocationWalk : public testing::Test
{
protected:
    AllocationWalk()
    {
        m_bytes = makeStoredSettings(m_folder.path());
        m_old = readSettingsFile(m_folder.file(fileName));
        m_afterOld = nextSession(m_bytes);
        m_edited = session([](UserSession&) {}, 0).stored;
        EXPECT_NE(m_edited, m_old);
    }

    /// One session, of which one step is taken without the memory it needs. Then the user confirms
    /// some changes, and later once more.
    Outcome session(const std::function<void(UserSession&)>& step, long n, bool bindFails = false)
    {
        const TempConfigDir folder;
        folder.write(fileName, m_bytes);
        FakeScanner scanner = scannerWithPicture();
        UserSession user;
        const auto starve = [&](const std::function<void()>& what) {
            const AllocationFaults faults(n);
            EXPECT_NO_THROW(what());
            m_count = AllocationFaults::count();
        };
        if (bindFails) {
            ScannerIdentity record = identity();
            starve([&] {
                initKestrelSetUI(user.dialog().host(), scanner.handle(), &record, folder.path());
            });
        } else {
            user.bind(scanner.handle(), folder.path());
            starve([&] { step(user); });
        }
        Outcome outcome{isLoaded(user.dialog()), {}, {}, {}};
        user.edit(1);
        user.ok();
        m_left = folder.read(fileName);
        outcome.stored = readSettingsFile(folder.file(fileName));
        // The dialog itself goes on, too.
        user.bind(scanner.handle(), folder.path());
        scanner.clearJournal();
        user.apply();
        outcome.sent = scanner.journal().sets();
        user.edit(1);
        user.ok();
        outcome.storedAgain = readSettingsFile(folder.file(fileName));
        return outcome;
    }

    /// The next start of the host, with memory for all.
    static NextSession nextSession(const QByteArray& bytes)
    {
        const TempConfigDir folder;
        folder.write(fileName, bytes);
        FakeScanner scanner = scannerWithPicture();
        UserSession user;
        user.bind(scanner.handle(), folder.path());
        scanner.clearJournal();
        user.apply();
        return {user.controls(), scanner.journal().sets()};
    }

    void expectNextIs(const NextSession& wanted) const
    {
        const NextSession next = nextSession(m_left);
        EXPECT_EQ(difference(next.controls, wanted.controls), "");
        EXPECT_EQ(next.sent, wanted.sent);
    }

    /// Every allocation of a step, or some eight of them in the quick form.
    /// @param mostCutOff how many of them cut a load off: OK stores nothing then, until a group has
    ///        been loaded whole
    void walk(const char* what, const std::function<void(UserSession&)>& step, int mostCutOff = 0,
              bool bindFails = false)
    {
        const Outcome whole = session(step, 0, bindFails);
        EXPECT_TRUE(whole.loaded);
        EXPECT_NE(whole.stored, m_old);
        EXPECT_GT(whole.sent.size(), 30U);
        const NextSession afterWhole = nextSession(m_left);
        const long count = m_count;
        const long stride = isFullForm() ? 1 : std::max(1L, count / 8);
        int cutOff = 0;
        for (long n = 1; n <= count; n += stride) {
            SCOPED_TRACE(testing::Message() << what << ", allocation " << n << " of " << count);
            const Outcome outcome = session(step, n, bindFails);
            if (outcome.loaded) {
                EXPECT_EQ(difference(outcome.stored, whole.stored), "");
                EXPECT_EQ(outcome.sent, whole.sent);
                EXPECT_EQ(difference(outcome.storedAgain, whole.storedAgain), "");
                expectNextIs(afterWhole);
            } else {
                ++cutOff;
                EXPECT_EQ(difference(outcome.stored, m_old), "");
                EXPECT_GT(outcome.sent.size(), 30U) << "the dialog has to go on";
                EXPECT_EQ(difference(outcome.storedAgain, m_edited), "");
                expectNextIs(m_afterOld);
            }
        }
        EXPECT_LE(cutOff, mostCutOff);
        std::printf("%s: %ld allocations, %d of them cut a load off\n", what, count, cutOff);
    }

    TempConfigDir m_folder;
    QByteArray m_bytes;
    Texts m_old;
    Texts m_edited; ///< what the user's changes make of them
    NextSession m_afterOld;
    QByteArray m_left; ///< the file as the last session's first OK left it
    long m_count = 0;
    CarefulBoxCloser m_boxes;

    /// Of its own, a load takes the order of the settings, their texts and the limits to mend.
    static constexpr int oneLoad = 3;
};

} // namespace

TEST_F(AllocationWalk, Creating)
{
    long count = 0;
    {
        const AllocationFaults faults(0);
        const std::unique_ptr<QDialog> dialog(
            static_cast<KestrelSettingUI*>(creatKestrelSetUI(nullptr)));
        count = AllocationFaults::count();
    }
    EXPECT_GT(count, 300);
    const long stride = isFullForm() ? 1 : 53;
    for (long n = 1; n <= count; n += stride) {
        SCOPED_TRACE(testing::Message() << "allocation " << n << " of " << count);
        void* dialog = this;
        {
            const AllocationFaults faults(n);
            EXPECT_NO_THROW(dialog = creatKestrelSetUI(nullptr));
        }
        EXPECT_EQ(dialog, nullptr);
    }
    std::printf("creating: %ld allocations\n", count);
}

TEST_F(AllocationWalk, Binding)
{
    // A scanner that has not been asked for all it has is not loaded for.
    constexpr int beforeTheLoad = 52;
    walk(
        "binding", [](UserSession&) {}, beforeTheLoad + oneLoad, true);
}

TEST_F(AllocationWalk, Applying)
{
    walk("applying", [](UserSession& user) { user.apply(); });
}

TEST_F(AllocationWalk, AskingTheDialog)
{
    walk("asking", [](UserSession& user) {
        void* const ui = user.dialog().host();
        getCurrentResolution(ui);
        getCurrentFiletype(ui);
        getScanSourceType(ui);
        getWaitingJobTime(ui);
        isDoubleSideScan(ui);
        isSplitScan(ui);
        setBlankPageFunc(ui, true);
        setButtonTemplage(ui, 1);
    });
}

TEST_F(AllocationWalk, Previewing)
{
    walk("previewing", [](UserSession& user) { user.preview(); });
}

TEST_F(AllocationWalk, Confirming)
{
    walk("confirming", [](UserSession& user) { user.ok(); });
}

TEST_F(AllocationWalk, Closing)
{
    walk(
        "closing",
        [](UserSession& user) { child<QAbstractButton>(user.dialog(), "cancel").click(); },
        oneLoad);
}

TEST_F(AllocationWalk, ChangingTheTemplate)
{
    // A first load that is cut off is made up for by the second.
    walk(
        "changing the template",
        [](UserSession& user) {
            child<QComboBox>(user.dialog(), "usertemplate").setCurrentIndex(0);
            child<QComboBox>(user.dialog(), "usertemplate").setCurrentIndex(1);
        },
        oneLoad);
}

TEST_F(AllocationWalk, OperatingEveryControl)
{
    // One of the controls is the list of templates, which loads.
    const auto operate = [](UserSession& user) {
        for (QWidget* const control : user.dialog().findChildren<QWidget*>()) {
            if (auto* const list = qobject_cast<QComboBox*>(control)) {
                list->setCurrentIndex(list->count() - 1);
                list->setCurrentIndex(0);
            } else if (auto* const bar = qobject_cast<QAbstractSlider*>(control)) {
                bar->setValue(bar->minimum());
            } else if (auto* const real = qobject_cast<QDoubleSpinBox*>(control)) {
                real->setValue(real->maximum() / 3);
            } else if (auto* const box = qobject_cast<QCheckBox*>(control)) {
                box->click();
            } else if (auto* const radio = qobject_cast<QRadioButton*>(control)) {
                radio->click();
            }
        }
    };
    walk("operating every control", operate, oneLoad);
}
