/// @file
/// Whether widgets have room for the texts that they show.
#pragma once

#include "support/user.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontMetrics>
#include <QGroupBox>
#include <QHash>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QStyleOption>
#include <QWidget>

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

namespace kestrel::test {

/// @return the room that the widget has for its text, if it shows one of its own
inline std::optional<QSize> roomForText(const QWidget& widget)
{
    if (const auto* const label = qobject_cast<const QLabel*>(&widget)) {
        const int margin = label->margin();
        return label->contentsRect().adjusted(margin, margin, -margin, -margin).size();
    }
    if (qobject_cast<const QCheckBox*>(&widget) != nullptr) {
        QStyleOptionButton option;
        option.initFrom(&widget);
        return widget.style()->subElementRect(QStyle::SE_CheckBoxContents, &option, &widget).size();
    }
    if (qobject_cast<const QRadioButton*>(&widget) != nullptr) {
        QStyleOptionButton option;
        option.initFrom(&widget);
        return widget.style()
            ->subElementRect(QStyle::SE_RadioButtonContents, &option, &widget)
            .size();
    }
    if (qobject_cast<const QComboBox*>(&widget) != nullptr) {
        QStyleOptionComboBox option;
        option.initFrom(&widget);
        return widget.style()
            ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &widget)
            .size();
    }
    if (qobject_cast<const QPushButton*>(&widget) != nullptr) {
        return widget.size() - QSize(2, 2);
    }
    return std::nullopt;
}

/// @return all that the widget may show in its room
inline QStringList textsOf(const QWidget& widget)
{
    if (const auto* const combo = qobject_cast<const QComboBox*>(&widget)) {
        return items(*combo);
    }
    return {widget.property("text").toString()};
}

/// Of the height only what the letters take counts: a font may have a leading of its own.
inline void expectRoomFor(const QString& text, const QWidget& widget, const QSize& room)
{
    const QFontMetrics metrics = widget.fontMetrics();
    EXPECT_GE(room.width(), metrics.horizontalAdvance(text))
        << widget.objectName().toStdString() << ": " << text.toStdString();
    EXPECT_GE(room.height(), metrics.tightBoundingRect(text).height())
        << widget.objectName().toStdString() << ": " << text.toStdString();
}

/// @return how many texts have been looked at: those of the visible widgets below @p parent
inline int expectTextsToFit(const QWidget& parent)
{
    int looked = 0;
    for (const QWidget* widget : parent.findChildren<QWidget*>()) {
        const std::optional<QSize> room = roomForText(*widget);
        if (!room || !widget->isVisible()) {
            continue;
        }
        for (const QString& text : textsOf(*widget)) {
            if (!text.isEmpty()) {
                expectRoomFor(text, *widget, *room);
                ++looked;
            }
        }
    }
    for (const QGroupBox* box : parent.findChildren<QGroupBox*>()) {
        if (box->isVisible()) {
            expectRoomFor(box->title(), *box, box->size() - QSize(20, 0));
            ++looked;
        }
    }
    return looked;
}

/// @return how many pixels of the label are of other colours than its ground
inline int inkOf(QLabel& label)
{
    const QImage picture = label.grab().toImage().convertToFormat(QImage::Format_RGB32);
    QHash<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            ++counts[picture.pixel(x, y)];
        }
    }
    const int ground = *std::max_element(counts.cbegin(), counts.cend());
    return picture.width() * picture.height() - ground;
}

/// Letters may reach further than their metrics say: what is painted would be the same with more
/// room on all sides.
/// @return how many labels have been looked at: the visible ones below @p parent with a text
inline int expectLabelsToBePaintedWhole(const QWidget& parent)
{
    constexpr int more = 20; // a whole number of pixels at each scale
    int looked = 0;
    for (QLabel* label : parent.findChildren<QLabel*>()) {
        if (!label->isVisible() || label->text().isEmpty()) {
            continue;
        }
        const QRect place = label->geometry();
        const QSize least = label->minimumSize();
        const QSize most = label->maximumSize();
        const int ink = inkOf(*label);
        label->setMinimumSize(0, 0);
        label->setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
        label->setGeometry(place.adjusted(-more, -more, more, more));
        EXPECT_EQ(inkOf(*label), ink) << label->objectName().toStdString();
        label->setMinimumSize(least);
        label->setMaximumSize(most);
        label->setGeometry(place);
        ++looked;
    }
    return looked;
}

} // namespace kestrel::test
