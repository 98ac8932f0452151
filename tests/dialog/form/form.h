/// @file
/// The settings form on a bare dialog.
#pragma once

#include "ui_kestrelsetting.h"

#include <QDialog>
#include <QString>
#include <QTabBar>
#include <QWidget>

#include <gtest/gtest.h>

#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace kestrel::test {

/// Names in a form that a failed test can print.
using Names = std::set<std::string>;

struct Form
{
    Form() { ui.setupUi(&dialog); }

    /// @return the widget of this name; throws without one
    template <typename T = QWidget>
    T& get(const QString& name)
    {
        T* const found = dialog.findChild<T*>(name);
        if (found == nullptr) {
            throw std::runtime_error("there is no " + name.toStdString());
        }
        return *found;
    }

    /// @return the widgets that stand in the form, without those that Qt puts into them
    std::vector<QWidget*> widgets() const
    {
        std::vector<QWidget*> own;
        for (QWidget* const widget : dialog.findChildren<QWidget*>()) {
            const bool named = !widget->objectName().isEmpty() &&
                               !widget->objectName().startsWith(QLatin1String("qt_"));
            if (named && qobject_cast<QTabBar*>(widget->parentWidget()) == nullptr) {
                own.push_back(widget);
            }
        }
        return own;
    }

    QDialog dialog;
    Ui_KestrelSetting ui{};
};

} // namespace kestrel::test
