#include "dialogs/customresolution.h"

#include "form_facts.h"
#include "support/message_boxes.h"
#include "support/user.h"

#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>

using namespace kestrel::test;

namespace {

class CustomResolutionDialog : public testing::Test
{
protected:
    QPushButton& button(const char* name) { return child<QPushButton>(dialog, name); }
    QSpinBox& box() { return child<QSpinBox>(dialog, "spinBox_resolution"); }

    /// Runs the dialog, and @p act as its user.
    void run(std::function<void()> act)
    {
        const WhenShown user(dialog, std::move(act));
        dialog.exec();
        EXPECT_FALSE(dialog.isVisible());
    }

    CustomResolution dialog;
    QSignalSpy answers{&dialog, &CustomResolution::getCustomResolution};
};

} // namespace

TEST_F(CustomResolutionDialog, FormAsDesigned)
{
    EXPECT_EQ(dialog.objectName(), QStringLiteral("CustomResolution"));
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("自订大小"));
    expectFixedSize(dialog, dialog.size());
    EXPECT_EQ(textOf(child<QLabel>(dialog, "label")), QStringLiteral("[ 范围：72 ～ 600 dpi ]"));
    EXPECT_EQ(box().minimum(), 72);
    EXPECT_EQ(box().maximum(), 600);
    EXPECT_EQ(box().value(), 200);
    EXPECT_EQ(button("add").text(), QStringLiteral("添加"));
    EXPECT_EQ(button("remove").text(), QStringLiteral("删除"));
    EXPECT_EQ(button("cancel").text(), QStringLiteral("取消"));
    EXPECT_EQ(button("modify").text(), QStringLiteral("修改"));
    QStringList order;
    for (const QObject* const widget : dialog.children()) {
        order.append(widget->objectName());
    }
    EXPECT_EQ(order.join(QLatin1Char(' ')),
              QStringLiteral("label spinBox_resolution add remove cancel modify"));
}

TEST_F(CustomResolutionDialog, WithoutAnEntryItCanOnlyBeAdded)
{
    dialog.setCustomResolution(QStringLiteral("custom-250"));
    dialog.setCustomResolution(QString());
    run([this] {
        EXPECT_TRUE(button("add").isVisible());
        EXPECT_FALSE(button("modify").isVisible());
        EXPECT_FALSE(button("remove").isEnabled());
        click(button("cancel"));
    });
}

TEST_F(CustomResolutionDialog, AnEntryCanBeModifiedOrRemoved)
{
    dialog.setCustomResolution(QStringLiteral("custom-250"));
    run([this] {
        EXPECT_FALSE(button("add").isVisible());
        EXPECT_TRUE(button("modify").isVisible());
        EXPECT_TRUE(button("remove").isEnabled());
        click(button("cancel"));
    });
}

TEST_F(CustomResolutionDialog, AddSendsTheNumberAndCloses)
{
    run([this] {
        type(box(), QStringLiteral("250"));
        click(button("add"));
    });
    ASSERT_EQ(answers.count(), 1);
    EXPECT_EQ(answers.at(0).at(0).toString(), QStringLiteral("custom-250"));
}

TEST_F(CustomResolutionDialog, ModifySendsTheNumberAndCloses)
{
    dialog.setCustomResolution(QStringLiteral("custom-250"));
    run([this] {
        type(box(), QStringLiteral("320"));
        click(button("modify"));
    });
    ASSERT_EQ(answers.count(), 1);
    EXPECT_EQ(answers.at(0).at(0).toString(), QStringLiteral("custom-320"));
}

TEST_F(CustomResolutionDialog, RemoveSendsAnEmptyTextAndCloses)
{
    dialog.setCustomResolution(QStringLiteral("custom-250"));
    run([this] { click(button("remove")); });
    ASSERT_EQ(answers.count(), 1);
    EXPECT_EQ(answers.at(0).at(0).toString(), QString());
}

TEST_F(CustomResolutionDialog, CancelEscapeAndCloseBoxSendNothing)
{
    run([this] { click(button("cancel")); });
    run([this] { QTest::keyClick(&dialog, Qt::Key_Escape); });
    run([this] { dialog.close(); });
    EXPECT_EQ(answers.count(), 0);
}

TEST_F(CustomResolutionDialog, EnterTakesTheNumberAndNeverRemoves)
{
    run([this] {
        box().setFocus();
        QTest::keyClick(&box(), Qt::Key_Return);
    });
    dialog.setCustomResolution(QStringLiteral("custom-200"));
    run([this] {
        box().setFocus();
        QTest::keyClick(&box(), Qt::Key_Return);
    });
    ASSERT_EQ(answers.count(), 2);
    EXPECT_EQ(answers.at(0).at(0).toString(), QStringLiteral("custom-200"));
    EXPECT_EQ(answers.at(1).at(0).toString(), QStringLiteral("custom-200"));
}

TEST_F(CustomResolutionDialog, ANumberThatIsTypedReplacesTheOneBefore)
{
    const auto type = [this](const QString& digits) {
        run([this, digits] {
            ASSERT_NE(dialog.focusWidget(), nullptr);
            QTest::keyClicks(dialog.focusWidget(), digits);
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
        });
    };
    dialog.setCustomResolution(QString());
    type(QStringLiteral("180"));
    for (const char* const digits : {"240", "99"}) {
        dialog.setCustomResolution(answers.last().at(0).toString());
        type(QString::fromLatin1(digits));
    }
    ASSERT_EQ(answers.count(), 3);
    EXPECT_EQ(answers.at(0).at(0).toString(), QStringLiteral("custom-180"));
    EXPECT_EQ(answers.at(1).at(0).toString(), QStringLiteral("custom-240"));
    EXPECT_EQ(answers.at(2).at(0).toString(), QStringLiteral("custom-99"));
}

TEST_F(CustomResolutionDialog, RangeFollowsTheScanner)
{
    struct Row
    {
        int maximum;
        int boxMaximum;
    };
    for (const Row& row : {Row{1200, 1200}, {300, 300}, {600, 600}, {72, 72}, {50, 72}, {-1, 72}}) {
        dialog.setResolutionRange(row.maximum);
        EXPECT_EQ(textOf(child<QLabel>(dialog, "label")),
                  QStringLiteral("[ 范围：72 ～ %1 dpi ]").arg(row.maximum));
        EXPECT_EQ(box().minimum(), 72);
        EXPECT_EQ(box().maximum(), row.boxMaximum);
    }
    dialog.setResolutionRange(1200);
    run([this] {
        type(box(), QStringLiteral("1200"));
        click(button("add"));
    });
    ASSERT_EQ(answers.count(), 1);
    EXPECT_EQ(answers.at(0).at(0).toString(), QStringLiteral("custom-1200"));
}
