// settings_writer FILE GROUP FIRST ROUNDS: saves the numbers FIRST, FIRST + 1, ... under every key
// of GROUP, one save for each; ROUNDS 0 goes on until it is killed. A line on the standard output
// says that it begins.
#include "settings/settings_file.h"
#include "settings/settings_table.h"

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int mostTries = 30;

void tell(const char* line)
{
    std::puts(line);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 5) {
        std::fputs("usage: settings_writer FILE GROUP FIRST ROUNDS\n", stderr);
        return 2;
    }
    const QString path = QString::fromLocal8Bit(argv[1]);
    const QString group = QString::fromLocal8Bit(argv[2]);
    const int first = std::atoi(argv[3]);
    const int rounds = std::atoi(argv[4]);
    const kestrel::SettingsHandle settings = kestrel::openSettings(path);
    tell("begin");
    for (int round = 0; rounds == 0 || round < rounds; ++round) {
        settings->beginGroup(group);
        for (const kestrel::Setting& setting : kestrel::settingsTable()) {
            settings->setValue(QLatin1String(setting.key), QString::number(first + round));
        }
        settings->endGroup();
        // On a busy machine the other writer may keep the lock for longer than a save waits.
        int tries = 1;
        while (!kestrel::saveSettings(*settings, {group})) {
            if (++tries > mostTries) {
                std::fputs("not saved\n", stderr);
                return 1;
            }
        }
        tell("saved");
    }
    return 0;
}
