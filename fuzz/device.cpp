// A device that says and does anything, bound, applied, previewed and bound again. Whatever it did,
// the dialog is as usable as before, and the next scanner is served as if nothing had been.
#include "bench.h"
#include "hostile_scanner.h"
#include "input.h"
#include "support/dialog_probe.h"
#include "support/models.h"
#include "widgets/picturebox.h"
#include "widgets/previewui.h"

#include "settings/settings_file.h"

#include <kestrelsettingui.h>

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QApplication>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QImage>
#include <QMouseEvent>
#include <QSettings>
#include <QSpinBox>

#include <cstring>
#include <limits>
#include <memory>
#include <vector>

using namespace kestrel::fuzz;
using kestrel::test::DialogProbe;
using kestrel::test::FakeScanner;

namespace {

constexpr int kMostSteps = 32;
// The dialog takes longer to make than to bind.
constexpr int kRunsOfADialog = 100;

ScannerIdentity identity(Input& input)
{
    ScannerIdentity record{};
    record.vid = input.byte();
    record.pid = input.byte();
    qstrncpy(record.name, "Fuzz", sizeof record.name);
    if (input.byte() % 4 == 0) { // with or without an end
        const std::string backend = input.text(sizeof record.backend);
        std::memcpy(record.backend, backend.data(), backend.size());
    } else {
        qstrncpy(record.backend, input.flag() ? "kestrel_adv" : "avision_adv",
                 sizeof record.backend);
    }
    return record;
}

class Probe : public DialogProbe
{
public:
    using KestrelSettingUI::configuration_loaded;
    using KestrelSettingUI::previewing;
};

/// A dialog with the controls that a user can reach.
class Desk
{
public:
    Desk()
    {
        const auto widgets = m_dialog.findChildren<QWidget*>();
        for (QWidget* const widget : widgets) {
            const QString name = widget->objectName();
            if (!name.isEmpty() && !name.startsWith(QLatin1String("qt_")) && isControl(*widget)) {
                m_widgets.push_back(widget);
            }
        }
    }
    ~Desk() { forget(m_dialog.settings); }
    Q_DISABLE_COPY_MOVE(Desk)

    Probe& dialog() { return m_dialog; }
    const std::vector<QWidget*>& widgets() const { return m_widgets; }

    void bind(FakeScanner& scanner, ScannerIdentity record, const char* folder)
    {
        QSettings* const before = m_dialog.settings;
        initKestrelSetUI(m_dialog.host(), scanner.handle(), &record, folder);
        forget(before);
        scanner.clearJournal();
    }

private:
    static bool isControl(const QWidget& widget)
    {
        return qobject_cast<const QComboBox*>(&widget) != nullptr ||
               qobject_cast<const QSpinBox*>(&widget) != nullptr ||
               qobject_cast<const QDoubleSpinBox*>(&widget) != nullptr ||
               qobject_cast<const QAbstractSlider*>(&widget) != nullptr ||
               qobject_cast<const QAbstractButton*>(&widget) != nullptr;
    }

    // What an earlier binding has opened stays for hosts; here it would fill the memory. It may be
    // the same object again.
    static void forget(QSettings* settings) { kestrel::SettingsCloser()(settings); }

    Probe m_dialog;
    std::vector<QWidget*> m_widgets;
};

class Session
{
public:
    Session(Input& input, Desk& desk, FakeScanner& scanner)
        : m_input(input), m_desk(desk), m_scanner(scanner), m_answers(input.word())
    {
    }

    void run()
    {
        dialog().setVisible(m_input.byte() % 4 == 0);
        bind();
        for (int step = 0; step < kMostSteps && !m_input.isEmpty(); ++step) {
            doSomething();
            check();
            m_scanner.clearJournal();
        }
    }

    void bind() { m_desk.bind(m_scanner, identity(m_input), m_folder.path()); }

private:
    Probe& dialog() { return m_desk.dialog(); }
    void* host() { return dialog().host(); }

