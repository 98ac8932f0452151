// Gamma slider, gamma spin box and the table for the scanner.
#include "dialog_fixture.h"
#include "rules_user.h"

#include <QAbstractSlider>
#include <QDoubleSpinBox>
#include <QTest>

#include <gtest/gtest.h>

#include <array>
#include <cmath>

using namespace kestrel::test;

namespace {

/// The table for an exponent, by its definition.
std::array<int, 256> table(double exponent)
{
    std::array<int, 256> result{};
    for (std::size_t i = 0; i < result.size(); ++i) {
        const double part = std::pow(static_cast<double>(i), exponent) / std::pow(255.0, exponent);
        result.at(i) = static_cast<int>(std::round(255.0 * part));
    }
    return result;
}

double exponentOf(int slider)
{
    const auto single = static_cast<float>(1.0 / (slider / 100.0));
    return static_cast<double>(single);
}

class Gamma : public DialogTest
{
protected:
    Gamma() : scanner(fullScanner())
    {
        bind(scanner);
        show();
    }
    void TearDown() override { destroy(); } // before the scanner

    void expectAtRest(int slider, double value)
    {
        EXPECT_EQ(bar("gamma_set").value(), slider);
        EXPECT_DOUBLE_EQ(real("gamma_value").value(), value);
        EXPECT_EQ(dialog().gamma_table, table(exponentOf(slider))) << slider;
    }

    FakeScanner scanner;
};

struct TypedRow
{
    const char* text;
    int slider;
    double value;
    int sliderByKeys; ///< where keys that are refused leave what came before them
};

class TypedGamma : public Gamma, public testing::WithParamInterface<TypedRow>
{
};

} // namespace

TEST(NewDialog, HasTheIdentityTable)
{
    const DialogProbe dialog;
    for (std::size_t i = 0; i < 256; ++i) {
        EXPECT_EQ(dialog.gamma_table.at(i), static_cast<int>(i));
    }
    EXPECT_EQ(child<QAbstractSlider>(dialog, "gamma_set").value(), 200);
    EXPECT_DOUBLE_EQ(child<QDoubleSpinBox>(dialog, "gamma_value").value(), 2.0);
}

TEST_F(Gamma, EverySliderPositionRestsWhereItWasPut)
{
    for (int slider = 30; slider <= 300; ++slider) {
        bar("gamma_set").setValue(slider);
        expectAtRest(slider, slider / 100.0);
    }
    for (int slider = 300; slider >= 30; --slider) {
        bar("gamma_set").setValue(slider);
        expectAtRest(slider, slider / 100.0);
    }
}

TEST_F(Gamma, EveryTypedValueRestsAtItsTruncation)
{
    for (int hundredth = 30; hundredth <= 300; ++hundredth) {
        bar("gamma_set").setValue(hundredth == 150 ? 151 : 150);
        real("gamma_value").setValue(hundredth / 100.0);
        // 100 x the double, cut off: most give their own number, some one less.
        const double typed = QString::number(hundredth / 100.0, 'f', 2).toDouble();
        const int slider = static_cast<int>(typed * 100.0);
        ASSERT_GE(slider, hundredth - 1);
        ASSERT_LE(slider, hundredth);
        expectAtRest(slider, slider / 100.0);
    }
}

TEST_P(TypedGamma, RestsAtItsTruncation)
{
    const TypedRow& row = GetParam();
    bar("gamma_set").setValue(150);
    paste(real("gamma_value"), QString::fromLatin1(row.text));
    expectAtRest(row.slider, row.value);
}

TEST_P(TypedGamma, KeyByKeyToo)
{
    const TypedRow& row = GetParam();
    bar("gamma_set").setValue(150);
    type(real("gamma_value"), QString::fromLatin1(row.text));
    expectAtRest(row.sliderByKeys, row.sliderByKeys / 100.0);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, TypedGamma,
    testing::Values(TypedRow{"2.01", 200, 2.0, 200}, TypedRow{"1.15", 114, 1.14, 114},
                    TypedRow{"0.30", 30, 0.3, 30}, TypedRow{"3.00", 300, 3.0, 300},
                    TypedRow{"1.00", 100, 1.0, 100}, TypedRow{"2.50", 250, 2.5, 250},
                    TypedRow{"0.29", 150, 1.5, 150}, TypedRow{"3.01", 150, 1.5, 300}),
    [](const auto& info) { return "Row" + std::to_string(info.index); });

TEST_F(Gamma, TheSliderAt115RestsThere)
{
    bar("gamma_set").setValue(115);
    expectAtRest(115, 1.15);
}

TEST_F(Gamma, KeysMoveTheSliderByItsSteps)
{
    auto& slider = bar("gamma_set");
    ASSERT_TRUE(reveal(slider));
    slider.setFocus();
    QTest::keyClick(&slider, Qt::Key_Right);
    expectAtRest(210, 2.1);
    QTest::keyClick(&slider, Qt::Key_PageUp);
    expectAtRest(260, 2.6);
    QTest::keyClick(&slider, Qt::Key_Home);
    expectAtRest(30, 0.3);
    QTest::keyClick(&slider, Qt::Key_End);
    expectAtRest(300, 3.0);
}

TEST_F(Gamma, LoadingAndSavingDoesNotMoveIt)
{
    for (int slider = 30; slider <= 300; slider += 9) {
        bar("gamma_set").setValue(slider);
        for (int round = 0; round < 3; ++round) {
            dialog().writeConfig(QStringLiteral("round"));
            bar("gamma_set").setValue(slider == 200 ? 100 : 200);
            dialog().loadConfig(QStringLiteral("round"));
        }
        expectAtRest(slider, slider / 100.0);
    }
}
