#include "main_window.h"

#include "icons.h"
#include "message_bar.h"
#include "page_view.h"
#include "scan_plan.h"

#include <QAction>
#include <QCloseEvent>
#include <QComboBox>
#include <QLabel>
#include <QListView>
#include <QMenu>
#include <QMessageBox>
#include <QProgressBar>
#include <QScreen>
#include <QSplitter>
#include <QStandardPaths>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace kestrel {

MainWindow::MainWindow(const QString& configDir, QWidget* parent)
    : QMainWindow(parent), m_configDir(configDir), m_store(m_folder.path()),
      m_saveFolder(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation))
{
    setObjectName(QStringLiteral("main_window"));
    setWindowTitle(tr("扫描"));
    resize(QSize(1080, 760).boundedTo(screen()->availableSize() * 0.9));
    buildActions();
    buildPages();
    buildStatusBar();
    refreshIcons();

    connect(m_deviceBox, QOverload<int>::of(&QComboBox::activated), this, [this](int row) {
        if (const ScannerInfo* info = m_devices.at(row)) {
            openDevice(*info);
        }
    });
    connect(&m_worker, &ScanWorker::imageStarted, this,
            [this](int number) { m_activity->setText(tr("正在扫描第 %1 张图像").arg(number)); });
    connect(&m_worker, &ScanWorker::imageProgress, this, [this](int, int permille) {
        m_progress->setRange(0, permille < 0 ? 0 : 1000);
        m_progress->setValue(permille);
    });
    connect(&m_worker, &ScanWorker::pageReady, this, [this](const Page& page) {
        m_pages.append(page);
        m_unsaved = true;
        m_thumbnails->setCurrentIndex(m_pages.index(m_pages.rowCount() - 1));
        m_thumbnails->scrollToBottom();
    });
    connect(&m_worker, &ScanWorker::finished, this, &MainWindow::scanFinished);
    m_pause.setInterval(1000);
    connect(&m_pause, &QTimer::timeout, this, &MainWindow::countDown);
    updateActions();
}

MainWindow::~MainWindow() = default;

void MainWindow::buildActions()
{
    auto* bar = addToolBar(tr("工具"));
    bar->setObjectName(QStringLiteral("tool_bar"));
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);

    m_deviceBox = new QComboBox(bar);
    m_deviceBox->setObjectName(QStringLiteral("device"));
    m_deviceBox->setAccessibleName(tr("扫描仪"));
    m_deviceBox->setMinimumWidth(260);
    m_deviceBox->setMaximumWidth(420);
    m_deviceBox->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_deviceBox->setModel(&m_devices);
    bar->addWidget(m_deviceBox);

    const auto add = [&](const char* name, const QString& text, const QString& tip,
                         const QKeySequence& key) {
        QAction* action = bar->addAction(text);
        action->setObjectName(QLatin1String(name));
        action->setToolTip(key.isEmpty() ? tip
                                         : QStringLiteral("%1 (%2)").arg(
                                               tip, key.toString(QKeySequence::NativeText)));
        action->setShortcut(key);
        return action;
    };
    m_refreshAction = add("refresh", tr("刷新"), tr("重新查找扫描仪"), QKeySequence::Refresh);
    bar->addSeparator();
    m_settingsAction = add("settings", tr("设置"), tr("扫描设置"), QKeySequence("Ctrl+,"));
    m_scanAction = add("scan", tr("扫描"), tr("开始扫描"), QKeySequence("Ctrl+R"));
    m_stopAction = add("stop", tr("取消"), tr("停止扫描"), QKeySequence("Esc"));
    bar->addSeparator();
    m_saveAction = add("save", tr("保存"), tr("保存全部页面"), {});
    m_removeAction = add("remove", tr("删除"), tr("删除选中的页面"), QKeySequence::Delete);

    auto* menu = new QMenu(this);
    for (const FileFormat format : availableFormats()) {
        QAction* entry = menu->addAction(fileFilter(format), this, [=] { savePages(format); });
        entry->setObjectName(QStringLiteral("save_%1").arg(fileSuffix(format)));
    }
    menu->actions().constFirst()->setShortcut(QKeySequence::Save);
    m_saveAction->setMenu(menu);
    if (auto* button = qobject_cast<QToolButton*>(bar->widgetForAction(m_saveAction))) {
        button->setPopupMode(QToolButton::InstantPopup);
    }

    // A tool bar keeps its buttons from the Tab key.
    for (QAction* const action : bar->actions()) {
        if (!action->isSeparator() && bar->widgetForAction(action) != m_deviceBox) {
            bar->widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
        }
    }

    connect(m_refreshAction, &QAction::triggered, this, [this] { findDevices(); });
    connect(m_settingsAction, &QAction::triggered, this, &MainWindow::showSettings);
    connect(m_scanAction, &QAction::triggered, this, &MainWindow::startScan);
    connect(m_stopAction, &QAction::triggered, this, &MainWindow::stopScan);
    connect(m_removeAction, &QAction::triggered, this, &MainWindow::removeSelectedPages);
}

