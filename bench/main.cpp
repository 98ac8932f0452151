// Prints how long what users wait for takes, each row beside its limit or rival, and fails where
// one clearly misses it. Takes the options of the benchmark library, --benchmark_filter for
// instance, for a look at a few jobs; the rows of the others are then missing.
#include "jobs.h"

#include <QApplication>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

constexpr int kRounds = 9;

/// What the library tells developers is not written while the clock runs; warnings are, but for
/// what the offscreen platform says about every window.
void printWarnings(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text)
{
    const bool isOfPlatform = text.startsWith(QLatin1String("This plugin does not support"));
    if (type != QtDebugMsg && type != QtInfoMsg && !isOfPlatform) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(text));
    }
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QTemporaryDir runtime;
    qputenv("XDG_RUNTIME_DIR", runtime.path().toLocal8Bit());
    qInstallMessageHandler(printWarnings);
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);

    char shortRuns[] = "--benchmark_min_time=0.05";
    std::vector<char*> arguments(argv, argv + argc);
    arguments.insert(arguments.begin() + 1, shortRuns);
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());

    kestrel::bench::Table table;
    kestrel::bench::addDialogRows(table);
    kestrel::bench::addSettingsRows(table);
    kestrel::bench::addTemplatesRows(table);
    kestrel::bench::addPreviewRows(table);
    kestrel::bench::addPixelsRows(table);
    // A job and its rival are a few seconds apart in each round: what slows the machine down for
    // longer meets both.
    for (int round = 0; round < kRounds; ++round) {
        benchmark::RunSpecifiedBenchmarks(&table);
    }
    return table.print() ? EXIT_SUCCESS : EXIT_FAILURE;
}
