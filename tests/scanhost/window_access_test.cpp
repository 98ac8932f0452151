// The window for who does without a mouse, without eyes or without bright colours.
#include "access/contrast.h"
#include "access/palettes.h"
#include "backend/sim_env.h"

#include <main_window.h>
#include <page_view.h>

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QListView>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

#include <memory>
#include <set>

using namespace kestrel::test;

namespace {

using kestrel::MainWindow;
using kestrel::SaneLibrary;

constexpr int patience = 60'000; // milliseconds until a test gives up

class WindowAccess : public testing::Test
{
protected:
    void open(const std::string& config)
    {
        m_environment = std::make_unique<SimEnv>(config);
        m_sane = std::make_unique<SaneLibrary>();
        ASSERT_EQ(m_sane->status(), SANE_STATUS_GOOD);
        m_window = std::make_unique<MainWindow>(m_dir.filePath("settings"));
        m_window->show();
        QSignalSpy ready(m_window.get(), &MainWindow::ready);
        m_window->findDevices(QStringLiteral("kestrel_adv:sim"));
        ASSERT_TRUE(ready.wait(patience));
    }

    void scan()
    {
        QSignalSpy ended(m_window.get(), &MainWindow::scanEnded);
        m_window->findChild<QAction*>("scan")->trigger();
        ASSERT_TRUE(ended.count() > 0 || ended.wait(patience));
    }

    void TearDown() override
    {
        if (m_window) {
            m_window->discardPages();
        }
        m_window.reset();
        m_sane.reset();
    }

    /// @return what the Tab key visits, by the names a screen reader says
    std::set<QString> walk()
    {
        m_window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(m_window.get()));
        std::set<QString> names;
        for (int step = 0; step < 30; ++step) {
            QWidget* const focus = QApplication::focusWidget();
            QTest::keyClick(focus != nullptr ? focus : m_window.get(), Qt::Key_Tab);
            names.insert(nameOf(QApplication::focusWidget()));
        }
        return names;
    }

    static QString nameOf(QWidget* widget)
    {
        QAccessibleInterface* const told =
            widget != nullptr ? QAccessible::queryAccessibleInterface(widget) : nullptr;
        if (told == nullptr) {
            return {};
        }
        const auto* const list = qobject_cast<const QComboBox*>(widget);
        return list != nullptr ? list->accessibleName() : told->text(QAccessible::Name);
    }

    QTemporaryDir m_dir;
    std::unique_ptr<SimEnv> m_environment;
    std::unique_ptr<SaneLibrary> m_sane;
    std::unique_ptr<MainWindow> m_window;
};

const std::string feeder =
    "[sim]\nmodel = Q2380F\nfeeder-area = 105x148\nsheets = text, photo\nstack = 1\n";
const std::string jammed = feeder + "fault = start * jammed\n";

} // namespace

TEST_F(WindowAccess, EveryVisibleControlHasAName)
{
    open(jammed);
    scan();
    int controls = 0;
    for (QWidget* widget : m_window->findChildren<QWidget*>()) {
        const bool focusable = (widget->focusPolicy() & Qt::TabFocus) != 0;
        const bool button = qobject_cast<QToolButton*>(widget) != nullptr &&
                            !widget->objectName().startsWith(QLatin1String("qt_"));
        if (widget->isVisible() && (focusable || button)) {
            EXPECT_FALSE(nameOf(widget).isEmpty())
                << widget->metaObject()->className() << widget->objectName().toStdString();
            ++controls;
        }
    }
    EXPECT_GE(controls, 9);
}

TEST_F(WindowAccess, TabKeyReachesToolsAndPages)
{
    open(feeder);
    EXPECT_EQ(walk(), (std::set<QString>{"扫描仪", "刷新", "设置", "扫描", "页面列表"}));
    scan();
    EXPECT_EQ(walk(),
              (std::set<QString>{"扫描仪", "刷新", "设置", "扫描", "保存", "删除", "页面列表"}));
}

TEST_F(WindowAccess, PagesAreNamedInTheList)
{
    open(feeder);
    scan();
    auto* const pages = m_window->findChild<QListView*>("thumbnails");
    QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(pages);
    ASSERT_NE(told, nullptr);
    ASSERT_GE(told->childCount(), 1);
    EXPECT_EQ(told->child(0)->text(QAccessible::Name), "第 1 页");
}

TEST_F(WindowAccess, TextsAreLegibleInDarkColours)
{
    const PaletteInForce inForce(darkPalette());
    open(jammed);
    const auto look = [this] {
        int texts = 0;
        for (QWidget* widget : m_window->findChildren<QWidget*>()) {
            const bool shown = widget->isVisible() && widget->isEnabled() && widget->width() > 8 &&
                               (!widget->property("text").toString().isEmpty() ||
                                qobject_cast<QComboBox*>(widget) != nullptr);
            if (shown) {
                EXPECT_GE(contrastOf(*widget), enoughContrast)
                    << widget->metaObject()->className() << " "
                    << widget->property("text").toString().toStdString();
                ++texts;
            }
        }
        return texts;
    };
    EXPECT_GE(look(), 5);
    EXPECT_GE(contrastOf(*m_window->findChild<kestrel::PageView*>()), enoughContrast);
    scan();
    EXPECT_FALSE(m_window->message().isEmpty());
    EXPECT_GE(look(), 6);
}
