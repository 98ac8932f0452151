// The Tab key and groups of which one button is chosen: it stops at that one, and only there.
#include "access_bench.h"

#include <QTest>

using namespace kestrel::test;

namespace {

class ChosenButton : public Access
{
protected:
    void SetUp() override
    {
        dialog().show();
        dialog().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog()));
    }

    /// Where the focus is in one round of @p key through the group's page, of the group's buttons.
    QStringList stops(const QStringList& group, Qt::Key key)
    {
        QStringList found;
        pages().tabBar()->setFocus();
        do {
            QTest::keyClick(QApplication::focusWidget(), key);
            const QString name = QApplication::focusWidget()->objectName();
            if (group.contains(name)) {
                found << name;
            }
        } while (QApplication::focusWidget() != pages().tabBar());
        return found;
    }
};

const QStringList fronts{QStringLiteral("color_front_image"), QStringLiteral("gray_front_image"),
                         QStringLiteral("lineart_front_image")};

} // namespace

TEST_F(ChosenButton, IsTheOnlyStopOfItsGroup)
{
    for (const QString& chosen : fronts) {
        const char* const check = chosen.startsWith(QLatin1String("gray"))    ? "front_gray"
                                  : chosen.startsWith(QLatin1String("color")) ? "front_color"
                                                                              : "front_bw";
        if (!button(check).isChecked()) {
            button(check).click();
        }
        // Not with the keyboard, so that the toolkit does not know of it.
        child<QAbstractButton>(dialog(), chosen.toUtf8().constData()).click();
        ASSERT_TRUE(child<QAbstractButton>(dialog(), chosen.toUtf8().constData()).isChecked());
        EXPECT_EQ(stops(fronts, Qt::Key_Tab), QStringList(chosen));
        EXPECT_EQ(stops(fronts, Qt::Key_Backtab), QStringList(chosen));
        EXPECT_EQ(stops(fronts, Qt::Key_Tab), QStringList(chosen));
    }
}

TEST_F(ChosenButton, ThatCannotBeUsedLeavesTheFocusWhereItIs)
{
    button("front_gray").click();
    button("gray_front_image").click();
    ASSERT_EQ(stops(fronts, Qt::Key_Tab).size(), 1);
    auto& chosen = button("color_front_image");
    chosen.click();
    ASSERT_TRUE(chosen.isChecked());
    chosen.setEnabled(false);
    button("gray_front_image").setEnabled(true);
    EXPECT_EQ(stops(fronts, Qt::Key_Tab), QStringList(QStringLiteral("gray_front_image")));
}

TEST_F(ChosenButton, IsLeftWithTheArrowKeys)
{
    button("front_gray").click();
    auto& chosen = button("color_front_image");
    chosen.click();
    chosen.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&chosen, Qt::Key_Down);
    EXPECT_EQ(QApplication::focusWidget(), &button("gray_front_image"));
}

TEST_F(ChosenButton, AClickOnAnotherOneStaysThere)
{
    button("front_gray").click();
    button("color_front_image").click();
    button("gray_front_image").setFocus(Qt::MouseFocusReason);
    EXPECT_EQ(QApplication::focusWidget(), &button("gray_front_image"));
}
