/// @file
/// What most tests of widgets include beyond precompiled.h.
#pragma once

#include "support/precompiled.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QApplication>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
