/// @file
/// The value of a line as the toolkit's reader takes it apart.
#pragma once

#include "settings/ini_line_reader.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <cstring>

namespace kestrel {

/// @return what the character stands for in numbers of @p base (at most 16), or -1.
inline int digitValue(char c, int base)
{
    int value = -1;
    if (c >= '0' && c <= '9') {
        value = c - '0';
    } else if (c >= 'a' && c <= 'f') {
        value = c - 'a' + 10;
    } else if (c >= 'A' && c <= 'F') {
        value = c - 'A' + 10;
    }
    return value < base ? value : -1;
}

/// Takes one value apart into its elements.
class ValueReader
{
public:
    explicit ValueReader(Span text) : at(text.begin), end(text.end) {}

    QStringList elements()
    {
        skipBlanks();
        while (at < end) {
            const char c = *at++;
            if (c == '\\') {
                readEscape();
            } else if (c == '"') {
                quoted = true;
                inQuotes = !inQuotes;
                if (!inQuotes) {
                    skipBlanks();
                }
            } else if (c == ',' && !inQuotes) {
                finishElement();
                skipBlanks();
            } else {
                element += QLatin1Char(c);
            }
        }
        finishElement();
        return result;
    }

private:
    void skipBlanks()
    {
        while (at < end && (*at == ' ' || *at == '\t')) {
            ++at;
        }
    }

    void finishElement()
    {
        while (!quoted && element.size() > keep &&
               (element.endsWith(QLatin1Char(' ')) || element.endsWith(QLatin1Char('\t')))) {
            element.chop(1);
        }
        result.append(element);
        element.clear();
        keep = 0;
        quoted = false;
    }

    void readEscape()
    {
        if (at >= end) {
            return;
        }
        static constexpr char names[] = "abfnrtv\"?'\\";
        static constexpr char meanings[] = "\a\b\f\n\r\t\v\"?'\\";
        const char c = *at++;
        if (const char* const known = c == '\0' ? nullptr : std::strchr(names, c)) {
            element += QLatin1Char(meanings[known - names]);
        } else if (c == 'x') {
            if (at < end && digitValue(*at, 16) >= 0) {
                readNumber(16);
            }
        } else if (digitValue(c, 8) >= 0) {
            --at;
            readNumber(8);
        } else if (isLineEnd(c) && at < end && isLineEnd(*at) && *at != c) {
            ++at;
        }
        keep = element.size();
    }

    // As many digits as there are; the low 16 bits of the number are the character.
    void readNumber(int base)
    {
        std::uint32_t number = 0;
        for (int digit = 0; at < end && (digit = digitValue(*at, base)) >= 0; ++at) {
            number = number * static_cast<std::uint32_t>(base) + static_cast<std::uint32_t>(digit);
        }
        element += QChar(static_cast<ushort>(number & 0xFFFFU));
    }

    const char* at;
    const char* end;
    QStringList result;
    QString element;
    int keep = 0; ///< trailing blanks up to here came from escapes and stay
    bool quoted = false;
    bool inQuotes = false;
};

} // namespace kestrel
