// The side-mode mask, orientation, centring and the scan area as they come from the file.
#include "config_bench.h"

#include <QButtonGroup>

using namespace kestrel;
using namespace kestrel::test;

namespace {

class LoadingSideMode : public SettingsBench
{
protected:
    LoadingSideMode() : m_scanner(fullScanner()) { bind(m_scanner); }

    void load(const StoredList& values)
    {
        dialog().settings->remove(QStringLiteral("L"));
        for (const auto& [key, text] : values) {
            store(QStringLiteral("L/") + key, text);
        }
        dialog().loadConfig(QStringLiteral("L"));
    }
    void loadMask(const char* text)
    {
        load({{QStringLiteral("multistream"), QString::fromUtf8(text)}});
    }

    /// The checked mode boxes as mask bits.
    int boxes()
    {
        int bits = 0;
        for (int id = 0; id < 6; ++id) {
            const auto* const button = get<QButtonGroup>("buttonGroup_multistream").button(id);
            bits |= button->isChecked() ? 1 << id : 0;
        }
        return bits;
    }
    /// The checked detection buttons as mask bits.
    int detections()
    {
        return (checked("color_detection_image_front") ? 64 : 0) +
               (checked("color_detection_image_back") ? 128 : 0);
    }
    /// The enabled detection groups as mask bits.
    int groups()
    {
        const auto on = [this](const char* name, int bit) {
            return get<QWidget>(name).isEnabledTo(&get<QWidget>("tab_color_detection")) ? bit : 0;
        };
        return on("groupBox_front_autodetection", 64) + on("groupBox_back_autodetection", 128);
    }

    void chooseSource(const char* text)
    {
        auto& source = get<QComboBox>("source");
        source.setCurrentIndex(source.findText(QString::fromUtf8(text)));
        ASSERT_EQ(source.currentText(), QString::fromUtf8(text));
    }

    FakeScanner m_scanner;
};

} // namespace

TEST_F(LoadingSideMode, EveryMaskWithoutDetectionChecksItsBoxes)
{
    for (int mask = 1; mask < 64; ++mask) {
        loadMask("4");
        loadMask(QByteArray::number(mask).constData());
        EXPECT_EQ(dialog().mask(), mask);
        EXPECT_EQ(boxes(), mask);
        EXPECT_EQ(detections(), 0);
        EXPECT_EQ(groups(), 0);
    }
}

TEST_F(LoadingSideMode, NoMaskMeansFrontColour)
{
    for (const char* const text : {"0", "abc", "-1", "65536", "4294967296", "1.5", "0x10"}) {
        loadMask("27");
        loadMask(text);
        EXPECT_EQ(dialog().mask(), 4) << text;
        EXPECT_EQ(boxes(), 4) << text;
    }
    loadMask("193");
    ASSERT_EQ(detections(), 192);
    loadMask("x");
    EXPECT_EQ(dialog().mask(), 4);
    EXPECT_EQ(boxes(), 4);
    EXPECT_EQ(detections(), 0);
    EXPECT_EQ(groups(), 0);
}

TEST_F(LoadingSideMode, AMissingMaskChangesNothing)
{
    loadMask("27");
    loadMask("");
    EXPECT_EQ(dialog().mask(), 27);
    load({});
    EXPECT_EQ(dialog().mask(), 27);
    EXPECT_EQ(boxes(), 27);
}

TEST_F(LoadingSideMode, OnlyTheLowByteCounts)
{
    loadMask("265"); // 256 + 9
    EXPECT_EQ(dialog().mask(), 9);
    EXPECT_EQ(boxes(), 9);
    loadMask("65535");
    EXPECT_EQ(dialog().mask(), 255);
    EXPECT_EQ(detections(), 192);
    // A number it is, though nothing is left of it.
    loadMask("256");
    EXPECT_EQ(dialog().mask(), 0);
    EXPECT_EQ(boxes(), 0);
    EXPECT_EQ(detections(), 0);
}

