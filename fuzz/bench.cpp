#include "bench.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QFile>
#include <QFileInfo>
#include <QFont>
#include <QMessageBox>
#include <QStandardPaths>
#include <QStyleFactory>
#include <QTimer>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace kestrel::fuzz {

namespace {

void handleMessage(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text)
{
    // The offscreen platform's remarks about itself.
    const bool remark = text.startsWith(QLatin1String("This plugin does not support "));
    if (type != QtDebugMsg && type != QtInfoMsg && !remark) {
        fail(qPrintable(text));
    }
}

/// In memory where that can be had: a run is a few dozen system calls on files.
QString folderPattern()
{
    const QString memory = QStringLiteral("/dev/shm");
    const bool usable = QFileInfo(memory).isDir() && QFileInfo(memory).isWritable();
    return (usable ? memory : QDir::tempPath()) + QStringLiteral("/kestrel-fuzz-XXXXXX");
}

} // namespace

void fail(const char* what)
{
    std::fprintf(stderr, "finding: %s\n", what);
    std::abort();
}

void start()
{
    if (qApp != nullptr) {
        return;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static const QTemporaryDir runtimeDir;
    qputenv("XDG_RUNTIME_DIR", runtimeDir.path().toLocal8Bit());
    // What the stand-in scanner complains about is a finding, too.
    testing::GTEST_FLAG(break_on_failure) = true;
    QStandardPaths::setTestModeEnabled(true);
    static int count = 1;
    static char name[] = "fuzzer";
    static char* arguments[] = {name, nullptr};
    // Stays until the process ends: the offscreen platform does not survive it.
    static QApplication* const application =
        std::make_unique<QApplication>(count, arguments).release();
    Q_UNUSED(application)
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
    qInstallMessageHandler(handleMessage);
}

Answers::Answers(std::uint32_t bits) : m_bits(bits)
{
    qApp->installEventFilter(this);
}

Answers::~Answers() = default;

bool Answers::eventFilter(QObject* watched, QEvent* event)
{
    auto* const dialog = qobject_cast<QDialog*>(watched);
    if (dialog != nullptr && event->type() == QEvent::Show && dialog->isModal() &&
        !dialog->inherits("KestrelSettingUI")) {
        // Only the dialog's own event loop can take the answer.
        QTimer::singleShot(0, dialog, [this, dialog] {
            if (auto* const box = qobject_cast<QMessageBox*>(dialog)) {
                answer(*box);
            } else {
                leave(*dialog);
            }
        });
    }
    return QObject::eventFilter(watched, event);
}

void Answers::answer(QMessageBox& box)
{
    const bool agrees = (m_bits & 1U) != 0;
    m_bits >>= 1U;
    if (agrees && !box.buttons().isEmpty()) {
        box.buttons().constFirst()->click();
    } else {
        box.close();
    }
    require(!box.isVisible(), "a message box stays open");
}

void Answers::leave(QDialog& dialog)
{
    if (m_act) {
        m_act(dialog);
    }
    if (dialog.isVisible()) {
        dialog.reject();
    }
    require(!dialog.isVisible(), "a dialog stays open");
}

Folder::Folder() : m_dir(folderPattern()), m_path(m_dir.path().toUtf8())
{
    require(m_dir.isValid(), "there is no folder to work in");
}

QString Folder::file(const char* name) const
{
    return m_dir.filePath(QString::fromUtf8(name));
}

void Folder::write(const char* name, const QByteArray& bytes) const
{
    QFile file(this->file(name));
    require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(),
            "the file to be read can't be written");
}

} // namespace kestrel::fuzz
