// A session in which the n-th call to the scanner fails, for every n and every status; and one in
// which the scanner is gone from the n-th call on. The quick form takes strides,
// KESTREL_RELIABILITY=full takes every step.
#include "reliability/stand_in.h"
#include "support/host.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <map>
#include <memory>
#include <utility>

using namespace kestrel::test;

namespace {

constexpr std::array everyStatus = {
    SANE_STATUS_UNSUPPORTED, SANE_STATUS_CANCELLED,    SANE_STATUS_DEVICE_BUSY,
    SANE_STATUS_INVAL,       SANE_STATUS_EOF,          SANE_STATUS_JAMMED,
    SANE_STATUS_NO_DOCS,     SANE_STATUS_COVER_OPEN,   SANE_STATUS_IO_ERROR,
    SANE_STATUS_NO_MEM,      SANE_STATUS_ACCESS_DENIED};

const QString fileName = QStringLiteral("ScannerA.ini");

/// Number @p ordinal of the calls of a kind.
struct Step
{
    CallKind kind;
    int ordinal;
};

/// What a session shows, sends and leaves.
struct Outcome
{
    Texts controls;
    std::vector<std::string> sent;
    Texts stored;
};

class FaultWalk : public testing::Test
{
protected:
    FaultWalk()
    {
        m_bytes = makeStoredSettings(m_folder->path());
        EXPECT_FALSE(m_bytes.isEmpty());
        m_old = stored();
        m_afterOld = nextSession();
        m_new = session([](FakeScanner&) {}).stored;
        EXPECT_NE(m_old, m_new);
        m_afterNew = nextSession();
        EXPECT_NE(m_afterOld.sent, m_afterNew.sent);
    }

    Texts stored() const { return readSettingsFile(m_folder->file(fileName)); }

    /// Lets a user do everything on the stored settings while @p spoil has its way.
    Outcome session(const std::function<void(FakeScanner&)>& spoil)
    {
        m_folder = std::make_unique<TempConfigDir>();
        m_folder->write(fileName, m_bytes);
        FakeScanner scanner = scannerWithPicture();
        spoil(scanner);
        Outcome outcome;
        {
            UserSession user;
            user.run(scanner.handle(), m_folder->path(), 1);
            outcome.controls = user.controls();
        }
        m_journal = scanner.journal();
        outcome.sent = m_journal.sets();
        outcome.stored = stored();
        return outcome;
    }

    /// The next start of the host, with a scanner that is well.
    Outcome nextSession()
    {
        FakeScanner scanner = scannerWithPicture();
        UserSession user;
        user.bind(scanner.handle(), m_folder->path());
        user.apply();
        return {user.controls(), scanner.journal().sets(), stored()};
    }

    /// The calls of a session in which nothing fails.
    std::vector<Step> steps()
    {
        session([](FakeScanner&) {});
        std::map<CallKind, int> ordinals;
        std::vector<Step> steps;
        for (const Call& call : m_journal.calls()) {
            steps.push_back({call.kind, ++ordinals[call.kind]});
        }
        return steps;
    }

    void expectNothingLost(const Outcome& outcome)
    {
        for (auto entry = m_old.cbegin(); entry != m_old.cend(); ++entry) {
            const QString now = outcome.stored.value(entry.key());
            EXPECT_TRUE(outcome.stored.contains(entry.key())) << entry.key().toStdString();
            EXPECT_TRUE(now == entry.value() || now == m_new.value(entry.key()))
                << entry.key().toStdString() << " was " << entry.value().toStdString() << ", is "
                << now.toStdString();
        }
    }

    void expectNextIsWhole()
    {
        const Outcome next = nextSession();
        const Outcome& wanted = next.stored == m_old ? m_afterOld : m_afterNew;
        EXPECT_EQ(next.sent, wanted.sent);
        for (auto entry = wanted.controls.cbegin(); entry != wanted.controls.cend(); ++entry) {
            EXPECT_EQ(next.controls.value(entry.key()), entry.value()) << entry.key().toStdString();
        }
    }

    void check(const std::function<void(FakeScanner&)>& spoil)
    {
        const Outcome outcome = session(spoil);
        expectNothingLost(outcome);
        expectNextIsWhole();
        ++m_sessions;
    }

    std::unique_ptr<TempConfigDir> m_folder = std::make_unique<TempConfigDir>();
    QByteArray m_bytes;
    Texts m_old;
    Texts m_new;
    Outcome m_afterOld;
    Outcome m_afterNew;
    Journal m_journal;
    int m_sessions = 0;

private:
    BoxCloser m_boxes;
};

} // namespace

TEST_F(FaultWalk, NothingIsLostWhenOneCallFails)
{
    const std::vector<Step> all = steps();
    const std::size_t stride = isFullForm() ? 1 : 173;
    for (std::size_t n = 0; n < all.size(); n += stride) {
        for (const SANE_Status status : everyStatus) {
            // A description has no status: it is there or not.
            if (all[n].kind == CallKind::Describe && status != SANE_STATUS_IO_ERROR) {
                continue;
            }
            SCOPED_TRACE(testing::Message() << "call " << n << ", kind " << int(all[n].kind)
                                            << ", status " << int(status));
            check([&](FakeScanner& scanner) {
                scanner.failNth(all[n].kind, all[n].ordinal, status);
            });
        }
    }
    std::printf("%zu calls in a session, %d sessions walked\n", all.size(), m_sessions);
}

// Here most is at stake, so the quick form leaves nothing out: what is not described at the binding
// leaves a control without its limits or its list.
TEST_F(FaultWalk, NothingIsLostWhenAnOptionIsNotDescribed)
{
    const int options = static_cast<int>(scannerWithPicture().names().size());
    for (int n = 1; n <= options; ++n) {
        SCOPED_TRACE(testing::Message() << "description " << n);
        check([&](FakeScanner& scanner) {
            scanner.failNth(CallKind::Describe, n, SANE_STATUS_IO_ERROR);
        });
    }
}

TEST_F(FaultWalk, NothingIsLostWhenTheScannerIsGoneFromACallOn)
{
    const std::size_t calls = steps().size();
    const std::size_t stride = isFullForm() ? 1 : 211;
    for (std::size_t n = 0; n < calls; n += stride) {
        const SANE_Status status = everyStatus[n % everyStatus.size()];
        SCOPED_TRACE(testing::Message() << "from call " << n << " on, status " << int(status));
        check([&](FakeScanner& scanner) { scanner.failAllAfter(static_cast<int>(n), status); });
    }
    std::printf("%zu calls in a session, %d sessions walked\n", calls, m_sessions);
}
