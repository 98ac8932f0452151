// The template manager opened from the main dialog: what it does to the list, the file and the
// settings on show.
#include "config_manager.h"

#include <QTest>

using namespace kestrel;
using namespace kestrel::test;

namespace {

const QString nameA = QStringLiteral("A");
const QString nameB = QStringLiteral("B");
const QString nameC = QStringLiteral("C");
const QString office = QStringLiteral("Office");

using TemplateManager = TemplatesBench;

} // namespace

TEST_F(TemplateManager, OpensModallyWithTheFilesList)
{
    start({nameA, nameB});
    bool modal = false;
    QStringList offered;
    openManager([&] {
        modal = manager().isModal();
        offered = items(managed());
    });
    EXPECT_TRUE(modal);
    EXPECT_EQ(offered, withWorking({nameA, nameB}));
}

TEST_F(TemplateManager, AFreshFileOffersTheWorkingEntryAndNothingCanBeDoneToIt)
{
    bind(m_scanner);
    const QByteArray before = bytes();
    openManager([this] {
        EXPECT_EQ(items(managed()), QStringList(working));
        press(managerButton("template_remove"));
        press(managerButton("template_rename"));
        press(managerButton("template_reset"));
    });
    EXPECT_EQ(bytes(), before);
    EXPECT_EQ(items(templates()), QStringList(working));
}

TEST_F(TemplateManager, AddingToAFreshFileMakesTheList)
{
    bind(m_scanner);
    openManager([this] { add(office); });
    EXPECT_EQ(onDisk(list), QStringLiteral("自订;Office"));
    EXPECT_EQ(items(templates()), withWorking({office}));
    EXPECT_EQ(keysOnDisk(office), 63);
}

TEST_F(TemplateManager, ANewTemplateIsWhatTheDialogShows)
{
    bind(m_scanner);
    ok();
    setBrightness(-21);
    openManager([this] { add(office); });
    EXPECT_EQ(onDisk(QStringLiteral("Office/brightness")), QStringLiteral("-21"));
    // The unconfirmed change went into the template, not into the working configuration.
    EXPECT_EQ(onDisk(QStringLiteral("ScannerA/brightness")), QStringLiteral("0"));
    templates().setCurrentIndex(1);
    EXPECT_EQ(brightness(), -21);
    templates().setCurrentIndex(0);
    EXPECT_EQ(brightness(), 0);
}

TEST_F(TemplateManager, AddingSelectsNothing)
{
    start({nameA}, QStringLiteral("0"));
    templates().setCurrentIndex(1);
    openManager([this] { add(nameB); });
    EXPECT_EQ(items(templates()), withWorking({nameA, nameB}));
    EXPECT_EQ(templates().currentIndex(), 1);
    EXPECT_EQ(brightness(), 1);
    EXPECT_EQ(onDisk(storedIndex), QStringLiteral("0"));
}

TEST_F(TemplateManager, SeveralAreAddedInOneVisit)
{
    bind(m_scanner);
    openManager([this] {
        for (const QString& name : {nameA, nameB, nameC}) {
            add(name);
        }
    });
    EXPECT_EQ(onDisk(list), QStringLiteral("自订;A;B;C"));
    restart(m_scanner);
    EXPECT_EQ(items(templates()), withWorking({nameA, nameB, nameC}));
}

TEST_F(TemplateManager, ATakenNameIsRefusedAndAnotherLetterCaseIsNot)
{
    start({office});
    {
        MessageBoxes boxes;
        boxes.answer(QMessageBox::Ok);
        openManager([this] { add(office); });
        ASSERT_EQ(boxes.shown().size(), 1U);
        EXPECT_EQ(boxes.shown()[0].title, QStringLiteral("提示"));
        EXPECT_EQ(boxes.shown()[0].text, QStringLiteral("已存在当前模板"));
    }
    EXPECT_EQ(onDisk(QStringLiteral("Office/brightness")), QStringLiteral("1"));
    setBrightness(33);
    openManager([this] { add(QStringLiteral("OFFICE")); });
    EXPECT_EQ(items(templates()), withWorking({office, QStringLiteral("OFFICE")}));
    EXPECT_EQ(onDisk(QStringLiteral("OFFICE/brightness")), QStringLiteral("33"));
    EXPECT_EQ(onDisk(QStringLiteral("Office/brightness")), QStringLiteral("1"));
}

