#include "batch.h"
#include "command_line.h"
#include "icons.h"
#include "language.h"
#include "main_window.h"
#include "scanner_device.h"
#include "scenes.h"
#include "screenshots.h"
#include "simulator_env.h"
#include "status_text.h"
#include "tour.h"

#include <QApplication>
#include <QLocale>
#include <QTextStream>

#include <csignal>

namespace {

/// Who scans without a window may do so without a screen.
void allowMissingScreen(int argc, char** argv)
{
    const bool screen =
        qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
    if (screen || qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        return;
    }
    for (int i = 1; i < argc; ++i) {
        const QByteArray argument(argv[i]);
        if (argument.startsWith("--batch") || argument.startsWith("--screenshots") ||
            argument.startsWith("--scene-dir") || argument == "--list" || argument == "--help" ||
            argument == "-h" || argument == "--version" || argument == "-v") {
            qputenv("QT_QPA_PLATFORM", "offscreen");
        }
    }
}

int runWindow(const kestrel::CommandLine& line)
{
    kestrel::MainWindow window(line.configDir);
    kestrel::Screenshots screenshots(window, line.outputDir);
    kestrel::Tour tour(window, line.tourFile);
    kestrel::Scenes scenes(window, line.scene.value_or(kestrel::Scene::FirstStart), line.outputDir);
    if (line.mode == kestrel::RunMode::Screenshots) {
        screenshots.arm();
    } else if (line.mode == kestrel::RunMode::Scene) {
        scenes.arm();
    } else if (!line.tourFile.isEmpty()) {
        tour.arm();
    }
    window.show();
    window.findDevices(line.device);
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    allowMissingScreen(argc, argv);
    // A network scanner whose server has gone makes a call fail; it must not end the program.
    std::signal(SIGPIPE, SIG_IGN);
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("kestrel-scan"));
    QApplication::setApplicationVersion(QStringLiteral(KESTREL_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("kestrel-scan"));
    QApplication::setWindowIcon(kestrel::applicationIcon());
    kestrel::speak(QLocale::system().uiLanguages(), QApplication::applicationDirPath());

    QTextStream out(stdout);
    QTextStream err(stderr);
    // The program may speak Chinese, whatever a bare console says about its character set.
    out.setCodec("UTF-8");
    err.setCodec("UTF-8");

    QString problem;
    const kestrel::CommandLine line = kestrel::parseCommandLine(QApplication::arguments(), problem);
    if (problem.isEmpty() && line.simulator) {
        problem = kestrel::useSimulator(QApplication::applicationDirPath());
    }
    if (!problem.isEmpty()) {
        err << problem << '\n';
        return kestrel::exitUsage;
    }

    const kestrel::SaneLibrary sane;
    if (sane.status() != SANE_STATUS_GOOD) {
        err << kestrel::statusText(sane.status()) << '\n';
        return kestrel::exitFailed;
    }
    switch (line.mode) {
    case kestrel::RunMode::List:
        return kestrel::runList(out, err);
    case kestrel::RunMode::Batch:
        return kestrel::runBatch(line, out, err);
    case kestrel::RunMode::Window:
    case kestrel::RunMode::Screenshots:
    case kestrel::RunMode::Scene:
        return runWindow(line);
    }
    return kestrel::exitFailed;
}
