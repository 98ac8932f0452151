/// @file
/// Scanning without a window.
#pragma once

#include "command_line.h"

class QTextStream;

namespace kestrel {

/// What the program returns to its caller.
enum ExitCode : int
{
    exitGood = 0,
    exitFailed = 1, ///< no scanner, or nothing scanned
    exitUsage = 2,  ///< wrong arguments
    exitPartly = 3  ///< some images are saved, then the scan or the saving failed
};

/// Prints the scanners, one a line: SANE device name, tab, maker and model.
int runList(QTextStream& out, QTextStream& err);

/// Opens the scanner, binds a settings dialog that is never shown, sends its settings, scans and
/// saves. Needs a QApplication, on whatever platform, because of the dialog.
/// @param line mode Batch
/// @param out told about each file
/// @param err told what goes wrong
/// @return an ExitCode
int runBatch(const CommandLine& line, QTextStream& out, QTextStream& err);

} // namespace kestrel