TEST_F(LoadingSideMode, DetectionBitsCheckTheirButtons)
{
    for (const int bits : {64, 128, 192}) {
        for (const int before : {4, 64, 128, 192}) {
            loadMask(QByteArray::number(before).constData());
            loadMask(QByteArray::number(bits).constData());
            EXPECT_EQ(dialog().mask(), bits) << before;
            EXPECT_EQ(detections(), bits) << before;
            EXPECT_EQ(groups(), bits) << before;
        }
    }
}

TEST_F(LoadingSideMode, TheRuleOnTheDetectionButtonsUnchecksTheBoxes)
{
    loadMask("27");
    loadMask("64");
    EXPECT_EQ(boxes(), 0);
    EXPECT_FALSE(get<QWidget>("front_widget").isEnabled());
    EXPECT_TRUE(checked("test_button"));
    // What is under the detection is kept in the mask and comes back with it.
    loadMask("91"); // 64 + 27
    EXPECT_EQ(dialog().mask(), 91);
    EXPECT_EQ(boxes(), 0);
    get<QAbstractButton>("color_detection_image_front").setChecked(false);
    EXPECT_EQ(boxes(), 27);
    EXPECT_TRUE(checked("color_front_image"));
}

TEST_F(LoadingSideMode, WithDetectionOnTheLoaderLeavesTheBoxes)
{
    loadMask("64");
    // Nobody but code can do this, and the loader does not undo it.
    get<QAbstractButton>("front_gray").setChecked(true);
    loadMask("64");
    EXPECT_EQ(boxes(), 2);
    EXPECT_EQ(dialog().mask(), 64);
}

TEST_F(LoadingSideMode, DetectionGoesOffInOneLoadUnderEverySource)
{
    for (const char* const source : {"自动选择纸张来源", "文档进纸器"}) {
        for (const char* const before : {"64", "128", "192"}) {
            chooseSource(source);
            loadMask(before);
            loadMask("36");
            EXPECT_EQ(detections(), 0) << source << ' ' << before;
            EXPECT_EQ(dialog().mask(), 36) << source << ' ' << before;
            EXPECT_EQ(boxes(), 36) << source << ' ' << before;
            EXPECT_EQ(groups(), 0) << source << ' ' << before;
        }
    }
}

TEST_F(LoadingSideMode, BackDetectionBringsTheFrontsUnderAutomaticSource)
{
    chooseSource("自动选择纸张来源");
    loadMask("128");
    EXPECT_EQ(detections(), 192);
    EXPECT_EQ(dialog().mask(), 192);
    EXPECT_EQ(groups(), 192);
    loadMask("192");
    loadMask("128");
    EXPECT_EQ(detections(), 192);
    EXPECT_EQ(dialog().mask(), 192);
}

TEST_F(LoadingSideMode, TheSourceComesAfterTheMaskAndRulesOverIt)
{
    load({{QStringLiteral("multistream"), QStringLiteral("54")},
          {QStringLiteral("source"), QStringLiteral("1")}});
    EXPECT_EQ(get<QComboBox>("source").currentText(), QStringLiteral("平板"));
    EXPECT_EQ(dialog().mask(), 6);
    EXPECT_EQ(boxes(), 6);
}

// Only the feeder gets back what the source before it has taken along.
TEST_F(LoadingSideMode, TheFlatbedsRuleStandsOverAStoredDetection)
{
    const auto both = [this](const char* source) {
        load({{QStringLiteral("multistream"), QStringLiteral("192")},
              {QStringLiteral("source"), QString::fromLatin1(source)}});
    };
    both("0");
    ASSERT_EQ(dialog().mask(), 192);
    both("1");
    EXPECT_EQ(dialog().mask() & 192, 0);
    EXPECT_FALSE(get<QAbstractButton>("color_detection_image_back").isChecked());
    both("0");
    EXPECT_EQ(dialog().mask(), 192);
}

TEST_F(LoadingSideMode, TheOrientationFlagFollowsTheButtons)
{
    const auto orientation = QStringLiteral("vertical_range");
    for (const auto& [text, portrait] :
         {std::pair("0", false), std::pair("1", true), std::pair("2", false), std::pair("1", true),
          std::pair("abc", false), std::pair("01", true)}) {
        load({{orientation, QString::fromUtf8(text)}});
        EXPECT_EQ(checked("vertical_range"), portrait) << text;
        EXPECT_EQ(checked("horizontal_range"), !portrait) << text;
        EXPECT_EQ(dialog().portrait, portrait) << text;
    }
}

