// Files that are small, but would keep the toolkit's reader or writer busy for minutes. The work is
// counted, not timed.
#include "settings/ini_measures.h"
#include "settings/settings_file.h"
#include "settings/settings_inspection.h"
#include "settings/settings_table.h"

#include "settings_folder.h"

using namespace kestrel;
using namespace kestrel::test;

namespace {

constexpr qint64 mebibyte = 1024LL * 1024;

FileState stateOf(const QByteArray& data)
{
    const SettingsFolder folder;
    folder.write(data);
    return inspectSettingsFile(folder.filePath());
}

QByteArray name(int length)
{
    return QByteArray(length, 'n');
}

} // namespace

TEST(SettingsGrowth, MeasuresOfAnOrdinaryFile)
{
    const IniMeasures measures = measureIni("top=1\n[Office]\nbrightness=12\n; note\nx=1\n");
    EXPECT_EQ(measures.lines, 4);
    EXPECT_EQ(measures.longestName, 10);
    EXPECT_EQ(measures.nameWork, 3 + 7 + (7 + 10) + (7 + 1));
    const IniMeasures nothing = measureIni(QByteArray());
    EXPECT_EQ(nothing.lines, 0);
    EXPECT_EQ(nothing.longestName, 0);
    EXPECT_EQ(nothing.nameWork, 0);
}

TEST(SettingsGrowth, EachOpenGroupIsSearchedToTheEndOfTheFile)
{
    EXPECT_EQ(measureIni("[\n[\n[\n").nameWork, 6 + 4 + 2);
    EXPECT_EQ(measureIni("[\n[\n[\n]").nameWork, 6 + 4 + 2);
    EXPECT_EQ(measureIni("[]\n[]\n[]\n").nameWork, 3);
    const qint64 lines = mebibyte / 2;
    EXPECT_EQ(measureIni(QByteArray("[\n").repeated(static_cast<int>(lines))).nameWork,
              lines * (lines + 1));
}

TEST(SettingsGrowth, EachSuperfluousSlashMovesTheKey)
{
    EXPECT_EQ(measureIni("a\\b=1").nameWork, 3);
    EXPECT_EQ(measureIni("a\\\\b=1").nameWork, 4 * 2);
    EXPECT_EQ(measureIni("////=1").nameWork, 4 * 6);
    EXPECT_EQ(measureIni("%2F%2Fa=1").nameWork, 3 * 3);
    EXPECT_EQ(measureIni("[a//]\n/b=1").nameWork, 4 + 6 * 4);
}

TEST(SettingsGrowth, GroupsThatAreNeverClosedAreRefused)
{
    EXPECT_EQ(stateOf(QByteArray("[\n").repeated(5000)), FileState::Sound);
    EXPECT_EQ(stateOf(QByteArray("[\n").repeated(10000)), FileState::Refused);
    EXPECT_EQ(stateOf(QByteArray("[\n").repeated(static_cast<int>(mebibyte / 2))),
              FileState::Refused);
}

TEST(SettingsGrowth, FileCutInsideItsLastGroupIsRead)
{
    QByteArray data;
    for (int group = 0; group < 1000; ++group) {
        data += "[Template" + QByteArray::number(group) +
                "]\nbrightness=" + QByteArray::number(group) + "\n";
    }
    const SettingsFolder folder;
    folder.write(data + "[Off");
    EXPECT_EQ(inspectSettingsFile(folder.filePath()), FileState::Sound);
    EXPECT_EQ(
        openSettings(folder.filePath())->value(QStringLiteral("Template999/brightness")).toString(),
        QStringLiteral("999"));
}

TEST(SettingsGrowth, NamesUpToFourThousandCharactersAreRead)
{
    EXPECT_EQ(stateOf(name(4096) + "=1\n"), FileState::Sound);
    EXPECT_EQ(stateOf(name(4097) + "=1\n"), FileState::Refused);
    EXPECT_EQ(stateOf("[" + name(4096) + "]\nk=1\n"), FileState::Sound);
    EXPECT_EQ(stateOf("[" + name(4097) + "]\n"), FileState::Refused);
    // The toolkit writes one character as six.
    EXPECT_EQ(stateOf(QByteArray("%U4E2D").repeated(4096) + "=1\n"), FileState::Sound);
    EXPECT_EQ(stateOf("k=" + name(5000) + "\n"), FileState::Sound);
}

TEST(SettingsGrowth, LinesUpToAMillionAndAHalfAreRead)
{
    EXPECT_EQ(stateOf(QByteArray("k=1\n").repeated(1500000)), FileState::Sound);
    EXPECT_EQ(stateOf(QByteArray("k=1\n").repeated(1500001)), FileState::Refused);
}

TEST(SettingsGrowth, TemplatesUpToTheLargestSizeAreRead)
{
    // Names of thirty characters, as many as the name dialog lets through.
    QByteArray keys;
    for (const Setting& setting : settingsTable()) {
        keys += QByteArray(setting.key) + "=1\n";
    }
    QByteArray data;
    for (int number = 100000; data.size() + keys.size() + 40 <= largestSettingsFile; ++number) {
        data += "[template with a long name" + QByteArray::number(number) + "]\n" + keys;
    }
    EXPECT_GT(measureIni(data).lines, 800000);
    EXPECT_EQ(stateOf(data), FileState::Sound);
}

TEST(SettingsGrowth, LongGroupBeforeManyKeysIsRefused)
{
    const QByteArray keys = QByteArray("k=1\n").repeated(20000);
    EXPECT_EQ(stateOf("[" + name(1000) + "]\n" + keys), FileState::Sound);
    EXPECT_EQ(stateOf("[" + name(4000) + "]\n" + keys), FileState::Refused);
    EXPECT_EQ(stateOf("[" + QByteArray(1000, '/') + "]\n" + keys), FileState::Refused);
}

TEST(SettingsGrowth, RefusedFileIsMovedAsideAndTheNextIsSaved)
{
    const SettingsFolder folder;
    const QByteArray slashes = QByteArray(static_cast<int>(mebibyte), '/') + "=1\n";
    folder.write(slashes);
    const SettingsHandle settings = openSettings(folder.filePath());
    EXPECT_TRUE(settings->allKeys().isEmpty());
    settings->setValue(QStringLiteral("ScannerA/brightness"), QStringLiteral("12"));
    EXPECT_TRUE(saveSettings(*settings));
    EXPECT_EQ(folder.bytes(), "[ScannerA]\nbrightness=12\n");
    EXPECT_EQ(folder.bytes(QStringLiteral("ScannerA.ini.bad-1")), slashes);
}
