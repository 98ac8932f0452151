// Any value in any control, in any order: the rules come to an end, and what is left can be saved,
// loaded and sent.
#include "dialog_fixture.h"

#include <support/message_boxes.h>

#include <kestrelsettingui.h>

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QSettings>
#include <QSpinBox>
#include <QTabWidget>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

using namespace kestrel::test;

namespace {

using Options = std::map<std::string, std::string>;

constexpr int kLengthTab = 4;
constexpr int kSteps = 100000;
constexpr int kRounds = 20;
constexpr int kWritesTakenBack = 500;
const QString kDevice = QStringLiteral("ScannerA");
const QString kFlatbed = QStringLiteral("平板");
const Strings kNames{"Full", "Feeder", "Flatbed", "A3"};

class RandomWrites : public DialogTest, public testing::WithParamInterface<FakeScanner (*)()>
{
protected:
    RandomWrites() : scanner(GetParam()())
    {
        bind(scanner);
        scanner.takeTexts();
        for (QWidget* const widget : widget("tabWidget").findChildren<QWidget*>()) {
            if (!widget->objectName().isEmpty() && !widget->objectName().startsWith("qt_") &&
                isControl(*widget)) {
                controls.push_back(widget);
            }
        }
    }
    void TearDown() override { destroy(); } // before the scanner

    static bool isControl(const QWidget& widget)
    {
        const auto* const button = qobject_cast<const QAbstractButton*>(&widget);
        return qobject_cast<const QComboBox*>(&widget) != nullptr ||
               qobject_cast<const QSpinBox*>(&widget) != nullptr ||
               qobject_cast<const QDoubleSpinBox*>(&widget) != nullptr ||
               qobject_cast<const QAbstractSlider*>(&widget) != nullptr ||
               (button != nullptr && button->isCheckable());
    }

    int pick(int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); }

    int integerFor(int min, int max)
    {
        static const std::vector<int> kExtremes{std::numeric_limits<int>::min(),
                                                std::numeric_limits<int>::max(),
                                                -1,
                                                0,
                                                1,
                                                -32769,
                                                65536};
        const int kind = pick(8);
        if (kind == 0) {
            return kExtremes.at(static_cast<std::size_t>(pick(static_cast<int>(kExtremes.size()))));
        }
        if (kind == 1) {
            return pick(2) == 0 ? min : max;
        }
        return min + pick(max - min + 1);
    }

    double numberFor(double min, double max)
    {
        static const std::vector<double> kExtremes{-1e300,
                                                   1e300,
                                                   -0.0,
                                                   1e-300,
                                                   0.05,
                                                   -1.0,
                                                   std::numeric_limits<double>::infinity(),
                                                   -std::numeric_limits<double>::infinity()};
        const int kind = pick(8);
        if (kind == 0) {
            return kExtremes.at(static_cast<std::size_t>(pick(static_cast<int>(kExtremes.size()))));
        }
        if (kind == 1) {
            return pick(2) == 0 ? min : max;
        }
        return min + (max - min) * (pick(10001) / 10000.0);
    }

    void writeOne()
    {
        QWidget* const control =
            controls.at(static_cast<std::size_t>(pick(static_cast<int>(controls.size()))));
        if (auto* const combo = qobject_cast<QComboBox*>(control)) {
            combo->setCurrentIndex(integerFor(0, std::max(combo->count() - 1, 0)));
        } else if (auto* const box = qobject_cast<QSpinBox*>(control)) {
            box->setValue(integerFor(box->minimum(), box->maximum()));
        } else if (auto* const real = qobject_cast<QDoubleSpinBox*>(control)) {
            real->setValue(numberFor(real->minimum(), real->maximum()));
        } else if (auto* const slider = qobject_cast<QAbstractSlider*>(control)) {
            slider->setValue(integerFor(slider->minimum(), slider->maximum()));
        } else if (auto* const button = qobject_cast<QAbstractButton*>(control)) {
            // By a program's hand, and by a click, which has rules of its own.
            if (pick(2) == 0) {
                button->setChecked(pick(2) == 0);
            } else {
                button->click();
            }
        }
    }

