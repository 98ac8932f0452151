#include "settings/ini_sections.h"

#include "settings/ini_names.h"

#include <algorithm>

namespace kestrel {

namespace {

Span withoutLineEnds(Span text)
{
    while (text.begin < text.end && isLineEnd(text.end[-1])) {
        --text.end;
    }
    return text;
}

// The next "[" behind the one or the text at @p at that begins a line, or the end.
const char* nextSection(const char* at, const char* end)
{
    do {
        at = findByte(at + 1, end, '[');
    } while (at < end && at[-1] != '\n');
    return at;
}

} // namespace

QString Section::prefix() const
{
    if (!isNamed()) {
        return {};
    }
    return groupPrefix({text.begin, findByte(text.begin, text.end, '\n')});
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