    void doSomething()
    {
        switch (m_input.below(16)) {
        case 0:
            setAllParamBySettingUI(host());
            break;
        case 1:
        case 2:
            addFrame(m_input, m_scanner);
            dialog().on_preview_clicked();
            break;
        case 3:
            dialog().on_sure_clicked();
            break;
        case 4:
            dialog().close();
            break;
        case 5:
            bind();
            break;
        case 6:
            dialog().setScannerInfo();
            break;
        case 7:
            setBlankPageFunc(host(), m_input.flag());
            setButtonTemplage(host(), m_input.integer());
            break;
        case 8:
            dialog().on_eject_paper_manual_clicked();
            dialog().setPowerManager();
            break;
        case 9:
            setDevice(host(), m_input.flag() ? m_scanner.handle() : nullptr);
            dialog().reset_preview();
            break;
        case 10:
            drag();
            paint();
            break;
        case 11:
            m_scanner.mend();
            break;
        case 12:
            dialog().scan_error(static_cast<SANE_Status>(m_input.below(16)));
            break;
        default:
            use(*m_input.pick(m_desk.widgets()));
        }
    }

    void drag()
    {
        auto* const box = dialog().findChild<PreviewBoxUI*>();
        for (const auto type :
             {QEvent::MouseButtonPress, QEvent::MouseMove, QEvent::MouseButtonRelease}) {
            const QPointF at{1.0 * m_input.below(400), 1.0 * m_input.below(600)};
            QMouseEvent event(type, at, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(box, &event);
        }
    }

    void paint()
    {
        QImage canvas(100, 100, QImage::Format_RGB32);
        dialog().findChild<PreviewBoxUI*>()->render(&canvas);
        dialog().findChild<PreViewUI*>()->render(&canvas);
    }

    void use(QWidget& widget)
    {
        if (auto* const combo = qobject_cast<QComboBox*>(&widget)) {
            combo->setCurrentIndex(m_input.below(combo->count()));
        } else if (auto* const spin = qobject_cast<QSpinBox*>(&widget)) {
            spin->setValue(m_input.integer());
        } else if (auto* const real = qobject_cast<QDoubleSpinBox*>(&widget)) {
            real->setValue(m_input.real());
        } else if (auto* const slider = qobject_cast<QAbstractSlider*>(&widget)) {
            slider->setValue(m_input.integer());
        } else if (auto* const button = qobject_cast<QAbstractButton*>(&widget)) {
            button->click();
        }
    }

    void check()
    {
        require(!dialog().previewing, "a preview does not end");
        require(QApplication::overrideCursor() == nullptr, "the cursor keeps saying wait");
        require(!dialog().updating, "the rules stay switched off");
        require(getCurrentResolution(host()) >= 0, "the resolution is no number of dots");
        const int source = getScanSourceType(host());
        require(source >= 0 && source <= 2, "the paper comes from nowhere");
        require(getWaitingJobTime(host()) >= 0, "the pause has no length");
        const int correction = getCurrentFiletype(host());
        require(correction >= 0 && correction <= 3, "there is no such colour correction");
        (void)isDoubleSideScan(host());
        (void)isSplitScan(host());
    }

    Input& m_input;
    Desk& m_desk;
    FakeScanner& m_scanner;
    Answers m_answers;
    Folder m_folder;
};

/// The next scanner gets its options found and its settings sent.
void serveTheNext(Desk& desk)
{
    readLie() = {};
    saidOptions() = std::numeric_limits<int>::max();
    FakeScanner scanner = kestrel::test::fullScanner();
    const Folder folder;
    Input nothing(nullptr, 0);
    desk.bind(scanner, identity(nothing), folder.path());
    require(desk.dialog().configuration_loaded, "the next scanner is not bound");
    desk.dialog().setAllParam();
    require(scanner.journal().wasSet("resolution") && scanner.journal().wasSet("br-y"),
            "the next scanner gets no settings");
    desk.dialog().sane_handle = nullptr;
}

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
    const bool next = input.byte() % 4 == 0;
    FakeScanner scanner = hostileScanner(input);
    {
        Session session(input, *desk, scanner);
        session.run();
    }
    // It goes at the end of this run: the dialog knows no scanner until the next one is bound.
    desk->dialog().sane_handle = nullptr;
    if (next) {
        serveTheNext(*desk);
    }
    return 0;
}
