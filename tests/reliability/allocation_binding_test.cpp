// The n-th allocation of the library's own code fails, for every n, in a binding on which more
// hangs than the dialog of the moment: the first of a scanner, and the change to another.
#include "reliability/allocation_faults.h"
#include "reliability/stand_in.h"
#include "support/host.h"
#include "support/user.h"

#include <kestrelsetting.h>
#include <kestrelsettingui.h>

#include <QAbstractButton>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <functional>

using namespace kestrel::test;

namespace {

const QString fileName = QStringLiteral("ScannerA.ini");
const QString otherName = QStringLiteral("ScannerB.ini");

class AllocationBinding : public testing::Test
{
protected:
    /// Binds without the memory for allocation number @p n.
    void starve(UserSession& user, SANE_Handle handle, const char* folder, const char* name, long n)
    {
        ScannerIdentity record = identity(name);
        const AllocationFaults faults(n);
        EXPECT_NO_THROW(initKestrelSetUI(user.dialog().host(), handle, &record, folder));
        m_count = AllocationFaults::count();
    }

    /// Every allocation, or some sixteen of them in the quick form.
    void forEach(const char* what, const std::function<void(long)>& session)
    {
        session(0);
        const long count = m_count;
        EXPECT_GT(count, 40);
        const long stride = isFullForm() ? 1 : std::max(1L, count / 16);
        for (long n = 1; n <= count; n += stride) {
            SCOPED_TRACE(testing::Message() << what << ", allocation " << n << " of " << count);
            session(n);
        }
        std::printf("%s: %ld allocations\n", what, count);
    }

    static bool isVersionNoted(const Texts& file)
    {
        return file.contains(QStringLiteral("ScannerAconfig_version/config_version"));
    }

    long m_count = 0;
    BoxCloser m_boxes;
};

} // namespace

// A rule that had no memory may have left its control as it was; but no setting is missing.
TEST_F(AllocationBinding, TheFirstStateOfAScannerIsWholeOrTakenByTheNextBinding)
{
    Texts whole;
    int versions = 0;
    forEach("the first binding", [&](long n) {
        const TempConfigDir folder;
        FakeScanner scanner = scannerWithPicture();
        {
            UserSession user;
            starve(user, scanner.handle(), folder.path(), "ScannerA", n);
        }
        const Texts left = readSettingsFile(folder.file(fileName));
        if (n == 0) {
            whole = left;
            EXPECT_TRUE(isVersionNoted(whole));
        }
        UserSession next;
        next.bind(scanner.handle(), folder.path());
        const Texts kept = readSettingsFile(folder.file(fileName));
        if (isVersionNoted(left)) {
            ++versions;
            EXPECT_EQ(left.keys(), whole.keys());
            EXPECT_TRUE(kept == left);
        } else {
            EXPECT_TRUE(kept == whole);
        }
    });
    EXPECT_GT(versions, 1);
}

TEST_F(AllocationBinding, OfAnotherScannerMixesNeitherWithTheOther)
{
    const TempConfigDir prepared;
    const QByteArray bytes = makeStoredSettings(prepared.path());
    const QByteArray other_bytes = QByteArray(bytes).replace("ScannerA", "ScannerB");
    Texts old;
    Texts other_old;
    Texts other_edited;
    int kept = 0;
    forEach("binding another scanner", [&](long n) {
        const TempConfigDir folder;
        folder.write(fileName, bytes);
        folder.write(otherName, other_bytes);
        const auto file = [&folder](const QString& name) {
            return readSettingsFile(folder.file(name));
        };
        if (n == 0) {
            old = file(fileName);
            other_old = file(otherName);
        }
        FakeScanner scanner = scannerWithPicture();
        FakeScanner other = scannerWithPicture();
        UserSession user;
        user.bind(scanner.handle(), folder.path());
        user.edit(0);
        starve(user, other.handle(), folder.path(), "ScannerB", n);
        const bool stays = user.dialog().device_name == QLatin1String("ScannerA");
        user.edit(1);
        user.ok();
        if (n == 0) {
            other_edited = file(otherName);
            EXPECT_FALSE(other_edited == other_old);
        }
        // What could not be loaded is not stored.
        const bool is_kept = file(otherName) != other_edited;
        EXPECT_TRUE(!is_kept || file(otherName) == other_old);
        EXPECT_EQ(file(fileName) == old, !stays) << "a scanner that is still bound is served";
        kept += is_kept ? 1 : 0;
        // Closing loads what was confirmed, into controls that may have no lists and no limits.
        child<QAbstractButton>(user.dialog(), "cancel").click();
        user.ok();
        EXPECT_TRUE(file(otherName) == (is_kept ? other_old : other_edited));
        user.bind(other.handle(), folder.path(), "ScannerB");
        user.edit(1);
        user.ok();
        EXPECT_TRUE(file(otherName) == other_edited);
        EXPECT_EQ(file(fileName) == old, !stays);
    });
    EXPECT_GT(kept, 0);
}

TEST_F(AllocationBinding, TheFirstStateOfAnotherScannerHoldsNothingOfTheOneBefore)
{
    Texts whole;
    forEach("the first binding of another scanner", [&](long n) {
        const TempConfigDir folder;
        FakeScanner scanner = scannerWithPicture();
        FakeScanner other = scannerWithPicture();
        UserSession user;
        user.bind(scanner.handle(), folder.path());
        user.edit(1);
        starve(user, other.handle(), folder.path(), "ScannerB", n);
        user.bind(other.handle(), folder.path(), "ScannerB");
        const Texts file = readSettingsFile(folder.file(otherName));
        if (n == 0) {
            whole = file;
        }
        EXPECT_EQ(file.keys(), whole.keys());
        for (const char* const key : {"brightness", "contrast", "crop_adjust_top"}) {
            const QString name = QStringLiteral("ScannerB/") + QLatin1String(key);
            EXPECT_EQ(file.value(name), whole.value(name)) << key;
        }
    });
}
