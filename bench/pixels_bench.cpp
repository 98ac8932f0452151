// The preview's pixel work on an A4 page at 300 dpi in colour, and a step of a drag.
#include "jobs.h"

#include "rules/pixels.h"
#include "rules/tone.h"
#include "widgets/picturebox.h"

#include <QApplication>
#include <QMouseEvent>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

namespace kestrel::bench {

namespace {

constexpr int kCoarseHeight = 877; // A4 at 75 dpi
constexpr int kFineHeight = 7016;  // at 600 dpi
constexpr int kWidth = 2480;
constexpr int kHeight = 3508;
constexpr std::size_t kPixels = std::size_t{kWidth} * kHeight;

struct Free
{
    void operator()(unsigned char* memory) const { std::free(memory); }
};
using Bytes = std::unique_ptr<unsigned char, Free>;

/// A page full of bytes that no table or branch predictor knows by heart.
const std::vector<unsigned char>& page()
{
    static const std::vector<unsigned char> bytes = [] {
        std::vector<unsigned char> made(kPixels * 4);
        unsigned int state = 1;
        for (unsigned char& byte : made) {
            state = state * 1664525U + 1013904223U;
            byte = static_cast<unsigned char>(state >> 24U);
        }
        return made;
    }();
    return bytes;
}

void copyOfSameSize(benchmark::State& state)
{
    for (auto _ : state) {
        const Bytes copy(static_cast<unsigned char*>(std::malloc(kPixels * 4)));
        std::memcpy(copy.get(), page().data(), kPixels * 4);
        benchmark::DoNotOptimize(copy.get());
        benchmark::ClobberMemory();
    }
}

void rgb24To32(benchmark::State& state)
{
    for (auto _ : state) {
        const Bytes converted(kestrel::rgb24To32(page().data(), kWidth, kHeight));
        benchmark::DoNotOptimize(converted.get());
        benchmark::ClobberMemory();
    }
}

void rgb24To32OfToolkit(benchmark::State& state)
{
    const QImage picture(page().data(), kWidth, kHeight, kWidth * 3, QImage::Format_RGB888);
    for (auto _ : state) {
        const QImage converted = picture.convertToFormat(QImage::Format_RGB32);
        benchmark::DoNotOptimize(converted.constBits());
        benchmark::ClobberMemory();
    }
}

void tone(benchmark::State& state)
{
    const auto* from = reinterpret_cast<const std::uint32_t*>(page().data());
    for (auto _ : state) {
        const Bytes toned(static_cast<unsigned char*>(std::malloc(kPixels * 4)));
        kestrel::applyTone(kestrel::toneTable(20, 30), from,
                           reinterpret_cast<std::uint32_t*>(toned.get()), kPixels);
        benchmark::DoNotOptimize(toned.get());
        benchmark::ClobberMemory();
    }
}

/// One mouse move to one painted frame, on a source image of so many pixels.
void dragStep(benchmark::State& state)
{
    const int height = static_cast<int>(state.range(0));
    QImage picture(height * kWidth / kHeight, height, QImage::Format_RGB32);
    picture.fill(Qt::lightGray);
    PreviewBoxUI box;
    box.resize(371, 561);
    box.setMaxHeightAndStandrad(356, 30);
    box.setImage(picture);
    box.setRect(10, 10, 100, 100);
    box.show();
    QApplication::processEvents();
    QImage screen(box.size(), QImage::Format_RGB32);
    const auto send = [&box](QEvent::Type type, const QPointF& at) {
        QMouseEvent event(type, at, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&box, &event);
    };
    send(QEvent::MouseButtonPress, {100, 100});
    int step = 0;
    for (auto _ : state) {
        step = (step + 1) % 100;
        send(QEvent::MouseMove, {100.0 + step, 100.0 + step});
        box.render(&screen, {}, {}, {});
    }
}

BENCHMARK(copyOfSameSize)->Unit(benchmark::kMillisecond);
BENCHMARK(rgb24To32)->Unit(benchmark::kMillisecond);
BENCHMARK(rgb24To32OfToolkit)->Unit(benchmark::kMillisecond);
BENCHMARK(tone)->Unit(benchmark::kMillisecond);
BENCHMARK(dragStep)->Arg(kCoarseHeight)->Arg(kFineHeight)->Unit(benchmark::kMillisecond);

} // namespace

void addPixelsRows(Table& table)
{
    table.add("RGB24TO32, A4 at 300 dpi", "rgb24To32", against("copyOfSameSize", 1.5));
    table.add("RGB24TO32 against the toolkit's conversion", "rgb24To32",
              against("rgb24To32OfToolkit", 1.0));
    table.add("brightness and contrast, A4 at 300 dpi", "tone", against("copyOfSameSize", 3.0));
    table.add("drag step, image of 75 dpi", "dragStep/877", atMost(2.0));
    table.add("drag step, image of 600 dpi", "dragStep/7016", atMost(2.0));
    // The same, but for what a busy machine adds to times that short.
    table.add("drag step, 600 dpi against 75", "dragStep/7016", against("dragStep/877", 1.25));
}

} // namespace kestrel::bench
