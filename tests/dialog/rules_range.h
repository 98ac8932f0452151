/// @file
/// The paper tab of a dialog on a scanner of a given size.
#pragma once

#include "dialog_fixture.h"
#include "rules_user.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDoubleSpinBox>

#include <gtest/gtest.h>

namespace kestrel::test {

inline const QString kCustom = QStringLiteral("自定义尺寸");
inline const QString kLegal = QStringLiteral("US Legal - 8.5 x 14 英寸");
inline const QString kLetter = QStringLiteral("US Letter - 8.5 x 11 英寸");
inline const QString kA3 = QStringLiteral("ISO A3 - 29.7 x 42.0 厘米");
inline const QString kA4 = QStringLiteral("ISO A4 - 21.0 x 29.7 厘米");
inline const QString kA5 = QStringLiteral("ISO A5 - 14.8 x 21.0 厘米");
inline const QString kA6 = QStringLiteral("ISO A6 - 10.5 x 14.8 厘米");
inline const QString kB4 = QStringLiteral("JIS B4 - 25.7 x 36.4 厘米");
inline const QString kB5 = QStringLiteral("JIS B5 - 18.2 x 25.7 厘米");
inline const QString kWhole = QStringLiteral("最大扫描范围");

struct Device
{
    const char* name;
    double width;
    double height;
    double longHeight;
};

inline ScannerModel feeder(const Device& device)
{
    ScannerModel model;
    model.sources = {"ADF Front", "ADF Duplex"};
    model.width = device.width;
    model.feederHeight = device.height;
    model.longHeight = device.longHeight;
    return model;
}

class RangeTest : public DialogTest
{
protected:
    void TearDown() override { destroy(); } // before the scanner

    void start(const Device& device)
    {
        scanner = makeScanner(feeder(device));
        bind(scanner);
        show();
    }
    void start(double width, double height) { start({"", width, height, 3000.0}); }

    double left() const { return real("tl_x").value(); }
    double top() const { return real("tl_y").value(); }
    double wide() const { return real("br_x").value(); }
    double high() const { return real("br_y").value(); }
    void expectArea(double x, double y, double w, double h)
    {
        EXPECT_DOUBLE_EQ(left(), x);
        EXPECT_DOUBLE_EQ(top(), y);
        EXPECT_DOUBLE_EQ(wide(), w);
        EXPECT_DOUBLE_EQ(high(), h);
        EXPECT_FALSE(dialog().updating);
    }
    QComboBox& papers() const { return combo("scanrange_setting"); }
    void choosePaper(const QString& text) { choose(papers(), text); }
    void centring(bool on)
    {
        if (checked("center_alignment") != on) {
            click(button("center_alignment"));
        }
    }
    /// Lays the paper across, through a size that lets a user do so.
    void across()
    {
        choosePaper(kA6);
        click(button("horizontal_range"));
        ASSERT_TRUE(checked("horizontal_range"));
    }
    double freeLength() const { return real("length_detection_value").maximum(); }

    FakeScanner scanner;
};

} // namespace kestrel::test
