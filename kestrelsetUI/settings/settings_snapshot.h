/// @file
/// What a settings object holds, compared with what a file holds.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
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

} // namespace kestrel
