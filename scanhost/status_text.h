/// @file
/// What SANE's status codes mean, in words for the user.
#pragma once

#include <QString>

#include <sane/sane.h>

namespace kestrel {

/// @return a sentence about @p status; also for SANE_STATUS_GOOD and for codes SANE does not define
QString statusText(SANE_Status status);

/// @return a sentence about @p status as the reason why a scanner could not be opened
QString openStatusText(SANE_Status status);

/// @return whether the scanner has to be opened again after @p status, because it may be gone
bool meansDeviceLost(SANE_Status status);

} // namespace kestrel