TEST_F(TemplateManager, ACancelledNameChangesNothing)
{
    start({nameA});
    const QByteArray before = bytes();
    for (const char* const button : {"template_add", "template_rename"}) {
        openManager([this, button] {
            managed().setCurrentIndex(1);
            const WhenShown user(nameDialog(), [this] {
                child<QLineEdit>(nameDialog(), "lineEdit").setText(nameC);
                press(child<QPushButton>(nameDialog(), "pushButton_2"));
            });
            press(managerButton(button));
        });
        EXPECT_EQ(bytes(), before) << button;
        EXPECT_EQ(items(templates()), withWorking({nameA})) << button;
    }
}

TEST_F(TemplateManager, AForbiddenNameKeepsAskingUntilTheUserGivesUp)
{
    start({nameA});
    const QByteArray before = bytes();
    MessageBoxes boxes;
    boxes.answer(QMessageBox::Ok);
    openManager([this] {
        const WhenShown user(nameDialog(), [this] {
            child<QLineEdit>(nameDialog(), "lineEdit").setText(QStringLiteral("a;b"));
            press(child<QPushButton>(nameDialog(), "pushButton"));
            EXPECT_TRUE(nameDialog().isVisible());
            QTest::keyClick(&nameDialog(), Qt::Key_Escape);
        });
        press(managerButton("template_add"));
    });
    EXPECT_EQ(boxes.shown().size(), 1U);
    EXPECT_EQ(bytes(), before);
}

TEST_F(TemplateManager, EscapeLeavesTheManagerLikeItsButton)
{
    start({nameA, nameB});
    {
        const WhenShown user(manager(), [this] {
            remove(1);
            QTest::keyClick(&manager(), Qt::Key_Escape);
        });
        press(get<QAbstractButton>("template_setting"));
    }
    EXPECT_EQ(items(templates()), withWorking({nameB}));
    EXPECT_EQ(brightness(), 50);
}

TEST_F(TemplateManager, AConfirmedTemplateFallsBackWheneverTheManagerWasOpen)
{
    start({nameA, nameB}, QStringLiteral("2"));
    ASSERT_EQ(brightness(), 2);
    const QByteArray before = bytes();
    openManager();
    EXPECT_EQ(templates().currentIndex(), 0);
    EXPECT_EQ(brightness(), 50);
    EXPECT_EQ(bytes(), before);
    // Nothing was confirmed: leaving brings the template back.
    cancel();
    EXPECT_EQ(templates().currentIndex(), 2);
    EXPECT_EQ(brightness(), 2);
}

TEST_F(TemplateManager, AVisitWithoutChangesKeepsThePickedTemplate)
{
    start({nameA, nameB});
    templates().setCurrentIndex(1);
    setBrightness(-8);
    openManager();
    EXPECT_EQ(templates().currentIndex(), 1);
    // Read anew from the file, so what was not confirmed is gone.
    EXPECT_EQ(brightness(), 1);
}

TEST_F(TemplateManager, AVisitWithoutTemplatesKeepsUnconfirmedChanges)
{
    bind(m_scanner);
    setBrightness(-8);
    openManager();
    EXPECT_EQ(brightness(), -8);
}

TEST_F(TemplateManager, WhatTheManagerMadeCanBeConfirmedAndEdited)
{
    bind(m_scanner);
    setBrightness(5);
    openManager([this] { add(office); });
    templates().setCurrentIndex(1);
    setBrightness(6);
    ok();
    restart(m_scanner);
    EXPECT_EQ(templates().currentText(), office);
    EXPECT_EQ(brightness(), 6);
    EXPECT_EQ(onDisk(QStringLiteral("Office/brightness")), QStringLiteral("6"));
}
