// Every setting: its text in the file, and back to its control.
#include "config_bench.h"

#include <map>

using namespace kestrel;
using namespace kestrel::test;

namespace {

/// What is put into a control, and the text that has to be in the file then.
struct Sample
{
    const char* value;
    const char* text;
};

/// At least two values of every control but the side-mode mask and the custom resolution, the ends
/// of its range among them. The scanner is the full stand-in.
const std::map<std::string, std::vector<Sample>>& samples()
{
    static const std::vector<Sample> box{{"1", "1"}, {"0", "0"}};
    static const std::vector<Sample> word{{"1", "Enable"}, {"0", "Disable"}};
    static const std::vector<Sample> crop{{"-15", "-15"}, {"15", "15"}, {"2.5", "2.5"}, {"0", "0"}};
    static const std::map<std::string, std::vector<Sample>> table{
        {"source", {{"1", "1"}, {"2", "2"}, {"0", "0"}}},
        {"resolution", {{"0", "0"}, {"6", "6"}, {"3", "3"}}},
        {"brightness", {{"-100", "-100"}, {"100", "100"}, {"7", "7"}}},
        {"contrast", {{"-100", "-100"}, {"100", "100"}, {"-7", "-7"}}},
        {"gamma", {{"30", "30"}, {"300", "300"}, {"115", "115"}, {"100", "100"}}},
        {"gray_doc_type", {{"1", "1"}, {"2", "2"}, {"0", "0"}}},
        {"gray_value", {{"30", "30"}, {"1", "1"}}},
        {"binarization", {{"1", "1"}, {"2", "2"}, {"0", "0"}}},
        {"binarization_value", {{"1", "1"}, {"30", "30"}, {"17", "17"}}},
        {"invert", {{"1", "1"}, {"0", "0"}}},
        {"color_register", {{"0", "0"}, {"3", "3"}, {"1", "1"}}},
        {"redhead", box},
        {"acd_nocolor_mode_front", {{"1", "1"}, {"0", "0"}}},
        {"acd_mode_front", {{"1", "1"}, {"0", "0"}}},
        {"acd_sensitivity_front", {{"1", "1"}, {"99", "99"}}},
        {"acd_nocolor_mode_back", {{"1", "1"}, {"0", "0"}}},
        {"acd_mode_back", {{"1", "1"}, {"0", "0"}}},
        {"acd_sensitivity_back", {{"1", "1"}, {"99", "99"}}},
        {"color_dropout", {{"3", "3"}, {"1", "1"}, {"0", "0"}}},
        {"adv_color_dropout", box},
        {"autocropdeskew", {{"1", "1"}, {"0", "0"}}},
        {"long_paper_scan", box},
        {"vertical_range", {{"1", "1"}}},
        {"scanrange_setting", {{"0", "0"}, {"1", "1"}, {"4", "4"}, {"6", "6"}, {"2", "2"}}},
        {"center_alignment", box},
        {"br_x", {{"100", "100"}, {"148.5", "148.5"}, {"215.9", "215.9"}, {"0", "0"}}},
        {"br_y", {{"100", "100"}, {"148.5", "148.5"}, {"355.6", "355.6"}, {"0", "0"}}},
        {"tl_x", {{"5.9", "5.9"}, {"0", "0"}, {"2.1", "2.1"}}},
        {"tl_y", {{"12.3", "12.3"}, {"58.6", "58.6"}, {"0.1", "0.1"}, {"0", "0"}}},
        {"crop_adjust_top", crop},
        {"crop_adjust_bottom", crop},
        {"crop_adjust_left", crop},
        {"crop_adjust_right", crop},
        {"background_setting_combobox", {{"1", "1"}, {"2", "2"}, {"0", "0"}}},
        {"prefeed", box},
        {"prefeed_time", {{"0", "0"}, {"5", "5"}, {"2.5", "2.5"}}},
        {"waitingjob_time", {{"120", "120"}, {"5", "5"}, {"0", "0"}}},
        {"ultrasonic", word},
        {"additional_length_detection", word},
        {"additional_length_detection_length", {{"10.5", "10.5"}, {"58.6", "58.6"}, {"0", "0"}}},
        {"stop_scanning_after_multifeed", box},
        {"rotate", {{"4", "4"}, {"1", "1"}, {"0", "0"}}},
        {"auto_orientation_mode", {{"2", "2"}, {"1", "1"}, {"0", "0"}}},
        {"split_image", {{"1", "1"}, {"2", "2"}, {"0", "0"}}},
        {"two_side_rotate", {{"1", "1"}}},
        {"remove_blankpage", box},
        {"blankpage_threshold", {{"99", "99"}, {"0", "0"}, {"50", "50"}}},
        {"punch_hole_removal", box},
        {"despeckle", box},
        {"despeckle_ratios", {{"30", "30"}, {"1", "1"}, {"12", "12"}}},
        {"despeckle_dotsnumber", {{"255", "255"}, {"24", "24"}, {"0", "0"}}},
        {"background_processing", {{"1", "1"}, {"2", "2"}, {"0", "0"}}},
        {"background_processing_sensitivity", {{"20", "20"}, {"0", "0"}, {"11", "11"}}},
        {"background_processing_setting", {{"1", "1"}, {"0", "0"}}},
        {"cachemode", {{"1", "1"}, {"2", "2"}, {"0", "0"}}},
        {"cachemode_value", {{"512", "512"}, {"1", "1"}, {"64", "64"}}},
        {"cachemode_use_default", box},
        {"powersaving", word},
        {"powersaving_time", {{"1", "1"}, {"240", "240"}, {"30", "30"}}},
        {"poweroff", word},
        {"poweroff_time", {{"480", "480"}, {"15", "15"}, {"200", "200"}}},
        {"eject_paper_opposite_side", box},
    };
    return table;
}

class RoundTrip : public SettingsBench
{
protected:
    RoundTrip() : m_scanner(fullScanner()) { bind(m_scanner); }

