// What takes the place of a settings file just after it was looked at, and before it is opened.
#include "settings/settings_inspection.h"

#include "child_process.h"
#include "settings_folder.h"

#include <cstdarg>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace kestrel;
using namespace kestrel::test;

namespace {

QByteArray place;
QByteArray arriving; ///< what comes to the place when it is opened next

/// @return what is found out of a small file whose place is taken by the file "other".
FileState stateWithAnotherArriving(const SettingsFolder& folder)
{
    folder.write("[A]\nb=1\n");
    place = nameOf(folder);
    arriving = QFile::encodeName(folder.filePath(QStringLiteral("other")));
    const FileState state = inspectSettingsFile(folder.filePath());
    EXPECT_TRUE(arriving.isEmpty()) << "nothing was opened";
    return state;
}

} // namespace

extern "C" int __real_open(const char* name, int flags, ...);

extern "C" int __wrap_open(const char* name, int flags, ...)
{
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    if (!arriving.isEmpty() && place == name) {
        EXPECT_EQ(std::rename(arriving.constData(), name), 0);
        arriving.clear();
    }
    return __real_open(name, flags, mode);
}

TEST(SettingsInspection, PipeThatHasJustComeIsNotWaitedFor)
{
    inChildProcess([] {
        ::alarm(60); // nothing that works takes as long
        const SettingsFolder folder;
        const QString other = folder.filePath(QStringLiteral("other"));
        ASSERT_EQ(::mkfifo(QFile::encodeName(other).constData(), 0600), 0);
        EXPECT_EQ(stateWithAnotherArriving(folder), FileState::Foreign);
    });
}

TEST(SettingsInspection, FileThatHasJustComeIsMeasuredAnew)
{
    const SettingsFolder folder;
    QByteArray data(static_cast<int>(largestSettingsFile), '\t');
    data.replace(0, 8, "[A]\nb=1\n");
    folder.write(data, QStringLiteral("other"));
    EXPECT_EQ(stateWithAnotherArriving(folder), FileState::Sound);
    folder.write(data + '\t', QStringLiteral("other"));
    EXPECT_EQ(stateWithAnotherArriving(folder), FileState::Refused);
}
