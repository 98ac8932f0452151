// The first preview picture: from the click to the painted frame.
#include "bare_calls.h"
#include "jobs.h"
#include "stage.h"

#include "support/user.h"
#include "widgets/picturebox.h"

#include <QApplication>
#include <QImage>
#include <QPainter>

#include <cmath>
#include <map>

namespace kestrel::bench {

using kestrel::test::child;
using kestrel::test::FakeFrame;

namespace {

constexpr int kCoarse = 75;
constexpr int kFine = 600;

/// An A4 page in colour.
FakeFrame makePage(int dpi)
{
    constexpr double kWidthInch = 210.0 / 25.4;
    constexpr double kHeightInch = 297.0 / 25.4;
    const int width = static_cast<int>(std::lround(kWidthInch * dpi));
    const int height = static_cast<int>(std::lround(kHeightInch * dpi));
    FakeFrame frame;
    frame.parameters = {SANE_FRAME_RGB, SANE_TRUE, 3 * width, width, height, 8};
    frame.bytes.resize(static_cast<std::size_t>(3 * width) * static_cast<std::size_t>(height));
    unsigned int number = 1;
    for (SANE_Byte& byte : frame.bytes) {
        number = number * 1664525U + 1013904223U;
        byte = static_cast<SANE_Byte>(number >> 24U);
    }
    return frame;
}

const FakeFrame& page(int dpi)
{
    static std::map<int, FakeFrame> pages;
    const auto [place, isNew] = pages.try_emplace(dpi);
    if (isNew) {
        place->second = makePage(dpi);
    }
    return place->second;
}

/// A dialog on show with the preview in view.
class PreviewStage : public Stage
{
public:
    explicit PreviewStage(int dpi) : frame(page(dpi))
    {
        dialog().show();
        kestrel::test::reveal(box());
        QApplication::processEvents();
    }

    PreviewBoxUI& box() { return child<PreviewBoxUI>(dialog(), "preview_box"); }

    void preview()
    {
        dialog().on_preview_clicked();
        QApplication::processEvents();
    }

    const FakeFrame& frame;
};

void firstPicture(benchmark::State& state)
{
    PreviewStage stage(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        stage.scanner().clearJournal();
        stage.scanner().addFrame(stage.frame);
        state.ResumeTiming();
        stage.preview();
    }
}

/// The calls that bring the frame, the toolkit's conversion, and the toolkit's smooth scaling of it
/// to the size on the screen.
void barePicture(benchmark::State& state)
{
    PreviewStage stage(static_cast<int>(state.range(0)));
    stage.scanner().addFrame(stage.frame);
    stage.scanner().clearJournal();
    stage.preview();
    BareCalls calls(stage.scanner().journal());
    QImage screen(stage.box().size(), QImage::Format_RGB32);
    for (auto _ : state) {
        state.PauseTiming();
        stage.scanner().clearJournal();
        stage.scanner().addFrame(stage.frame);
        state.ResumeTiming();
        calls.make(stage.scanner().handle());
        const SANE_Parameters& shape = stage.frame.parameters;
        const QImage picture = QImage(stage.frame.bytes.data(), shape.pixels_per_line, shape.lines,
                                      shape.bytes_per_line, QImage::Format_RGB888)
                                   .convertToFormat(QImage::Format_RGB32);
        QPainter(&screen).drawImage(
            0, 0, picture.scaled(screen.size(), Qt::KeepAspectRatio, Qt::SmoothTransformation));
        benchmark::DoNotOptimize(screen.bits());
    }
}

BENCHMARK(firstPicture)->Arg(kCoarse)->Arg(kFine)->Unit(benchmark::kMillisecond);
BENCHMARK(barePicture)->Arg(kCoarse)->Arg(kFine)->Unit(benchmark::kMillisecond);

} // namespace

void addPreviewRows(Table& table)
{
    table.add("first preview picture, 75 dpi", "firstPicture/75",
              against("barePicture/75", 2.0, 5.0));
    table.add("preview picture, 600 dpi", "firstPicture/600", against("barePicture/600", 2.0, 5.0));
    // 64 times the pixels take longer than 64 times the time, because they no longer fit into the
    // processor's caches; that is the same for the toolkit.
    table.add("preview picture, 600 dpi against 75", "firstPicture/600",
              growingLike("firstPicture/75", "barePicture/75", "barePicture/600"));
}

} // namespace kestrel::bench
