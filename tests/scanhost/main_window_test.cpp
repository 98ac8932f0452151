// The window, on the simulated scanner behind the real libsane.
#include "program.h"

#include <main_window.h>
#include <tour.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QListView>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>

namespace {

using kestrel::FileFormat;
using kestrel::MainWindow;
using kestrel::SaneLibrary;

constexpr int patience = 60'000; // milliseconds until a test gives up

/// Clicks a button of the settings dialog whenever the dialog is shown.
class InShownDialog : public QObject
{
public:
    explicit InShownDialog(const char* button) : m_button(button)
    {
        qApp->installEventFilter(this);
    }
    int count() const { return m_count; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        auto* dialog = qobject_cast<QDialog*>(watched);
        auto* button = dialog != nullptr && event->type() == QEvent::Show
                           ? dialog->findChild<QPushButton*>(m_button)
                           : nullptr;
        if (button != nullptr) {
            // From the dialog's own event loop, as a user would.
            QTimer::singleShot(0, button, [this, button] {
                ++m_count;
                button->click();
            });
        }
        return false;
    }

private:
    QString m_button;
    int m_count = 0;
};

class Window : public testing::Test
{
protected:
    /// Opens the window on a scanner.
    /// @param before runs ahead of the search for scanners
    void open(const std::string& config, const QString& device = "kestrel_adv:sim",
              const std::function<void()>& before = {})
    {
        m_environment = std::make_unique<kestrel::test::SimEnv>(config);
        m_sane = std::make_unique<SaneLibrary>();
        ASSERT_EQ(m_sane->status(), SANE_STATUS_GOOD);
        m_window = std::make_unique<MainWindow>(m_dir.filePath("settings"));
        m_window->show();
        QSignalSpy ready(m_window.get(), &MainWindow::ready);
        if (before) {
            before();
        }
        m_window->findDevices(device);
        ASSERT_TRUE(ready.wait(patience));
    }

    void TearDown() override
    {
        if (m_window) {
            m_window->discardPages();
        }
        m_window.reset();
        m_sane.reset();
    }

    void scan()
    {
        QSignalSpy ended(m_window.get(), &MainWindow::scanEnded);
        action("scan")->trigger();
        ASSERT_TRUE(ended.count() > 0 || ended.wait(patience));
    }

    QAction* action(const char* name) const { return m_window->findChild<QAction*>(name); }

    template <typename Widget>
    Widget* setting(const char* name) const
    {
        return m_window->settingsDialog()->dialog()->findChild<Widget*>(name);
    }

    /// Opens the settings, does something in them and presses OK.
    void inSettings(const std::function<void()>& change)
    {
        QTimer::singleShot(0, m_window.get(), [&] {
            change();
            setting<QPushButton>("sure")->click();
        });
        action("settings")->trigger();
    }

    QString label(const char* name) const { return m_window->findChild<QLabel*>(name)->text(); }

    int opened() const
    {
        const auto lines = m_environment->journal();
        return static_cast<int>(std::count(lines.begin(), lines.end(), "open sim"));
    }

    QTemporaryDir m_dir;
    std::unique_ptr<kestrel::test::SimEnv> m_environment;
    std::unique_ptr<SaneLibrary> m_sane;
    std::unique_ptr<MainWindow> m_window;
};

// Small sheets: what is tested here is not the drawing of them.
const std::string feeder =
    "[sim]\nmodel = Q2380F\nfeeder-area = 105x148\nsheets = text/form, photo/text\n";

} // namespace

TEST_F(Window, ListsScannersAndOpensTheOneAskedFor)
{
    open("[a]\nmodel = Q150A\nbackend = kestrel_adv\n"
         "[b]\nmodel = Q1410A\nbackend = kestrel_adv\n",
         "kestrel_adv:b");
    auto* box = m_window->findChild<QComboBox*>("device");
    EXPECT_EQ(box->count(), 2);
    EXPECT_GE(box->findText("Kestrel Q150A"), 0);
    EXPECT_EQ(box->currentText(), "Kestrel Q1410A");
    EXPECT_TRUE(m_window->windowTitle().contains("Q1410A"));
    EXPECT_TRUE(m_window->hasDevice());
    EXPECT_TRUE(action("scan")->isEnabled());
    EXPECT_FALSE(action("stop")->isEnabled());
    EXPECT_FALSE(action("save")->isEnabled());
}

TEST_F(Window, WithoutScannerSaysSoAndOffersOnlyToLookAgain)
{
    open("# none\n", "");
    EXPECT_TRUE(m_window->message().contains(QStringLiteral("没有找到扫描仪")));
    EXPECT_FALSE(action("scan")->isEnabled());
    EXPECT_FALSE(action("settings")->isEnabled());
    EXPECT_TRUE(action("refresh")->isEnabled());
    m_window->startScan();
    m_window->showSettings();
    EXPECT_EQ(m_window->pageCount(), 0);
}

