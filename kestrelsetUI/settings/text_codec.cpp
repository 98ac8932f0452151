#include "settings/text_codec.h"

#include <cmath>
#include <limits>

namespace kestrel {

namespace {

constexpr std::uint8_t frontColour = 4;

// The toolkit takes "nan" for a number; no control has a use for it.
double orZero(double value)
{
    return std::isnan(value) ? 0.0 : value;
}

} // namespace

QString integerText(int value)
{
    return QStringLiteral("%1").arg(value);
}

QString realText(double value)
{
    return QStringLiteral("%1").arg(value, 0, 'g', -1);
}

QString boolText(bool checked)
{
    return checked ? QStringLiteral("1") : QStringLiteral("0");
}

QString enableText(bool checked)
{
    return checked ? QStringLiteral("Enable") : QStringLiteral("Disable");
}

int parseInteger(const QString& text)
{
    return text.toInt();
}

double parseReal(const QString& text)
{
    return orZero(text.toDouble());
}

double parseSingleReal(const QString& text)
{
    return orZero(static_cast<double>(text.toFloat()));
}

int parseTruncated(const QString& text)
{
    const double value = parseReal(text);
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    return static_cast<int>(std::fmin(std::fmax(value, lowest), highest));
}

bool parseBool(const QString& text)
{
    return text.toInt() == 1;
}

bool parseEnable(const QString& text)
{
    return text == QLatin1String("Enable");
}

std::uint8_t parseMask(const QString& text)
{
    const std::uint16_t mask = text.toUShort();
    return mask == 0 ? frontColour : static_cast<std::uint8_t>(mask & 0xFFU);
}

} // namespace kestrel
