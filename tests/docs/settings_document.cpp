#include "docs/settings_document.h"

#include "docs/settings_notes.h"
#include "rules/paper_size.h"
#include "settings/settings_table.h"
#include "support/dialog_probe.h"
#include "support/host.h"
#include "support/models.h"
#include "support/user.h"

#include <QComboBox>
#include <QSettings>
#include <QTabWidget>
#include <QVariant>

#include <algorithm>
#include <memory>
#include <set>

namespace kestrel::test {

namespace {

constexpr const char* introduction = R"(# Settings

Made by the program `settings_doc` from the tables of the library and the form of the dialog; a test
compares. To write it anew:
`cmake --preset release && cmake --build build/release --target settings_doc_update`.

Each setting has a control in the dialog, a key in the settings file and, mostly, a SANE option that
carries it to the scanner. A control can be found by its object name. The file holds texts: the index of
a list, 1 or 0, a number, or `Enable` or `Disable`. Numbers have a point and at most six digits. In the
tables an arrow leads from an entry of a list to the value that the scanner gets.

At the first binding of a scanner each setting is what the scanner says, or else what the dialog shows:
in a new dialog what its form has, in one that was bound before what that scanner left. From then on it is
what was confirmed last. An option that the scanner lacks, or refuses, is passed over without a word.
)";

constexpr const char* files = R"(
## Groups of the file

For a scanner named ScannerA the file is `ScannerA.ini`.

| Group | Holds | Written |
| --- | --- | --- |
| `ScannerA` | the settings, shown as 自订 | at the first binding, and with OK |
| `ScannerAdefault` | the defaults, for the button 默认设置 | at the first binding |
| the name of a template | its settings | when it is added, and with OK while it is chosen |
| `UserTemplates` | `usertemplate`: the names with `;` between them, `自订` first; `usertemplate_index`: the entry that was confirmed last; `preset_template_num`: how many entries at the front can't be removed | at the first binding, by the template manager, and with OK |
| `ScannerAconfig_version` | `config_version`, 102; `defaults_in_doubt` as long as the scanner has told only a part of the defaults | at the first binding, and with an OK of the working settings where it is missing |

With another version than 102, defaults and settings are written anew from the scanner; templates stay.
)";

/// The dialog, bound to a scanner that has everything.
class Bound
{
public:
    Bound()
    {
        ScannerIdentity record = identity();
        initKestrelSetUI(m_dialog.host(), m_scanner.handle(), &record, m_dir.path());
        m_settings.reset(m_dialog.settings);
        m_binding = m_scanner.journal();
        m_scanner.takeTexts();
        m_scanner.clearJournal();
        m_dialog.setParamForPreview();
        m_preview = m_scanner.journal();
    }

    const DialogProbe& dialog() const { return m_dialog; }
    const Journal& binding() const { return m_binding; }
    const Journal& preview() const { return m_preview; }

private:
    TempConfigDir m_dir;
    FakeScanner m_scanner = fullScanner();
    // The dialog leaves its settings object behind; it goes after the dialog and before the folder.
    std::unique_ptr<QSettings> m_settings;
    DialogProbe m_dialog;
    Journal m_binding;
    Journal m_preview;
};

QString code(const QString& text)
{
    return QStringLiteral("`%1`").arg(text);
}

QString code(const char* text)
{
    return code(QString::fromUtf8(text));
}

QString codes(const Note::Texts& texts)
{
    QStringList list;
    for (const char* const text : texts) {
        list.append(code(text));
    }
    return list.isEmpty() ? QStringLiteral("–") : list.join(QStringLiteral("<br>"));
}

/// What the widget says, without the spaces and the colon that make it stand well.
QString captionText(const QObject& dialog, const char* name)
{
    QString text = child<QWidget>(dialog, name).property("text").toString();
    text.remove(QLatin1Char(' ')).remove(QChar(0x3000)).remove(QChar(0xff1a));
    return text;
}

