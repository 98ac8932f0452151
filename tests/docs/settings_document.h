/// @file
/// docs/settings.md as it has to be: made from the tables of the library, the form of the dialog
/// and the notes beside them.
#pragma once

#include <QByteArray>

#include <string>
#include <vector>

namespace kestrel::test {

/// The options that a scan can be preceded by, in the order in which they are sent.
const std::vector<std::string>& sendingOrder();

/// Makes a dialog, binds it to the stand-in scanner and writes the document. Needs a QApplication.
/// @return UTF-8
QByteArray settingsDocument();

} // namespace kestrel::test
