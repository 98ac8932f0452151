#include "settings/ini_plain_text.h"

#include "settings/ini_line_reader.h"

#include <QString>

#include <cstring>

namespace kestrel {

namespace {

bool isAscii(char c)
{
    return static_cast<unsigned char>(c) < 0x80U;
}

bool isHexDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

QByteArray escaped(ushort code)
{
    return "\\x" + QByteArray::number(code, 16);
}

QByteArray plainValue(Span value)
{
    QByteArray plain;
    bool isAfterEscape = false;
    for (const char* at = value.begin; at < value.end;) {
        const char* const begin = at++;
        if (*begin == '\\' && at < value.end) {
            // The reader drops the escape of a character that needs none.
            if (isAscii(*at)) {
                plain.append(begin, 2);
            }
            ++at;
            isAfterEscape = false;
        } else if (!isAscii(*begin)) {
            while (at < value.end && !isAscii(*at)) {
                ++at;
            }
            for (const QChar c : QString::fromUtf8(begin, static_cast<int>(at - begin))) {
                plain += escaped(c.unicode());
            }
            isAfterEscape = true;
        } else if (isAfterEscape && isHexDigit(*begin)) {
            // It would be read as a part of the escape.
            plain += escaped(static_cast<ushort>(*begin));
        } else {
            plain += *begin;
            isAfterEscape = false;
        }
    }
    return plain;
}

} // namespace

QByteArray withoutByteOrderMark(const QByteArray& data)
{
    QByteArray plain;
    const char* copied = data.constData() + std::strlen(byteOrderMark);
    LineReader reader(data);
    Line line{};
    while (reader.next(line)) {
        if (*line.text.begin != '[' && line.equals != nullptr) {
            const char* const value = line.equals + 1;
            plain.append(copied, static_cast<int>(value - copied));
            plain += plainValue({value, line.text.end});
            copied = line.text.end;
        }
    }
    plain.append(copied, static_cast<int>(data.constData() + data.size() - copied));
    // A further mark belongs to the first line. Not at the very beginning it stays there.
    return plain.startsWith(byteOrderMark) ? '\n' + plain : plain;
}

} // namespace kestrel
