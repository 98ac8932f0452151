// Every setting: its text in the file, and back to its control.
#include "config_bench.h"
#include "config_samples.h"

using namespace kestrel;
using namespace kestrel::test;

namespace {

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
            auto& control = child<QWidget>(tabs(), controlNamed(setting.key));
            put(control, QLatin1String(sample.value));
            ASSERT_EQ(shown(control), QLatin1String(sample.value)) << setting.key;
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
            auto& control = child<QWidget>(tabs(), controlNamed(setting.key));
            put(control, QLatin1String(sample.value));
            ASSERT_EQ(shown(control), QLatin1String(sample.value)) << setting.key;
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
