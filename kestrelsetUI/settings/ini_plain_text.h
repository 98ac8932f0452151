/// @file
/// A settings file in UTF-8, written as the toolkit writes it.
#pragma once

#include <QByteArray>

namespace kestrel {

/// @param data the bytes of an INI file that begins with a UTF-8 byte-order mark.
/// @return the same file without the mark: characters of values that are not ASCII are escaped.
/// Names and comments stay the bytes they are, with or without a mark they are read alike.
QByteArray withoutByteOrderMark(const QByteArray& data);

} // namespace kestrel