QString entriesText(const QComboBox& list, const Note& note)
{
    QStringList entries;
    for (const char* const entry : note.entries) {
        entries.append(QString::fromUtf8(entry));
    }
    if (entries.isEmpty()) {
        entries = items(list);
    }
    QStringList lines;
    for (int i = 0; i < entries.size(); ++i) {
        const bool named = i < static_cast<int>(note.values.size());
        lines.append(
            QStringLiteral("%1: %2").arg(i).arg(entries.at(i)) +
            (named ? QStringLiteral(" → ") + code(note.values.at(static_cast<std::size_t>(i)))
                   : QString()));
    }
    return lines.join(QStringLiteral("<br>"));
}

QString numberText(const QWidget& control, const Note& note, bool whole)
{
    QString text = QLatin1String(note.unit);
    if (note.limits != nullptr) {
        text += QStringLiteral(" within the limits of ") + code(note.limits);
    } else if (whole) {
        text = QStringLiteral("%1 to %2 ")
                   .arg(control.property("minimum").toInt())
                   .arg(control.property("maximum").toInt()) +
               text;
    }
    return text.trimmed();
}

QString contentText(const DialogProbe& dialog, const Setting& setting, const Note& note)
{
    switch (setting.encoding) {
    case Encoding::Mask:
        return QStringLiteral("1 to 255");
    case Encoding::CustomResolution:
        return QStringLiteral("text");
    case Encoding::EnableWord:
        return QStringLiteral("`Enable` or `Disable`");
    case Encoding::Bool:
    case Encoding::Orientation:
    case Encoding::Centering:
    case Encoding::BookRotation:
        return QStringLiteral("1 or 0");
    case Encoding::Index:
        if (std::string(setting.key) == "scanrange_setting") {
            return QStringLiteral("index, see Paper sizes below");
        }
        return entriesText(child<QComboBox>(dialog, setting.control), note);
    case Encoding::Real:
    case Encoding::SingleReal:
        return numberText(child<QWidget>(dialog, setting.control), note, false);
    case Encoding::Integer:
    case Encoding::Gamma:
    case Encoding::TruncatedReal:
        break;
    }
    return numberText(child<QWidget>(dialog, setting.control), note, true);
}

QString keyText(const Setting& setting)
{
    QString text = code(setting.key);
    if (!setting.inWorkingGroup()) {
        text += QStringLiteral(", defaults only");
    } else if (!setting.inDefaultGroup()) {
        text += QStringLiteral(", not in the defaults");
    }
    if (setting.defaultText != nullptr) {
        text += QStringLiteral(", %1 in the defaults").arg(QLatin1String(setting.defaultText));
    }
    return text;
}

QString nameText(const QObject& dialog, const Note& note)
{
    const QString meaning = QString::fromUtf8(note.meaning);
    return *note.caption == '\0'
               ? meaning
               : captionText(dialog, note.caption) + QStringLiteral("<br>") + meaning;
}

/// The tabs with their settings, each in the order of the file.
QString tabsText(const DialogProbe& pristine)
{
    const auto& tabs = child<QTabWidget>(pristine, "tabWidget");
    QString text;
    for (int tab = 0; tab < tabs.count(); ++tab) {
        QString rows;
        QString rules;
        for (const Setting& setting : settingsTable()) {
            // The side mode has no control; its boxes are on the tab of the images.
            const char* const control =
                setting.control != nullptr ? setting.control : "front_color";
            if (!tabs.widget(tab)->isAncestorOf(&child<QWidget>(pristine, control))) {
                continue;
            }
            const Note& note = noteOn(setting.key);
            rows += QStringLiteral("| %1 | %2 | %3 | %4 | %5 |\n")
                        .arg(nameText(pristine, note),
                             setting.control != nullptr ? code(setting.control)
                                                        : QStringLiteral("eight boxes"),
                             keyText(setting), contentText(pristine, setting, note),
                             codes(note.options));
            for (const std::string& rule : note.rules) {
                rules += QStringLiteral("- %1: %2\n")
                             .arg(code(setting.key), QString::fromStdString(rule));
            }
        }
        if (rows.isEmpty()) {
            continue;
        }
        text +=
            QStringLiteral("\n## %1\n\n| Setting | Control | Key | In the file | SANE option |\n"
                           "| --- | --- | --- | --- | --- |\n%2")
                .arg(tabs.tabText(tab), rows);
        if (!rules.isEmpty()) {
            text += QLatin1Char('\n') + rules;
        }
    }
    return text;
}