    static QString key(const QString& group, const Setting& setting)
    {
        return group + QLatin1Char('/') + QLatin1String(setting.key);
    }

    /// Writes what the dialog shows, turns to the device's defaults and to the other of two states,
    /// and loads: everything has to be as it was.
    void expectToComeBack(const std::string& what)
    {
        const QString group = QStringLiteral("T");
        const QStringList before = state();
        dialog().writeConfig(group);
        dialog().loadConfig(QStringLiteral("ScannerAdefault"));
        dialog().loadConfig(group);
        expectState(before, what + " by way of the defaults");
        changeEverything();
        EXPECT_FALSE(state() == before) << what;
        dialog().loadConfig(group);
        expectState(before, what + " by way of other settings");
    }

    /// Moves every control away from where it is.
    void changeEverything()
    {
        for (const Setting& setting : settingsTable()) {
            // The area fields hold each other; the paper size moves them.
            const QString name = QLatin1String(setting.control);
            if (setting.control == nullptr || name.startsWith(QLatin1String("br_")) ||
                name.startsWith(QLatin1String("tl_"))) {
                continue;
            }
            QWidget& control = controlOf(setting);
            const QString before = shown(control);
            for (const char* const other : {"1", "0", "2", "33"}) {
                put(control, QLatin1String(other));
                if (shown(control) != before) {
                    break;
                }
            }
        }
        loadMask(dialog().mask() == 4 ? 3 : 4); // front only: the flatbed has no back
    }

    /// Sets the side modes as loading sets them; other ways are the rules' matter.
    void loadMask(int mask)
    {
        store(QStringLiteral("M/multistream"), QString::number(mask));
        dialog().loadConfig(QStringLiteral("M"));
    }

    FakeScanner m_scanner;
};

} // namespace

TEST_F(RoundTrip, EverySettingHasSamples)
{
    for (const Setting& setting : settingsTable()) {
        const bool special =
            setting.encoding == Encoding::Mask || setting.encoding == Encoding::CustomResolution;
        EXPECT_EQ(samples().count(setting.key), special ? 0U : 1U) << setting.key;
    }
    EXPECT_EQ(samples().size(), settingsTable().size() - 2);
}

TEST_F(RoundTrip, EveryControlsTextInTheFile)
{
    for (const Setting& setting : settingsTable()) {
        const auto found = samples().find(setting.key);
        if (found == samples().end()) {
            continue;
        }
        for (const Sample& sample : found->second) {
            dialog().loadConfig(QStringLiteral("ScannerAdefault"));
            put(controlOf(setting), QLatin1String(sample.value));
            ASSERT_EQ(shown(controlOf(setting)), QLatin1String(sample.value)) << setting.key;
            const QString group =
                setting.inWorkingGroup() ? QStringLiteral("T") : QStringLiteral("D");
            if (setting.inWorkingGroup()) {
                dialog().writeConfig(group);
            } else {
                dialog().writeDefaultConfig(group);
            }
            EXPECT_EQ(onDisk(key(group, setting)), QLatin1String(sample.text)) << setting.key;
        }
    }
}

TEST_F(RoundTrip, EverySettingComesBack)
{
    for (const Setting& setting : settingsTable()) {
        const auto found = samples().find(setting.key);
        if (found == samples().end() || !setting.inWorkingGroup()) {
            continue;
        }
        for (const Sample& sample : found->second) {
            dialog().loadConfig(QStringLiteral("ScannerA"));
            put(controlOf(setting), QLatin1String(sample.value));
            ASSERT_EQ(shown(controlOf(setting)), QLatin1String(sample.value)) << setting.key;
            expectToComeBack(std::string(setting.key) + " at " + sample.value);
        }
    }
}