void MainWindow::buildPages()
{
    m_messages = new MessageBar(this);
    m_thumbnails = new QListView(this);
    m_thumbnails->setObjectName(QStringLiteral("thumbnails"));
    m_thumbnails->setAccessibleName(tr("页面列表"));
    m_thumbnails->setModel(&m_pages);
    m_thumbnails->setViewMode(QListView::IconMode);
    m_thumbnails->setMovement(QListView::Static);
    m_thumbnails->setResizeMode(QListView::Adjust);
    m_thumbnails->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_thumbnails->setIconSize({150, 180});
    m_thumbnails->setGridSize({180, 220});
    m_thumbnails->setMinimumWidth(210);
    m_view = new PageView(this);

    auto* splitter = new QSplitter(Qt::Horizontal, this);
    splitter->addWidget(m_thumbnails);
    splitter->addWidget(m_view);
    splitter->setChildrenCollapsible(false);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({410, 650});

    auto* centre = new QWidget(this);
    auto* column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_messages);
    column->addWidget(splitter, 1);
    setCentralWidget(centre);

    connect(m_thumbnails->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &MainWindow::showCurrentPage);
    connect(m_thumbnails->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &MainWindow::updateActions);
}

void MainWindow::buildStatusBar()
{
    m_summary = new QLabel(this);
    m_summary->setObjectName(QStringLiteral("summary"));
    m_activity = new QLabel(this);
    m_activity->setObjectName(QStringLiteral("activity"));
    m_progress = new QProgressBar(this);
    m_progress->setObjectName(QStringLiteral("progress"));
    m_progress->setAccessibleName(tr("扫描进度"));
    m_progress->setTextVisible(false);
    m_progress->setFixedWidth(220);
    m_progress->hide();
    statusBar()->addWidget(m_summary, 1);
    statusBar()->addPermanentWidget(m_activity);
    statusBar()->addPermanentWidget(m_progress);
}

void MainWindow::refreshIcons()
{
    setWindowIcon(applicationIcon());
    m_refreshAction->setIcon(makeIcon(IconKind::Refresh, palette()));
    m_settingsAction->setIcon(makeIcon(IconKind::Settings, palette()));
    m_scanAction->setIcon(makeIcon(IconKind::Scan, palette()));
    m_stopAction->setIcon(makeIcon(IconKind::Stop, palette()));
    m_saveAction->setIcon(makeIcon(IconKind::Save, palette()));
    m_removeAction->setIcon(makeIcon(IconKind::Remove, palette()));
}

void MainWindow::updateActions()
{
    const bool busy = m_worker.isRunning() || m_task.isRunning() || m_secondsLeft > 0;
    const bool usable = hasDevice() && !busy;
    m_deviceBox->setEnabled(!busy && m_devices.rowCount() > 0);
    m_refreshAction->setEnabled(!busy);
    m_settingsAction->setEnabled(usable);
    m_scanAction->setEnabled(usable);
    m_stopAction->setEnabled(m_worker.isRunning() || m_secondsLeft > 0);
    m_saveAction->setEnabled(!busy && !m_pages.isEmpty());
    m_removeAction->setEnabled(!busy && m_thumbnails->selectionModel()->hasSelection());
    m_progress->setVisible(m_worker.isRunning() || m_task.isRunning());
    m_summary->setText(hasDevice() ? summaryOf(m_answers) : tr("没有打开扫描仪"));
}

void MainWindow::showCurrentPage()
{
    const QModelIndex current = m_thumbnails->currentIndex();
    if (current.isValid()) {
        m_view->setPage(m_pages.pages()[static_cast<std::size_t>(current.row())]);
    } else {
        m_view->clear();
    }
}

void MainWindow::removeSelectedPages()
{
    std::vector<int> rows;
    for (const QModelIndex& index : m_thumbnails->selectionModel()->selectedIndexes()) {
        rows.push_back(index.row());
    }
    m_pages.remove(std::move(rows));
    m_unsaved = m_unsaved && !m_pages.isEmpty();
    showCurrentPage();
    updateActions();
}

QString MainWindow::message() const
{
    return m_messages->text();
}

void MainWindow::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_removeAction != nullptr) {
        refreshIcons();
    }
}

void MainWindow::closeIfWanted()
{
    if (m_closeAfterTask) {
        m_closeAfterTask = false;
        close();
    }
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (m_task.isRunning()) {
        m_closeAfterTask = true;
        event->ignore();
        return;
    }
    if (m_unsaved && !m_closing &&
        QMessageBox::question(this, tr("关闭"),
                              tr("有 %1 页尚未保存。放弃这些页面吗？").arg(pageCount()),
                              QMessageBox::Discard | QMessageBox::Cancel,
                              QMessageBox::Cancel) != QMessageBox::Discard) {
        event->ignore();
        return;
    }
    if (m_worker.isRunning()) {
        // The window follows when the scanner has let go.
        m_closing = true;
        stopScan();
        event->ignore();
        return;
    }
    QMainWindow::closeEvent(event);
}

} // namespace kestrel
