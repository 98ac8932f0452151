/// @file
/// Pointing libsane at the simulated scanners that come with this program.
#pragma once

#include <QString>

namespace kestrel {

/// Sets SANE_CONFIG_DIR and LD_LIBRARY_PATH of this process so that libsane finds the simulated
/// scanners and nothing else. Before sane_init() and before any thread.
/// @param programDir folder of the running program; the simulator is looked for beside it, as in a
/// build
///        tree, and where the installation puts it
/// @return what went wrong, in words; empty when the simulator is there
QString useSimulator(const QString& programDir);

} // namespace kestrel
