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

    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
    kestrel::test::installMessageHandler();
    return RUN_ALL_TESTS();
}
