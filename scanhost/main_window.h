/// @file
/// The window: choose a scanner, set it up, scan, look, save.
#pragma once

#include "background_task.h"
#include "device_list.h"
#include "page_export.h"
#include "page_list.h"
#include "page_store.h"
#include "scan_worker.h"
#include "scanner_device.h"
#include "settings_dialog.h"

#include <QMainWindow>
#include <QTemporaryDir>
#include <QTimer>

#include <memory>

class QAction;
class QComboBox;
class QLabel;
class QListView;
class QProgressBar;

namespace kestrel {

class MessageBar;
class PageView;

/// Everything is done through its actions; SANE has to be initialised before and until after its
/// life.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// @param configDir folder of the settings files
    explicit MainWindow(const QString& configDir, QWidget* parent = nullptr);
    ~MainWindow() override;
    Q_DISABLE_COPY_MOVE(MainWindow)

    /// Looks for scanners in the background and opens one; ready() follows.
    /// @param deviceName the SANE device to open, listed or not; empty: the first one found
    void findDevices(const QString& deviceName = {});

    /// @return the settings dialog of the open scanner; null while there is none
    SettingsDialog* settingsDialog() const { return m_settings.get(); }

    /// @return whether a scanner is open
    bool hasDevice() const { return m_device.handle() != nullptr; }

    const std::vector<Page>& pages() const { return m_pages.pages(); }
    int pageCount() const { return m_pages.rowCount(); }

    /// @return what the message bar says
    QString message() const;

    /// Saves all pages, without asking, in the background; errors go to the message bar.
    void saveTo(const QString& path, FileFormat format);

    /// Forgets that pages have not been saved, so that closing asks nothing.
    void discardPages() { m_unsaved = false; }

public slots:
    void showSettings();
    void startScan();

signals:
    /// The search for scanners has ended, with or without one.
    void ready();
    /// A scan has ended; the program is idle again.
    void scanEnded();

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    // main_window.cpp: what is seen
    void buildActions();
    void buildPages();
    void buildStatusBar();
    void refreshIcons();
    void updateActions();
    void showCurrentPage();
    void removeSelectedPages();
    void closeIfWanted();

    // main_window_scan.cpp: the scanner
    void devicesFound(const QString& wanted);
    void openDevice(const ScannerInfo& info);
    bool reopenDevice();
    void stopScan();
    void scanFinished(const ScanEnd& end);
    void waitForNextSheet();
    void countDown();

    // main_window_save.cpp
    void savePages(FileFormat format);
    QString askFileName(FileFormat format);
    bool mayReplace(const QStringList& files);

    QString m_configDir;
    QTemporaryDir m_folder;
    PageStore m_store;
    PageList m_pages;
    DeviceList m_devices;
    ScannerDevice m_device;
    std::unique_ptr<SettingsDialog> m_settings;
    ScanAnswers m_answers;
    bool m_deviceLost = false;
    bool m_unsaved = false;
    bool m_closing = false;        ///< as soon as the scan has ended
    bool m_stopping = false;       ///< the user has asked for the end of the scan that runs
    bool m_closeAfterTask = false; ///< as soon as the search or the export has ended
    int m_secondsLeft = 0;         ///< until the next flatbed scan; 0 while none is waited for
    QTimer m_pause;
    std::vector<ScannerInfo> m_found; ///< written by the search, read after it
    SANE_Status m_foundStatus = SANE_STATUS_GOOD;
    QString m_exportProblem; ///< written by the export, read after it
    QString m_saveFolder;

    QComboBox* m_deviceBox = nullptr;
    QAction* m_refreshAction = nullptr;
    QAction* m_settingsAction = nullptr;
    QAction* m_scanAction = nullptr;
    QAction* m_stopAction = nullptr;
    QAction* m_saveAction = nullptr;
    QAction* m_removeAction = nullptr;
    MessageBar* m_messages = nullptr;
    QListView* m_thumbnails = nullptr;
    PageView* m_view = nullptr;
    QLabel* m_summary = nullptr;
    QLabel* m_activity = nullptr;
    QProgressBar* m_progress = nullptr;

    // Last, so that they end first: their threads use what stands above.
    ScanWorker m_worker;
    BackgroundTask m_task;
};

} // namespace kestrel
