#include "main_window.h"

#include "message_bar.h"

#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QProgressBar>

namespace kestrel {

QString MainWindow::askFileName(FileFormat format)
{
    QFileDialog dialog(this, tr("保存全部页面"), m_saveFolder, fileFilter(format));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(fileSuffix(format));
    dialog.selectFile(tr("扫描") + '.' + fileSuffix(format));
    // Which files are going to be written is known here, not in the dialog.
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

bool MainWindow::mayReplace(const QStringList& files)
{
    QStringList existing;
    for (const QString& file : files) {
        if (QFileInfo::exists(file)) {
            existing << QFileInfo(file).fileName();
        }
    }
    if (existing.isEmpty()) {
        return true;
    }
    const QString question = existing.size() == 1
                                 ? tr("文件 %1 已存在。替换它吗？").arg(existing.constFirst())
                                 : tr("%1 等 %2 个文件已存在。替换它们吗？")
                                       .arg(existing.constFirst())
                                       .arg(existing.size());
    return QMessageBox::question(this, tr("保存"), question) == QMessageBox::Yes;
}

void MainWindow::savePages(FileFormat format)
{
    const QString path = askFileName(format);
    if (path.isEmpty() || !mayReplace(exportFiles(path, format, pageCount()))) {
        return;
    }
    m_saveFolder = QFileInfo(path).path();
    saveTo(path, format);
}

void MainWindow::saveTo(const QString& path, FileFormat format)
{
    m_messages->showMessage({});
    m_activity->setText(tr("正在保存…"));
    m_progress->setRange(0, pageCount());
    m_progress->setValue(0);
    const auto progress = [this](int done) {
        QMetaObject::invokeMethod(this, [this, done] { m_progress->setValue(done); });
        return true;
    };
    m_task.start(
        [=, pages = m_pages.pages()] {
            m_exportProblem = exportPages(pages, path, format, progress);
        },
        [=] {
            m_unsaved = m_unsaved && !m_exportProblem.isEmpty();
            m_messages->showMessage(m_exportProblem);
            m_activity->setText(m_exportProblem.isEmpty()
                                    ? tr("已保存到 %1").arg(QDir::toNativeSeparators(path))
                                    : QString());
            updateActions();
            closeIfWanted();
        });
    updateActions();
}

} // namespace kestrel
