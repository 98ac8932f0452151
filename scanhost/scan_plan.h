/// @file
/// From the settings dialog's answers to what the scan loop has to do.
#pragma once

#include "scan_loop.h"
#include "scanner_device.h"
#include "settings_dialog.h"

#include <QString>

namespace kestrel {

/// @return how many images one side of a sheet gives: one for each kind of image in @p multistream
/// (text
///         of the option "multistream-list", for example "Color + Gray"), twice that when it is
///         split
int imagesPerSide(const QString& multistream, bool split);

/// @param device the scanner, all settings sent
/// @param answers the dialog's
/// @return what to scan: a feeder until it is empty, the flatbed once, with several originals on it
/// all
///         that the scanner finds
ScanPlan planFor(const ScannerDevice& device, const ScanAnswers& answers);

/// @return the settings in one line for the status bar, for example "300 dpi · 文档进纸器 · 双面"
QString summaryOf(const ScanAnswers& answers);

} // namespace kestrel
