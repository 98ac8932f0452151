// The quick look at a large file: only the groups that were written to are read line by line.
#include "settings/settings_snapshot.h"

#include "settings_folder.h"

using namespace kestrel;
using namespace kestrel::test;

namespace {

QString text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

/// A file of some groups as the toolkit writes it, and the object that wrote it.
class ChangedGroups : public testing::Test
{
protected:
    ChangedGroups() : settings(folder.filePath(), QSettings::IniFormat)
    {
        for (const char* const group : {"Alpha", "模板 1", "General", "%general", "Omega"}) {
            fill(group, "12");
        }
        before = written();
    }

    void fill(const char* group, const char* value)
    {
        settings.setValue(text(group) + QStringLiteral("/brightness"), text(value));
        settings.setValue(text(group) + QStringLiteral("/name"), text("a; \"b\"\n[c]"));
    }

    QByteArray written()
    {
        settings.sync();
        return folder.bytes();
    }

    bool holdsOnly(const QByteArray& content, const QStringList& groups)
    {
        const bool isHeld = holdsGroups(content, settings, groups, before);
        // It never says yes where the look at everything would say no.
        EXPECT_TRUE(!isHeld || holds(content, settings)) << content.constData();
        EXPECT_TRUE(settings.group().isEmpty());
        return isHeld;
    }

    SettingsFolder folder;
    QSettings settings;
    QByteArray before;
};

} // namespace

TEST_F(ChangedGroups, ChangedGroupIsHeldWhateverItsName)
{
    for (const char* const group : {"Alpha", "模板 1", "General", "%general", "Omega"}) {
        fill(group, "13");
        EXPECT_TRUE(holdsOnly(written(), {text(group)})) << group;
        before = folder.bytes();
    }
}

TEST_F(ChangedGroups, AddedAndRemovedGroupsAreHeld)
{
    fill("Zulu", "1");
    EXPECT_TRUE(holdsOnly(written(), {text("Zulu")}));
    EXPECT_FALSE(holdsOnly(before, {text("Zulu")})) << "the old file lacks the new group";
    before = folder.bytes();
    settings.remove(text("Zulu"));
    settings.remove(text("Alpha"));
    EXPECT_TRUE(holdsOnly(written(), {text("Zulu"), text("Alpha")}));
    EXPECT_FALSE(holdsOnly(before, {text("Zulu"), text("Alpha")}));
}

TEST_F(ChangedGroups, FirstSaveOfAllIsHeld)
{
    before.clear();
    const QByteArray whole = written();
    EXPECT_TRUE(holdsOnly(
        whole, {text("Alpha"), text("模板 1"), text("General"), text("%general"), text("Omega")}));
}

TEST_F(ChangedGroups, FileCutAnywhereIsNotHeld)
{
    fill("Zulu", "1");
    fill("Alpha", "2");
    const QByteArray whole = written();
    for (int length = 0; length < whole.size(); ++length) {
        EXPECT_FALSE(holdsOnly(whole.left(length), {text("Zulu"), text("Alpha")})) << length;
    }
}

TEST_F(ChangedGroups, ValueOfAWrittenGroupHasToBeInTheFile)
{
    fill("Omega", "13");
    const QByteArray whole = written();
    EXPECT_FALSE(holdsOnly(before, {text("Omega")}));
    EXPECT_FALSE(
        holdsOnly(QByteArray(whole).replace("brightness=13", "brightness=14"), {text("Omega")}));
    EXPECT_FALSE(holdsOnly(QByteArray(whole).replace("brightness=13\n", ""), {text("Omega")}));
    EXPECT_FALSE(holdsOnly(QByteArray(whole).replace("brightness=13", "brightness=13\nodd"),
                           {text("Omega")}));
}

TEST_F(ChangedGroups, ChangeInAnyOtherGroupIsLeftToTheCloseLook)
{
    fill("Omega", "13");
    fill("Alpha", "13");
    const QByteArray whole = written();
    EXPECT_FALSE(holdsOnly(whole, {text("Omega")}));
    EXPECT_TRUE(holds(whole, settings));
    EXPECT_TRUE(holdsOnly(whole, {text("Omega"), text("Alpha")}));
    EXPECT_FALSE(holdsOnly(whole, {})) << "nobody knows what was written to";
}

TEST_F(ChangedGroups, ValueThatRunsIntoTheNextGroupIsNotHeld)
{
    settings.setValue(text("Alpha/name"), text("\n\n[Omega]\nbrightness=12\n"));
    fill("Omega", "13");
    const QByteArray whole = written();
    QByteArray open = whole;
    open.replace("name=\"\\n\\n[Omega]\\nbrightness=12\\n\"",
                 "name=\"\n\n[Omega]\nbrightness=12\n\"");
    ASSERT_NE(open, whole);
    EXPECT_FALSE(holdsOnly(open, {text("Alpha"), text("Omega")}));
    EXPECT_TRUE(holdsOnly(whole, {text("Alpha"), text("Omega")}));
}

TEST_F(ChangedGroups, FileMadeByHandIsLeftToTheCloseLook)
{
    fill("Omega", "13");
    const QByteArray whole = written();
    const QByteArray byHand = QByteArray(before).replace("\n", "\r\n");
    EXPECT_FALSE(holdsGroups(whole, settings, {text("Omega")}, byHand));
    EXPECT_FALSE(holdsGroups(whole, settings, {text("Omega")}, "; mine\n" + before));
    EXPECT_TRUE(holds(whole, settings));
}
