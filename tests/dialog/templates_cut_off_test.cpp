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
const char* const second = "ScannerB";
const QString office = QStringLiteral("Office");
const QString photo = QStringLiteral("Photo");
const QString halfTyped = QStringLiteral("Off");
const QString archive = QStringLiteral("Archive");
const QString forbidden = QStringLiteral("a;b");

class CutOffName : public TemplatesBench
{
protected:
    /// The second scanner has a template of the same name in the same place.
    CutOffName()
    {
        prepare({{QStringLiteral("ScannerBconfig_version/config_version"), QStringLiteral("102")},
                 {QStringLiteral("ScannerB/brightness"), QStringLiteral("70")},
                 {QStringLiteral("ScannerBdefault/brightness"), QStringLiteral("80")},
                 {QStringLiteral("UserTemplates/preset_template_num"), QStringLiteral("1")},
                 {QStringLiteral("Office/brightness"), QStringLiteral("7")},
                 {list, withWorking({office}).join(QLatin1Char(';'))}},
                second);
        start({office, photo});
        m_before = bytes();
        m_beforeOfSecond = bytes(second);
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
    void bindSecond() { bind(m_second, second); }
    /// The question is gone; the user of one that is not confirms it.
    void expectEnded()
    {
        EXPECT_FALSE(nameDialog().isVisible());
        if (nameDialog().isVisible()) {
            child<QLineEdit>(nameDialog(), "lineEdit").setText(archive);
            pressOk();
        }
    }

    void expectNothingDone(const char* opener)
    {
        EXPECT_EQ(m_managed, withWorking({office, photo})) << opener;
        EXPECT_EQ(items(templates()), withWorking({office, photo})) << opener;
        EXPECT_EQ(bytes(), m_before) << opener;
    }
    void expectSecondAsBefore(const char* opener)
    {
        EXPECT_EQ(m_managed, withWorking({office})) << opener;
        EXPECT_EQ(items(templates()), withWorking({office})) << opener;
        EXPECT_EQ(bytes(), m_before) << opener;
        EXPECT_EQ(bytes(second), m_beforeOfSecond) << opener;
    }

private:
    FakeScanner m_second = fullScanner();
    QStringList m_managed; ///< what the manager listed when the name had been asked for
    QByteArray m_before;
    QByteArray m_beforeOfSecond;
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

TEST_F(CutOffName, BindingAnotherScannerEndsTheQuestion)
{
    for (const char* const opener : {addButton, renameButton}) {
        bind(m_scanner);
        ask(opener, archive, [this] {
            bindSecond();
            expectEnded();
        });
        expectSecondAsBefore(opener);
    }
}

TEST_F(CutOffName, BindingAnotherScannerUnderTheComplaintEndsTheQuestion)
{
    for (const char* const opener : {addButton, renameButton}) {
        bind(m_scanner);
        ask(opener, forbidden, [this] {
            complain([this] { bindSecond(); });
            expectEnded();
        });
        expectSecondAsBefore(opener);
    }
}

TEST_F(CutOffName, ANameConfirmedInTheMomentOfAnotherBindingIsNotForThatScanner)
{
    const std::function<void()> orders[] = {
        [this] {
            pressOk();
            bindSecond();
        },
        [this] {
            bindSecond();
            child<QLineEdit>(nameDialog(), "lineEdit").setText(archive);
            pressOk();
        }};
    for (const char* const opener : {addButton, renameButton}) {
        for (const auto& order : orders) {
            bind(m_scanner);
            ask(opener, archive, order);
            expectSecondAsBefore(opener);
        }
    }
}

TEST_F(CutOffName, BindingTheSameScannerAgainEndsTheQuestion)
{
    for (const char* const opener : {addButton, renameButton}) {
        ask(opener, archive, [this] {
            bind(m_scanner);
            expectEnded();
        });
        expectNothingDone(opener);
    }
}
