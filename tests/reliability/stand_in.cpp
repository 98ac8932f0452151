#include "reliability/stand_in.h"

#include "support/models.h"

#include <QFile>
#include <QSettings>

namespace kestrel::test {

namespace {

constexpr int pictureWidth = 64;
constexpr int pictureLines = 48;

} // namespace

FakeScanner scannerWithPicture()
{
    FakeFrame frame;
    frame.parameters = {SANE_FRAME_RGB, SANE_TRUE, 3 * pictureWidth, pictureWidth, pictureLines, 8};
    frame.bytes.assign(std::size_t{3} * pictureWidth * pictureLines, 0x5a);
    frame.chunks = {2000};
    FakeScanner scanner = fullScanner();
    scanner.addFrame(frame);
    return scanner;
}

QByteArray makeStoredSettings(const char* folder)
{
    const QString path = QString::fromUtf8(folder) + QStringLiteral("/ScannerA.ini");
    {
        FakeScanner scanner = scannerWithPicture();
        UserSession session;
        session.bind(scanner.handle(), folder);
        session.dialog().writeConfig(QStringLiteral("Office"));
        QSettings& file = *session.dialog().settings;
        file.setValue(QStringLiteral("UserTemplates/usertemplate"), QStringLiteral("自订;Office"));
        file.setValue(QStringLiteral("UserTemplates/usertemplate_index"), QStringLiteral("1"));
    }
    {
        FakeScanner scanner = scannerWithPicture();
        UserSession().run(scanner.handle(), folder, 0);
    }
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace kestrel::test