TEST_F(Window, ScannerThatCannotBeOpenedIsNamed)
{
    open("[sim]\nmodel = Q150A\nfault = open busy\n");
    EXPECT_TRUE(m_window->message().contains("Q150A"));
    EXPECT_TRUE(m_window->message().contains(QStringLiteral("扫描仪忙")));
    EXPECT_FALSE(m_window->hasDevice());
}

TEST_F(Window, ScansTheStackIntoThumbnails)
{
    open(feeder);
    scan();
    EXPECT_EQ(m_window->message(), QString());
    EXPECT_EQ(m_window->pageCount(), 2);
    const auto* model = m_window->findChild<QListView*>("thumbnails")->model();
    EXPECT_FALSE(model->index(0, 0).data(Qt::DecorationRole).value<QIcon>().isNull());
    EXPECT_TRUE(label("activity").contains("2"));
    EXPECT_TRUE(action("save")->isEnabled());
    EXPECT_TRUE(action("scan")->isEnabled());
    EXPECT_FALSE(action("stop")->isEnabled());
    EXPECT_FALSE(m_window->findChild<QProgressBar*>("progress")->isVisible());
}

TEST_F(Window, WhatIsChosenInTheSettingsHappens)
{
    open(feeder);
    inSettings([this] {
        setting<QCheckBox>("rear_color")->click();
        setting<QComboBox>("resolution_gengel_slide")->setCurrentIndex(0);
    });
    const int dpi = setting<QComboBox>("resolution_gengel_slide")->currentText().toInt();
    scan();
    EXPECT_EQ(m_window->pageCount(), 4) << "both sides of two sheets";
    EXPECT_TRUE(label("summary").contains(QStringLiteral("双面")));
    EXPECT_TRUE(label("summary").contains(QStringLiteral("%1 dpi").arg(dpi)));
    const auto* model = m_window->findChild<QListView*>("thumbnails")->model();
    EXPECT_TRUE(model->index(0, 0)
                    .data(Qt::ToolTipRole)
                    .toString()
                    .contains(QStringLiteral("%1 dpi").arg(dpi)));
}

TEST_F(Window, JamIsSaidAndThePagesBeforeItStay)
{
    open(feeder + "fault = start 2 jammed\n");
    scan();
    EXPECT_EQ(m_window->pageCount(), 1);
    EXPECT_TRUE(m_window->message().contains(QStringLiteral("卡纸")));
    EXPECT_TRUE(m_window->message().contains(QStringLiteral("已保留 1 张图像")));
    EXPECT_EQ(opened(), 1);
}

TEST_F(Window, ScannerIsOpenedAgainAfterTheConnectionBroke)
{
    open(feeder + "fault = read 2 1000 io-error\n");
    scan();
    EXPECT_EQ(m_window->pageCount(), 1);
    EXPECT_TRUE(m_window->message().contains(QStringLiteral("可能已断开")));
    scan();
    EXPECT_EQ(opened(), 2);
    EXPECT_EQ(m_window->pageCount(), 2) << "the first sheet once more, before the same fault";
}

TEST_F(Window, ScannerThatIsGoneIsSaidAndNothingHangs)
{
    open(feeder + "fault = vanish 1 1000\n");
    scan();
    EXPECT_EQ(m_window->pageCount(), 0);
    scan();
    EXPECT_TRUE(m_window->message().contains(QStringLiteral("无法打开")));
    EXPECT_FALSE(action("scan")->isEnabled());
    EXPECT_TRUE(action("refresh")->isEnabled());
}

TEST_F(Window, NameThatNoScannerHasIsCalledSo)
{
    open(feeder, "kestrel_adv:nobody");
    EXPECT_EQ(m_window->message(),
              QStringLiteral("无法打开 kestrel_adv:nobody：没有这台扫描仪，或者它已断开"));
    EXPECT_FALSE(m_window->hasDevice());
}

TEST_F(Window, CancelEndsTheScanWithinThePage)
{
    open(feeder + "read-delay-ms = 20\nshort-reads = 2000\n");
    QSignalSpy ended(m_window.get(), &MainWindow::scanEnded);
    action("scan")->trigger();
    EXPECT_TRUE(action("stop")->isEnabled());
    EXPECT_FALSE(action("scan")->isEnabled());
    EXPECT_FALSE(action("settings")->isEnabled());
    EXPECT_TRUE(m_window->findChild<QProgressBar*>("progress")->isVisible());
    action("stop")->trigger();
    ASSERT_TRUE(ended.wait(patience));
    EXPECT_EQ(m_window->pageCount(), 0);
    EXPECT_EQ(m_window->message(), QString());
    EXPECT_TRUE(action("scan")->isEnabled());
    EXPECT_EQ(m_environment->journal().back(), "cancel");
}

TEST_F(Window, ClosingInTheMiddleOfAScanWaitsForTheScanner)
{
    open(feeder + "read-delay-ms = 20\nshort-reads = 2000\n");
    action("scan")->trigger();
    EXPECT_FALSE(m_window->close());
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_window->isHidden(); }, patience));
    EXPECT_EQ(m_environment->journal().back(), "cancel");
}

