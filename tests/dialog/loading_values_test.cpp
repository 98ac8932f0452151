// What a text in the file does to its control.
#include "config_loading.h"

#include <set>

using namespace kestrel;
using namespace kestrel::test;

namespace {

const std::vector<const char*>& notIntegers()
{
    static const std::vector<const char*> texts{"abc", "1.5",        "0x1",   "1e2", "一",
                                                "--1", "2147483648", "1 000", "1,5", "true"};
    return texts;
}

} // namespace

TEST_F(LoadingValues, AMissingOrEmptyTextLeavesEveryControl)
{
    moveAwayFromZero();
    const QStringList before = state();
    for (const Setting& setting : settingsTable()) {
        // An empty text says that there is no custom resolution; there is none.
        load(setting.key, "");
        expectState(before, setting.key);
    }
    dialog().loadConfig(QStringLiteral("there is no such group"));
    expectState(before, "missing group");
    dialog().loadConfig(QString());
    expectState(before, "no group");
}

TEST_F(LoadingValues, AListIsNoText)
{
    // What a hand wrote with a comma and without quotes.
    for (const Setting& setting : settingsTable()) {
        if (setting.encoding == Encoding::CustomResolution) {
            continue;
        }
        const QStringList before = state();
        dialog().settings->setValue(QStringLiteral("L/") + QLatin1String(setting.key),
                                    QStringList{QStringLiteral("1"), QStringLiteral("2")});
        dialog().loadConfig(QStringLiteral("L"));
        expectState(before, setting.key);
        dialog().settings->remove(QStringLiteral("L"));
    }
}

TEST_F(LoadingValues, AnIndexIsTakenWhenTheListHasIt)
{
    for (const Setting& setting : settingsTable()) {
        if (setting.encoding != Encoding::Index) {
            continue;
        }
        loadDefaults();
        auto& list = dynamic_cast<QComboBox&>(controlOf(setting));
        const int count = list.count();
        ASSERT_GE(count, 2) << setting.key;
        for (int index = count - 1; index >= 0; --index) {
            load(setting.key, QString::number(index));
            EXPECT_EQ(list.currentIndex(), index) << setting.key;
        }
    }
}

TEST_F(LoadingValues, AnIndexBeyondTheListIsIgnored)
{
    for (const Setting& setting : settingsTable()) {
        if (setting.encoding != Encoding::Index) {
            continue;
        }
        moveAwayFromZero();
        auto& list = dynamic_cast<QComboBox&>(controlOf(setting));
        for (const int index : {-1, list.count(), 99, 2147483647, -2147483647 - 1}) {
            const QStringList before = state();
            load(setting.key, QString::number(index));
            expectState(before, std::string(setting.key) + " at " + std::to_string(index));
            EXPECT_GE(list.currentIndex(), 0) << setting.key;
        }
    }
}

TEST_F(LoadingValues, ATextThatIsNoIndexIsZero)
{
    for (const Setting& setting : settingsTable()) {
        if (setting.encoding != Encoding::Index) {
            continue;
        }
        for (const char* const text : notIntegers()) {
            put(controlOf(setting), QStringLiteral("1"));
            load(setting.key, text);
            EXPECT_EQ(controlText(setting), QStringLiteral("0")) << setting.key << ' ' << text;
        }
    }
}

TEST_F(LoadingValues, IntegersAreHeldInTheControlsRange)
{
    struct Row
    {
        const char* key;
        int lowest;
        int highest;
    };
    const std::vector<Row> rows{{"brightness", -100, 100},
                                {"contrast", -100, 100},
                                {"gamma", 30, 300},
                                {"binarization_value", 1, 30},
                                {"acd_sensitivity_front", 1, 99},
                                {"acd_sensitivity_back", 1, 99},
                                {"waitingjob_time", 0, 120},
                                {"blankpage_threshold", 0, 99},
                                {"despeckle_ratios", 1, 30},
                                {"despeckle_dotsnumber", 0, 255},
                                {"background_processing_sensitivity", 0, 20},
                                {"cachemode_value", 1, 512},
                                {"powersaving_time", 1, 240},
                                // Never before power saving, whose 15 minutes hold it up.
                                {"poweroff_time", 15, 480}};
    std::size_t integers = 0;
    for (const Setting& setting : settingsTable()) {
        integers += setting.inWorkingGroup() && (setting.encoding == Encoding::Integer ||
                                                 setting.encoding == Encoding::Gamma ||
                                                 setting.encoding == Encoding::TruncatedReal)
                        ? 1U
                        : 0U;
    }
    EXPECT_EQ(rows.size(), integers);
    for (const Row& row : rows) {
        const auto found = std::find_if(
            settingsTable().begin(), settingsTable().end(),
            [&row](const Setting& setting) { return qstrcmp(setting.key, row.key) == 0; });
        ASSERT_NE(found, settingsTable().end()) << row.key;
        const std::vector<std::pair<int, int>> values{
            {row.lowest, row.lowest},       {row.highest, row.highest},
            {row.highest + 1, row.highest}, {row.lowest + 1, row.lowest + 1},
            {2147483647, row.highest},      {row.highest - 1, row.highest - 1},
        };
        for (const auto& [stored, held] : values) {
            loadDefaults();
            load(row.key, QString::number(stored));
            EXPECT_EQ(controlText(*found), QString::number(held)) << row.key << ' ' << stored;
        }
        if (found->encoding == Encoding::Gamma) {
            continue; // see below: none of these is a gamma
        }
        for (const int stored : {row.lowest - 1, -2147483647 - 1}) {
            loadDefaults();
            load(row.key, QString::number(stored));
            EXPECT_EQ(controlText(*found), QString::number(row.lowest)) << row.key << ' ' << stored;
        }
        if (found->encoding == Encoding::TruncatedReal) {
            continue; // a fraction is a number there
        }
        for (const char* const text : notIntegers()) {
            put(controlOf(*found), QString::number(row.highest));
            load(row.key, text);
            EXPECT_EQ(controlText(*found), QString::number(std::max(row.lowest, 0)))
                << row.key << ' ' << text;
        }
    }
}