    /// No user and no file leaves a combo box without an item; a program's write may.
    void giveEveryComboAnItem()
    {
        for (QWidget* const control : controls) {
            auto* const combo = qobject_cast<QComboBox*>(control);
            if (combo != nullptr && combo->currentIndex() < 0 && combo->count() > 0) {
                combo->setCurrentIndex(pick(combo->count()));
            }
        }
    }

    double valueOf(const char* name) const { return real(name).value(); }

    /// Whether loading bends the scan area: a paper size or an orientation can put it past the
    /// glass, the offsets that are loaded are held on it.
    bool areaMayBend() const
    {
        return valueOf("tl_x") + valueOf("br_x") > real("br_x").maximum() ||
               valueOf("tl_y") + valueOf("br_y") > real("br_y").maximum();
    }

    /// Whether the length's limit stems from an offset that has been clamped since.
    bool lengthMayBend() const
    {
        const double free = real("br_y").maximum() - valueOf("br_y") - valueOf("tl_y");
        return areaMayBend() || std::abs(real("length_detection_value").maximum() - free) > 0.05;
    }

    /// The ratio's lower bound, which counts again when the dots are loaded.
    int loadedRatio() const
    {
        const int dots = spin("despeckle_dotsnumber").value();
        int bound = 1;
        for (const int edge : {9, 25, 49, 81, 121, 169, 225}) {
            bound += dots >= edge ? 1 : 0;
        }
        return std::max(spin("despeckle_ratios").value(), bound);
    }

    void noteWhatLoadingMayChange()
    {
        mask = dialog().mask();
        areaBends = areaMayBend();
        lengthBends = lengthMayBend();
        ratio = loadedRatio();
    }

    /// What is sent is what was set, but for what the rules do with it while it is loaded.
    void expectLoaded(const Options& before, const Options& after)
    {
        areasCompared += before.count("br-x") == 1 && !areaBends ? 1 : 0;
        lengthsCompared +=
            before.count("additional-length-detection-length") == 1 && !lengthBends ? 1 : 0;
        // Choosing the flatbed, as loading does, drops the detection.
        const bool lostDetection =
            combo("source").count() > 1 && combo("source").currentText() == kFlatbed && mask >= 64;
        for (const auto& [name, value] : before) {
            const bool area = name == "tl-x" || name == "br-x" || name == "br-y" || name == "tl-y";
            const bool detection = name == "mode" || name.rfind("auto-color", 0) == 0;
            if ((area && areaBends) || (detection && lostDetection)) {
                continue;
            }
            if (name == "additional-length-detection-length" && lengthBends) {
                continue;
            }
            const auto found = after.find(name);
            ASSERT_NE(found, after.end()) << name << " is not sent any more";
            EXPECT_EQ(found->second, name == "despeckle-ratio" ? std::to_string(ratio) : value)
                << name;
        }
        for (const auto& [name, value] : after) {
            EXPECT_TRUE(before.count(name) == 1 || (lostDetection && name == "multistream-list"))
                << name << '=' << value << " is new";
        }
    }

    /// A dialog as it is after a restart, on the same device and settings file.
    class Restarted
    {
    public:
        Restarted(FakeScanner (*make)(), const DialogProbe& former, const char* path)
            : m_scanner(make())
        {
            ScannerIdentity record = identity();
            initKestrelSetUI(dialog.host(), m_scanner.handle(), &record, path);
            m_scanner.takeTexts();
            // What the file has no key for.
            child<QAbstractSlider>(dialog, "cachemode_page_num")
                .setValue(child<QAbstractSlider>(former, "cachemode_page_num").value());
            const char* const unlimited = "cachemode_image_num_default";
            child<QAbstractButton>(dialog, unlimited)
                .setChecked(child<QAbstractButton>(former, unlimited).isChecked());
        }
        ~Restarted() { delete std::exchange(dialog.settings, nullptr); }
        Restarted(const Restarted&) = delete;
        Restarted& operator=(const Restarted&) = delete;

        Strings sets() { return sent(m_scanner, dialog); }

        DialogProbe dialog;

    private:
        FakeScanner m_scanner;
    };

    /// What a dialog sends before a scan, with the length detection in view: only then its length
    /// is sent.
    static Strings sent(FakeScanner& scanner, DialogProbe& dialog)
    {
        child<QTabWidget>(dialog, "tabWidget").setCurrentIndex(kLengthTab);
        dialog.show();
        scanner.clearJournal();
        setAllParamBySettingUI(dialog.host());
        dialog.hide();
        return scanner.journal().sets();
    }

