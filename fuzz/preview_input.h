/// @file
/// What reaches the preview box, made from the bytes of a run.
#pragma once

#include "input.h"

#include <QImage>
#include <QPointF>
#include <QRect>

namespace kestrel::fuzz {

/// @return a point in the window, around a corner of @p selection, or anywhere
QPointF anyPoint(Input& input, const QRect& selection);

/// @return mostly the left button
Qt::MouseButton anyButton(Input& input);

/// @return a small picture or a thin strip of one colour in one of the toolkit's formats; may be
///         null
QImage anyPicture(Input& input);

} // namespace kestrel::fuzz
