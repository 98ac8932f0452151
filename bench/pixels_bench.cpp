// Speed of the preview's pixel work on an A4 page at 300 dpi in colour. Each job runs beside what
// it is measured against; after the run the program compares the two and fails where a job is too
// slow.
#include "rules/pixels.h"
#include "rules/tone.h"
#include "widgets/picturebox.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QMouseEvent>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

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
BENCHMARK(dragStep)->Arg(876)->Arg(kHeight)->Unit(benchmark::kMillisecond);

/// Keeps the best time of each job: the one with the least of the machine's other business in it.
class BestTimes : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration || run.error_occurred) {
                continue;
            }
            const double milliseconds = run.GetAdjustedRealTime();
            const auto [place, first] = m_best.try_emplace(run.run_name.str(), milliseconds);
            if (!first) {
                place->second = std::min(place->second, milliseconds);
            }
        }
    }

    /// @return whether @p job took at most @p factor times as long as @p reference
    bool atMost(const std::string& job, double factor, const char* reference) const
    {
        return within(job, factor * m_best.at(reference), reference);
    }

    /// @param limit milliseconds
    /// @param meaning where the limit comes from
    bool within(const std::string& job, double limit, const char* meaning) const
    {
        const double took = m_best.at(job);
        const bool good = took <= limit;
        std::printf("%-20s %8.3f ms, limit %8.3f ms (%s): %s\n", job.c_str(), took, limit, meaning,
                    good ? "ok" : "TOO SLOW");
        return good;
    }

private:
    std::map<std::string, double> m_best;
};

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    // Runs of all jobs take turns, so that a busy moment of the machine meets more than one of
    // them.
    char name[] = "pixels_bench";
    char interleaved[] = "--benchmark_enable_random_interleaving=true";
    char repetitions[] = "--benchmark_repetitions=9";
    char shortRuns[] = "--benchmark_min_time=0.1";
    char* arguments[] = {name, interleaved, repetitions, shortRuns};
    int count = 4;
    benchmark::Initialize(&count, arguments);
    BestTimes times;
    benchmark::RunSpecifiedBenchmarks(&times);
    bool good = times.atMost("rgb24To32", 1.5, "copyOfSameSize");
    good = times.atMost("rgb24To32", 1.0, "rgb24To32OfToolkit") && good;
    good = times.atMost("tone", 3.0, "copyOfSameSize") && good;
    good = times.within("dragStep/3508", 2.0, "of a frame") && good;
    // The same, but for what a busy machine adds to times that short.
    good = times.atMost("dragStep/3508", 1.5, "dragStep/876") && good;
    return good ? EXIT_SUCCESS : EXIT_FAILURE;
}