QString paperText()
{
    QString text =
        QStringLiteral("\n## Paper sizes\n\n| Entry | Width × height, mm | In the list |\n"
                       "| --- | --- | --- |\n");
    for (const PaperSize& size : scanarea) {
        const bool sized = size.shortMm > 0;
        const QString extent =
            sized ? QStringLiteral("%1 × %2").arg(size.shortMm).arg(size.longMm)
                  : (size.area == ScanArea::Maximum ? QStringLiteral("all of the scanner's")
                                                    : QStringLiteral("as it is"));
        text += QStringLiteral("| %1 | %2 | %3 |\n")
                    .arg(QString::fromUtf8(size.text), extent,
                         size.needsRoom ? QStringLiteral("where the scanner's area is larger")
                                        : QStringLiteral("always"));
    }
    return text + QStringLiteral("\nThe two US entries give the sizes that stand here, whatever "
                                 "their texts say.\n");
}

QString unstoredText(const DialogProbe& pristine)
{
    QString text = QStringLiteral("\n## Sent without being stored\n\n| Control | SANE option |\n"
                                  "| --- | --- |\n");
    for (const Note& note : unstoredNotes()) {
        QString name = QLatin1String(note.key);
        name = name.mid(1, name.size() - 2);
        text += QStringLiteral("| %1<br>%2 | %3 |\n")
                    .arg(nameText(pristine, note), code(name), codes(note.options));
    }
    return text +
           QStringLiteral("\nThe preview's area takes the place of the paper's once the user has "
                          "drawn one and confirmed it.\nIt is forgotten when the dialog is shown "
                          "again.\n");
}

QString listText(const std::vector<std::string>& entries)
{
    QStringList list;
    for (const std::string& entry : entries) {
        list.append(code(QString::fromStdString(entry)));
    }
    return list.join(QStringLiteral(",\n")) + QLatin1Char('\n');
}

QString trafficText(const Bound& bound)
{
    const auto reads = bound.binding().reads();
    const std::set<std::string> sorted(reads.begin(), reads.end());
    return QStringLiteral(
               "\n## What the scanner is asked and told\n\n"
               "When it is bound, these options are read, in the scanner's own order:\n\n") +
           listText({sorted.begin(), sorted.end()}) +
           QStringLiteral("\nand, with a scanner that has everything, these are set, in this "
                          "order. The first three\nfind out how long a sheet can be, the last two "
                          "pairs are the power settings:\n\n") +
           listText(bound.binding().sets()) +
           QStringLiteral("\nBefore a scan, in this order, as far as the settings ask for "
                          "them:\n\n") +
           listText(sendingOrder()) +
           QStringLiteral("\nBefore a preview, in this order, with the limits of the scanner as "
                          "the area. A scanner that can choose\nits source by itself gets the "
                          "length of its flatbed for `br-y`; `source` is sent to it alone:\n\n") +
           listText(bound.preview().sets());
}

QString renameText()
{
    std::vector<std::string> lost;
    for (const Setting& setting : settingsTable()) {
        if (setting.inWorkingGroup() && setting.renameOrder == 0) {
            lost.emplace_back(setting.key);
        }
    }
    return QStringLiteral("\nRenaming a template carries all of its keys but these:\n\n") +
           listText(lost);
}

} // namespace

QByteArray settingsDocument()
{
    const DialogProbe pristine;
    const Bound bound;
    const QString text = QString::fromUtf8(introduction) + tabsText(pristine) + paperText() +
                         unstoredText(pristine) + QString::fromUtf8(files) + renameText() +
                         trafficText(bound);
    return text.toUtf8();
}

} // namespace kestrel::test
