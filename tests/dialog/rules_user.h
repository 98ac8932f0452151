/// @file
/// What a user does with the controls that the rules watch, beyond support/user.h.
#pragma once

#include "support/user.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLineEdit>
#include <QString>
#include <QTest>

#include <gtest/gtest.h>

namespace kestrel::test {

inline const QString kFeeder = QStringLiteral("文档进纸器");
inline const QString kFlatbed = QStringLiteral("平板");
inline const QString kAutomatic = QStringLiteral("自动选择纸张来源");

/// Opens the list of a combo box and takes an item, passing over the items between.
inline void choose(QComboBox& combo, int index)
{
    if (!reveal(combo)) {
        return;
    }
    ASSERT_TRUE(combo.isEnabled()) << combo.objectName().toStdString() << " is disabled";
    ASSERT_TRUE(index >= 0 && index < combo.count()) << combo.objectName().toStdString();
    combo.showPopup();
    combo.view()->setCurrentIndex(combo.model()->index(index, combo.modelColumn()));
    QTest::keyClick(combo.view(), Qt::Key_Return);
    ASSERT_EQ(combo.currentIndex(), index) << combo.objectName().toStdString();
}

/// The same by the item's text.
inline void choose(QComboBox& combo, const QString& text)
{
    const int index = combo.findText(text);
    ASSERT_GE(index, 0) << "no item " << text.toStdString();
    choose(combo, index);
}

/// Replaces the text of a spin box at once, as from the clipboard; what its validator refuses does
/// not arrive.
inline void paste(QAbstractSpinBox& box, const QString& text)
{
    EXPECT_TRUE(box.isEnabled()) << box.objectName().toStdString() << " is disabled";
    auto* const line = box.findChild<QLineEdit*>();
    ASSERT_NE(line, nullptr) << box.objectName().toStdString();
    line->selectAll();
    line->insert(text);
    QTest::keyClick(&box, Qt::Key_Tab);
}

} // namespace kestrel::test
