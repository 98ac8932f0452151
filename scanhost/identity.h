/// @file
/// The record that tells the settings dialog which scanner it is bound to.
#pragma once

#include <kestrelsettingui.h>

#include <QString>

namespace kestrel {

/// @return the backend in a SANE device name: the text before the first ':', for a scanner of
/// another
///         computer ("net:host:backend:...") the one that drives it there
QString backendOf(const QString& deviceName);

/// @return @p model as the base name of a file: letters, digits, '.', '-', '_', no leading dot, at
/// most
///         127 bytes of UTF-8, never empty
QString fileNameFor(const QString& model);

/// Fills the record from what SANE and the scanner say.
/// @param deviceName SANE device name
/// @param model model name from the device list
/// @param deviceInfo text of the option "device-info", "VID:PID[:...]" in hexadecimal; may be
/// empty, then
///        the product id of a known model is taken
ScannerIdentity makeIdentity(const QString& deviceName, const QString& model,
                             const QString& deviceInfo);

} // namespace kestrel
