/// @file
/// The sections of an INI file, found without a look at their lines.
#pragma once

#include "settings/ini_line_reader.h"

#include <QByteArray>
#include <QString>

namespace kestrel {

/// What stands from one "[" at the beginning of a line to the next. A file that the toolkit has
/// written has no other section than these; in one made by hand a value may look like one.
struct Section
{
    Span text; ///< without the line ends behind it
    bool isNamed() const { return text.begin < text.end && *text.begin == '['; }
    /// The prefix of its keys, see groupPrefix().
    QString prefix() const;
};

/// Cuts a file into its sections; what stands before the first one is one without a name.
class SectionReader
{
public:
    /// @param data has to outlive the reader and its sections.
    explicit SectionReader(const QByteArray& data);

    /// @return false at the end of the file.
    bool next(Section& section);

private:
    const char* at;
    const char* end;
};

/// Whether both hold the same bytes.
bool isSame(Span a, Span b);

} // namespace kestrel
