#include "settings/ini_names.h"

#include <QByteArray>

#include <algorithm>
#include <cstring>

namespace kestrel {

bool isEscaped(Span text)
{
    const auto isSpecial = [](char c) { return c == '%' || c == '\\'; };
    return std::any_of(text.begin, text.end, isSpecial);
}

void appendUnescaped(Span text, QString& result)
{
    if (!isEscaped(text)) {
        result += QLatin1String(text.begin, static_cast<int>(text.end - text.begin));
        return;
    }
    for (const char* at = text.begin; at < text.end; ++at) {
        if (*at == '\\') {
            result += QLatin1Char('/');
            continue;
        }
        const bool isLong = *at == '%' && at + 1 < text.end && at[1] == 'U';
        const char* const digits = at + (isLong ? 2 : 1);
        const int count = isLong ? 4 : 2;
        if (*at == '%' && text.end - digits >= count) {
            bool ok = false;
            const ushort code = QByteArray(digits, count).toUShort(&ok, 16);
            if (ok) {
                result += QChar(code);
                at = digits + count - 1;
                continue;
            }
        }
        result += QLatin1Char(*at);
    }
}

QString unescapeKey(Span text)
{
    QString result;
    appendUnescaped(text, result);
    return result;
}

Span trimmed(Span text)
{
    while (text.begin < text.end && isSpace(*text.begin)) {
        ++text.begin;
    }
    while (text.begin < text.end && isSpace(text.end[-1])) {
        --text.end;
    }
    return text;
}

QString groupPrefix(Span line)
{
    const auto length = static_cast<std::size_t>(line.end - line.begin);
    const void* const bracket = std::memchr(line.begin, ']', length);
    const Span name = trimmed(
        {line.begin + 1, bracket != nullptr ? static_cast<const char*>(bracket) : line.end});
    const QByteArray raw(name.begin, static_cast<int>(name.end - name.begin));
    if (raw.compare("general", Qt::CaseInsensitive) == 0) {
        return {};
    }
    if (raw.compare("%general", Qt::CaseInsensitive) == 0) {
        return QString::fromLatin1(raw.mid(1)) + QLatin1Char('/');
    }
    return unescapeKey(name) + QLatin1Char('/');
}

} // namespace kestrel
