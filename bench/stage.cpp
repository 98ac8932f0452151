#include "stage.h"

#include "settings/settings_file.h"
#include "settings/settings_table.h"
#include "settings/template_list.h"
#include "support/models.h"

#include <kestrelsettingui.h>

#include <map>
#include <string>

namespace kestrel::bench {

using kestrel::test::DialogProbe;
using kestrel::test::FakeOption;
using kestrel::test::FakeScanner;
using kestrel::test::TempConfigDir;

namespace {

/// The upper limit of "br-y" follows the source and long-paper scanning.
void followHeight(FakeScanner& scanner)
{
    const kestrel::test::ScannerModel model;
    const bool flatbed = scanner.option("source").decoded() == "Flatbed";
    const bool longPaper = scanner.option("long-paper-scan").decoded() == "1";
    scanner.option("br-y").limits(0.0, flatbed     ? model.flatbedHeight
                                       : longPaper ? model.longHeight
                                                   : model.feederHeight);
}

/// What a first binding writes.
QByteArray firstFile()
{
    TempConfigDir folder;
    FakeScanner scanner = scannerWith(0);
    DialogProbe dialog;
    bind(dialog, scanner, folder);
    closeSettings(dialog);
    return folder.read(settingsFileName());
}

QByteArray fileWithTemplates(int templates)
{
    const TempConfigDir folder;
    folder.write(settingsFileName(), settingsFile(0));
    QStringList names(QStringLiteral("自订"));
    QSettings file(folder.file(settingsFileName()), QSettings::IniFormat);
    for (int number = 1; number <= templates; ++number) {
        names.append(templateName(number));
        for (const Setting& setting : settingsTable()) {
            if (setting.inWorkingGroup()) {
                const QString key = QLatin1Char('/') + QString::fromLatin1(setting.key);
                file.setValue(names.last() + key, file.value(scannerName() + key));
            }
        }
    }
    file.setValue(QStringLiteral("UserTemplates/usertemplate"), joinTemplateList(names));
    file.sync();
    return folder.read(settingsFileName());
}

} // namespace

FakeScanner scannerWith(int unknownBehindEach)
{
    FakeScanner known = kestrel::test::fullScanner();
    FakeScanner scanner;
    int unknown = 0;
    for (const std::string& name : known.names()) {
        if (name.empty()) { // a heading
            scanner.add(FakeOption::group("Options"));
        } else {
            scanner.add(known.option(name));
        }
        for (int i = 0; i < unknownBehindEach; ++i) {
            scanner.add(FakeOption::integer("vendor-option-" + std::to_string(++unknown), i));
        }
    }
    scanner.onSet("source", followHeight);
    scanner.onSet("long-paper-scan", followHeight);
    return scanner;
}

const QByteArray& settingsFile(int templates)
{
    static std::map<int, QByteArray> files;
    QByteArray& file = files[templates];
    if (file.isEmpty()) {
        file = templates == 0 ? firstFile() : fileWithTemplates(templates);
    }
    return file;
}

QString templateName(int number)
{
    return QStringLiteral("模板 %1").arg(number);
}

void bind(DialogProbe& dialog, FakeScanner& scanner, const TempConfigDir& folder)
{
    ScannerIdentity record = kestrel::test::identity();
    initKestrelSetUI(dialog.host(), scanner.handle(), &record, folder.path());
}

Stage::Stage(int templates, int unknownBehindEach) : m_scanner(scannerWith(unknownBehindEach))
{
    m_folder.write(settingsFileName(), settingsFile(templates));
    bind(m_dialog, m_scanner, m_folder);
    m_scanner.clearJournal();
}

Stage::~Stage()
{
    closeSettings(m_dialog);
}

void closeSettings(DialogProbe& dialog)
{
    const SettingsHandle closing(dialog.settings);
    dialog.settings = nullptr;
}

} // namespace kestrel::bench
