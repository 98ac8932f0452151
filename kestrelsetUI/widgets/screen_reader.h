/// @file
/// What screen readers are told about the form.
#pragma once

#include <QWidget>

namespace kestrel {

/// Lets screen readers look afresh at the disabled controls of a form that has just been made. Qt
/// asks what a widget is when it is born into a disabled parent, before it is a button or a list,
/// and keeps the answer: a thing without name, role and value.
/// @param form its children are looked through
void describeAfresh(const QWidget& form);

} // namespace kestrel
