// The smallest host: opens a scanner, lets the user choose the settings, and starts a scan with
// them.
//   settings-host [DEVICE]              the settings dialog, then a scan
//   settings-host --no-window [DEVICE]  with the settings that were confirmed last
// Without DEVICE the first scanner that libsane finds.
#include <kestrelsettingui.h>

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QRegularExpression>
#include <QStandardPaths>

#include <sane/sane.h>

#include <cstdio>
#include <cstring>

namespace {

/// @return the name of the first scanner; empty when there is none
QString firstDevice()
{
    const SANE_Device** devices = nullptr;
    const bool found =
        sane_get_devices(&devices, SANE_FALSE) == SANE_STATUS_GOOD && devices[0] != nullptr;
    return found ? QString::fromUtf8(devices[0]->name) : QString();
}

/// What the dialog is told about the scanner: its settings file is named after it.
ScannerIdentity identityOf(const QString& device)
{
    ScannerIdentity identity{};
    // The host of a scanner of the network may be an address with colons, in brackets.
    static const QRegularExpression network(QStringLiteral(R"(^net:(\[[^]]*\]|[^:]*):)"));
    const QByteArray backend = QString(device).remove(network).section(':', 0, 0).toUtf8();
    const QByteArray name = QString(device).replace(':', '-').replace('/', '-').toUtf8();
    std::strncpy(identity.name, name.constData(), sizeof identity.name - 1);
    std::strncpy(identity.backend, backend.constData(), sizeof identity.backend - 1);
    return identity;
}

/// Starts a scan as a host does and says what the scanner makes of the settings.
bool scan(SANE_Handle scanner)
{
    SANE_Parameters page{};
    const bool scanned = sane_start(scanner) == SANE_STATUS_GOOD &&
                         sane_get_parameters(scanner, &page) == SANE_STATUS_GOOD;
    sane_cancel(scanner);
    if (scanned) {
        std::printf("page: %d x %d pixels\n", page.pixels_per_line, page.lines);
    }
    return scanned;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QStringList arguments = QApplication::arguments().mid(1);
    const bool window = arguments.removeAll(QStringLiteral("--no-window")) == 0;

    SANE_Handle scanner = nullptr;
    sane_init(nullptr, nullptr);
    const QString device = arguments.isEmpty() ? firstDevice() : arguments.first();
    const SANE_Status status = sane_open(device.toUtf8().constData(), &scanner);
    if (status != SANE_STATUS_GOOD) {
        std::fprintf(stderr, "%s: %s\n", qPrintable(device), sane_strstatus(status));
        sane_exit();
        return 1;
    }

    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
    QDir().mkpath(folder);
    ScannerIdentity identity = identityOf(device);
    void* const ui = creatKestrelSetUI(nullptr);
    initKestrelSetUI(ui, scanner, &identity, folder.toUtf8().constData());
    if (window) {
        showWindow(ui);
    }
    setAllParamBySettingUI(ui);
    std::printf("resolution: %d dpi\nduplex: %s\n", getCurrentResolution(ui),
                isDoubleSideScan(ui) ? "yes" : "no");
    const bool scanned = scan(scanner);

    delete static_cast<QDialog*>(ui);
    sane_close(scanner);
    sane_exit();
    return scanned ? 0 : 1;
}
