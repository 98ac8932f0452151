// A signal that would end the host while it asks a scanner that has gone.
#include "support/fake_scanner.h"
#include "support/host.h"
#include "support/models.h"

#include <kestrelsettingui.h>
#include <system/signal_blocker.h>

#include <kestrelsetting.h>

#include <gtest/gtest.h>

#include <csignal>
#include <memory>

using namespace kestrel;
using namespace kestrel::test;

namespace {

bool isPending(int signal)
{
    sigset_t pending{};
    EXPECT_EQ(sigpending(&pending), 0);
    return sigismember(&pending, signal) == 1;
}

bool isBlocked(int signal)
{
    sigset_t mask{};
    EXPECT_EQ(pthread_sigmask(SIG_BLOCK, nullptr, &mask), 0);
    return sigismember(&mask, signal) == 1;
}

/// Unless somebody stops it, the signal ends the program, however that was started.
class BrokenPipe : public testing::Test
{
protected:
    BrokenPipe() : m_before(std::signal(SIGPIPE, SIG_DFL)) {}
    ~BrokenPipe() override { std::signal(SIGPIPE, m_before); }

private:
    void (*m_before)(int);
};

} // namespace

TEST_F(BrokenPipe, IsDroppedWhileItIsBlocked)
{
    {
        const SignalBlocker blocker(SIGPIPE);
        raise(SIGPIPE);
    }
    EXPECT_FALSE(isPending(SIGPIPE));
    EXPECT_FALSE(isBlocked(SIGPIPE));
}

TEST_F(BrokenPipe, OneThatWasPendingStaysTheHosts)
{
    sigset_t pipe{};
    sigemptyset(&pipe);
    sigaddset(&pipe, SIGPIPE);
    sigset_t before{};
    ASSERT_EQ(pthread_sigmask(SIG_BLOCK, &pipe, &before), 0);
    raise(SIGPIPE);
    {
        const SignalBlocker blocker(SIGPIPE);
    }
    EXPECT_TRUE(isPending(SIGPIPE));
    std::signal(SIGPIPE, SIG_IGN);
    ASSERT_EQ(pthread_sigmask(SIG_SETMASK, &before, nullptr), 0);
}

TEST_F(BrokenPipe, NoCallToTheScannerEndsTheHost)
{
    const TempConfigDir folder;
    FakeScanner scanner = fullScanner();
    const auto breakPipe = [](FakeScanner&) { raise(SIGPIPE); };
    for (const CallKind kind : {CallKind::Describe, CallKind::Get, CallKind::Set, CallKind::Start,
                                CallKind::Parameters, CallKind::Read, CallKind::Cancel}) {
        scanner.before(kind, breakPipe);
    }
    FakeFrame frame;
    frame.parameters = {SANE_FRAME_GRAY, SANE_TRUE, 8, 8, 8, 8};
    frame.bytes.assign(64, 0);
    scanner.addFrame(frame);
    const std::unique_ptr<KestrelSettingUI> dialog(
        static_cast<KestrelSettingUI*>(creatKestrelSetUI(nullptr)));
    ScannerIdentity record = identity();
    initKestrelSetUI(dialog.get(), scanner.handle(), &record, folder.path());
    setAllParamBySettingUI(dialog.get());
    dialog->on_preview_clicked();
    dialog->on_sure_clicked();
    setBlankPageFunc(dialog.get(), true);
    EXPECT_EQ(scanner.journal().count(CallKind::Read), 1);
    EXPECT_TRUE(scanner.journal().wasSet("blank-page-removal"));
}
