#include "support/host.h"
#include "support/message_boxes.h"
#include "support/user.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QFileInfo>
#include <QSpinBox>
#include <QTabWidget>
#include <QVBoxLayout>

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

using kestrel::test::child;
using kestrel::test::MessageBoxes;
using kestrel::test::TempConfigDir;
using kestrel::test::WhenShown;

namespace {

// A dialog with a control of each kind on the second page of a tab widget.
class UserActions : public testing::Test
{
protected:
    UserActions()
    {
        auto* const tabs = new QTabWidget(&m_dialog);
        tabs->addTab(new QWidget, QStringLiteral("one"));
        auto* const page = new QWidget;
        auto* const column = new QVBoxLayout(page);
        auto* const check = new QCheckBox(page);
        check->setObjectName(QStringLiteral("check"));
        column->addWidget(check);
        auto* const combo = new QComboBox(page);
        combo->setObjectName(QStringLiteral("combo"));
        combo->addItems({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
        column->addWidget(combo);
        auto* const spin = new QSpinBox(page);
        spin->setObjectName(QStringLiteral("spin"));
        column->addWidget(spin);
        tabs->addTab(page, QStringLiteral("two"));
        (new QVBoxLayout(&m_dialog))->addWidget(tabs);
        m_dialog.resize(400, 300);
        m_dialog.show();
    }

    QDialog m_dialog;
};

} // namespace

TEST_F(UserActions, AClickTogglesACheckBoxOnAHiddenPage)
{
    auto& check = child<QCheckBox>(m_dialog, "check");
    EXPECT_FALSE(check.isVisible());
    kestrel::test::click(check);
    EXPECT_TRUE(check.isChecked());
}

TEST_F(UserActions, AnItemIsChosenUpwardsAndDownwards)
{
    auto& combo = child<QComboBox>(m_dialog, "combo");
    kestrel::test::select(combo, QStringLiteral("c"));
    EXPECT_EQ(combo.currentIndex(), 2);
    kestrel::test::select(combo, 0);
    EXPECT_EQ(combo.currentText(), QStringLiteral("a"));
}

TEST_F(UserActions, TypingReplacesTheValue)
{
    auto& spin = child<QSpinBox>(m_dialog, "spin");
    spin.setValue(7);
    kestrel::test::type(spin, QStringLiteral("42"));
    EXPECT_EQ(spin.value(), 42);
}

TEST_F(UserActions, AMissingWidgetIsAnError)
{
    EXPECT_THROW(child<QCheckBox>(m_dialog, "combo"), std::runtime_error);
}

TEST(MessageBoxes, AreRecordedAndAnswered)
{
    MessageBoxes boxes;
    boxes.answer(QMessageBox::No).answer(QMessageBox::NoButton);
    EXPECT_EQ(QMessageBox::question(nullptr, QStringLiteral("t"), QStringLiteral("q"),
                                    QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes),
              QMessageBox::No);
    QMessageBox::critical(nullptr, QStringLiteral("c"), QStringLiteral("bad"));
    ASSERT_EQ(boxes.shown().size(), 2U);
    EXPECT_EQ(boxes.shown()[0].defaultButton, QMessageBox::Yes);
    EXPECT_EQ(boxes.shown()[0].title, QStringLiteral("t"));
    EXPECT_EQ(boxes.shown()[1].icon, QMessageBox::Critical);
    EXPECT_FALSE(boxes.shown()[1].hadParent);
}

TEST(MessageBoxes, AnUnexpectedOneFailsTheTestAndDoesNotHangIt)
{
    MessageBoxes boxes;
    EXPECT_NONFATAL_FAILURE(
        QMessageBox::information(nullptr, QStringLiteral("t"), QStringLiteral("surprise")),
        "surprise");
}

TEST(WhenShown, RunsInsideTheModalLoop)
{
    QDialog dialog;
    const WhenShown shown(dialog, [&dialog] { dialog.done(7); });
    EXPECT_EQ(dialog.exec(), 7);
}

TEST(TempConfigDir, KeepsFilesAndGoes)
{
    QString path;
    {
        const TempConfigDir dir;
        path = QString::fromUtf8(dir.path());
        dir.write(QStringLiteral("x.ini"), "[a]\n");
        EXPECT_EQ(dir.read(QStringLiteral("x.ini")), QByteArray("[a]\n"));
        EXPECT_FALSE(path.endsWith(QLatin1Char('/')));
    }
    EXPECT_FALSE(QFileInfo::exists(path));
}
