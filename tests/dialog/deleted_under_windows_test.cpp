// A host that deletes the dialog while one of its windows is open: everything that runs modally
// returns, no window stays, and the settings file holds what was confirmed and nothing else.
#include "config_manager.h"

#include "dialogs/customresolution.h"

#include <kestrelsettingui.h>

#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QTest>

using namespace kestrel;
using namespace kestrel::test;

namespace {

const QString office = QStringLiteral("Office");

class DeletedUnderWindows : public TemplatesBench
{
protected:
    /// A dialog with a confirmed brightness and another one that nobody has confirmed.
    DeletedUnderWindows()
    {
        start({office});
        setBrightness(12);
        ok();
        setBrightness(-21);
        m_confirmed = bytes();
    }

    /// The host's delete, from the event loop of @p open.
    void deleteUnder(const QWidget& open)
    {
        EXPECT_EQ(QApplication::activeModalWidget(), &open);
        EXPECT_TRUE(dialog().isVisible());
        m_watched = &dialog();
        m_scanner.clearJournal();
        leave();
        m_deleted = true;
    }

    /// The user of the manager that the user of the dialog opens.
    void inManager(const std::function<void()>& action)
    {
        const WhenShown user(manager(), action);
        click(get<QAbstractButton>("template_setting"));
    }
    /// Types a name into the dialog that a button of the manager opens.
    void inNameDialog(const char* opener, const QString& name, const std::function<void()>& action)
    {
        inManager([this, opener, &name, &action] {
            managed().setCurrentIndex(1);
            const WhenShown user(nameDialog(), [this, &name, &action] {
                auto& line = child<QLineEdit>(nameDialog(), "lineEdit");
                line.selectAll();
                QTest::keyClicks(&line, name);
                EXPECT_EQ(line.text(), name);
                action();
            });
            click(managerButton(opener));
        });
    }
    /// Takes the dialog away under the box that complains about a name, then answers the box.
    void deleteUnderBoxAbout(const QString& name, const QString& complaint)
    {
        MessageBoxes boxes;
        boxes.answer(QMessageBox::Ok).whenShown([this](QMessageBox& box) {
            const QPointer<QMessageBox> shown(&box);
            deleteUnder(box);
            // It belongs to nobody: the user reads it to the end.
            ASSERT_FALSE(shown.isNull());
            EXPECT_TRUE(shown->isVisible());
        });
        showAnd([this, &name] {
            inNameDialog("template_add", name,
                         [this] { click(child<QPushButton>(nameDialog(), "pushButton")); });
        });
        ASSERT_EQ(boxes.shown().size(), 1U);
        EXPECT_EQ(boxes.shown()[0].text, complaint);
    }

    /// Runs the dialog as a host does with a user in front of it; the action has it deleted.
    void showAnd(const std::function<void()>& action)
    {
        {
            const WhenShown user(dialog(), action);
            EXPECT_EQ(showWindow(dialog().host()), QDialog::Rejected);
        }
        ASSERT_TRUE(m_deleted);
        settle();
        EXPECT_TRUE(m_watched.isNull());
        for (const QWidget* window : QApplication::topLevelWidgets()) {
            ADD_FAILURE() << window->metaObject()->className() << " is left";
        }
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
        // The host may have closed the scanner together with the dialog.
        EXPECT_TRUE(m_scanner.journal().calls().empty()) << m_scanner.journal().text();
        EXPECT_EQ(onDisk(QStringLiteral("ScannerA/brightness")), QStringLiteral("12"));
        EXPECT_EQ(bytes(), m_confirmed);
    }

    QByteArray m_confirmed;

private:
    QPointer<QObject> m_watched;
    bool m_deleted = false;
};

} // namespace

TEST_F(DeletedUnderWindows, TemplateManager)
{
    showAnd([this] { inManager([this] { deleteUnder(manager()); }); });
}

TEST_F(DeletedUnderWindows, TemplateManagerThatHasAddedATemplate)
{
    showAnd([this] {
        inManager([this] {
            add(QStringLiteral("Archive"));
            m_confirmed = bytes();
            deleteUnder(manager());
        });
    });
    EXPECT_EQ(onDisk(list), QStringLiteral("自订;Office;Archive"));
    EXPECT_EQ(onDisk(QStringLiteral("Archive/brightness")), QStringLiteral("-21"));
}

TEST_F(DeletedUnderWindows, NameOfANewTemplate)
{
    showAnd([this] {
        inNameDialog("template_add", QStringLiteral("Archive"),
                     [this] { deleteUnder(nameDialog()); });
    });
}

TEST_F(DeletedUnderWindows, NewNameOfATemplate)
{
    showAnd([this] {
        inNameDialog("template_rename", QStringLiteral("Archive"),
                     [this] { deleteUnder(nameDialog()); });
    });
}

TEST_F(DeletedUnderWindows, BoxAboutAForbiddenName)
{
    deleteUnderBoxAbout(QStringLiteral("a;b"), QStringLiteral("文件名字不能含有\";\""));
}

TEST_F(DeletedUnderWindows, BoxAboutATakenName)
{
    deleteUnderBoxAbout(office, QStringLiteral("已存在当前模板"));
}

TEST_F(DeletedUnderWindows, CustomResolution)
{
    showAnd([this] {
        auto& small = *dialog().custom_resolution;
        const WhenShown user(small, [this, &small] {
            type(child<QSpinBox>(small, "spinBox_resolution"), QStringLiteral("250"));
            deleteUnder(small);
        });
        click(get<QAbstractButton>("customresolution"));
    });
}
