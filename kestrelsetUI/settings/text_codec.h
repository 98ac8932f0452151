/// @file
/// Settings as texts. Nothing is clamped on the way: the controls do that.
#pragma once

#include <QString>

#include <cstdint>

namespace kestrel {

/// @return decimal text.
QString integerText(int value);
/// @return the shortest text of six significant digits at most, for example "8.5", "210", "1e+06".
QString realText(double value);
/// @return "1" or "0".
QString boolText(bool checked);
/// @return "Enable" or "Disable".
QString enableText(bool checked);

/// @return the decimal number in @p text, 0 if it is none or does not fit.
int parseInteger(const QString& text);
/// @return the number in @p text, 0 if it is none.
double parseReal(const QString& text);
/// @return the number in @p text rounded to single precision, 0 if it is none.
double parseSingleReal(const QString& text);
/// @return the number in @p text without its fraction, 0 if it is none, the nearest int if it is
/// too large.
int parseTruncated(const QString& text);
/// @return true exactly when the number is 1.
bool parseBool(const QString& text);
/// @return true exactly for "Enable".
bool parseEnable(const QString& text);
/// @return the side-mode mask: the low 8 bits of the number, or 4 (front colour) when the text is
/// no number between 1 and 65535.
std::uint8_t parseMask(const QString& text);

} // namespace kestrel
