/// @file
/// What a settings object holds, compared with what a file holds.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariant>

class QSettings;

namespace kestrel {

/// Values by full key ("Group/key").
using Snapshot = QHash<QString, QVariant>;

/// @param settings an object with no group open.
/// @return everything it holds. A line without a key stands under an empty one, without a value.
Snapshot snapshotOf(const QSettings& settings);

/// Tells @p settings every value of @p snapshot that can be told.
void tellAll(QSettings& settings, const Snapshot& snapshot);

/// Whether a file with the bytes @p content holds @p settings, which have no group open, whole.
/// Texts and numbers are compared; of other values only the lines are counted.
bool holds(const QByteArray& content, const QSettings& settings);

/// The same, quickly: sections of a new file that are byte for byte those of the old one hold what
/// they held.
/// @param settings an object with no group open.
/// @param groups those that may have changed since the file held @p before; none, if that is not
/// known.
/// @return false also where that is not enough to tell.
bool holdsGroups(const QByteArray& content, QSettings& settings, const QStringList& groups,
                 const QByteArray& before);

} // namespace kestrel