    /// OK. An area drawn on the preview is declined: it would replace the one that is compared.
    void confirm()
    {
        MessageBoxes boxes;
        if (valueOf("offset_w") > 0.0 && valueOf("offset_h") > 0.0) {
            boxes.answer(QMessageBox::No);
        }
        child<QAbstractButton>(dialog(), "sure").click();
    }

    /// More writes, taken back: all but what the file has no key for.
    void leaveWithoutOk()
    {
        auto& pages = child<QAbstractSlider>(dialog(), "cachemode_page_num");
        auto& unlimited = child<QAbstractButton>(dialog(), "cachemode_image_num_default");
        const int pagesBefore = pages.value();
        const bool unlimitedBefore = unlimited.isChecked();
        for (int i = 0; i < kWritesTakenBack; ++i) {
            writeOne();
        }
        giveEveryComboAnItem();
        dialog().close();
        pages.setValue(pagesBefore);
        unlimited.setChecked(unlimitedBefore);
    }

    static Options byName(const Strings& sets)
    {
        Options options;
        for (const std::string& set : sets) {
            const std::size_t equals = set.find('=');
            options[set.substr(0, equals)] = set.substr(equals + 1);
        }
        return options;
    }

    FakeScanner scanner;
    std::vector<QWidget*> controls;
    std::mt19937 random{2024};
    int mask = 0;
    int ratio = 1;
    bool areaBends = false;
    bool lengthBends = false;
    int areasCompared = 0;
    int lengthsCompared = 0;
};

} // namespace

TEST_P(RandomWrites, EndAndLeaveAStateThatIsSavedLoadedAndSent)
{
    ASSERT_GT(controls.size(), 100U);
    for (int round = 0; round < kRounds && !HasFailure(); ++round) {
        for (int i = 0; i < kSteps / kRounds; ++i) {
            writeOne();
            ASSERT_FALSE(dialog().updating);
        }
        giveEveryComboAnItem();
        SCOPED_TRACE("round " + std::to_string(round));
        noteWhatLoadingMayChange();
        const Strings before = sent(scanner, dialog());
        confirm();

        Restarted first(GetParam(), dialog(), dir().path());
        const Strings loaded = first.sets();
        expectLoaded(byName(before), byName(loaded));

        leaveWithoutOk();
        expectLoaded(byName(before), byName(sent(scanner, dialog())));

        // What has been loaded once comes back to the letter.
        first.dialog.writeConfig(kDevice);
        Restarted second(GetParam(), first.dialog, dir().path());
        EXPECT_EQ(second.sets(), loaded);
        EXPECT_EQ(second.dialog.mask(), first.dialog.mask());
    }
    EXPECT_GT(areasCompared, 0);
    EXPECT_GT(lengthsCompared, 0);
}

TEST_P(RandomWrites, EndWithWhatIsNoNumber)
{
    for (int round = 0; round < 200; ++round) {
        writeOne();
        for (QWidget* const control : controls) {
            if (auto* const box = qobject_cast<QDoubleSpinBox*>(control)) {
                box->setValue(std::numeric_limits<double>::quiet_NaN());
            }
        }
        ASSERT_FALSE(dialog().updating);
    }
    // The next size brings the area back.
    for (const char* name : {"tl_x", "tl_y", "br_x", "br_y"}) {
        real(name).setValue(0.0);
    }
    combo("scanrange_setting").setCurrentIndex(0);
    combo("scanrange_setting").setCurrentIndex(combo("scanrange_setting").count() - 1);
    EXPECT_DOUBLE_EQ(valueOf("br_x"), real("br_x").maximum());
    EXPECT_DOUBLE_EQ(valueOf("br_y"), real("br_y").maximum());
    EXPECT_DOUBLE_EQ(valueOf("tl_x"), 0.0);
    EXPECT_DOUBLE_EQ(valueOf("tl_y"), 0.0);
}

INSTANTIATE_TEST_SUITE_P(Scanners, RandomWrites,
                         testing::Values(fullScanner, feederScanner, flatbedScanner, a3Scanner),
                         [](const auto& info) { return kNames.at(info.index); });
