// A write that is cut off, and a disk that does not even let the old file come back: nothing counts
// as written, and nothing is thrown away.
#include "settings/settings_file.h"

#include "child_process.h"
#include "no_room.h"
#include "settings_folder.h"

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>

using namespace kestrel;
using namespace kestrel::test;

namespace {

const QString key = QStringLiteral("ScannerA/zoom");
const QByteArray oldBytes = "[ScannerA]\nfill=" + QByteArray(1000, 'x') + "\nzoom=1\n";
const QByteArray newBytes = "[ScannerA]\nfill=" + QByteArray(1000, 'x') + "\nzoom=2\n";
const QString heldName = QStringLiteral("ScannerA.ini.kestrel-hold");

bool canRename = true;
bool clockStands = false; ///< of the file system: what is renamed is as old as what it replaces

void keepTime(const char* from, const char* to)
{
    struct stat before
    {
    };
    ASSERT_EQ(::stat(to, &before), 0);
    const timespec times[] = {before.st_atim, before.st_mtim};
    ASSERT_EQ(::utimensat(AT_FDCWD, from, times, 0), 0);
}

/// Confirms a value while the file may not grow to its size, and nothing can be put back.
void confirmWithoutAWayBack(const SettingsFolder& folder, QSettings& settings)
{
    settings.setValue(key, QStringLiteral("2"));
    const FileSizeLimit limit(1000);
    canRename = false;
    EXPECT_FALSE(saveSettings(settings));
    canRename = true;
    ASSERT_EQ(folder.bytes().size(), 1000) << "the write was to be cut off";
}

} // namespace

extern "C" int __real_rename(const char* from, const char* to);

extern "C" int __wrap_rename(const char* from, const char* to)
{
    if (!canRename) {
        errno = EIO;
        return -1;
    }
    if (clockStands) {
        keepTime(from, to);
    }
    return __real_rename(from, to);
}

TEST(PuttingBack, WhatCannotComeBackStaysHeld)
{
    inChildProcess([] {
        const SettingsFolder folder;
        folder.write(oldBytes);
        const SettingsHandle settings = openSettings(folder.filePath());
        confirmWithoutAWayBack(folder, *settings);
        EXPECT_EQ(folder.bytes(heldName), oldBytes);
    });
}

TEST(PuttingBack, NextSaveWritesWhatWasConfirmed)
{
    inChildProcess([] {
        const SettingsFolder folder;
        folder.write(oldBytes);
        const SettingsHandle settings = openSettings(folder.filePath());
        confirmWithoutAWayBack(folder, *settings);
        EXPECT_TRUE(saveSettings(*settings));
        EXPECT_EQ(folder.bytes(), newBytes);
        EXPECT_FALSE(QFile::exists(folder.filePath(heldName)));
    });
}

// Cut to the size of the old file, within one tick of the clock: to the toolkit the old one, back
// again, is the one that it has written.
TEST(PuttingBack, OldFileIsNotTakenForTheNewOneThatLooksAlike)
{
    inChildProcess([] {
        const SettingsFolder folder;
        folder.write(oldBytes);
        const SettingsHandle settings = openSettings(folder.filePath());
        settings->setValue(key, QStringLiteral("22222"));
        {
            const FileSizeLimit limit(static_cast<rlim_t>(oldBytes.size()));
            clockStands = true;
            EXPECT_FALSE(saveSettings(*settings));
            clockStands = false;
        }
        ASSERT_EQ(folder.bytes(), oldBytes);
        EXPECT_TRUE(saveSettings(*settings));
        EXPECT_EQ(readAfterRestart(folder.filePath()).value(key).toString(),
                  QStringLiteral("22222"));
    });
}

TEST(PuttingBack, NextProcessFindsTheOldFile)
{
    const SettingsFolder folder;
    folder.write(oldBytes);
    inChildProcess([&folder] {
        SettingsHandle settings = openSettings(folder.filePath());
        confirmWithoutAWayBack(folder, *settings);
        settings.release(); // the process ends here
    });
    EXPECT_EQ(openSettings(folder.filePath())->value(key).toString(), QStringLiteral("1"));
    EXPECT_EQ(folder.bytes(), oldBytes);
}