TEST_F(RoundTrip, EverySettingSurvivesTheNextStart)
{
    changeEverything();
    const QStringList changed = state();
    press(get<QAbstractButton>("sure"));
    restart(m_scanner);
    expectState(changed);
}

TEST_F(RoundTrip, EverySideModeComesBack)
{
    const QString group = QStringLiteral("T");
    for (int mask = 1; mask <= 255; ++mask) {
        loadMask(mask);
        ASSERT_EQ(dialog().mask(), mask);
        const QStringList before = state();
        dialog().writeConfig(group);
        EXPECT_EQ(held(QStringLiteral("T/multistream")), QString::number(mask));
        for (const int between : {4, 192, 9}) {
            loadMask(between);
            dialog().loadConfig(group);
            expectState(before, std::to_string(mask) + " after " + std::to_string(between));
        }
    }
}

TEST_F(RoundTrip, BothRadioButtonsComeBack)
{
    // A5 is the largest paper that this scanner takes across.
    put(get<QWidget>("scanrange_setting"), QStringLiteral("3"));
    ASSERT_EQ(get<QComboBox>("scanrange_setting").currentText(),
              QStringLiteral("ISO A5 - 14.8 x 21.0 厘米"));
    press(get<QAbstractButton>("horizontal_range"));
    put(get<QWidget>("rotation_fanfold"), QStringLiteral("1"));
    ASSERT_EQ(get<QDoubleSpinBox>("br_x").value(), 210.0);
    dialog().writeConfig(QStringLiteral("T"));
    EXPECT_EQ(onDisk(QStringLiteral("T/vertical_range")), QStringLiteral("0"));
    EXPECT_EQ(onDisk(QStringLiteral("T/two_side_rotate")), QStringLiteral("0"));
    expectToComeBack("across, fanfold");
    EXPECT_FALSE(dialog().portrait);
}

TEST_F(RoundTrip, TheCustomResolutionComesBack)
{
    for (const int selected : {7, 2}) {
        dialog().getCustomResolution(QStringLiteral("custom-250"));
        resolutions().setCurrentIndex(selected);
        dialog().writeConfig(QStringLiteral("T"));
        EXPECT_EQ(onDisk(QStringLiteral("T/custom_resolution")), QStringLiteral("custom-250"));
        expectToComeBack("custom resolution beside item " + std::to_string(selected));
        EXPECT_EQ(resolutions().currentIndex(), selected);
    }
    dialog().getCustomResolution(QString());
    dialog().writeConfig(QStringLiteral("T"));
    EXPECT_EQ(onDisk(QStringLiteral("T/custom_resolution")), QString());
    expectToComeBack("no custom resolution");
}

TEST_F(RoundTrip, ACustomSizeComesBack)
{
    press(get<QAbstractButton>("center_alignment"));
    put(get<QWidget>("br_x"), QStringLiteral("100.1"));
    put(get<QWidget>("br_y"), QStringLiteral("120.7"));
    put(get<QWidget>("tl_x"), QStringLiteral("33.3"));
    put(get<QWidget>("tl_y"), QStringLiteral("44.4"));
    ASSERT_EQ(get<QComboBox>("scanrange_setting").currentIndex(), 0);
    expectToComeBack("custom size");
    EXPECT_EQ(get<QDoubleSpinBox>("tl_x").value(), 33.3);
}

TEST_F(RoundTrip, LongPaperComesBackWithItsLength)
{
    put(get<QWidget>("long_paper_scan"), QStringLiteral("1"));
    put(get<QWidget>("br_y"), QStringLiteral("2500.5"));
    dialog().writeConfig(QStringLiteral("T"));
    EXPECT_EQ(onDisk(QStringLiteral("T/br_y")), QStringLiteral("2500.5"));
    expectToComeBack("long paper");
    EXPECT_EQ(get<QDoubleSpinBox>("br_y").value(), 2500.5);
}

TEST_F(RoundTrip, ControlsThatAreNoSettingsAreNotTouched)
{
    const std::vector<std::pair<const char*, const char*>> others{
        {"cachemode_image_num", "17"},
        {"cachemode_page_num", "9"},
        {"cachemode_image_num_default", "0"},
        {"preview_scanrange", "2"},
        {"offset_y", "3.5"},
        {"gray_value", "11"}};
    for (const auto& [name, value] : others) {
        put(get<QWidget>(name), QLatin1String(value));
    }
    const int tab = get<QTabWidget>("tabWidget").currentIndex();
    dialog().loadConfig(QStringLiteral("ScannerAdefault"));
    dialog().loadConfig(QStringLiteral("ScannerA"));
    for (const auto& [name, value] : others) {
        EXPECT_EQ(shown(get<QWidget>(name)), QLatin1String(value)) << name;
    }
    EXPECT_EQ(get<QTabWidget>("tabWidget").currentIndex(), tab);
}