TEST_F(LoadingValues, BoxesAreCheckedByTheNumberOneAlone)
{
    for (const Setting& setting : settingsTable()) {
        if (setting.encoding != Encoding::Bool) {
            continue;
        }
        for (const auto& [text, checked] :
             {std::pair("1", true), std::pair("0", false), std::pair("01", true),
              std::pair("+1", true), std::pair("2", false), std::pair("-1", false),
              std::pair("true", false), std::pair("Enable", false), std::pair("1.0", false)}) {
            auto& box = dynamic_cast<QAbstractButton&>(controlOf(setting));
            box.setChecked(!checked);
            load(setting.key, text);
            EXPECT_EQ(box.isChecked(), checked) << setting.key << ' ' << text;
        }
    }
}

TEST_F(LoadingValues, SwitchesAreCheckedByTheWordEnableAlone)
{
    std::set<std::string> words;
    for (const Setting& setting : settingsTable()) {
        if (setting.encoding != Encoding::EnableWord) {
            continue;
        }
        words.insert(setting.key);
        for (const auto& [text, checked] :
             {std::pair("Enable", true), std::pair("Disable", false), std::pair("enable", false),
              std::pair("Enable ", false), std::pair("1", false), std::pair("Enabled", false)}) {
            auto& box = dynamic_cast<QAbstractButton&>(controlOf(setting));
            box.setChecked(!checked);
            load(setting.key, text);
            EXPECT_EQ(box.isChecked(), checked) << setting.key << ' ' << text;
        }
    }
    EXPECT_EQ(words, (std::set<std::string>{"ultrasonic", "additional_length_detection",
                                            "powersaving", "poweroff"}));
}

TEST_F(LoadingValues, TheBackgroundListIsTheOneOfItsMode)
{
    // The mode fills the list, so it has to be loaded before the place in it.
    store(QStringLiteral("L/background_processing"), QStringLiteral("2"));
    store(QStringLiteral("L/background_processing_setting"), QStringLiteral("1"));
    dialog().loadConfig(QStringLiteral("L"));
    EXPECT_EQ(get<QComboBox>("background_processing_setting").currentText(),
              QStringLiteral("自动"));
    EXPECT_EQ(get<QComboBox>("background_processing_setting").currentIndex(), 1);
}

TEST_F(LoadingValues, TheThresholdIsLoadedAfterItsMethodHasSetOne)
{
    store(QStringLiteral("L/binarization"), QStringLiteral("1"));
    store(QStringLiteral("L/binarization_value"), QStringLiteral("200"));
    dialog().loadConfig(QStringLiteral("L"));
    EXPECT_EQ(get<QAbstractSlider>("binarization_value").value(), 200);
    load("binarization", "0");
    EXPECT_EQ(get<QAbstractSlider>("binarization_value").value(), 20);
}

TEST_F(LoadingValues, BookRotationTakesOneAndZeroOnly)
{
    load("two_side_rotate", "0");
    EXPECT_TRUE(checked("rotation_fanfold"));
    EXPECT_FALSE(checked("rotation_book"));
    for (const char* const text : {"2", "-1", "10"}) {
        load("two_side_rotate", text);
        EXPECT_TRUE(checked("rotation_fanfold")) << text;
    }
    load("two_side_rotate", "1");
    EXPECT_TRUE(checked("rotation_book"));
    EXPECT_FALSE(checked("rotation_fanfold"));
    load("two_side_rotate", "2");
    EXPECT_TRUE(checked("rotation_book"));
    for (const char* const text : {"abc", "1.0", "Enable"}) {
        load("two_side_rotate", "1");
        load("two_side_rotate", text);
        EXPECT_TRUE(checked("rotation_fanfold")) << text;
    }
}

TEST_F(LoadingValues, GrayValueIsNeverReadBack)
{
    get<QAbstractSlider>("gray_value").setValue(11);
    store(QStringLiteral("ScannerAdefault/gray_value"), QStringLiteral("22"));
    store(QStringLiteral("ScannerA/gray_value"), QStringLiteral("22"));
    loadDefaults();
    dialog().loadConfig(QStringLiteral("ScannerA"));
    EXPECT_EQ(get<QAbstractSlider>("gray_value").value(), 11);
}

TEST_F(LoadingValues, TheDefaultsLeaveInvertAlone)
{
    get<QComboBox>("invert").setCurrentIndex(1);
    press(get<QAbstractButton>("default_setting"));
    EXPECT_EQ(get<QComboBox>("invert").currentIndex(), 1);
}

TEST_F(LoadingValues, LoadingWritesNothing)
{
    const QByteArray before = bytes();
    setBrightness(40);
    loadDefaults();
    dialog().loadConfig(QStringLiteral("ScannerA"));
    settle();
    EXPECT_EQ(bytes(), before);
}
