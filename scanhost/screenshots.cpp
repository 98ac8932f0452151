#include "screenshots.h"

#include "main_window.h"

#include <QCoreApplication>
#include <QDialog>
#include <QDir>
#include <QPixmap>
#include <QTabWidget>
#include <QTextStream>
#include <QTimer>

namespace kestrel {

Screenshots::Screenshots(MainWindow& window, const QString& folder, QObject* parent)
    : QObject(parent), m_window(window), m_folder(folder)
{
}

void Screenshots::arm()
{
    connect(&m_window, &MainWindow::ready, this, &Screenshots::photographDialog,
            Qt::QueuedConnection);
    connect(&m_window, &MainWindow::scanEnded, this, &Screenshots::photographWindow,
            Qt::QueuedConnection);
}

void Screenshots::photographDialog()
{
    m_good = QDir().mkpath(m_folder) && m_window.hasDevice();
    if (!m_good) {
        end();
        return;
    }
    // The dialog runs its own event loop; what is to happen in it has to be planned before.
    QDialog* dialog = m_window.settingsDialog()->dialog();
    QTimer::singleShot(0, dialog, [this, dialog] { nextTab(dialog, 0); });
    m_window.showSettings();
    m_window.startScan();
}

void Screenshots::nextTab(QDialog* dialog, int index)
{
    auto* tabs = dialog->findChild<QTabWidget*>(QStringLiteral("tabWidget"));
    m_good = m_good && tabs != nullptr;
    while (tabs != nullptr && index < tabs->count() && !tabs->isTabEnabled(index)) {
        ++index;
    }
    if (tabs == nullptr || index >= tabs->count()) {
        dialog->reject();
        return;
    }
    tabs->setCurrentIndex(index);
    // Through the event loop, so that everything the change of tab sets off has happened.
    QTimer::singleShot(0, dialog, [this, dialog, index] {
        save(*dialog, QStringLiteral("tab-%1.png").arg(index + 1, 2, 10, QChar('0')));
        nextTab(dialog, index + 1);
    });
}

void Screenshots::photographWindow()
{
    m_good = m_good && m_window.message().isEmpty() && m_window.pageCount() > 0;
    save(m_window, QStringLiteral("window.png"));
    end();
}

void Screenshots::save(QWidget& widget, const QString& name)
{
    m_good = widget.grab().save(QDir(m_folder).filePath(name)) && m_good;
}

void Screenshots::end()
{
    if (!m_good) {
        QTextStream(stderr) << tr("无法完成截图：%1").arg(m_window.message()) << '\n';
    }
    m_window.discardPages();
    QCoreApplication::exit(m_good ? 0 : 1);
}

} // namespace kestrel
