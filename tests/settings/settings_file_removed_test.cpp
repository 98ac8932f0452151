// A settings file that somebody removes while it is open.
#include "settings/settings_file.h"

#include "settings_folder.h"

#include <QCoreApplication>

#include <array>

#include <sys/inotify.h>
#include <unistd.h>

using namespace kestrel;
using namespace kestrel::test;

namespace {

const QString keyA = QStringLiteral("ScannerA/brightness");
const QByteArray wholeBytes = "[Office]\nsource=2\n\n[ScannerA]\nbrightness=12\ncontrast=3\n";

/// Counts how often something new takes a name in a folder.
class ArrivalCounter
{
public:
    explicit ArrivalCounter(const QString& folder)
    {
        EXPECT_GE(::inotify_add_watch(descriptor, QFile::encodeName(folder).constData(),
                                      IN_CREATE | IN_MOVED_TO),
                  0);
    }
    ~ArrivalCounter() { ::close(descriptor); }
    Q_DISABLE_COPY_MOVE(ArrivalCounter)

    int countOf(const QByteArray& name) const
    {
        alignas(inotify_event) std::array<char, 65536> events{};
        const ssize_t size = ::read(descriptor, events.data(), events.size());
        int count = 0;
        for (ssize_t at = 0; at < size;) {
            const auto* const event = reinterpret_cast<const inotify_event*>(events.data() + at);
            count += event->len > 0 && name == event->name ? 1 : 0;
            at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
        }
        return count;
    }

private:
    int descriptor = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
};

SettingsHandle openWithoutFile(const SettingsFolder& folder)
{
    folder.write("[Office]\nsource=2\n[ScannerA]\nbrightness=1\ncontrast=3\n");
    SettingsHandle settings = openSettings(folder.filePath());
    EXPECT_EQ(settings->value(keyA).toString(), QStringLiteral("1"));
    settings->setValue(keyA, QStringLiteral("12"));
    EXPECT_TRUE(QFile::remove(folder.filePath()));
    return settings;
}

} // namespace

TEST(SettingsFileRemoved, ComesBackWholeInOneStep)
{
    const SettingsFolder folder;
    const SettingsHandle settings = openWithoutFile(folder);
    const ArrivalCounter arrivals(QFileInfo(folder.filePath()).path());
    EXPECT_TRUE(saveSettings(*settings));
    EXPECT_EQ(arrivals.countOf("ScannerA.ini"), 1) << "somebody could have seen a part of it";
    EXPECT_EQ(folder.bytes(), wholeBytes);
}

TEST(SettingsFileRemoved, ComesBackWithNothingChanged)
{
    const SettingsFolder folder;
    folder.write(wholeBytes);
    const SettingsHandle settings = openSettings(folder.filePath());
    EXPECT_EQ(settings->value(keyA).toString(), QStringLiteral("12"));
    ASSERT_TRUE(QFile::remove(folder.filePath()));
    EXPECT_TRUE(saveSettings(*settings));
    EXPECT_EQ(folder.bytes(), wholeBytes);
}

TEST(SettingsFileRemoved, StaysWithoutWhatWasRemovedFromIt)
{
    const SettingsFolder folder;
    const SettingsHandle settings = openWithoutFile(folder);
    settings->remove(QStringLiteral("Office"));
    EXPECT_TRUE(saveSettings(*settings));
    EXPECT_EQ(folder.bytes(), "[ScannerA]\nbrightness=12\ncontrast=3\n");
}

TEST(SettingsFileRemoved, ComesBackWithWhatAnotherObjectHasSaved)
{
    int argc = 1;
    char name[] = "test";
    char* argv[] = {name, nullptr};
    const QCoreApplication application(argc, argv);
    const SettingsFolder folder;
    const SettingsHandle dialog = openSettings(folder.filePath());
    const SettingsHandle manager = openSettings(folder.filePath());
    manager->setValue(QStringLiteral("Office/source"), QStringLiteral("2"));
    ASSERT_TRUE(saveSettings(*manager));
    ASSERT_TRUE(QFile::remove(folder.filePath()));
    dialog->setValue(keyA, QStringLiteral("12"));
    EXPECT_TRUE(saveSettings(*dialog));
    EXPECT_EQ(folder.bytes(), "[Office]\nsource=2\n\n[ScannerA]\nbrightness=12\n");
}
