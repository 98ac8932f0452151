// What the main dialog does when the template manager has closed.
#include "config_manager.h"

#include <QSignalSpy>

using namespace kestrel;
using namespace kestrel::test;

namespace {

constexpr int kEdited = -77;

const QString nameA = QStringLiteral("A");
const QString nameB = QStringLiteral("B");

class ManagerClosed : public TemplatesBench
{
protected:
    /// The dialog shows entry @p before of a list, with an edit.
    void show(int before)
    {
        templates().setCurrentIndex(before);
        ASSERT_EQ(templates().currentIndex(), before);
        setBrightness(kEdited);
    }

    /// What loading entry @p index leaves of the brightness.
    static int loaded(int index) { return index == 0 ? 50 : index; }
};

} // namespace

TEST_F(ManagerClosed, EveryCombinationOfListIndexSelectionAndChange)
{
    for (const char* const index : {"", "0", "1", "2", "9", "-1", "x"}) {
        for (const int before : {0, 1, 2}) {
            for (const bool changed : {false, true}) {
                start({nameA, nameB}, QString::fromUtf8(index));
                show(before);
                dialog().resetCurrentUserTemplate(changed);
                // A confirmed template falls back, changed or not and whatever is selected.
                const bool back = changed || QByteArray(index).toInt() > 0;
                const int expected = back ? 0 : before;
                EXPECT_EQ(templates().currentIndex(), expected) << index << before << changed;
                EXPECT_EQ(brightness(), loaded(expected)) << index << before << changed;
                EXPECT_EQ(items(templates()), withWorking({nameA, nameB}));
            }
        }
    }
}

TEST_F(ManagerClosed, AnEmptyListLeavesTheComboAndTheIndexUnread)
{
    for (const char* const text : {"", ";", ";;;"}) {
        for (const int before : {0, 1, 2}) {
            for (const bool changed : {false, true}) {
                start({nameA, nameB}, QStringLiteral("2"));
                show(before);
                store(list, QString::fromUtf8(text));
                dialog().resetCurrentUserTemplate(changed);
                EXPECT_EQ(items(templates()), withWorking({nameA, nameB}));
                EXPECT_EQ(templates().currentIndex(), changed ? 0 : before);
                // Unchanged, the working entry loads the group of its own name: there is none.
                const int kept = before == 0 ? kEdited : before;
                EXPECT_EQ(brightness(), changed ? 50 : kept) << text << before << changed;
            }
        }
    }
}

TEST_F(ManagerClosed, AMissingListIsAnEmptyOne)
{
    start({nameA}, QStringLiteral("1"));
    dialog().settings->remove(list);
    show(1);
    dialog().resetCurrentUserTemplate(false);
    EXPECT_EQ(items(templates()), withWorking({nameA}));
    EXPECT_EQ(templates().currentIndex(), 1);
    EXPECT_EQ(brightness(), 1);
}

TEST_F(ManagerClosed, TheFirstEntryIsAlwaysShownAsTheWorkingOne)
{
    start({nameA, nameB});
    for (const auto& [text, shown] :
         {std::pair("第一;A", QStringList{working, nameA}), std::pair("B", QStringList{working}),
          std::pair(";A;;B;", QStringList{working, nameB}),
          std::pair("自订;B;A", QStringList{working, nameB, nameA})}) {
        store(list, QString::fromUtf8(text));
        dialog().resetCurrentUserTemplate(false);
        EXPECT_EQ(items(templates()), shown) << text;
        EXPECT_EQ(templates().currentIndex(), 0) << text;
    }
}

TEST_F(ManagerClosed, RebuildingTheListLoadsTheWorkingSettings)
{
    start({nameA});
    show(0);
    dialog().resetCurrentUserTemplate(false);
    EXPECT_EQ(brightness(), 50);
}

TEST_F(ManagerClosed, WithTheWorkingEntrySelectedTheGroupOfItsNameIsLoadedLast)
{
    start({nameA});
    store(QStringLiteral("自订/brightness"), QStringLiteral("71"));
    dialog().resetCurrentUserTemplate(false);
    EXPECT_EQ(templates().currentIndex(), 0);
    EXPECT_EQ(brightness(), 71);
    dialog().resetCurrentUserTemplate(true);
    EXPECT_EQ(brightness(), 50);
}

TEST_F(ManagerClosed, AShorterListThanTheSelectionLeavesTheFirstEntry)
{
    start({nameA, nameB});
    show(2);
    store(list, QStringLiteral("自订;A"));
    dialog().resetCurrentUserTemplate(false);
    EXPECT_EQ(templates().currentIndex(), 0);
    EXPECT_EQ(brightness(), 50);
}

TEST_F(ManagerClosed, TheSelectionIsByPlaceNotByName)
{
    start({nameA, nameB});
    show(1);
    store(list, QStringLiteral("自订;B;A"));
    dialog().resetCurrentUserTemplate(false);
    EXPECT_EQ(templates().currentText(), nameB);
    EXPECT_EQ(brightness(), 2);
}

TEST_F(ManagerClosed, TheManagerReportsToTheDialog)
{
    start({nameA});
    show(1);
    QSignalSpy closed(&manager(), &EditTemplate::resetCurrentUserTemplate);
    openManager();
    openManager([this] { remove(1); });
    openManager();
    ASSERT_EQ(closed.count(), 3);
    EXPECT_FALSE(closed.at(0).at(0).toBool());
    EXPECT_TRUE(closed.at(1).at(0).toBool());
    EXPECT_FALSE(closed.at(2).at(0).toBool());
}

TEST_F(ManagerClosed, NothingIsWritten)
{
    for (const bool changed : {false, true}) {
        start({nameA, nameB}, QStringLiteral("1"));
        const QByteArray before = bytes();
        show(2);
        dialog().resetCurrentUserTemplate(changed);
        settle();
        EXPECT_EQ(bytes(), before);
    }
}
