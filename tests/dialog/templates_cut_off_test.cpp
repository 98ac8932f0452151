// Something else puts an end to it while a name is asked for: what nobody has confirmed adds,
// renames and loses no template.
#include "config_manager.h"

#include <QApplication>
#include <QTimer>

using namespace kestrel;
using namespace kestrel::test;

namespace {

const char* const addButton = "template_add";
const char* const renameButton = "template_rename";
const QString office = QStringLiteral("Office");
const QString photo = QStringLiteral("Photo");
const QString halfTyped = QStringLiteral("Off");
const QString forbidden = QStringLiteral("a;b");

class CutOffName : public TemplatesBench
{
protected:
    CutOffName()
    {
        start({office, photo});
        m_before = bytes();
    }

    /// Has a name asked for with Office selected; the user types something, unless it is null.
    void ask(const char* opener, const QString& typed, const std::function<void()>& end)
    {
        openManager([&] {
            managed().setCurrentIndex(1);
            const WhenShown user(nameDialog(), [&] {
                if (!typed.isNull()) {
                    child<QLineEdit>(nameDialog(), "lineEdit").setText(typed);
                }
                end();
            });
            press(managerButton(opener));
            m_managed = items(managed());
        });
    }
    /// The same in the application's own event loop; it has to be left.
    void askInApplication(const char* opener, const QString& typed,
                          const std::function<void()>& end)
    {
        QTimer::singleShot(0, qApp, [&] { ask(opener, typed, end); });
        EXPECT_EQ(QApplication::exec(), 0);
        nameDialog().hide();
    }

    void pressOk() { press(child<QPushButton>(nameDialog(), "pushButton")); }
    /// OK with a forbidden name; @p meanwhile runs under the complaint.
    void complain(const std::function<void()>& meanwhile)
    {
        MessageBoxes boxes;
        boxes.answer(QMessageBox::Ok).whenShown([&](QMessageBox&) { meanwhile(); });
        pressOk();
    }

    void expectNothingDone(const char* opener)
    {
        EXPECT_EQ(m_managed, withWorking({office, photo})) << opener;
        EXPECT_EQ(items(templates()), withWorking({office, photo})) << opener;
        EXPECT_EQ(bytes(), m_before) << opener;
    }

private:
    QStringList m_managed; ///< what the manager listed when the name had been asked for
    QByteArray m_before;
};

} // namespace

TEST_F(CutOffName, QuittingKeepsTheTemplateWhoseNameIsOffered)
{
    askInApplication(renameButton, {}, [] { QCoreApplication::quit(); });
    expectNothingDone(renameButton);
}

TEST_F(CutOffName, QuittingWithHalfANameTypedChangesNothing)
{
    for (const char* const opener : {addButton, renameButton}) {
        askInApplication(opener, halfTyped, [] { QCoreApplication::quit(); });
        expectNothingDone(opener);
    }
}

TEST_F(CutOffName, QuittingUnderTheComplaintChangesNothing)
{
    for (const char* const opener : {addButton, renameButton}) {
        askInApplication(opener, forbidden, [this] { complain([] { QCoreApplication::quit(); }); });
        expectNothingDone(opener);
    }
}

TEST_F(CutOffName, AHostThatHidesTheDialogsChangesNothing)
{
    for (const char* const opener : {addButton, renameButton}) {
        ask(opener, halfTyped, [this] {
            dialog().hide();
            manager().hide();
            nameDialog().hide();
        });
        expectNothingDone(opener);
    }
    ask(renameButton, {}, [this] { nameDialog().hide(); });
    expectNothingDone(renameButton);
}
