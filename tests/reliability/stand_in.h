/// @file
/// The stand-in scanner and the stored settings that the walks start from.
#pragma once

#include "reliability/session.h"
#include "support/fake_scanner.h"

#include <QByteArray>

namespace kestrel::test {

/// @return a scanner with everything, and one small picture for the preview
FakeScanner scannerWithPicture();

/// Makes the settings file that the walks start from: a confirmed template "Office" beside the
/// device's own settings.
/// @return its bytes
QByteArray makeStoredSettings(const char* folder);

} // namespace kestrel::test
