#include "settings/ini_sections.h"

#include "settings/ini_names.h"

#include <algorithm>
#include <cstring>

namespace kestrel {

namespace {

Span withoutLineEnds(Span text)
{
    while (text.begin < text.end && isLineEnd(text.end[-1])) {
        --text.end;
    }
    return text;
}

// The "[" at the beginning of a line behind the one at @p at, or the end.
const char* nextSection(const char* at, const char* end)
{
    while (at < end) {
        const auto* const line =
            static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
        if (line == nullptr) {
            break;
        }
        at = line + 1;
        if (at < end && *at == '[') {
            return at;
        }
    }
    return end;
}

} // namespace

QString Section::prefix() const
{
    if (!isNamed()) {
        return {};
    }
    return groupPrefix({text.begin, std::find(text.begin, text.end, '\n')});
}

SectionReader::SectionReader(const QByteArray& data)
    : at(data.constData()), end(data.constData() + data.size())
{
}

bool SectionReader::next(Section& section)
{
    if (at >= end) {
        return false;
    }
    const char* const following = nextSection(at, end);
    section.text = withoutLineEnds({at, following});
    at = following;
    return true;
}

bool isSame(Span a, Span b)
{
    return std::equal(a.begin, a.end, b.begin, b.end);
}

} // namespace kestrel
