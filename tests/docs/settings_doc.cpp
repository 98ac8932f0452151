// Writes docs/settings.md: settings_doc FILE
#include "docs/settings_document.h"

#include <QApplication>
#include <QFile>
#include <QTextStream>

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 2) {
        QTextStream(stderr) << "usage: settings_doc FILE\n";
        return 2;
    }
    QFile file(arguments.at(1));
    const QByteArray text = kestrel::test::settingsDocument();
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.flush()) {
        QTextStream(stderr) << file.errorString() << '\n';
        return 1;
    }
    return 0;
}
