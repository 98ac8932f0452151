// A file that another program has saved within one tick of the file system's clock, as large as it
// was: to the toolkit it looks unchanged, and its next save would bring the old values back.
#include "settings/settings_file.h"
#include "settings/toolkit_memory.h"

#include "child_process.h"
#include "no_room.h"
#include "settings_folder.h"

#include <fcntl.h>
#include <sys/stat.h>

using namespace kestrel;
using namespace kestrel::test;

namespace {

const QString ours = QStringLiteral("Alpha/brightness");
const QString theirs = QStringLiteral("Beta/brightness");
const QByteArray oldBytes = "[Alpha]\nbrightness=1\n\n[Beta]\nbrightness=1\n";

class SameStamp : public testing::Test
{
protected:
    SameStamp() { folder.write(oldBytes); }

    /// Another program saves, and the clock of the file system has not moved on.
    void saveElsewhere(const QByteArray& bytes)
    {
        struct stat before
        {
        };
        ASSERT_EQ(::stat(nameOf(folder).constData(), &before), 0);
        const QString other = QStringLiteral("other.ini");
        folder.write(bytes, other);
        const timespec times[] = {before.st_atim, before.st_mtim};
        ASSERT_EQ(
            ::utimensat(AT_FDCWD, QFile::encodeName(folder.filePath(other)).constData(), times, 0),
            0);
        ASSERT_EQ(::rename(QFile::encodeName(folder.filePath(other)).constData(),
                           nameOf(folder).constData()),
                  0);
    }

    Values values() const { return readAfterRestart(folder.filePath()); }

    SettingsFolder folder;
};

} // namespace

TEST_F(SameStamp, ChangeOfAnotherProgramOutlivesOurNextSave)
{
    const SettingsHandle settings = openSettings(folder.filePath());
    settings->setValue(ours, QStringLiteral("2"));
    ASSERT_TRUE(saveSettings(*settings, {QStringLiteral("Alpha")}));
    saveElsewhere("[Alpha]\nbrightness=2\n\n[Beta]\nbrightness=7\n");
    settings->setValue(ours, QStringLiteral("3"));
    EXPECT_TRUE(saveSettings(*settings, {QStringLiteral("Alpha")}));
    EXPECT_EQ(values(), (Values{{ours, QStringLiteral("3")}, {theirs, QStringLiteral("7")}}));
    EXPECT_EQ(settings->value(theirs).toString(), QStringLiteral("7"));
}

TEST_F(SameStamp, ChangeOfAnotherProgramSinceTheOpeningOutlivesOurFirstSave)
{
    const SettingsHandle settings = openSettings(folder.filePath());
    saveElsewhere(QByteArray(oldBytes).replace("[Beta]\nbrightness=1", "[Beta]\nbrightness=7"));
    settings->setValue(ours, QStringLiteral("3"));
    EXPECT_TRUE(saveSettings(*settings));
    EXPECT_EQ(values(), (Values{{ours, QStringLiteral("3")}, {theirs, QStringLiteral("7")}}));
}

TEST_F(SameStamp, IsReadAnewWhenTheFileIsOpenedAgain)
{
    openSettings(folder.filePath())->allKeys();
    saveElsewhere(QByteArray(oldBytes).replace("[Beta]\nbrightness=1", "[Beta]\nbrightness=7"));
    EXPECT_EQ(openSettings(folder.filePath())->value(theirs).toString(), QStringLiteral("7"));
}

TEST_F(SameStamp, SaveWithNothingToWriteTakesTheChangeOver)
{
    const SettingsHandle settings = openSettings(folder.filePath());
    ASSERT_TRUE(saveSettings(*settings));
    saveElsewhere(QByteArray(oldBytes).replace("[Beta]\nbrightness=1", "[Beta]\nbrightness=7"));
    EXPECT_TRUE(saveSettings(*settings));
    EXPECT_EQ(settings->value(theirs).toString(), QStringLiteral("7"));
    EXPECT_EQ(values().value(theirs).toString(), QStringLiteral("7"));
}

TEST_F(SameStamp, ChangeSinceASaveWithNothingToWriteOutlivesOurNextSave)
{
    const SettingsHandle settings = openSettings(folder.filePath());
    folder.write(oldBytes + "contrast=1\n");
    ASSERT_TRUE(saveSettings(*settings));
    saveElsewhere(QByteArray(oldBytes).replace("[Beta]\nbrightness=1", "[Beta]\nbrightness=7") +
                  "contrast=1\n");
    settings->setValue(ours, QStringLiteral("3"));
    EXPECT_TRUE(saveSettings(*settings));
    EXPECT_EQ(values().value(theirs).toString(), QStringLiteral("7"));
}

TEST_F(SameStamp, ChangeSinceASaveThatFailedOutlivesOurNextSave)
{
    inChildProcess([this] {
        const SettingsHandle settings = openSettings(folder.filePath());
        const QByteArray filler = "filler=" + QByteArray(1000, 'x') + '\n';
        folder.write(oldBytes + filler);
        settings->setValue(ours, QString(2000, QLatin1Char('y')));
        {
            const FileSizeLimit limit(1500);
            ASSERT_FALSE(saveSettings(*settings));
        }
        ASSERT_EQ(folder.bytes(), oldBytes + filler);
        saveElsewhere(QByteArray(oldBytes).replace("[Beta]\nbrightness=1", "[Beta]\nbrightness=7") +
                      filler);
        settings->setValue(ours, QStringLiteral("3"));
        EXPECT_TRUE(saveSettings(*settings));
        EXPECT_EQ(values().value(theirs).toString(), QStringLiteral("7"));
        EXPECT_EQ(values().value(ours).toString(), QStringLiteral("3"));
    });
}

TEST_F(SameStamp, FileThatIsWhatWeKnowKeepsItsTime)
{
    const SettingsHandle settings = openSettings(folder.filePath());
    settings->setValue(ours, QStringLiteral("2"));
    ASSERT_TRUE(saveSettings(*settings));
    const qint64 modified = modificationTime(folder.filePath());
    EXPECT_TRUE(saveSettings(*settings));
    EXPECT_TRUE(saveSettings(*openSettings(folder.filePath())));
    EXPECT_EQ(modificationTime(folder.filePath()), modified);
    EXPECT_EQ(modificationTime(folder.filePath(QStringLiteral("none"))), -1);
}

TEST_F(SameStamp, TimeIsMovedOnOnlyWhereItIsTheKnownOne)
{
    const qint64 modified = modificationTime(folder.filePath());
    outdateToolkitMemory(folder.filePath(), modified + 1);
    outdateToolkitMemory(folder.filePath(), -1);
    EXPECT_EQ(modificationTime(folder.filePath()), modified);
    outdateToolkitMemory(folder.filePath(), modified);
    EXPECT_EQ(modificationTime(folder.filePath()), modified + 1);
}
