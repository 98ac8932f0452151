/// @file
/// The lock file that the toolkit takes before it writes a settings file.
#pragma once

#include <QDeadlineTimer>
#include <QString>

namespace kestrel {

/// Whether the toolkit gets its lock file for the settings file @p path now. It waits for it
/// without limit, also for one that can never be its.
///
/// A lock file that a killed process left behind is removed.
/// @param deadline how long to wait for another holder; an expired one tries once.
bool canTakeToolkitLock(const QString& path, QDeadlineTimer deadline);

} // namespace kestrel
