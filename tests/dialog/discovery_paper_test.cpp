// The paper-size lists and the default area after a binding.
#include "dialog_fixture.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDoubleSpinBox>

#include <gtest/gtest.h>

using namespace kestrel::test;

namespace {

const QString custom = QStringLiteral("自定义尺寸");
const QString legal = QStringLiteral("US Legal - 8.5 x 14 英寸");
const QString letter = QStringLiteral("US Letter - 8.5 x 11 英寸");
const QString a3 = QStringLiteral("ISO A3 - 29.7 x 42.0 厘米");
const QString a4 = QStringLiteral("ISO A4 - 21.0 x 29.7 厘米");
const QString a5 = QStringLiteral("ISO A5 - 14.8 x 21.0 厘米");
const QString a6 = QStringLiteral("ISO A6 - 10.5 x 14.8 厘米");
const QString b4 = QStringLiteral("JIS B4 - 25.7 x 36.4 厘米");
const QString b5 = QStringLiteral("JIS B5 - 18.2 x 25.7 厘米");
const QString maximum = QStringLiteral("最大扫描范围");

class PaperLists : public DialogTest
{
protected:
    void bindSize(double width, double height)
    {
        FakeScanner scanner;
        scanner.add(FakeOption::fixed("br-x", width).limits(0.0, width));
        scanner.add(FakeOption::fixed("br-y", height).limits(0.0, height));
        // A name of its own for every size: no stored settings get in the way.
        const std::string name = std::to_string(width) + "x" + std::to_string(height);
        bind(scanner, name.c_str());
        EXPECT_DOUBLE_EQ(real("br_x").maximum(), width);
        EXPECT_DOUBLE_EQ(real("br_y").maximum(), height);
    }
};

} // namespace

TEST_F(PaperLists, ASmallScannerGetsTheSizesThatAreAlwaysThere)
{
    bindSize(215.9, 355.6);
    const QStringList expected{custom, legal, a4, a5, a6, b5, maximum};
    EXPECT_EQ(itemsOf("scanrange_setting"), expected);
    EXPECT_EQ(itemsOf("preview_scanrange"), expected);
}

TEST_F(PaperLists, ALargeScannerGetsAllOfThemInTableOrder)
{
    bindSize(304.8, 431.8);
    const QStringList expected{custom, legal, letter, a3, a4, a5, a6, b4, b5, maximum};
    EXPECT_EQ(itemsOf("scanrange_setting"), expected);
    EXPECT_EQ(itemsOf("preview_scanrange"), expected);
}

TEST_F(PaperLists, LargeSizesNeedMoreThanTheirOwnSize)
{
    struct Row
    {
        double width;
        double height;
        bool letter;
        bool b4;
        bool a3;
    };
    for (const Row& row :
         {Row{215.9, 1000.0, false, false, false}, Row{216.0, 355.6, false, false, false},
          Row{216.0, 355.7, true, false, false}, Row{257.0, 1000.0, true, false, false},
          Row{257.1, 364.0, true, false, false}, Row{257.1, 364.1, true, true, false},
          Row{297.0, 1000.0, true, true, false}, Row{297.1, 420.0, true, true, false},
          Row{297.1, 420.1, true, true, true}, Row{1000.0, 355.6, false, false, false}}) {
        bindSize(row.width, row.height);
        const QStringList items = itemsOf("scanrange_setting");
        EXPECT_EQ(items.contains(letter), row.letter) << row.width << " x " << row.height;
        EXPECT_EQ(items.contains(b4), row.b4) << row.width << " x " << row.height;
        EXPECT_EQ(items.contains(a3), row.a3) << row.width << " x " << row.height;
        EXPECT_EQ(itemsOf("preview_scanrange"), items);
    }
}

TEST_F(PaperLists, AScannerOfUnknownSizeGetsTheSizesThatAreAlwaysThere)
{
    FakeScanner scanner;
    bind(scanner);
    EXPECT_EQ(itemsOf("scanrange_setting"), (QStringList{custom, legal, a4, a5, a6, b5, maximum}));
}

TEST_F(PaperLists, A4IsSelected)
{
    for (const auto& [width, height] :
         {std::pair(215.9, 355.6), std::pair(304.8, 431.8), std::pair(100.0, 100.0)}) {
        bindSize(width, height);
        EXPECT_EQ(combo("scanrange_setting").currentText(), a4) << width;
    }
}

TEST_F(PaperLists, AScannerThatTakesA3StartsWithA4AcrossTheFeed)
{
    bindSize(304.8, 431.8);
    EXPECT_TRUE(checked("horizontal_range"));
    EXPECT_FALSE(checked("vertical_range"));
    EXPECT_FALSE(dialog().portrait);
    EXPECT_DOUBLE_EQ(real("br_x").value(), 297.0);
    EXPECT_DOUBLE_EQ(real("br_y").value(), 210.0);
    EXPECT_DOUBLE_EQ(real("tl_x").value(), 3.9);
    EXPECT_EQ(combo("scanrange_setting").currentText(), a4);
    EXPECT_FALSE(dialog().updating);
}

TEST_F(PaperLists, AScannerJustTooSmallForA3StartsUpright)
{
    for (const auto& [width, height] : {std::pair(297.0, 431.8), std::pair(304.8, 420.0)}) {
        bindSize(width, height);
        EXPECT_TRUE(checked("vertical_range")) << width;
        EXPECT_TRUE(dialog().portrait);
    }
}

TEST_F(PaperLists, TheRulesMayRunAgainAfterABinding)
{
    bindSize(215.9, 355.6);
    EXPECT_FALSE(dialog().updating);
}
