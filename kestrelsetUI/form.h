/// @file
/// The dialog's form, with the visibility of the dialog's other public classes.
#pragma once

#include "widgets/cmypushbutton.h"
#include "widgets/picturebox.h"
#include "widgets/previewui.h"

#include <QtWidgets>

#pragma GCC visibility push(default)
#include "ui_kestrelsetting.h"
#pragma GCC visibility pop
