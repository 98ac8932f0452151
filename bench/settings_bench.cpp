// The settings file, against the toolkit doing the same keys in a plain loop.
#include "jobs.h"
#include "stage.h"

#include "settings/settings_file.h"
#include "settings/settings_table.h"

#include <QScrollBar>

#include <memory>

namespace kestrel::bench {

using kestrel::test::TempConfigDir;

namespace {

constexpr int kSome = 100;
constexpr int kMany = 1000;

QString brightness(std::int64_t round)
{
    return QString::number(round % 100);
}

/// Reads the keys of one group.
/// @return characters, so that nothing is optimised away
int readGroup(QSettings& settings)
{
    int characters = 0;
    settings.beginGroup(scannerName());
    for (const Setting& setting : settingsTable()) {
        if (setting.inWorkingGroup()) {
            characters += settings.value(QString::fromLatin1(setting.key)).toString().size();
        }
    }
    settings.endGroup();
    return characters;
}

/// A folder whose file this process has not read yet.
std::unique_ptr<TempConfigDir> freshFolder(int templates)
{
    auto folder = std::make_unique<TempConfigDir>();
    folder->write(settingsFileName(), settingsFile(templates));
    return folder;
}

/// Opens a file and reads one group.
template <typename Open>
void openAndRead(benchmark::State& state, const Open& open)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto folder = freshFolder(static_cast<int>(state.range(0)));
        const QString path = folder->file(settingsFileName());
        state.ResumeTiming();
        auto settings = open(path);
        benchmark::DoNotOptimize(readGroup(*settings));
        state.PauseTiming();
        settings.reset();
        folder.reset();
        state.ResumeTiming();
    }
}

void openConfiguration(benchmark::State& state)
{
    openAndRead(state, [](const QString& path) { return openSettings(path); });
}

void bareOpening(benchmark::State& state)
{
    openAndRead(state, [](const QString& path) {
        return std::make_unique<QSettings>(path, QSettings::IniFormat);
    });
}

void loadConfiguration(benchmark::State& state)
{
    Stage stage(static_cast<int>(state.range(0)));
    std::int64_t round = 0;
    for (auto _ : state) {
        state.PauseTiming();
        stage.dialog().settings->setValue(scannerName() + QStringLiteral("/brightness"),
                                          brightness(++round));
        state.ResumeTiming();
        stage.dialog().loadConfig(scannerName());
    }
}

void bareLoading(benchmark::State& state)
{
    const auto folder = freshFolder(static_cast<int>(state.range(0)));
    QSettings settings(folder->file(settingsFileName()), QSettings::IniFormat);
    for (auto _ : state) {
        benchmark::DoNotOptimize(readGroup(settings));
    }
}

/// One control has changed since the last save.
void saveConfiguration(benchmark::State& state)
{
    Stage stage(static_cast<int>(state.range(0)));
    auto* const control = stage.dialog().findChild<QScrollBar*>(QStringLiteral("brightness_set"));
    int round = 0;
    for (auto _ : state) {
        state.PauseTiming();
        control->setValue(++round % 100);
        state.ResumeTiming();
        stage.dialog().writeConfig(scannerName());
    }
    if (!stage.folder()
             .read(settingsFileName())
             .contains("\nbrightness=" + QByteArray::number(round % 100) + "\n")) {
        state.SkipWithError("the file does not hold what was saved");
    }
}

/// What a plain program does for a save.
void saveBarely(QSettings& settings, const QString& value)
{
    settings.beginGroup(scannerName());
    for (const Setting& setting : settingsTable()) {
        if (setting.inWorkingGroup()) {
            settings.setValue(QString::fromLatin1(setting.key), value);
        }
    }
    settings.endGroup();
    settings.sync();
}

void bareSaving(benchmark::State& state)
{
    const auto folder = freshFolder(static_cast<int>(state.range(0)));
    QSettings settings(folder->file(settingsFileName()), QSettings::IniFormat);
    std::int64_t round = 0;
    for (auto _ : state) {
        saveBarely(settings, brightness(++round));
    }
}

BENCHMARK(openConfiguration)->Arg(0)->Arg(kMany)->Unit(benchmark::kMillisecond);
BENCHMARK(bareOpening)->Arg(0)->Arg(kMany)->Unit(benchmark::kMillisecond);
BENCHMARK(loadConfiguration)->Arg(0)->Arg(kMany)->Unit(benchmark::kMillisecond);
BENCHMARK(bareLoading)->Arg(0)->Arg(kMany)->Unit(benchmark::kMillisecond);
BENCHMARK(saveConfiguration)->Arg(0)->Arg(kSome)->Arg(kMany)->Unit(benchmark::kMillisecond);
BENCHMARK(bareSaving)->Arg(0)->Arg(kSome)->Arg(kMany)->Unit(benchmark::kMillisecond);

} // namespace

void addSettingsRows(Table& table)
{
    const auto addRow = [&table](const char* title, const std::string& job, const char* rival) {
        table.add(title, job, against(rival, 1.25, 5.0));
    };
    addRow("opening the file and reading a group", "openConfiguration/0", "bareOpening/0");
    addRow("opening, 1,000 templates", "openConfiguration/1000", "bareOpening/1000");
    addRow("loading the configuration", "loadConfiguration/0", "bareLoading/0");
    addRow("loading, 1,000 templates", "loadConfiguration/1000", "bareLoading/1000");
    addRow("saving the configuration", "saveConfiguration/0", "bareSaving/0");
    addRow("saving, 100 templates", "saveConfiguration/100", "bareSaving/100");
    addRow("saving, 1,000 templates", "saveConfiguration/1000", "bareSaving/1000");
    table.add("saving, 1,000 templates against 100", "saveConfiguration/1000",
              against("saveConfiguration/100", kTenfoldKeys));
}

} // namespace kestrel::bench
