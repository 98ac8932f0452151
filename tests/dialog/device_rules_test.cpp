// Long paper, cache, power times and the preview button.
#include "rules_paper.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QTabWidget>

#include <gtest/gtest.h>

#include <algorithm>

using namespace kestrel::test;

namespace {

const QString kWhole = QStringLiteral("最大扫描范围");

class LongPaper : public PaperRules
{
protected:
    double maximum() { return real("br_y").maximum(); }
    /// Takes the whole-area entry out of the list and stands on A4 upright.
    void dropWhole()
    {
        auto& list = combo("scanrange_setting");
        list.removeItem(list.findText(kWhole));
        list.setCurrentIndex(list.findText(QStringLiteral("ISO A4 - 21.0 x 29.7 厘米")));
        real("tl_y").setValue(12.5);
    }
};

} // namespace

TEST_F(LongPaper, ChangesTheHeightsLimitAndTakesAll)
{
    ASSERT_DOUBLE_EQ(maximum(), 355.6);
    real("tl_y").setValue(20.0);
    click(button("long_paper_scan"));
    EXPECT_DOUBLE_EQ(maximum(), 3000.0);
    EXPECT_DOUBLE_EQ(real("br_y").value(), 3000.0);
    EXPECT_DOUBLE_EQ(real("tl_y").value(), 0.0);
    EXPECT_EQ(combo("scanrange_setting").currentText(), kWhole);
    EXPECT_FALSE(dialog().updating);
    click(button("long_paper_scan"));
    EXPECT_DOUBLE_EQ(maximum(), 355.6);
    EXPECT_DOUBLE_EQ(real("br_y").value(), 355.6);
    EXPECT_EQ(combo("scanrange_setting").currentText(), kWhole);
    EXPECT_FALSE(dialog().updating);
}

TEST_F(LongPaper, WithoutTheWholeAreaInTheListOnlyTheLimitChanges)
{
    dropWhole();
    const int paper = combo("scanrange_setting").currentIndex();
    button("long_paper_scan").setChecked(true);
    EXPECT_DOUBLE_EQ(maximum(), 3000.0);
    EXPECT_DOUBLE_EQ(real("br_y").value(), 297.0);
    EXPECT_DOUBLE_EQ(real("tl_y").value(), 12.5);
    EXPECT_EQ(combo("scanrange_setting").currentIndex(), paper);
    EXPECT_FALSE(dialog().updating);
}

TEST_F(LongPaper, WithoutTheWholeAreaALongHeightIsCut)
{
    dropWhole();
    button("long_paper_scan").setChecked(true);
    real("br_y").setValue(1000.0);
    combo("scanrange_setting").setCurrentIndex(3);
    real("br_y").setValue(1000.0);
    const int paper = combo("scanrange_setting").currentIndex();
    button("long_paper_scan").setChecked(false);
    EXPECT_DOUBLE_EQ(real("br_y").value(), 355.6);
    EXPECT_EQ(combo("scanrange_setting").currentIndex(), paper);
}

TEST_F(LongPaper, TheWholeAreaIsLookedForByItsText)
{
    dropWhole();
    auto& list = combo("scanrange_setting");
    list.insertItem(1, kWhole);
    button("long_paper_scan").setChecked(true);
    EXPECT_EQ(list.currentIndex(), 1);
    EXPECT_DOUBLE_EQ(real("br_y").value(), 3000.0);
}

TEST_F(PaperRules, CacheModeShowsOnePanel)
{
    auto& mode = combo("cachemode");
    child<QTabWidget>(dialog(), "tabWidget").setCurrentIndex(9);
    for (const int index : {1, 2, 0, 2, 1, 0}) {
        choose(mode, index);
        EXPECT_EQ(widget("cachemode_none").isVisible(), index == 0) << index;
        EXPECT_EQ(widget("cachemode_pagecount").isVisible(), index == 1) << index;
        EXPECT_EQ(widget("cachemode_memory").isVisible(), index == 2) << index;
    }
    mode.setCurrentIndex(-1);
    EXPECT_FALSE(widget("cachemode_none").isVisible());
    EXPECT_FALSE(widget("cachemode_pagecount").isVisible());
    EXPECT_TRUE(widget("cachemode_memory").isVisible());
}

