#include "simulator_env.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

namespace kestrel {

namespace {

/// The backends and their configuration lie in folders of these names, or both in one folder.
QString subfolder(const QDir& folder, const char* name)
{
    return folder.exists(QLatin1String(name)) ? folder.absoluteFilePath(QLatin1String(name))
                                              : folder.absolutePath();
}

} // namespace

QString useSimulator(const QString& programDir)
{
    for (const char* relative : {"../simulator", KESTREL_SIMULATOR_FROM_BIN}) {
        const QDir folder(QDir::cleanPath(programDir + '/' + QLatin1String(relative)));
        const QString configDir = subfolder(folder, "etc");
        if (!QFile::exists(configDir + QStringLiteral("/dll.conf"))) {
            continue;
        }
        // libsane's loader of backends reads the search path itself, so that a change now still
        // counts.
        QByteArray path = QFile::encodeName(subfolder(folder, "sane"));
        const QByteArray before = qgetenv("LD_LIBRARY_PATH");
        if (!before.isEmpty()) {
            path += ':' + before;
        }
        qputenv("SANE_CONFIG_DIR", QFile::encodeName(configDir));
        qputenv("LD_LIBRARY_PATH", path);
        return {};
    }
    return QCoreApplication::translate("SimulatorEnv", "没有安装模拟扫描仪");
}

} // namespace kestrel
