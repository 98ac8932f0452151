// main() of the tests that show widgets. They run offscreen, so that no screen, window manager or
// user has a say in the result; KESTREL_TEST_ON_SCREEN=1 lets one look on.
#include "support/messages.h"

#include <QApplication>
#include <QFont>
#include <QStandardPaths>
#include <QStyleFactory>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>

// Asked by the leak checker: the font library keeps what it has read until the process ends.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the checker looks for this name
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions()
{
    return "leak:libfontconfig.so\n";
}

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);

    const bool onScreen = qEnvironmentVariableIntValue("KESTREL_TEST_ON_SCREEN") == 1;
    if (!onScreen) {
        if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
            qputenv("QT_QPA_PLATFORM", "offscreen");
        }
        if (qgetenv("QT_QPA_PLATFORM") != "offscreen") {
            std::fputs("these tests run on the offscreen platform only; "
                       "set KESTREL_TEST_ON_SCREEN=1 to watch them\n",
                       stderr);
            return 2;
        }
    }

    const QTemporaryDir runtimeDir;
    if (!qEnvironmentVariableIsSet("XDG_RUNTIME_DIR")) {
        qputenv("XDG_RUNTIME_DIR", runtimeDir.path().toLocal8Bit());
    }
    QStandardPaths::setTestModeEnabled(true);

    // Stays until the process ends: the offscreen platform forgets its screen when the application
    // goes, and the leak checker would blame every test for it.
    static QApplication* const application = std::make_unique<QApplication>(argc, argv).release();
    Q_UNUSED(application)
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
    kestrel::test::installMessageHandler();
    return RUN_ALL_TESTS();
}
