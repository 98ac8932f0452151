// Settings files that an editor has saved as UTF-8 with a byte-order mark: the toolkit reads the
// mark, but does not write it.
#include "settings/ini_plain_text.h"
#include "settings/settings_file.h"

#include "child_process.h"
#include "no_room.h"
#include "settings_folder.h"

#include <csignal>

#include <sys/resource.h>

using namespace kestrel;
using namespace kestrel::test;

namespace {

const QString keyA = QStringLiteral("ScannerA/brightness");
const QString list = QStringLiteral("UserTemplates/usertemplate");
const QByteArray mark = "\xEF\xBB\xBF";

} // namespace

TEST(SettingsWithAMark, KeepTheirTextsThroughASave)
{
    const SettingsFolder folder;
    folder.write(
        "\xEF\xBB\xBF[UserTemplates]\nusertemplate=\"自订;办公\"\n[%U529E%U516C]\nsource=2\n");
    const QString list = QStringLiteral("UserTemplates/usertemplate");
    const SettingsHandle settings = openSettings(folder.filePath());
    const SettingsHandle manager = openSettings(folder.filePath());
    EXPECT_EQ(manager->value(list).toString(), QStringLiteral("自订;办公"));
    settings->setValue(keyA, QStringLiteral("12"));
    EXPECT_TRUE(saveSettings(*settings));
    const Values after = readAfterRestart(folder.filePath());
    EXPECT_EQ(after.value(list).toString(), QStringLiteral("自订;办公"));
    EXPECT_EQ(after.value(QStringLiteral("办公/source")).toString(), QStringLiteral("2"));
}

TEST(SettingsWithAMark, ShowTheirTextsBeforeTheyAreSaved)
{
    const SettingsFolder folder;
    const QByteArray marked = mark + "[UserTemplates]\nusertemplate=\"自订;办公\"\n";
    folder.write(marked);
    EXPECT_EQ(openSettings(folder.filePath())->value(list).toString(), QStringLiteral("自订;办公"));
    EXPECT_EQ(openSettings(folder.filePath())->value(list).toString(), QStringLiteral("自订;办公"));
}

TEST(SettingsWithAMark, KeepTheirTextsWhenTheMarkComesWhileTheyAreOpen)
{
    const SettingsFolder folder;
    folder.write("[UserTemplates]\nusertemplate=Old\n");
    const SettingsHandle settings = openSettings(folder.filePath());
    EXPECT_EQ(settings->value(list).toString(), QStringLiteral("Old"));
    folder.write(mark + "[UserTemplates]\nusertemplate=\"自订;办公abc\"\n");
    settings->setValue(keyA, QStringLiteral("12"));
    EXPECT_TRUE(saveSettings(*settings));
    EXPECT_EQ(settings->value(list).toString(), QStringLiteral("自订;办公abc"));
    settings->setValue(keyA, QStringLiteral("13"));
    EXPECT_TRUE(saveSettings(*settings));
    EXPECT_EQ(readAfterRestart(folder.filePath()),
              (Values{{keyA, QStringLiteral("13")}, {list, QStringLiteral("自订;办公abc")}}));
}

TEST(SettingsWithAMark, AreAsBeforeWhenThereIsNoRoomToSaveThem)
{
    const SettingsFolder folder;
    const QByteArray marked = mark + "[UserTemplates]\nusertemplate=\"自订;办公\"\nfiller=\"" +
                              QByteArray(500, 'x') + "\"\n";
    inChildProcess([&folder, &marked] {
        const SettingsHandle settings = openSettings(folder.filePath());
        folder.write(marked);
        settings->setValue(keyA, QStringLiteral("12"));
        rlimit before{};
        ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
        rlimit during = before;
        during.rlim_cur = 300;
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &during), 0);
        EXPECT_FALSE(saveSettings(*settings));
        EXPECT_EQ(folder.bytes(), marked);
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
        EXPECT_TRUE(saveSettings(*settings));
    });
    const Values after = readAfterRestart(folder.filePath());
    EXPECT_EQ(after.value(keyA).toString(), QStringLiteral("12"));
    EXPECT_EQ(after.value(list).toString(), QStringLiteral("自订;办公"));
}

