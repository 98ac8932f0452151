#include "dialogs/addusertemplate.h"

#include "form_facts.h"
#include "support/message_boxes.h"
#include "support/user.h"

#include <QLineEdit>
#include <QTest>

using namespace kestrel::test;

namespace {

class NameDialog : public testing::Test
{
protected:
    QLineEdit& line() { return child<QLineEdit>(dialog, "lineEdit"); }
    QPushButton& ok() { return child<QPushButton>(dialog, "pushButton"); }
    QPushButton& cancel() { return child<QPushButton>(dialog, "pushButton_2"); }

    /// Runs the dialog, and @p act as its user.
    void run(std::function<void()> act)
    {
        const WhenShown user(dialog, std::move(act));
        dialog.exec();
        EXPECT_FALSE(dialog.isVisible());
    }

    /// OK with @p text is refused with @p message, and the text stays.
    void expectRefused(const QString& text, const QString& message)
    {
        run([&] {
            MessageBoxes boxes;
            boxes.answer(QMessageBox::Ok);
            dialog.setLineEdit(text);
            const QString before = line().text();
            click(ok());
            ASSERT_EQ(boxes.shown().size(), 1U);
            EXPECT_EQ(boxes.shown().front().title, QStringLiteral("提示"));
            EXPECT_EQ(boxes.shown().front().text, message);
            EXPECT_EQ(boxes.shown().front().icon, QMessageBox::Information);
            EXPECT_EQ(boxes.shown().front().buttons, QMessageBox::Ok);
            EXPECT_FALSE(boxes.shown().front().hadParent);
            EXPECT_TRUE(dialog.isVisible());
            EXPECT_EQ(dialog.getTemplateName(), before);
            click(cancel());
        });
    }

    AddUserTemplate dialog;
};

QString complaintAbout(char character)
{
    return QStringLiteral("文件名字不能含有\"") + QLatin1Char(character) + QLatin1Char('"');
}

} // namespace

TEST_F(NameDialog, FormAsDesigned)
{
    EXPECT_EQ(dialog.objectName(), QStringLiteral("AddUserTemplate"));
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("模板名称"));
    EXPECT_EQ(dialog.windowModality(), Qt::ApplicationModal);
    expectFixedSize(dialog, QSize(340, 128));
    for (const WidgetFacts& facts :
         {WidgetFacts{"label", "QLabel", "使用者模板名称 （不超过30个字符）", {10, 10, 281, 21}},
          {"lineEdit", "QLineEdit", "", {8, 50, 325, 25}},
          {"pushButton", "QPushButton", "确定", {160, 90, 61, 27}},
          {"pushButton_2", "QPushButton", "取消", {250, 90, 61, 27}}}) {
        expectWidget(dialog, facts);
    }
    EXPECT_EQ(line().maxLength(), 30);
}

TEST(NameDialogForm, LabelHasRoomUnderLargeFonts)
{
    for (const int pixels : {12, 16, 18, 24}) {
        const HostFont font(pixels);
        const AddUserTemplate dialog;
        expectReadable(child<QLabel>(dialog, "label"));
    }
}

TEST_F(NameDialog, OkLetsAValidNameThrough)
{
    run([this] {
        QTest::keyClicks(&line(), QStringLiteral(" Office [1] "));
        click(ok());
    });
    EXPECT_EQ(dialog.getTemplateName(), QStringLiteral(" Office [1] "));
}

TEST_F(NameDialog, EnterIsOk)
{
    run([this] {
        QTest::keyClicks(&line(), QStringLiteral("Office"));
        QTest::keyClick(&line(), Qt::Key_Return);
    });
    EXPECT_EQ(dialog.getTemplateName(), QStringLiteral("Office"));
}

TEST_F(NameDialog, OkWithAnEmptyTextCloses)
{
    run([this] { click(ok()); });
    EXPECT_EQ(dialog.getTemplateName(), QString());
}

TEST_F(NameDialog, EachForbiddenCharacterIsNamed)
{
    for (const char character : {'"', ':', ';', '`', '!', '%', '\\', '/'}) {
        expectRefused(QStringLiteral("a") + QLatin1Char(character) + QLatin1Char('b'),
                      complaintAbout(character));
    }
}

TEST_F(NameDialog, TheFirstInOrderIsNamedNotTheFirstInTheText)
{
    const QString order = QStringLiteral("\":;`!%\\/");
    for (int first = 0; first < order.size(); ++first) {
        QString reversed;
        for (int i = order.size() - 1; i >= first; --i) {
            reversed += order.at(i);
        }
        expectRefused(reversed, complaintAbout(order.at(first).toLatin1()));
    }
    expectRefused(QStringLiteral("a/b:c"), complaintAbout(':'));
}

TEST_F(NameDialog, OtherCharactersPass)
{
    for (const char* const name : {"办公 1", "😀", "[x]=#&'.,@()<>?*|~^$+-_{}", "：；！％"}) {
        run([&] {
            dialog.setLineEdit(QString::fromUtf8(name));
            click(ok());
        });
        EXPECT_EQ(dialog.getTemplateName(), QString::fromUtf8(name));
    }
}

TEST_F(NameDialog, ThirtyCharactersPassAndNoMoreCanBeTyped)
{
    run([this] {
        QTest::keyClicks(&line(), QString(31, QLatin1Char('x')));
        click(ok());
    });
    EXPECT_EQ(dialog.getTemplateName(), QString(30, QLatin1Char('x')));
}

TEST_F(NameDialog, ALongerTextIsCut)
{
    dialog.setLineEdit(QString(40, QLatin1Char('x')));
    EXPECT_EQ(dialog.getTemplateName().size(), 30);
}

TEST_F(NameDialog, CancelEscapeAndCloseBoxGiveAnEmptyName)
{
    const std::function<void()> waysOut[] = {
        [this] { click(cancel()); },
        [this] { QTest::keyClick(&line(), Qt::Key_Escape); },
        [this] { dialog.close(); },
    };
    for (const auto& wayOut : waysOut) {
        run([&] {
            QTest::keyClicks(&line(), QStringLiteral("Office"));
            wayOut();
        });
        EXPECT_EQ(dialog.getTemplateName(), QString());
    }
}

TEST_F(NameDialog, FocusSelectsTheOfferedName)
{
    dialog.setLineEdit(QStringLiteral("old"));
    dialog.setLineEditFocus();
    run([this] {
        EXPECT_EQ(dialog.focusWidget(), &line());
        EXPECT_EQ(line().selectedText(), QStringLiteral("old"));
        QTest::keyClicks(&line(), QStringLiteral("new"));
        click(ok());
    });
    EXPECT_EQ(dialog.getTemplateName(), QStringLiteral("new"));
    dialog.clearLineEdit();
    EXPECT_EQ(dialog.getTemplateName(), QString());
}
