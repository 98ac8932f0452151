// The preview scan: its fixed values, the frame that comes, and what is said when none does.
#include "kestrelsetting.h"

#include "kestrelsettingui.h"
#include "rules/pixels.h"
#include "scanner/frame_reader.h"
#include "scanner/status_text.h"
#include "scanner/value_tables.h"
#include "system/signal_blocker.h"
#include "ui_kestrelsetting.h"

#include <QDebug>
#include <QEvent>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPointer>

#include <cstdlib>
#include <memory>
#include <new>
#include <unistd.h>

using namespace kestrel;

namespace {

constexpr int kAllSources = 3; // items of `source` where the scanner can choose by itself
constexpr useconds_t kSettleMicroseconds = 5000;

struct Free
{
    void operator()(unsigned char* memory) const { std::free(memory); }
};

/// The cursor says "wait" as long as this lives.
class WaitCursor
{
public:
    WaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QGuiApplication::restoreOverrideCursor(); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
};

/// Swallows keys and clicks.
class InputEater : public QObject
{
public:
    bool eventFilter(QObject* /*receiver*/, QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
        case QEvent::Wheel:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::Shortcut:
        case QEvent::ShortcutOverride:
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
        case QEvent::TabletPress:
        case QEvent::TabletMove:
        case QEvent::TabletRelease:
        case QEvent::InputMethod:
        case QEvent::ContextMenu:
            return true;
        default:
            return false;
        }
    }
};

/// What was typed and clicked while the scanner kept everybody waiting was not meant for whatever
/// is on show afterwards.
void discardInput()
{
    InputEater eater;
    QCoreApplication::instance()->installEventFilter(&eater);
    QCoreApplication::processEvents();
}

QString text(double value)
{
    return QStringLiteral("%1").arg(value);
}

std::optional<PixelLayout> pixelLayout(const SANE_Parameters& parameters)
{
    const bool bytes = parameters.depth == 8;
    if (parameters.format == SANE_FRAME_RGB && bytes) {
        return PixelLayout::Rgb24;
    }
    if (parameters.format == SANE_FRAME_GRAY && bytes) {
        return PixelLayout::Gray8;
    }
    if (parameters.format == SANE_FRAME_GRAY && parameters.depth == 1) {
        return PixelLayout::Bilevel1;
    }
    return std::nullopt;
}

} // namespace

void KestrelSettingUI::setParamForPreview()
{
    if (ui->source->count() == kAllSources) {
        static constexpr tables::Texts<kAllSources> kSources = {"ADF Front", "Flatbed",
                                                                "Automatic"};
        const int index = ui->source->currentIndex();
        qDebug() << index;
        kst_SetParam("source", index == 0 || index == 2 ? tables::at(kSources, index)
                                                        : tables::at(kSources, 1));
    }
    const QString height =
        has_both_paths != 0 ? QString::number(flatbed_max_length) : text(ui->br_y->maximum());
    const auto fixed = [this](const char* name, const char* value) { kst_SetParam(name, value); };
    fixed("mode", "Color");
    fixed("multistream-list", tables::Multistream.front());
    fixed("resolution", "75");
    fixed("brightness", "0");
    fixed("contrast", "0");
    fixed("autocropdeskew", "0");
    fixed("long-paper-scan", "0");
    fixed("center-alignment", "0");
    fixed("color-register", "0");
    // The far corner first: the area grows to its full size before its origin moves.
    send("br-x", text(ui->br_x->maximum()));
    send("br-y", height);
    send("tl-x", text(ui->tl_x->minimum()));
    send("tl-y", text(ui->tl_y->minimum()));
    fixed("ultrasonic", "Disable");
    fixed("additional-length-detection", "Disable");
    fixed("rotate", tables::rotate_mode.front());
    fixed("eject-paper-opposite-side", "0");
    fixed("blank-page-removal", "0");
    fixed("punch-hole-removal", "0");
    fixed("invert", "0");
    fixed("split-image", tables::splitimage.front());
    fixed("book-scan-correction", "0");
    fixed("background-processing", tables::backendground_processing.front());
    fixed("cachemode", tables::cachemode.front());
    fixed("cachemode-value", "1");
    fixed("cachemode-use-default", "0");
    fixed("auto-scan-source-setting",
          tables::at(tables::auto_scan_source_setting, AutoSource::AdfFront));
}

void KestrelSettingUI::scan_error(SANE_Status status)
{
    const char* const message = statusText(status);
    if (message == nullptr || sane_handle == nullptr) {
        return;
    }
    usleep(kSettleMicroseconds);
    const QPointer<KestrelSettingUI> alive(this);
    const SANE_Handle handle = sane_handle;
    QMessageBox::critical(nullptr, QStringLiteral("提示"), QString::fromUtf8(message));
    // The host may have bound another scanner, and closed this one.
    if (!alive.isNull() && sane_handle == handle) {
        const SignalBlocker noBrokenPipe(SIGPIPE);
        sane_cancel(handle);
    }
}

void KestrelSettingUI::on_preview_clicked()
{
    if (previewing) {
        return;
    }
    const QPointer<KestrelSettingUI> alive(this);
    const QPointer<QWidget> focus = focusWidget();
    const SANE_Handle handle = sane_handle;
    previewing = true;
    ui->preview->setEnabled(false);
    const auto status = scanPreview();
    if (handle != nullptr) {
        discardInput();
    }
    // Whatever came up meanwhile may have closed, deleted or bound the dialog to another device.
    if (!alive.isNull() && sane_handle == handle) {
        scan_error(status);
    }
    if (!alive.isNull()) {
        ui->preview->setEnabled(true);
        previewing = false;
        if (!focus.isNull() && focus == ui->preview) {
            focus->setFocus();
        }
    }
}

/// One scan into the preview box; whatever arrived is shown.
/// @return the status of the start
SANE_Status KestrelSettingUI::scanPreview()
{
    const WaitCursor cursor;
    const SignalBlocker noBrokenPipe(SIGPIPE);
    setParamForPreview();
    // A call may let the host run events, to ask for a password: who was bound and alive before it
    // need not be afterwards.
    const SANE_Handle handle = sane_handle;
    const QPointer<KestrelSettingUI> alive(this);
    if (handle == nullptr) {
        return SANE_STATUS_GOOD;
    }
    const auto status = sane_start(handle);
    if (status == SANE_STATUS_GOOD) {
        try {
            Frame frame = readFrame(handle);
            if (!alive.isNull()) {
                showFrame(std::move(frame));
            }
        } catch (const std::bad_alloc&) { // the picture stays as it was
        }
        sane_cancel(handle);
    }
    return status;
}

void KestrelSettingUI::showFrame(Frame frame)
{
    const auto pixels = pixelLayout(frame.parameters);
    const int width = frame.parameters.pixels_per_line;
    const int height = frame.lines();
    if (!pixels || frame.received == 0) {
        return;
    }
    auto rgb = packedRgb24(std::move(frame.bytes),
                           {width, height, frame.parameters.bytes_per_line, *pixels});
    if (rgb.empty()) {
        return;
    }
    const std::unique_ptr<unsigned char, Free> converted(RGB24TO32(rgb.data(), width, height));
    if (converted) {
        QImage image(converted.get(), width, height, QImage::Format_RGB32);
        ui->preview_box->setImage(image);
    }
}
