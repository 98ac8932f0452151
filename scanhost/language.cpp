#include "language.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QTranslator>

namespace kestrel {

namespace {

bool install(const QString& name, const QString& folder)
{
    auto* translator = new QTranslator(QCoreApplication::instance());
    if (translator->load(name, folder)) {
        return QCoreApplication::installTranslator(translator);
    }
    delete translator;
    return false;
}

} // namespace

QString catalogueFor(const QStringList& wished)
{
    for (const QString& language : wished) {
        if (language.startsWith(QLatin1String("zh"))) {
            return {};
        }
        if (language.startsWith(QLatin1String("en"))) {
            return QStringLiteral("en");
        }
    }
    return {};
}

void speak(const QStringList& wished, const QString& programDir)
{
    const QString language = catalogueFor(wished);
    if (language.isEmpty()) {
        // The buttons of Qt's own dialogs, in the language of this program.
        install(QStringLiteral("qtbase_zh_CN"),
                QLibraryInfo::location(QLibraryInfo::TranslationsPath));
        return;
    }
    for (const char* relative : {"../translations", KESTREL_TRANSLATIONS_FROM_BIN}) {
        const QString folder = QDir::cleanPath(programDir + '/' + QLatin1String(relative));
        // The dialog's catalogue is for every host; it changes what is shown, never what is stored
        // or sent.
        const bool program = install(QStringLiteral("kestrel-scan_") + language, folder);
        const bool dialog = install(QStringLiteral("kestrel-settingui_") + language, folder);
        if (program || dialog) {
            return;
        }
    }
}

} // namespace kestrel
