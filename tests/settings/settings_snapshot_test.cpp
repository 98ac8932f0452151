// What a save is believed by: the bytes of a file beside what the settings object holds.
#include "settings/settings_snapshot.h"

#include "settings_folder.h"

using namespace kestrel;
using namespace kestrel::test;

namespace {

/// A file as the toolkit writes it, and the object that wrote it.
class SettingsSnapshot : public testing::Test
{
protected:
    SettingsSnapshot() : settings(folder.filePath(), QSettings::IniFormat) {}

    void tell(const char* key, const QVariant& value)
    {
        settings.setValue(QString::fromUtf8(key), value);
    }

    QByteArray written()
    {
        settings.sync();
        return folder.bytes();
    }

    SettingsFolder folder;
    QSettings settings;
};

} // namespace

TEST_F(SettingsSnapshot, WhatTheToolkitHasWrittenIsWhole)
{
    EXPECT_TRUE(holds(written(), settings));
    tell("top", QStringLiteral("1"));
    tell("Office/brightness", QStringLiteral("12"));
    tell("Office/empty", QString());
    tell("Office/blank", QStringLiteral("  "));
    tell("Office/number", 7);
    tell("Office/real", 0.5);
    tell("Office/list", QStringList{QStringLiteral("a"), QStringLiteral("b, c")});
    tell("Office/quoted", QStringLiteral("say \"a;b\\c=d\""));
    tell("Office/at", QStringLiteral("@String(x)"));
    tell("模板 1/亮度%", QStringLiteral("自订;模板 1"));
    tell("general/x", QStringLiteral("1"));
    tell("Deep/er/key", QStringLiteral("1"));
    EXPECT_TRUE(holds(written(), settings));
}

TEST_F(SettingsSnapshot, FileCutAnywhereIsNotWhole)
{
    for (int number = 0; number < 12; ++number) {
        tell(qPrintable(QStringLiteral("Group%1/key").arg(number)), QStringLiteral("value"));
        tell(qPrintable(QStringLiteral("Group%1/name").arg(number)), QStringLiteral("模板"));
    }
    const QByteArray whole = written();
    ASSERT_TRUE(holds(whole, settings));
    for (int length = 0; length < whole.size(); ++length) {
        EXPECT_FALSE(holds(whole.left(length), settings)) << length;
    }
}

TEST_F(SettingsSnapshot, EveryValueCounts)
{
    tell("Office/brightness", QStringLiteral("12"));
    tell("Office/name", QStringLiteral("a, b"));
    const QByteArray whole = written();
    const auto with = [&whole](const char* before, const char* after) {
        EXPECT_TRUE(whole.contains(before)) << whole.constData();
        return QByteArray(whole).replace(before, after);
    };
    EXPECT_FALSE(holds(with("=12\n", "=13\n"), settings));
    EXPECT_FALSE(holds(with("=12\n", "=\n"), settings));
    EXPECT_FALSE(holds(with("\"a, b\"", "a, b"), settings));
    EXPECT_FALSE(holds(with("[Office]", "[Home]").append("[Office]\nname=x\n"), settings));
    EXPECT_FALSE(holds(QByteArray(whole).replace("1", QByteArray(1, '\0')), settings));
    EXPECT_FALSE(holds(whole + "[Home]\nx=1\n", settings));
}

TEST_F(SettingsSnapshot, KeysToldAfterTheFileWasWrittenAreMissing)
{
    tell("Office/brightness", QStringLiteral("12"));
    const QByteArray before = written();
    tell("Zoo/brightness", QStringLiteral("12"));
    EXPECT_FALSE(holds(before, settings));
    settings.remove(QStringLiteral("Zoo/brightness"));
    EXPECT_TRUE(holds(before, settings));
    settings.remove(QStringLiteral("Office/brightness"));
    EXPECT_FALSE(holds(before, settings));
}

TEST_F(SettingsSnapshot, LinesMadeByOthersAreCounted)
{
    folder.write("/x=1\nx=2\n[Office]\nlist=5, 6\nodd//name=7\n");
    settings.sync();
    tell("Office/brightness", QStringLiteral("12"));
    EXPECT_TRUE(holds(written(), settings));
}

TEST(SettingsSnapshotOfOthers, AnOddNameStandsBesideTheOneItIsTidiedUpTo)
{
    for (const char* const odd :
         {"[Office/]\nbrightness=1\n", "[Office]\n/brightness=1\n", "[Office]\nbrightness/=1\n",
          "[/Office]\nbrightness=1\n", "[//Office]\nbrightness=1\n", "Office/brightness=1\n",
          "/Office/brightness=1\n", "/=1\n", "[/]\nOffice/brightness=1\n"}) {
        const SettingsFolder folder;
        folder.write(odd);
        QSettings settings(folder.filePath(), QSettings::IniFormat);
        settings.setValue(QStringLiteral("Office/brightness"), QStringLiteral("12"));
        settings.sync();
        const QByteArray whole = folder.bytes();
        EXPECT_TRUE(holds(whole, settings)) << odd << " became " << whole.constData();
        EXPECT_FALSE(holds(QByteArray(whole).replace("=12\n", "=13\n"), settings)) << odd;
    }
}