TEST(SettingsWithAMark, AreSavedOnceThereIsRoomForWhatIsNew)
{
    const SettingsFolder folder;
    const QByteArray marked = mark + "[UserTemplates]\nusertemplate=\"自订;办公\"\n";
    inChildProcess([&folder, &marked] {
        const SettingsHandle settings = openSettings(folder.filePath());
        folder.write(marked);
        // The file without its mark has room, the new value has not.
        settings->setValue(keyA, QString(20000, QLatin1Char('x')));
        rlimit before{};
        ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
        rlimit during = before;
        during.rlim_cur = 1000;
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &during), 0);
        EXPECT_FALSE(saveSettings(*settings));
        EXPECT_EQ(folder.bytes(), marked);
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
        settings->setValue(keyA, QStringLiteral("12"));
        EXPECT_TRUE(saveSettings(*settings));
    });
    EXPECT_EQ(readAfterRestart(folder.filePath()),
              (Values{{keyA, QStringLiteral("12")}, {list, QStringLiteral("自订;办公")}}));
}

// What is left then would be read, and written anew without its comment, as if it were the whole.
TEST(SettingsWithAMark, AreAsBeforeWhenTheyAreCutWhileTheMarkIsTakenOut)
{
    const SettingsFolder folder;
    const QByteArray marked = mark + "[Alpha]\nk=1\n; " + QByteArray(1000, 'x') + "\n[Beta]\nk=2\n";
    folder.write(marked);
    inChildProcess([&folder, &marked] {
        const SettingsHandle settings = openSettings(folder.filePath());
        settings->setValue(keyA, QStringLiteral("12"));
        {
            const FileSizeLimit limit(600);
            EXPECT_FALSE(saveSettings(*settings));
        }
        EXPECT_EQ(folder.bytes(), marked);
        EXPECT_TRUE(saveSettings(*settings));
        EXPECT_EQ(folder.bytes(), "[Alpha]\nk=1\n\n[Beta]\nk=2\n\n[ScannerA]\nbrightness=12\n");
    });
}

// An editor may add its mark to a mark that it does not know. The further ones belong to the first
// line, and so to a key that stands in front of all groups.
TEST(SettingsWithAMark, AreSavedWithFurtherMarksBehindIt)
{
    for (const int further : {1, 2}) {
        for (const char* const first : {"[Alpha]", "top=0", "; comment", ""}) {
            const SettingsFolder folder;
            folder.write(mark + mark.repeated(further) + first +
                         "\n[UserTemplates]\nusertemplate=\"自订;办公\"\n");
            bool is_saved = false;
            {
                const SettingsHandle settings = openSettings(folder.filePath());
                settings->setValue(keyA, QStringLiteral("12"));
                is_saved = saveSettings(*settings);
            }
            EXPECT_TRUE(is_saved) << further << first;
            const Values after = readAfterRestart(folder.filePath());
            EXPECT_EQ(after.value(keyA).toString(), QStringLiteral("12")) << further << first;
            EXPECT_EQ(after.value(list).toString(), QStringLiteral("自订;办公"))
                << further << first;
        }
    }
}

TEST(SettingsWithAMark, AreReadAlikeWithoutIt)
{
    for (const char* const text : {"",
                                   "\n",
                                   "; 注释=1\n",
                                   "k=1\nl=2",
                                   "k=\"自订\"\n",
                                   "k=自订abc0Zz\n",
                                   "k=自订, 办公 ,x\n",
                                   "k=\"a\\x81ea自\"\n",
                                   "k=\"😀 ;x\" ; 注释\n",
                                   "k=\"\\\"自\\\\订\"\n",
                                   "k=\\自x\n",
                                   "k=@@自\n",
                                   "自订=1\n[自订]\n自=订\n",
                                   "k=\xFF\xFE\n",
                                   "k=a\xE8\n",
                                   "k=自\\\n订\n",
                                   "[%U81EA]\nk=é1\n",
                                   "k=自",
                                   "k=自\\",
                                   "k=\xEF\xBB\xBF自\n",
                                   "k=自\xEF\xBB\xBF订\n",
                                   "k=1, \xEF\xBB\xBF"
                                   "2\n",
                                   "k=\"\xEF\xBB\xBF自\\x31\xEF\xBB\xBF\"\n",
                                   "\xEF\xBB\xBFk=1\n"}) {
        const SettingsFolder folder;
        // The toolkit takes the mark for a part of a key that stands in front of all groups.
        const QByteArray marked = mark + "[A]\n" + text;
        folder.write(marked, QStringLiteral("marked.ini"));
        folder.write(withoutByteOrderMark(marked), QStringLiteral("plain.ini"));
        const Values expected = readAfterRestart(folder.filePath(QStringLiteral("marked.ini")));
        const Values found = readAfterRestart(folder.filePath(QStringLiteral("plain.ini")));
        EXPECT_EQ(found.keys(), expected.keys()) << text;
        for (const QString& key : expected.keys()) {
            EXPECT_EQ(found.value(key).toStringList(), expected.value(key).toStringList()) << text;
        }
    }
}