TEST_F(Window, FlatbedWaitsForTheNextSheetAsLongAsTheUserWants)
{
    open("[sim]\nmodel = Q110F\n");
    setting<QSpinBox>("waitingjob_value")->setValue(1);
    QSignalSpy ended(m_window.get(), &MainWindow::scanEnded);
    action("scan")->trigger();
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_window->pageCount() >= 2; }, patience));
    EXPECT_EQ(ended.count(), 0);
    EXPECT_TRUE(action("stop")->isEnabled());
    action("stop")->trigger();
    ASSERT_TRUE(ended.count() > 0 || ended.wait(patience));
    EXPECT_TRUE(action("scan")->isEnabled());
}

TEST_F(Window, StopPressedWhenTheFlatbedHasJustDeliveredIsNotForgotten)
{
    open("[sim]\nmodel = Q110F\n");
    setting<QSpinBox>("waitingjob_value")->setValue(1);
    QSignalSpy ended(m_window.get(), &MainWindow::scanEnded);
    const auto* pages = m_window->findChild<QListView*>("thumbnails")->model();
    QObject::connect(pages, &QAbstractItemModel::rowsInserted, m_window.get(),
                     [this] { action("stop")->trigger(); });
    action("scan")->trigger();
    ASSERT_TRUE(ended.count() > 0 || ended.wait(patience));
    EXPECT_EQ(m_window->pageCount(), 1);
    EXPECT_TRUE(action("scan")->isEnabled());
    EXPECT_FALSE(action("stop")->isEnabled());
}

TEST_F(Window, SavesAllPagesInTheBackground)
{
    open(feeder);
    scan();
    const QString path = m_dir.filePath("all.pdf");
    m_window->saveTo(path, FileFormat::Pdf);
    EXPECT_FALSE(action("save")->isEnabled());
    ASSERT_TRUE(QTest::qWaitFor([this] { return action("save")->isEnabled(); }, patience));
    EXPECT_EQ(kestrel::test::pdfPages(path), 2);
    EXPECT_TRUE(label("activity").contains("all.pdf"));
    EXPECT_TRUE(m_window->close()) << "saved pages are not asked about";
}

TEST_F(Window, SavingThatFailsIsSaid)
{
    open(feeder);
    scan();
    m_window->saveTo(m_dir.filePath("none/all.pdf"), FileFormat::Pdf);
    ASSERT_TRUE(QTest::qWaitFor([this] { return action("save")->isEnabled(); }, patience));
    EXPECT_TRUE(m_window->message().contains(QStringLiteral("无法写入文件")));
}

TEST_F(Window, RemovesSelectedPages)
{
    open(feeder);
    scan();
    auto* list = m_window->findChild<QListView*>("thumbnails");
    list->selectAll();
    EXPECT_TRUE(action("remove")->isEnabled());
    action("remove")->trigger();
    EXPECT_EQ(m_window->pageCount(), 0);
    EXPECT_FALSE(action("save")->isEnabled());
    EXPECT_FALSE(action("remove")->isEnabled());
}

TEST_F(Window, LookingAgainKeepsTheScanner)
{
    open("[a]\nmodel = Q150A\nbackend = kestrel_adv\n"
         "[b]\nmodel = Q1410A\nbackend = kestrel_adv\n",
         "kestrel_adv:b");
    QSignalSpy ready(m_window.get(), &MainWindow::ready);
    action("refresh")->trigger();
    ASSERT_TRUE(ready.wait(patience));
    EXPECT_EQ(m_window->findChild<QComboBox*>("device")->currentText(), "Kestrel Q1410A");
    EXPECT_TRUE(m_window->hasDevice());
}

TEST_F(Window, TourScansAndSavesWhenTheSettingsAreConfirmed)
{
    const QString path = m_dir.filePath("tour.pdf");
    const InShownDialog click("sure");
    std::unique_ptr<kestrel::Tour> tour;
    open(feeder, "kestrel_adv:sim", [&] {
        tour = std::make_unique<kestrel::Tour>(*m_window, path);
        tour->arm();
    });
    ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(path); }, patience));
    EXPECT_EQ(click.count(), 1);
    EXPECT_EQ(kestrel::test::pdfPages(path), 2);
    EXPECT_TRUE(m_window->isVisible());
}

TEST_F(Window, TourEndsWhenTheSettingsAreCancelled)
{
    const InShownDialog click("cancel");
    std::unique_ptr<kestrel::Tour> tour;
    open(feeder, "kestrel_adv:sim", [&] {
        tour = std::make_unique<kestrel::Tour>(*m_window, m_dir.filePath("tour.pdf"));
        tour->arm();
    });
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return click.count() == 1 && m_window->settingsDialog()->dialog()->isHidden(); },
        patience));
    QCoreApplication::processEvents();
    EXPECT_EQ(m_window->pageCount(), 0);
    EXPECT_FALSE(action("stop")->isEnabled()) << "nothing is being scanned";
    EXPECT_TRUE(action("scan")->isEnabled());
}