TEST_F(LoadingSideMode, AClickAfterLoadingTurnsTheSheetOnce)
{
    load({{QStringLiteral("vertical_range"), QStringLiteral("0")},
          {QStringLiteral("scanrange_setting"), QStringLiteral("3")}});
    ASSERT_EQ(get<QDoubleSpinBox>("br_x").value(), 210.0);
    ASSERT_EQ(get<QDoubleSpinBox>("br_y").value(), 148.0);
    press(get<QAbstractButton>("vertical_range"));
    EXPECT_EQ(get<QDoubleSpinBox>("br_x").value(), 148.0);
    EXPECT_EQ(get<QDoubleSpinBox>("br_y").value(), 210.0);
}

TEST_F(LoadingSideMode, CentringMovesAndLocksTheLeftEdge)
{
    auto& left = get<QDoubleSpinBox>("tl_x");
    auto& width = get<QDoubleSpinBox>("br_x");
    width.setMaximum(216.0);
    load({{QStringLiteral("center_alignment"), QStringLiteral("0")}});
    EXPECT_TRUE(left.isEnabledTo(&get<QWidget>("tab_page_size")));
    EXPECT_TRUE(get<QWidget>("tl_x_label").isEnabledTo(&get<QWidget>("tab_page_size")));
    left.setValue(0.0);
    width.setValue(210.0);
    load({{QStringLiteral("center_alignment"), QStringLiteral("1")}});
    EXPECT_EQ(left.value(), 3.0);
    EXPECT_FALSE(left.isEnabled());
    EXPECT_FALSE(get<QWidget>("tl_x_label").isEnabled());
    EXPECT_TRUE(checked("center_alignment"));
    // Also where the box was checked before.
    left.setValue(1.0);
    load({{QStringLiteral("center_alignment"), QStringLiteral("1")}});
    EXPECT_EQ(left.value(), 3.0);
    for (const char* const text : {"2", "abc", "Enable"}) {
        load({{QStringLiteral("center_alignment"), QStringLiteral("1")}});
        load({{QStringLiteral("center_alignment"), QString::fromUtf8(text)}});
        EXPECT_FALSE(checked("center_alignment")) << text;
        EXPECT_TRUE(left.isEnabledTo(&get<QWidget>("tab_page_size"))) << text;
    }
}

TEST_F(LoadingSideMode, TheStoredLeftEdgeIsLoadedAfterCentring)
{
    load({{QStringLiteral("center_alignment"), QStringLiteral("1")},
          {QStringLiteral("tl_x"), QStringLiteral("1.5")}});
    EXPECT_EQ(get<QDoubleSpinBox>("tl_x").value(), 1.5);
    EXPECT_FALSE(get<QWidget>("tl_x").isEnabled());
}

TEST_F(LoadingSideMode, ANewHeightIsNotHeldByTheOffsetOfBefore)
{
    put(get<QWidget>("br_y"), QStringLiteral("100"));
    put(get<QWidget>("tl_y"), QStringLiteral("200"));
    const StoredList area{{QStringLiteral("br_y"), QStringLiteral("300")},
                          {QStringLiteral("tl_y"), QStringLiteral("50")}};
    load(area);
    EXPECT_EQ(get<QDoubleSpinBox>("br_y").value(), 300.0);
    EXPECT_EQ(get<QDoubleSpinBox>("tl_y").value(), 50.0);
}

TEST_F(LoadingSideMode, APaperThatDoesNotFitAcrossIsLoadedUpright)
{
    load({{QStringLiteral("scanrange_setting"), QStringLiteral("3")}});
    load({{QStringLiteral("vertical_range"), QStringLiteral("0")},
          {QStringLiteral("scanrange_setting"), QStringLiteral("2")}});
    EXPECT_TRUE(checked("vertical_range"));
    EXPECT_TRUE(dialog().portrait);
    EXPECT_EQ(get<QDoubleSpinBox>("br_x").value(), 210.0);
}
