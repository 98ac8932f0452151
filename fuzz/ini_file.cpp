// Any bytes as the settings file of a device: the dialog is bound, confirmed and closed. Whatever
// stood there, a whole file stands there afterwards, and the next start shows what was confirmed.
#include "bench.h"
#include "dialogs/edittemplate.h"
#include "input.h"
#include "settings/ini_scanner.h"
#include "settings/settings_file.h"
#include "settings/settings_inspection.h"
#include "support/dialog_probe.h"
#include "support/models.h"

#include <kestrelsettingui.h>

#include <QComboBox>
#include <QSettings>

#include <memory>

using namespace kestrel::fuzz;
using kestrel::test::DialogProbe;
using kestrel::test::FakeScanner;

namespace {

// The dialog takes longer to make than to bind.
constexpr int kRunsOfADialog = 100;
constexpr char kFollowsTheArea[] = "additional_length_detection_length";
constexpr char kFile[] = "Fuzz.ini";

using Entries = QMap<QString, QStringList>;

/// A dialog and the scanner in front of it.
struct Desk
{
    Desk() = default;
    ~Desk() { kestrel::SettingsCloser()(dialog.settings); }
    Q_DISABLE_COPY_MOVE(Desk)

    DialogProbe dialog;
    FakeScanner scanner = kestrel::test::fullScanner();
};

class Session
{
public:
    Session(Desk& desk, std::uint8_t choices) : m_desk(desk), m_choices(choices) {}

    void run(const std::string& file)
    {
        m_folder.write(kFile, QByteArray(file.data(), static_cast<int>(file.size())));
        bind();
        if ((m_choices & 1U) != 0) {
            manageTemplates();
        }
        confirm();
        dialog().close();
        // Numbers that no control ever held are bent by being loaded; from then on they stand.
        bind();
        confirm();
        auto confirmed = groupOnShow();
        confirmed.remove(QLatin1String(kFollowsTheArea));
        bind();
        confirm();
        compare(confirmed, groupOnShow());
        dialog().close();
        require(!dialog().isVisible(), "the dialog does not close");
        setAllParamBySettingUI(dialog().host());
        require(m_desk.scanner.journal().wasSet("resolution"), "no settings are sent");
        m_desk.scanner.clearJournal();
    }

private:
    DialogProbe& dialog() { return m_desk.dialog; }

    void bind()
    {
        ScannerIdentity record{};
        qstrncpy(record.name, "Fuzz", sizeof record.name);
        qstrncpy(record.backend, "kestrel_adv", sizeof record.backend);
        QSettings* const before = dialog().settings;
        initKestrelSetUI(dialog().host(), m_desk.scanner.handle(), &record, m_folder.path());
        // What an earlier binding has opened stays for hosts; here it would fill the memory. It may
        // be the same object again.
        kestrel::SettingsCloser()(before);
        m_desk.scanner.clearJournal();
    }

    void manageTemplates()
    {
        auto* const list = dialog().findChild<QComboBox*>(QStringLiteral("usertemplate"));
        list->setCurrentIndex(list->count() - 1);
        EditTemplate& manager = *dialog().edit_template;
        switch (m_choices >> 1U & 3U) {
        case 0:
            manager.on_template_remove_clicked();
            break;
        case 1:
            manager.on_template_reset_clicked();
            break;
        case 2:
            dialog().on_default_setting_clicked();
            break;
        default:
            manager.renameUserTemplate(list->currentText(), QStringLiteral("renamed"));
        }
        manager.close();
    }

    void confirm()
    {
        dialog().on_sure_clicked();
        kestrel::FileBytes content;
        require(kestrel::inspectSettingsFile(m_folder.file(kFile), &content) ==
                    kestrel::FileState::Sound,
                "the file is refused after it was saved");
        require(kestrel::readIniEntries(content.bytes())
                        .value(QStringLiteral("Fuzzconfig_version/config_version")) ==
                    QStringList(QStringLiteral("102")),
                "the file does not say its version");
        m_entries = kestrel::readIniEntries(content.bytes());
    }

    /// @return what the file holds for the entry that is selected
    Entries groupOnShow()
    {
        const auto* const list = dialog().findChild<QComboBox*>(QStringLiteral("usertemplate"));
        const QString group =
            list->currentIndex() > 0 ? list->currentText() : QStringLiteral("Fuzz");
        Entries found;
        for (auto entry = m_entries.cbegin(); entry != m_entries.cend(); ++entry) {
            if (entry.key().startsWith(group + QLatin1Char('/'))) {
                found.insert(entry.key().mid(group.size() + 1), entry.value());
            }
        }
        return found;
    }

    static void compare(const Entries& confirmed, const Entries& shown)
    {
        for (auto entry = confirmed.cbegin(); entry != confirmed.cend(); ++entry) {
            const QStringList now = shown.value(entry.key());
            if (now != entry.value()) {
                const QString line = QStringLiteral("%1 was confirmed as %2 and comes back as %3")
                                         .arg(entry.key(), entry.value().join(QLatin1Char(',')),
                                              now.join(QLatin1Char(',')));
                fail(qPrintable(line));
            }
        }
    }

    Desk& m_desk;
    unsigned m_choices;
    Answers m_answers{0xffffffff};
    Folder m_folder;
    QMultiHash<QString, QStringList> m_entries;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // The last one is never deleted: it would outlive the application at the end of the process.
    static Desk* desk = nullptr;
    static int runs = 0;
    if (runs++ % kRunsOfADialog == 0) {
        delete desk;
        desk = std::make_unique<Desk>().release();
    }
    Input input(data, size);
    const std::uint8_t choices = input.byte();
    Session(*desk, choices).run(input.rest());
    return 0;
}
