// The dialog as a host sees it: made, shown, bound, asked to apply its settings.
#include "bare_calls.h"
#include "jobs.h"
#include "stage.h"

#include <QApplication>

namespace kestrel::bench {

using kestrel::test::DialogProbe;
using kestrel::test::FakeScanner;
using kestrel::test::Journal;
using kestrel::test::TempConfigDir;

namespace {

void createDialog(benchmark::State& state)
{
    for (auto _ : state) {
        auto dialog = std::make_unique<DialogProbe>();
        benchmark::DoNotOptimize(dialog.get());
        state.PauseTiming();
        dialog.reset();
        state.ResumeTiming();
    }
}

/// Until the first frame has been painted.
void createAndShowDialog(benchmark::State& state)
{
    for (auto _ : state) {
        auto dialog = std::make_unique<DialogProbe>();
        dialog->show();
        QApplication::processEvents();
        state.PauseTiming();
        dialog.reset();
        state.ResumeTiming();
    }
}

/// A binding in a program that has not read the file yet.
/// @param known whether there is a file: nothing, or as after the last program's end
void bindDialog(benchmark::State& state, bool known)
{
    FakeScanner scanner = scannerWith(static_cast<int>(state.range(0)));
    DialogProbe dialog;
    for (auto _ : state) {
        state.PauseTiming();
        scanner.clearJournal();
        {
            const TempConfigDir folder;
            if (known) {
                folder.write(settingsFileName(), settingsFile(0));
            }
            state.ResumeTiming();
            bind(dialog, scanner, folder);
            state.PauseTiming();
            closeSettings(dialog);
        }
        state.ResumeTiming();
    }
}

void bindFirstTime(benchmark::State& state)
{
    bindDialog(state, false);
}

void bindAgain(benchmark::State& state)
{
    bindDialog(state, true);
}

/// Repeats what a journal holds.
void repeatCalls(benchmark::State& state, FakeScanner& scanner, const Journal& journal)
{
    BareCalls calls(journal);
    if (calls.count() == 0) {
        state.SkipWithError("nothing was asked of the scanner");
    }
    for (auto _ : state) {
        state.PauseTiming();
        scanner.clearJournal();
        state.ResumeTiming();
        calls.make(scanner.handle());
    }
}

void bareBinding(benchmark::State& state)
{
    FakeScanner scanner = scannerWith(static_cast<int>(state.range(0)));
    const TempConfigDir folder;
    folder.write(settingsFileName(), settingsFile(0));
    DialogProbe dialog;
    bind(dialog, scanner, folder);
    closeSettings(dialog);
    repeatCalls(state, scanner, scanner.journal());
}

void applySettings(benchmark::State& state)
{
    Stage stage(0, static_cast<int>(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        stage.scanner().clearJournal();
        state.ResumeTiming();
        stage.dialog().setAllParam();
    }
}

void bareApplying(benchmark::State& state)
{
    Stage stage(0, static_cast<int>(state.range(0)));
    stage.dialog().setAllParam();
    repeatCalls(state, stage.scanner(), stage.scanner().journal());
}

BENCHMARK(createDialog)->Unit(benchmark::kMillisecond);
BENCHMARK(createAndShowDialog)->Unit(benchmark::kMillisecond);
BENCHMARK(bindFirstTime)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(bindAgain)->Arg(0)->Arg(kTenfold)->Unit(benchmark::kMillisecond);
BENCHMARK(bareBinding)->Arg(0)->Arg(kTenfold)->Unit(benchmark::kMillisecond);
BENCHMARK(applySettings)->Arg(0)->Arg(kTenfold)->Unit(benchmark::kMillisecond);
BENCHMARK(bareApplying)->Arg(0)->Arg(kTenfold)->Unit(benchmark::kMillisecond);

} // namespace

void addDialogRows(Table& table)
{
    constexpr double kGrowth = kTenfold + 1;
    table.add("creating the dialog", "createDialog", atMost(60.0));
    table.add("creating and showing the dialog", "createAndShowDialog", atMost(60.0));
    table.add("binding, no settings file yet", "bindFirstTime/0",
              against("bareBinding/0", 1.25, 5.0));
    table.add("binding", "bindAgain/0", against("bareBinding/0", 1.25, 5.0));
    table.add("binding, 750 options", "bindAgain/9", against("bareBinding/9", 1.25, 5.0));
    table.add("binding, 750 options against 75", "bindAgain/9", against("bindAgain/0", kGrowth));
    table.add("applying all settings", "applySettings/0", against("bareApplying/0", 1.25, 5.0));
    table.add("applying, 750 options", "applySettings/9", against("bareApplying/9", 1.25, 5.0));
    table.add("applying, 750 options against 75", "applySettings/9",
              against("applySettings/0", kGrowth));
}

} // namespace kestrel::bench
