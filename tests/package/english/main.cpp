// A host whose settings dialog speaks English: the folder of the catalogue comes from the installed
// library.
#include <kestrelsettingui.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QTranslator>

#include <cstdio>
#include <memory>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QTranslator english;
    if (english.load(QStringLiteral("kestrel-settingui_en"), QStringLiteral(SETTINGS_TEXTS))) {
        QCoreApplication::installTranslator(&english);
    }
    const std::unique_ptr<QDialog> dialog(static_cast<QDialog*>(creatKestrelSetUI(nullptr)));
    const auto* const ok = dialog->findChild<QAbstractButton*>(QStringLiteral("sure"));
    std::printf("%s\n", qPrintable(ok->text()));
    return 0;
}
