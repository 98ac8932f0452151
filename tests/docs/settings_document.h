/// @file
/// docs/settings.md as it has to be: made from the tables of the library, the form of the dialog
/// and the notes beside them.
#pragma once

#include <QByteArray>

namespace kestrel::test {

/// Makes a dialog, binds it to the stand-in scanner and writes the document. Needs a QApplication.
/// @return UTF-8
QByteArray settingsDocument();

} // namespace kestrel::test
