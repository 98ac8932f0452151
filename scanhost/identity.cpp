#include "identity.h"

#include <QByteArray>
#include <QStringList>

#include <cstring>

namespace kestrel {

namespace {

template <std::size_t Size>
void copyText(char (&target)[Size], const QString& text)
{
    const QByteArray bytes = text.toUtf8().left(static_cast<int>(Size) - 1);
    std::memcpy(target, bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

std::uint32_t hexNumber(const QString& text)
{
    bool ok = false;
    const uint number = text.trimmed().toUInt(&ok, 16);
    return ok ? number : 0;
}

std::uint32_t knownProductId(const QString& model)
{
    for (std::size_t row = 0; row < std::size(kestrel_model_names); ++row) {
        if (model.compare(QLatin1String(kestrel_model_names[row]), Qt::CaseInsensitive) == 0) {
            return hexNumber(QLatin1String(kestrel_model_product_ids[row]));
        }
    }
    return 0;
}

} // namespace

QString backendOf(const QString& deviceName)
{
    QString rest = deviceName;
    if (rest.startsWith(QLatin1String("net:"))) {
        // An IPv6 host stands in brackets and has colons of its own.
        const bool brackets = rest.startsWith(QLatin1String("net:["));
        const int from = brackets ? rest.indexOf(']') : 4;
        const int hostEnd = from < 0 ? -1 : rest.indexOf(':', from);
        if (hostEnd >= 0 && hostEnd + 1 < rest.size()) {
            rest = rest.mid(hostEnd + 1);
        }
    }
    return rest.section(':', 0, 0);
}

QString fileNameFor(const QString& model)
{
    QString name = model.trimmed();
    for (QChar& c : name) {
        const bool plain = c.unicode() < 128 && (c.isLetterOrNumber() || c == '.' || c == '-');
        const bool foreign = c.unicode() >= 128 && c.isLetterOrNumber();
        if (!plain && !foreign) {
            c = '_';
        }
    }
    if (name.startsWith('.')) {
        name[0] = '_';
    }
    while (name.toUtf8().size() > 127) {
        name.chop(1);
    }
    return name.isEmpty() ? QStringLiteral("scanner") : name;
}

ScannerIdentity makeIdentity(const QString& deviceName, const QString& model,
                             const QString& deviceInfo)
{
    ScannerIdentity identity{};
    const QStringList ids = deviceInfo.split(':');
    if (ids.size() >= 2) {
        identity.vid = hexNumber(ids[0]);
        identity.pid = hexNumber(ids[1]);
    }
    if (identity.pid == 0) {
        identity.pid = knownProductId(model);
    }
    copyText(identity.name, fileNameFor(model.isEmpty() ? deviceName : model));
    copyText(identity.backend, backendOf(deviceName));
    return identity;
}

} // namespace kestrel
