// Files that are put out of the way.
#include "settings/files_aside.h"

#include "child_process.h"
#include "no_room.h"
#include "refused_calls.h"
#include "settings_folder.h"

#include <csignal>

using namespace kestrel;
using namespace kestrel::test;

namespace {

const QString copyName = QStringLiteral("copy");

} // namespace

TEST(FilesAside, CopyHoldsEverything)
{
    const SettingsFolder folder;
    const QByteArray content(3000, 'x');
    folder.write(content);
    EXPECT_TRUE(copyWhole(folder.filePath(), folder.filePath(copyName)));
    EXPECT_EQ(folder.bytes(copyName), content);
}

TEST(FilesAside, CopyThatIsCutDoesNotStay)
{
    for (const int size : {3000, 30'000, 100'000}) {
        const SettingsFolder folder;
        folder.write(QByteArray(size, 'x'));
        inChildProcess([&] {
            std::signal(SIGXFSZ, SIG_IGN);
            const FileSizeLimit limit(2000);
            EXPECT_FALSE(copyWhole(folder.filePath(), folder.filePath(copyName))) << size;
        });
        EXPECT_FALSE(QFile::exists(folder.filePath(copyName))) << size;
    }
}

TEST(FilesAside, NobodyIsReplacedWhereTheFileSystemPromisesNothing)
{
    const SettingsFolder folder;
    folder.write("new");
    folder.write("first", QStringLiteral("ScannerA.ini.bad-1"));
    inChildProcess([&folder] {
        refuseRenamingWithoutReplacing();
        EXPECT_TRUE(moveAside(folder.filePath()));
    });
    EXPECT_EQ(folder.bytes(QStringLiteral("ScannerA.ini.bad-1")), "first");
    EXPECT_EQ(folder.bytes(QStringLiteral("ScannerA.ini.bad-2")), "new");
    EXPECT_EQ(folder.files().size(), 2);
}
