// Prints how long what users wait for takes, each row beside its limit or rival, and fails where
// one clearly misses it.
#include "jobs.h"

#include <QApplication>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

namespace {

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

    // Repetitions of all jobs take turns, so that a busy moment of the machine meets more than one.
    char interleaved[] = "--benchmark_enable_random_interleaving=true";
    char repetitions[] = "--benchmark_repetitions=9";
    char shortRuns[] = "--benchmark_min_time=0.05";
    char* arguments[] = {argv[0], interleaved, repetitions, shortRuns};
    int count = 4;
    benchmark::Initialize(&count, arguments);

    kestrel::bench::Table table;
    kestrel::bench::addDialogRows(table);
    kestrel::bench::addSettingsRows(table);
    kestrel::bench::addTemplatesRows(table);
    kestrel::bench::addPreviewRows(table);
    kestrel::bench::addPixelsRows(table);
    benchmark::RunSpecifiedBenchmarks(&table);
    return table.print() ? EXIT_SUCCESS : EXIT_FAILURE;
}
