// The scanner's hardware button picks its template.
#include "config_manager.h"

using namespace kestrel;
using namespace kestrel::test;

namespace {

class ButtonTemplate : public TemplatesBench
{
protected:
    /// As a host asks for it.
    int pushed(int button) { return setButtonTemplage(dialog().host(), button); }
};

} // namespace

TEST_F(ButtonTemplate, PicksAndLoadsTheTemplateOfItsNumber)
{
    start({QStringLiteral("button1"), QStringLiteral("button2"), QStringLiteral("button10")});
    for (const auto& [button, index] : {std::pair(2, 2), std::pair(1, 1), std::pair(10, 3)}) {
        EXPECT_EQ(pushed(button), 1);
        EXPECT_EQ(templates().currentIndex(), index);
        EXPECT_EQ(brightness(), index);
    }
}

TEST_F(ButtonTemplate, ANumberWithoutATemplateChangesNothing)
{
    start({QStringLiteral("button1"), QStringLiteral("button2")}, QStringLiteral("1"));
    const QStringList before = state();
    for (const int button : {0, 3, 12, -1, 2147483647, -2147483647 - 1}) {
        EXPECT_EQ(pushed(button), 0) << button;
        EXPECT_EQ(templates().currentIndex(), 1) << button;
    }
    expectState(before);
}

TEST_F(ButtonTemplate, TheFirstEntryIsNeverFound)
{
    start({QStringLiteral("A")});
    store(list, QStringLiteral("button2;A"));
    bind(m_scanner);
    ASSERT_EQ(templates().itemText(0), QStringLiteral("button2"));
    templates().setCurrentIndex(1);
    EXPECT_EQ(pushed(2), 0);
    EXPECT_EQ(templates().currentIndex(), 1);
}

TEST_F(ButtonTemplate, NamesAreComparedByteForByte)
{
    start({QStringLiteral("Button3"), QStringLiteral("button3 "), QStringLiteral(" button3"),
           QStringLiteral("button03"), QStringLiteral("button33"), QStringLiteral("ｂutton3"),
           QStringLiteral("BUTTON3")});
    EXPECT_EQ(pushed(3), 0);
    EXPECT_EQ(templates().currentIndex(), 0);
}

TEST_F(ButtonTemplate, TheFirstOfEqualNamesIsTaken)
{
    start({QStringLiteral("A"), QStringLiteral("button4"), QStringLiteral("button4")});
    EXPECT_EQ(pushed(4), 1);
    EXPECT_EQ(templates().currentIndex(), 2);
}

TEST_F(ButtonTemplate, NegativeNumbersHaveNamesToo)
{
    start({QStringLiteral("button-1"), QStringLiteral("button0")});
    EXPECT_EQ(pushed(-1), 1);
    EXPECT_EQ(templates().currentIndex(), 1);
    EXPECT_EQ(pushed(0), 1);
    EXPECT_EQ(templates().currentIndex(), 2);
}

TEST_F(ButtonTemplate, TheSameButtonAgainKeepsEdits)
{
    start({QStringLiteral("button1")});
    EXPECT_EQ(pushed(1), 1);
    setBrightness(-5);
    // The template is selected already: nothing is loaded.
    EXPECT_EQ(pushed(1), 1);
    EXPECT_EQ(brightness(), -5);
}

TEST_F(ButtonTemplate, WritesNothingAndGoesBackWithoutOk)
{
    start({QStringLiteral("button1")}, QStringLiteral("0"));
    const QByteArray before = bytes();
    EXPECT_EQ(pushed(1), 1);
    settle();
    EXPECT_EQ(bytes(), before);
    cancel();
    EXPECT_EQ(templates().currentIndex(), 0);
    EXPECT_EQ(brightness(), 50);
}

TEST_F(ButtonTemplate, WhatTheButtonPickedIsWhatIsScanned)
{
    start({QStringLiteral("button1")});
    m_scanner.clearJournal();
    ASSERT_EQ(pushed(1), 1);
    setAllParamBySettingUI(dialog().host());
    EXPECT_EQ(m_scanner.journal().setsOf("brightness"), std::vector<std::string>{"1"});
}

TEST_F(ButtonTemplate, ATemplateMadeInTheManagerIsFound)
{
    start({});
    openManager([this] { add(QStringLiteral("button5")); });
    EXPECT_EQ(pushed(5), 1);
    EXPECT_EQ(templates().currentIndex(), 1);
}
