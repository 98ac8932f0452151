#include "system/system_info.h"

#include <QStringList>

#include <array>
#include <cstdio>
#include <fstream>
#include <memory>
#include <string>

namespace kestrel {
namespace {

struct CloseFile
{
    void operator()(std::FILE* file) const { std::fclose(file); }
};

/// What follows the first @p key in @p line, up to a second one.
QString pieceAfter(const std::string& line, const QString& key)
{
    return QString::fromStdString(line).split(key).at(1);
}

bool contains(const std::string& line, const char* key)
{
    return line.find(key) != std::string::npos;
}

} // namespace

QString osInfoText(const char* path)
{
    const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(path, "r"));
    if (!file) {
        std::puts("failed to open version");
    }
    QString text = QStringLiteral("系统信息：");
    if (file) {
        std::array<char, 1000> line{};
        while (std::fgets(line.data(), static_cast<int>(line.size()), file.get()) != nullptr) {
            text += QString::fromUtf8(line.data());
        }
    }
    return text + QLatin1Char('\n');
}

QString cpuInfoText(const char* path)
{
    QString text = QStringLiteral("CPU信息：");
    std::ifstream file(path);
    if (!file.is_open()) {
        return text;
    }
    for (std::string line; std::getline(file, line);) {
        if (contains(line, "model name")) {
            text += pieceAfter(line, QStringLiteral("model name"));
            break;
        }
    }
    return text + QLatin1Char('\n');
}

QString memoryInfoText(const char* path)
{
    QString text;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        if (contains(line, "MemTotal:")) {
            text += QStringLiteral("内存容量：") + pieceAfter(line, QStringLiteral("MemTotal:")) +
                    QLatin1Char('\n');
        }
        if (contains(line, "MemFree:")) {
            text += QStringLiteral("剩余内存：") + pieceAfter(line, QStringLiteral("MemFree:")) +
                    QLatin1Char('\n');
        }
    }
    return text;
}

} // namespace kestrel