TEST_F(PaperRules, CacheDefaultsDisableTheirSliders)
{
    choose(combo("cachemode"), 2);
    for (const bool on : {false, true}) {
        if (checked("cachemode_use_default") != on) {
            click(button("cachemode_use_default"));
        }
        EXPECT_EQ(bar("cachemode_value").isEnabled(), !on);
    }
    choose(combo("cachemode"), 0);
    for (const bool on : {false, true}) {
        if (checked("cachemode_image_num_default") != on) {
            click(button("cachemode_image_num_default"));
        }
        EXPECT_EQ(bar("cachemode_image_num").isEnabled(), !on);
    }
    EXPECT_EQ(bar("cachemode_image_num").minimum(), 1);
    EXPECT_EQ(bar("cachemode_image_num").maximum(), 100);
    EXPECT_EQ(bar("cachemode_page_num").minimum(), 1);
    EXPECT_EQ(bar("cachemode_page_num").maximum(), 25);
}

TEST_F(PaperRules, PowerOffNeverComesBeforePowerSaving)
{
    auto& saving = bar("powersaving_time");
    auto& off = bar("poweroff_time");
    saving.setValue(15);
    off.setValue(120);
    saving.setValue(200);
    EXPECT_EQ(off.value(), 200);
    off.setValue(100);
    EXPECT_EQ(off.value(), 200);
    EXPECT_EQ(label("powersaving_value"), QStringLiteral("200"));
    EXPECT_EQ(label("poweroff_value"), QStringLiteral("200"));
    off.setValue(201);
    EXPECT_EQ(off.value(), 201);
    saving.setValue(50);
    EXPECT_EQ(off.value(), 201);
    off.setValue(50);
    EXPECT_EQ(off.value(), 50);
    off.setValue(49);
    EXPECT_EQ(off.value(), 50);
    saving.setValue(51);
    EXPECT_EQ(off.value(), 51);
}

TEST_F(PaperRules, PowerTimesHoldTheirOrderOverAllPairs)
{
    auto& saving = bar("powersaving_time");
    auto& off = bar("poweroff_time");
    for (int s = 1; s <= 240; s += 17) {
        for (int o = 1; o <= 480; o += 13) {
            saving.setValue(s);
            off.setValue(o);
            EXPECT_EQ(saving.value(), s);
            EXPECT_EQ(off.value(), std::max(s, o)) << s << ' ' << o;
            EXPECT_EQ(label("powersaving_value"), QString::number(s));
            EXPECT_EQ(label("poweroff_value"), QString::number(std::max(s, o)));
        }
    }
}

TEST_F(PaperRules, KeysCannotPullPowerOffUnderPowerSaving)
{
    auto& off = bar("poweroff_time");
    bar("powersaving_time").setValue(118);
    off.setValue(120);
    ASSERT_TRUE(reveal(off));
    ASSERT_TRUE(off.isEnabled());
    off.setFocus();
    for (int i = 0; i < 5; ++i) {
        QTest::keyClick(&off, Qt::Key_Left);
    }
    EXPECT_EQ(off.value(), 118);
    QTest::keyClick(&off, Qt::Key_Home);
    EXPECT_EQ(off.value(), 118);
}

TEST_F(PaperRules, PreviewButtonStandsOnThePreviewTabOnly)
{
    auto& tabs = child<QTabWidget>(dialog(), "tabWidget");
    EXPECT_FALSE(button("preview").isVisible());
    for (int index = 0; index < tabs.count(); ++index) {
        tabs.setCurrentIndex(5);
        EXPECT_TRUE(button("preview").isVisible());
        tabs.setCurrentIndex(index);
        EXPECT_EQ(button("preview").isVisible(), tabs.currentIndex() == 5) << index;
    }
    EXPECT_EQ(tabs.tabText(5), QStringLiteral("预览"));
}
