// A session in which the n-th write to the disk fails, for every n and in every way: the settings
// file is the old one or the new one, and the next session finds it whole.
#include "reliability/stand_in.h"
#include "reliability/write_faults.h"
#include "support/host.h"
#include "support/messages.h"

#include <QFile>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <vector>

using namespace kestrel::test;

namespace {

// An interrupted call is never interrupted for ever.
constexpr std::array ways = {WriteFault{ENOSPC, false, false}, WriteFault{ENOSPC, true, false},
                             WriteFault{ENOSPC, true, true},   WriteFault{EIO, false, false},
                             WriteFault{EIO, true, false},     WriteFault{EDQUOT, false, false},
                             WriteFault{EDQUOT, true, false},  WriteFault{EROFS, true, false},
                             WriteFault{EACCES, false, false}, WriteFault{EINTR, false, false}};

const QString fileName = QStringLiteral("ScannerA.ini");

class WriteWalk : public testing::Test
{
protected:
    /// What one session leaves on the disk.
    struct Left
    {
        QByteArray bytes;
        Texts texts;
        bool failed;
        int writes;
    };

    /// @param before the settings file that is there already; empty: none
    Left session(const QByteArray& before, int n, const WriteFault& fault)
    {
        const TempConfigDir folder;
        if (!before.isEmpty()) {
            folder.write(fileName, before);
        }
        FakeScanner scanner = scannerWithPicture();
        Left left{};
        // Here and not in the user's hands: what is in memory at the end is not saved later.
        auto user = std::make_unique<UserSession>();
        {
            const WriteFaults faults(folder.path(), n, fault);
            user->run(scanner.handle(), folder.path(), 1);
            user->end();
            left.failed = WriteFaults::hasFailed();
            left.writes = WriteFaults::count();
        }
        left.bytes = folder.read(fileName);
        left.texts = readSettingsFile(folder.file(fileName));
        return left;
    }

    /// @return the file when the scanner has been bound and nothing else was done
    static QByteArray afterBinding(const QByteArray& before)
    {
        const TempConfigDir folder;
        if (!before.isEmpty()) {
            folder.write(fileName, before);
        }
        FakeScanner scanner = scannerWithPicture();
        UserSession user;
        user.bind(scanner.handle(), folder.path());
        user.end();
        return folder.read(fileName);
    }

    /// What the next start sends, with nothing but the file that was left.
    std::vector<std::string> nextSession(const QByteArray& bytes)
    {
        const TempConfigDir folder;
        if (!bytes.isEmpty()) {
            folder.write(fileName, bytes);
        }
        FakeScanner scanner = scannerWithPicture();
        UserSession user;
        user.bind(scanner.handle(), folder.path());
        user.apply();
        return scanner.journal().sets();
    }

    void walk(const QByteArray& before)
    {
        const Texts old = textsOf(before);
        const Left whole = session(before, 0, {});
        ASSERT_NE(whole.texts, old);
        ASSERT_GT(whole.writes, 0);
        // A first session saves twice: what the scanner reported, and what was confirmed.
        const QByteArray reported = afterBinding(before);
        const std::vector<Texts> wholeFiles{old, textsOf(reported), whole.texts};
        const std::vector<std::vector<std::string>> sent{nextSession(before), nextSession(reported),
                                                         nextSession(whole.bytes)};
        const ExpectedWarnings stuckLocks(QStringLiteral("remove our own lock file"));
        int sessions = 0;
        int kept = 0;
        for (int n = 1; n <= whole.writes; n += isFullForm() ? 1 : 2) {
            for (std::size_t way = 0; way < ways.size(); ++way) {
                const std::size_t turn = (static_cast<std::size_t>(n) + way) % ways.size();
                if (!isFullForm() && turn != 0) {
                    continue;
                }
                const WriteFault& fault = ways[way];
                SCOPED_TRACE(testing::Message()
                             << "write " << n << ", errno " << fault.error
                             << (fault.lasting ? ", lasting" : "") << (fault.torn ? ", torn" : ""));
                const Left left = session(before, n, fault);
                EXPECT_TRUE(left.failed);
                const auto found = std::find(wholeFiles.begin(), wholeFiles.end(), left.texts);
                ASSERT_NE(found, wholeFiles.end()) << left.bytes.toStdString();
                const auto which = static_cast<std::size_t>(found - wholeFiles.begin());
                EXPECT_EQ(nextSession(left.bytes), sent[which]);
                ++sessions;
                kept += found == wholeFiles.begin() ? 1 : 0;
            }
        }
        std::printf("%d writes in a session, %d sessions walked: %d kept the old file\n",
                    whole.writes, sessions, kept);
        EXPECT_GT(kept, 0);
        EXPECT_LT(kept, sessions);
    }

    static Texts textsOf(const QByteArray& bytes)
    {
        const TempConfigDir folder;
        if (bytes.isEmpty()) {
            return {};
        }
        folder.write(fileName, bytes);
        return readSettingsFile(folder.file(fileName));
    }

private:
    BoxCloser m_boxes;
};

} // namespace

TEST_F(WriteWalk, TheStoredSettingsAreTheOldOnesOrTheNewOnes)
{
    const TempConfigDir folder;
    walk(makeStoredSettings(folder.path()));
}

TEST_F(WriteWalk, TheFirstSessionLeavesAWholeFileOrNone)
{
    walk({});
}

TEST_F(WriteWalk, ALockFileThatCannotBeRemovedKeepsNobodyWaiting)
{
    const TempConfigDir folder;
    const QString path = folder.file(fileName);
    makeStoredSettings(folder.path());
    const Texts old = readSettingsFile(path);
    FakeScanner scanner = scannerWithPicture();
    UserSession user;
    user.bind(scanner.handle(), folder.path());
    user.edit(1);
    {
        const ExpectedWarnings stuckLocks(QStringLiteral("remove our own lock file"));
        const WriteFaults faults(folder.path(), 1, {EROFS, true, false, "unlink"});
        user.ok();
        user.bind(scanner.handle(), folder.path());
        EXPECT_TRUE(WriteFaults::hasFailed());
        EXPECT_EQ(readSettingsFile(path), old);
    }
    ASSERT_TRUE(QFile::remove(path + QStringLiteral(".lock")));
    user.bind(scanner.handle(), folder.path());
    user.end();
    EXPECT_EQ(readSettingsFile(path).value(QStringLiteral("Office/brightness")),
              QStringLiteral("33"));
}
