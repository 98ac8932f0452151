// settings_kill_loop WRITER ROUNDS: kills a process that saves, at a random moment, and looks at
// what it leaves: the file as before the save or as after it, never empty, never torn.
#include "settings/settings_file.h"
#include "watched_file.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include <chrono>
#include <cstdio>
#include <random>
#include <thread>

using namespace kestrel::test;

namespace {

constexpr std::chrono::microseconds longestWait{40000};

/// Kills in one of the first saves.
/// @return false if the writer ended by itself.
bool killWhileSaving(const QString& writerPath, const QString& file, int first, int linesToWaitFor,
                     std::chrono::microseconds after)
{
    QProcess writer;
    writer.start(writerPath,
                 {file, QStringLiteral("A"), QString::number(first), QStringLiteral("0")});
    for (int lines = 0; lines < linesToWaitFor; ++lines) {
        while (!writer.canReadLine()) {
            if (!writer.waitForReadyRead()) {
                return false;
            }
        }
        writer.readLine();
    }
    std::this_thread::sleep_for(after);
    writer.kill();
    writer.waitForFinished();
    return writer.exitStatus() == QProcess::CrashExit;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fputs("usage: settings_kill_loop WRITER ROUNDS\n", stderr);
        return 2;
    }
    const QString writer = QString::fromLocal8Bit(argv[1]);
    const int rounds = QByteArray(argv[2]).toInt();
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("ScannerA.ini"));
    std::mt19937 random(std::random_device{}());
    std::uniform_int_distribution<long> wait(0, longestWait.count());

    int last = -1;
    int progress = 0;
    for (int round = 1; round <= rounds; ++round) {
        const std::chrono::microseconds after(wait(random));
        if (!killWhileSaving(writer, file, last + 1, 1 + round % 3, after)) {
            std::fprintf(stderr, "round %d: the writer did not run until it was killed\n", round);
            return 1;
        }
        const int number = commonNumber(contentOf(file), QStringLiteral("A"));
        if (number < last) {
            std::fprintf(stderr, "round %d: %d after %d, killed after %ld us\n", round, number,
                         last, static_cast<long>(after.count()));
            return 1;
        }
        progress += number > last ? 1 : 0;
        last = number;
    }
    // Saving still works after all that, and cleans up the second names.
    const auto settings = kestrel::openSettings(file);
    settings->setValue(QStringLiteral("B/x"), QStringLiteral("1"));
    if (!kestrel::saveSettings(*settings) ||
        QFile::exists(file + QStringLiteral(".kestrel-hold"))) {
        std::fputs("the file can no longer be saved\n", stderr);
        return 1;
    }
    std::printf("%d kills, %d of them after a finished save, last number %d\n", rounds, progress,
                last);
    return progress > 0 ? 0 : 1;
}
