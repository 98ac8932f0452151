#include "tour.h"

#include "main_window.h"

#include <QAbstractButton>
#include <QDialog>

namespace kestrel {

Tour::Tour(MainWindow& window, const QString& pdfFile, QObject* parent)
    : QObject(parent), m_window(window), m_pdfFile(pdfFile)
{
}

void Tour::arm()
{
    // Once: looking for scanners again is the user's own doing.
    auto* once = new QObject(this);
    connect(
        &m_window, &MainWindow::ready, once,
        [this, once] {
            once->deleteLater();
            showSettings();
        },
        Qt::QueuedConnection);
}

void Tour::showSettings()
{
    if (!m_window.hasDevice()) {
        return;
    }
    QDialog* dialog = m_window.settingsDialog()->dialog();
    auto* sure = dialog->findChild<QAbstractButton*>(QStringLiteral("sure"));
    bool confirmed = false;
    QObject whileShown;
    if (sure != nullptr) {
        // The dialog's own slot comes first; it leaves the dialog open when it wants something
        // changed.
        connect(sure, &QAbstractButton::clicked, &whileShown,
                [&confirmed, dialog] { confirmed = dialog->isHidden(); });
    }
    m_window.showSettings();
    if (!confirmed) {
        return;
    }
    auto* once = new QObject(this);
    connect(&m_window, &MainWindow::scanEnded, once, [this, once] {
        once->deleteLater();
        if (m_window.pageCount() > 0) {
            m_window.saveTo(m_pdfFile, FileFormat::Pdf);
        }
    });
    m_window.startScan();
}

} // namespace kestrel
