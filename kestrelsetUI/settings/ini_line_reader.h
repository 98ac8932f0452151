/// @file
/// The lines of an INI file as the toolkit's reader sees them.
#pragma once

#include <QByteArray>

#include <array>
#include <cstring>

namespace kestrel {

/// What a file in UTF-8 may begin with.
constexpr char byteOrderMark[] = "\xEF\xBB\xBF";

/// A stretch of the file.
struct Span
{
    const char* begin;
    const char* end;
};

/// @return the first @p byte of a stretch, or its end. The standard algorithm and the toolkit's
/// take many times as long for it.
inline const char* findByte(const char* begin, const char* end, char byte)
{
    const void* const found = std::memchr(begin, byte, static_cast<std::size_t>(end - begin));
    return found != nullptr ? static_cast<const char*>(found) : end;
}

struct Line
{
    Span text;
    const char* equals; ///< the "=" between key and value, or nullptr
};

inline bool isSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f';
}

inline bool isLineEnd(char c)
{
    return c == '\n' || c == '\r';
}

/// Whether a character can end or divide a line, or change what the next one means.
inline bool hasMeaning(char c)
{
    static constexpr auto table = [] {
        std::array<bool, 256> known{};
        for (const char meaning : {'"', '\\', '\n', '\r', ';', '='}) {
            known[static_cast<unsigned char>(meaning)] = true;
        }
        return known;
    }();
    return table[static_cast<unsigned char>(c)];
}

/// Cuts the file into lines: quotes may hold line ends, a backslash hides the character behind it,
/// and a semicolon outside quotes begins a comment.
class LineReader
{
public:
    /// @param data has to outlive the reader and its lines.
    explicit LineReader(const QByteArray& data)
        : at(data.constData() + (data.startsWith(byteOrderMark) ? strlen(byteOrderMark) : 0)),
          end(data.constData() + data.size())
    {
    }

    /// @return false at the end of the file.
    bool next(Line& line)
    {
        skipSpaces();
        while (at < end && *at == ';') {
            while (at < end && !isLineEnd(*at)) {
                ++at;
            }
            skipSpaces();
        }
        line = {{at, at}, nullptr};
        bool inQuotes = false;
        for (; at < end; ++at) {
            // Nearly all characters mean nothing here.
            if (!hasMeaning(*at)) {
                continue;
            }
            if (*at == '"') {
                inQuotes = !inQuotes;
            } else if (*at == '\\') {
                skipEscape();
            } else if (!inQuotes && (isLineEnd(*at) || *at == ';')) {
                break;
            } else if (!inQuotes && *at == '=' && line.equals == nullptr) {
                line.equals = at;
            }
        }
        line.text.end = at;
        return line.text.begin < line.text.end;
    }

private:
    void skipSpaces()
    {
        while (at < end && isSpace(*at)) {
            ++at;
        }
    }

    // Leaves the position on the last character that belongs to the backslash.
    void skipEscape()
    {
        if (++at >= end) {
            at = end - 1;
            return;
        }
        if (at + 1 < end && isLineEnd(*at) && isLineEnd(at[1]) && *at != at[1]) {
            ++at;
        }
    }

    const char* at;
    const char* end;
};

} // namespace kestrel
