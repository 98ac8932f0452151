/// @file
/// What the program has been asked to do.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace kestrel {

enum class RunMode
{
    Window,
    Batch,
    Screenshots,
    Scene,
    List
};

/// See scenes.h.
enum class Scene
{
    FirstStart,
    SecondStart,
    Preview,
    Templates
};

/// The command line, understood.
struct CommandLine
{
    RunMode mode = RunMode::Window;
    QString device;                       ///< SANE device name; empty: the first one
    QString configDir;                    ///< folder of the settings files
    QString outputDir;                    ///< for Batch, Screenshots and Scene
    QString pdfFile;                      ///< for Batch; empty: no PDF
    QString tourFile;                     ///< for Window: PDF of a guided first scan; empty: none
    std::optional<int> button;            ///< template of this scanner button
    std::optional<Scene> scene;           ///< for Scene: which one
    std::optional<bool> removeBlankPages; ///< switch the removal of blank pages
    bool simulator = false;               ///< use the simulated scanners
};

/// Parses the arguments. --help and --version print and end the program.
/// @param arguments with the program's name in front
/// @param[out] problem what is wrong, in words; empty when all is well
CommandLine parseCommandLine(const QStringList& arguments, QString& problem);

} // namespace kestrel
