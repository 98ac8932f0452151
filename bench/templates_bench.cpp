// Many templates: starting, the manager, picking and removing.
#include "jobs.h"
#include "stage.h"

#include "dialogs/edittemplate.h"
#include "settings/settings_table.h"
#include "settings/template_list.h"
#include "support/user.h"

#include <QApplication>
#include <QComboBox>

namespace kestrel::bench {

using kestrel::test::child;
using kestrel::test::DialogProbe;
using kestrel::test::FakeScanner;
using kestrel::test::TempConfigDir;

namespace {

constexpr int kSome = 100;
constexpr int kMany = 1000;

QComboBox& templatesOf(const QWidget& window)
{
    return child<QComboBox>(window, "usertemplate");
}

void bindWithTemplates(benchmark::State& state)
{
    const int templates = static_cast<int>(state.range(0));
    FakeScanner scanner = scannerWith(0);
    for (auto _ : state) {
        state.PauseTiming();
        {
            // A dialog of its own for each binding: the templates of the last one take time to go.
            DialogProbe dialog;
            const TempConfigDir folder;
            folder.write(settingsFileName(), settingsFile(templates));
            scanner.clearJournal();
            state.ResumeTiming();
            bind(dialog, scanner, folder);
            state.PauseTiming();
            if (templatesOf(dialog).count() != templates + 1) {
                state.SkipWithError("the templates are not there");
            }
            closeSettings(dialog);
        }
        state.ResumeTiming();
    }
}

/// Until the manager's first frame has been painted.
void openManager(benchmark::State& state)
{
    Stage stage(static_cast<int>(state.range(0)));
    EditTemplate& manager = *stage.dialog().edit_template;
    for (auto _ : state) {
        manager.show();
        QApplication::processEvents();
        state.PauseTiming();
        manager.hide();
        QApplication::processEvents();
        state.ResumeTiming();
    }
}

/// Another template in the dialog, which loads it.
void pickTemplate(benchmark::State& state)
{
    Stage stage(static_cast<int>(state.range(0)));
    QComboBox& templates = templatesOf(stage.dialog());
    int round = 0;
    for (auto _ : state) {
        templates.setCurrentIndex(1 + ++round % (templates.count() - 1));
    }
}

void removeTemplate(benchmark::State& state)
{
    const int last = static_cast<int>(state.range(0));
    Stage stage(last);
    EditTemplate& manager = *stage.dialog().edit_template;
    for (auto _ : state) {
        state.PauseTiming();
        templatesOf(manager).setCurrentIndex(templatesOf(manager).count() - 1);
        state.ResumeTiming();
        manager.on_template_remove_clicked();
    }
    if (stage.folder()
            .read(settingsFileName())
            .contains("%20" + QByteArray::number(last) + "]\n")) {
        state.SkipWithError("the template is still in the file");
    }
}

/// The toolkit removing the same keys and listing the others.
void bareRemoving(benchmark::State& state)
{
    int number = static_cast<int>(state.range(0));
    const TempConfigDir folder;
    folder.write(settingsFileName(), settingsFile(number));
    QSettings settings(folder.file(settingsFileName()), QSettings::IniFormat);
    const QString listKey = QStringLiteral("UserTemplates/usertemplate");
    QStringList names = splitTemplateList(settings.value(listKey).toString());
    for (auto _ : state) {
        settings.beginGroup(templateName(number--));
        for (const Setting& setting : settingsTable()) {
            settings.remove(QString::fromLatin1(setting.key));
        }
        settings.endGroup();
        names.removeLast();
        settings.setValue(listKey, joinTemplateList(names));
        settings.setValue(QStringLiteral("UserTemplates/usertemplate_index"), QStringLiteral("0"));
        settings.sync();
    }
}

// So many rounds as there are templates to remove, at most.
constexpr int kRounds = 3;

BENCHMARK(bindWithTemplates)
    ->Arg(0)
    ->Arg(kSome)
    ->Arg(kMany)
    ->Iterations(kRounds)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(openManager)->Arg(0)->Arg(kMany)->Unit(benchmark::kMillisecond);
BENCHMARK(pickTemplate)->Arg(kSome)->Arg(kMany)->Unit(benchmark::kMillisecond);
BENCHMARK(removeTemplate)
    ->Arg(kSome)
    ->Arg(kMany)
    ->Iterations(kRounds)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(bareRemoving)->Arg(kSome)->Arg(kMany)->Iterations(kRounds)->Unit(benchmark::kMillisecond);

} // namespace

void addTemplatesRows(Table& table)
{
    constexpr double kGrowth = double{kMany} / kSome;
    table.add("first binding, no templates", "bindWithTemplates/0",
              against("bareBinding/0", 1.25, 5.0));
    table.add("first binding, 1,000 templates against none", "bindWithTemplates/1000",
              against("bindWithTemplates/0", 1.0, 60.0));
    table.add("first binding, 1,000 templates against 100", "bindWithTemplates/1000",
              against("bindWithTemplates/100", kGrowth));
    table.add("opening the manager, no templates", "openManager/0", atMost(60.0));
    table.add("opening the manager, 1,000 against none", "openManager/1000",
              against("openManager/0", 1.25, 5.0));
    table.add("picking a template, 100", "pickTemplate/100", against("bareLoading/0", 1.25, 5.0));
    table.add("picking a template, 1,000 against 100", "pickTemplate/1000",
              against("pickTemplate/100", kGrowth));
    table.add("removing a template, 100", "removeTemplate/100",
              against("bareRemoving/100", 1.25, 5.0));
    table.add("removing a template, 1,000", "removeTemplate/1000",
              against("bareRemoving/1000", 1.25, 5.0));
    table.add("removing a template, 1,000 against 100", "removeTemplate/1000",
              against("removeTemplate/100", kTenfoldKeys));
}

} // namespace kestrel::bench
