// The n-th allocation of the library's own code fails, for every n: in each exported function, and
// in what a user sets off.
#include "reliability/allocation_faults.h"
#include "reliability/stand_in.h"
#include "support/host.h"
#include "support/user.h"

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

class AllocationWalk : public testing::Test
{
protected:
    AllocationWalk()
    {
        m_bytes = makeStoredSettings(m_folder.path());
        m_old = readSettingsFile(m_folder.file(fileName));
    }

    /// One session, of which one step is taken without the memory it needs. Then the user confirms
    /// some changes.
    /// @return what is stored afterwards
    Texts session(const std::function<void(UserSession&)>& step, long n, bool bindFails = false)
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
        user.edit(1);
        user.ok();
        const Texts stored = readSettingsFile(folder.file(fileName));
        // The dialog itself goes on, too.
        user.bind(scanner.handle(), folder.path());
        scanner.clearJournal();
        user.apply();
        m_sent = scanner.journal().sets();
        return stored;
    }

    void expectNothingLost(const Texts& stored, const Texts& whole) const
    {
        for (auto entry = m_old.cbegin(); entry != m_old.cend(); ++entry) {
            const QString now = stored.value(entry.key());
            EXPECT_TRUE(now == entry.value() || now == whole.value(entry.key()))
                << entry.key().toStdString() << " was " << entry.value().toStdString() << ", is "
                << now.toStdString();
        }
    }

    /// Every allocation of a step, or some eight of them in the quick form.
    void walk(const char* what, const std::function<void(UserSession&)>& step,
              bool bindFails = false)
    {
        const Texts whole = session(step, 0, bindFails);
        EXPECT_NE(whole, m_old);
        const long count = m_count;
        const long stride = isFullForm() ? 1 : std::max(1L, count / 8);
        for (long n = 1; n <= count; n += stride) {
            SCOPED_TRACE(testing::Message() << what << ", allocation " << n << " of " << count);
            expectNothingLost(session(step, n, bindFails), whole);
            EXPECT_GT(m_sent.size(), 30U) << "the dialog has to go on";
        }
        std::printf("%s: %ld allocations\n", what, count);
    }

    TempConfigDir m_folder;
    QByteArray m_bytes;
    Texts m_old;
    std::vector<std::string> m_sent;
    long m_count = 0;
    CarefulBoxCloser m_boxes;
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
    walk(
        "binding", [](UserSession&) {}, true);
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
    walk("closing",
         [](UserSession& user) { child<QAbstractButton>(user.dialog(), "cancel").click(); });
}

TEST_F(AllocationWalk, ChangingTheTemplate)
{
    walk("changing the template", [](UserSession& user) {
        child<QComboBox>(user.dialog(), "usertemplate").setCurrentIndex(0);
        child<QComboBox>(user.dialog(), "usertemplate").setCurrentIndex(1);
    });
}

TEST_F(AllocationWalk, OperatingEveryControl)
{
    walk("operating every control", [](UserSession& user) {
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
    });
}
