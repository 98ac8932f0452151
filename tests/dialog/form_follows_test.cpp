// Controls of the form that follow others, as seen on the bound and shown dialog.
#include "rules_range.h"

#include <QTabBar>
#include <QTabWidget>

#include <array>
#include <limits>

using namespace kestrel::test;

namespace {

constexpr Device kFeeder216{"", 216.0, 356.0, 3000.0};
constexpr int kSeparationTab = 7;

class FormFollows : public RangeTest
{
protected:
    FormFollows() { start(kFeeder216); }

    QTabWidget& tabs() { return child<QTabWidget>(dialog(), "tabWidget"); }
    int tabWidth(int index) { return tabs().tabBar()->tabRect(index).width(); }
    int tabWidth(const char* page) { return tabWidth(tabs().indexOf(&widget(page))); }
};

} // namespace

TEST_F(FormFollows, StoppingAfterAMultifeedNeedsOneOfTheDetections)
{
    struct Row
    {
        bool ultrasonic, length;
    };
    // Each of the two goes on and off again while the other is off and while it is on.
    constexpr std::array kRows{Row{false, false}, Row{true, false}, Row{true, true},
                               Row{false, true},  Row{true, true},  Row{true, false},
                               Row{false, false}, Row{false, true}, Row{false, false}};
    for (const auto& [ultrasonic, length] : kRows) {
        for (const auto& [name, on] :
             {std::pair("ultrasonic", ultrasonic), std::pair("length_detection", length)}) {
            if (checked(name) != on) {
                click(button(name));
            }
            ASSERT_EQ(checked(name), on) << name;
        }
        EXPECT_EQ(widget("stop_scanning_after_multifeed").isEnabled(), ultrasonic || length)
            << ultrasonic << length;
        EXPECT_EQ(widget("length_detection_value").isEnabled(), length);
    }
}

TEST_F(FormFollows, ATabThatIsDisabledTakesNoRoomInTheBar)
{
    EXPECT_EQ(tabWidth(kSeparationTab), 0);
    EXPECT_GT(tabWidth("tab_colordrop"), 0);
    auto& detection = button("color_detection_image_front");
    click(detection);
    ASSERT_TRUE(detection.isChecked());
    EXPECT_EQ(tabWidth("tab_colordrop"), 0);
    EXPECT_GT(tabWidth("tab_color_detection"), 0);
    click(detection);
    ASSERT_FALSE(detection.isChecked());
    EXPECT_GT(tabWidth("tab_colordrop"), 0);
    EXPECT_EQ(tabWidth("tab_color_detection"), 0);
    EXPECT_EQ(tabWidth(kSeparationTab), 0);
}

TEST_F(FormFollows, TheButtonsBelowStandInTheirOrder)
{
    tabs().setCurrentIndex(5); // the preview's button is there with its tab
    settle();
    int before = std::numeric_limits<int>::min();
    for (const char* const name : {"default_setting", "preview", "sure", "cancel"}) {
        ASSERT_TRUE(widget(name).isVisible()) << name;
        const int x = widget(name).mapTo(&dialog(), QPoint(0, 0)).x();
        EXPECT_GT(x, before) << name;
        before = x;
    }
}

TEST_F(FormFollows, AnyOrientationButZeroIsUpright)
{
    QMetaObject::invokeMethod(&dialog(), "testGroup", Q_ARG(int, 0));
    ASSERT_FALSE(dialog().portrait);
    const double wideBefore = wide();
    const double highBefore = real("br_y").value();
    for (const int id : {7, -1}) {
        QMetaObject::invokeMethod(&dialog(), "testGroup", Q_ARG(int, id));
        EXPECT_TRUE(dialog().portrait) << id;
        EXPECT_EQ(wide(), highBefore) << id;
        EXPECT_EQ(real("br_y").value(), wideBefore) << id;
        EXPECT_FALSE(dialog().updating) << id;
        QMetaObject::invokeMethod(&dialog(), "testGroup", Q_ARG(int, 0));
        EXPECT_EQ(wide(), wideBefore) << id;
    }
}

TEST_F(FormFollows, OffsetsAreHeldAlsoWhileTheRulesWrite)
{
    dialog().updating = true;
    real("tl_x").setValue(real("tl_x").maximum());
    real("tl_y").setValue(real("tl_y").maximum());
    dialog().updating = false;
    EXPECT_NEAR(left(), real("br_x").maximum() - wide(), 1e-9);
    EXPECT_NEAR(top(), real("br_y").maximum() - real("br_y").value(), 1e-9);
}

TEST_F(FormFollows, ATwinIsEqualBeforeARuleReadsIt)
{
    // Front detection on: the rule unchecks the boxes, and their twins with them.
    click(button("color_detection_image_front"));
    for (const char* const name :
         {"front_color", "front_gray", "front_bw", "rear_color", "rear_gray", "rear_bw"}) {
        const std::string twin = std::string(name) + "_dropout";
        EXPECT_FALSE(checked(name));
        EXPECT_FALSE(checked(twin.c_str()));
    }
    EXPECT_TRUE(checked("color_detection_checkbox"));
    bool seen = false;
    QObject::connect(&button("color_detection_image_front"), &QAbstractButton::toggled, &dialog(),
                     [&](bool on) {
                         seen = true;
                         EXPECT_EQ(checked("color_detection_checkbox"), on);
                         EXPECT_EQ(checked("front_color"), checked("front_color_dropout"));
                     });
    click(button("color_detection_image_front"));
    EXPECT_TRUE(seen);
}
