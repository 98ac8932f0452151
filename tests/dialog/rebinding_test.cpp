// A dialog that is bound again: nothing of the scanner before is left, nothing stored is lost.
#include "config_manager.h"

#include <QTextEdit>

#include <tuple>

using namespace kestrel;
using namespace kestrel::test;

namespace {

class Rebinding : public TemplatesBench
{
protected:
    QString information() { return get<QTextEdit>("scanner_info").toPlainText(); }
    double value(const char* name) { return get<QDoubleSpinBox>(name).value(); }
    void expectLimits(const char* name, double minimum, double maximum)
    {
        EXPECT_EQ(get<QDoubleSpinBox>(name).minimum(), minimum) << name;
        EXPECT_EQ(get<QDoubleSpinBox>(name).maximum(), maximum) << name;
    }
};

FakeScanner feederOf(double width, double height)
{
    ScannerModel model;
    model.sources = {"ADF Front", "ADF Back", "ADF Duplex"};
    model.width = width;
    model.feederHeight = height;
    return makeScanner(model);
}

const QString multiCrop = QStringLiteral("自动多张图像-平台");

} // namespace

TEST_F(Rebinding, OfAScannerThatCannotBeAskedEmptiesTheLists)
{
    bind(m_scanner);
    ASSERT_TRUE(information().contains(QStringLiteral("KS-2024-0042")));
    ASSERT_GT(get<QComboBox>("source").count(), 0);
    FakeScanner mute = feederScanner();
    mute.hideCount();
    bind(mute, "ScannerB");
    for (const char* const name : {"source", "scanrange_setting", "preview_scanrange"}) {
        EXPECT_EQ(items(get<QComboBox>(name)), QStringList()) << name;
    }
    EXPECT_FALSE(information().contains(QStringLiteral("KS-2024-0042")));
    EXPECT_FALSE(information().contains(QStringLiteral("1234")));
    EXPECT_EQ(dialog().device_name, QStringLiteral("ScannerB"));
    EXPECT_EQ(dialog().GetOptionByName(), 0);
}

TEST_F(Rebinding, OfAScannerThatCannotBeAskedKeepsWhatIsStoredForIt)
{
    FakeScanner other = feederScanner();
    bind(other, "ScannerB");
    setBrightness(37);
    ok();
    const QByteArray stored = bytes("ScannerB");
    ASSERT_EQ(onDisk(QStringLiteral("ScannerB/brightness"), "ScannerB"), QStringLiteral("37"));
    bind(m_scanner);
    setBrightness(5);
    ok();
    other.hideCount();
    bind(other, "ScannerB");
    ok();
    EXPECT_EQ(bytes("ScannerB"), stored);
    EXPECT_EQ(onDisk(QStringLiteral("ScannerA/brightness")), QStringLiteral("5"));
    // As soon as it can be asked its settings are back.
    FakeScanner mended = feederScanner();
    bind(mended, "ScannerB");
    EXPECT_EQ(brightness(), 37);
    setBrightness(38);
    ok();
    EXPECT_EQ(onDisk(QStringLiteral("ScannerB/brightness"), "ScannerB"), QStringLiteral("38"));
}

TEST_F(Rebinding, AfterAnA3ScannerASmallerOneIsUpright)
{
    FakeScanner a3 = a3Scanner();
    bind(a3, "ScannerA3");
    ASSERT_FALSE(dialog().portrait);
    ASSERT_TRUE(checked("horizontal_range"));
    FakeScanner smaller = feederOf(300.0, 400.0);
    bind(smaller, "ScannerB");
    EXPECT_TRUE(dialog().portrait);
    EXPECT_TRUE(checked("vertical_range"));
    EXPECT_FALSE(checked("horizontal_range"));
    EXPECT_TRUE(get<QWidget>("horizontal_range").isEnabledTo(&tabs()));
    EXPECT_EQ(value("br_x"), 210.0);
    EXPECT_EQ(value("br_y"), 297.0);
    // One click turns the sheet, and turns it across.
    press(get<QAbstractButton>("horizontal_range"));
    EXPECT_EQ(value("br_x"), 297.0);
    EXPECT_EQ(value("br_y"), 210.0);
}

TEST_F(Rebinding, WhatAScannerDoesNotLimitHasTheFormsLimits)
{
    // The form's 99.99 as a box of one decimal holds it.
    expectLimits("br_x", 0.0, 100.0);
    bind(m_scanner);
    expectLimits("br_x", 0.0, 215.9);
    FakeScanner narrow = fullScanner();
    for (const char* const name : {"br-x", "tl-x", "crop-adjust-top"}) {
        narrow.remove(name);
    }
    bind(narrow, "ScannerB");
    const DialogProbe form;
    for (const char* const name : {"br_x", "tl_x", "offset_x", "offset_w", "crop_adjust_top"}) {
        const auto& box = child<QDoubleSpinBox>(form, name);
        expectLimits(name, box.minimum(), box.maximum());
    }
    expectLimits("br_x", 0.0, 100.0);
    expectLimits("br_y", 0.0, 355.6);
}

TEST_F(Rebinding, ALongSheetComesBackAtItsLength)
{
    FakeScanner scanner = feederScanner();
    bind(scanner);
    get<QAbstractButton>("long_paper_scan").setChecked(true);
    get<QDoubleSpinBox>("br_y").setValue(1000.0);
    ASSERT_EQ(value("br_y"), 1000.0);
    ok();
    const QStringList confirmed = state();
    for (int round = 0; round < 2; ++round) {
        bind(scanner);
        EXPECT_TRUE(checked("long_paper_scan"));
        EXPECT_EQ(value("br_y"), 1000.0);
        EXPECT_EQ(get<QDoubleSpinBox>("br_y").maximum(), 3000.0);
        expectState(confirmed);
    }
}

TEST_F(Rebinding, TheBackgroundListIsTheOneOfTheStoredMode)
{
    bind(m_scanner);
    auto& mode = get<QComboBox>("background_processing");
    auto& list = get<QComboBox>("background_processing_setting");
    mode.setCurrentIndex(2);
    list.setCurrentIndex(1);
    ok();
    for (int round = 0; round < 2; ++round) {
        bind(m_scanner);
        EXPECT_EQ(mode.currentIndex(), 2);
        EXPECT_EQ(items(list), (QStringList{QStringLiteral("白色"), QStringLiteral("自动")}));
        EXPECT_EQ(list.currentIndex(), 1);
    }
}

TEST_F(Rebinding, TheCropListSuitsTheSourceThatIsShown)
{
    // Whether the source on show, right after the binding, scans the glass.
    const std::vector<std::tuple<const char*, FakeScanner (*)(), bool>> scanners{
        {"Flatbed", flatbedScanner, true},
        {"FlatbedFirst", flatbedAndFeederScanner, true},
        {"FeederFirst", feederAndFlatbedScanner, false},
        {"Automatic", fullScanner, false}};
    for (int round = 0; round < 2; ++round) {
        for (const auto& [name, make, glass] : scanners) {
            FakeScanner scanner = make();
            bind(scanner, name);
            auto& crop = get<QComboBox>("autocropdeskew");
            EXPECT_EQ(crop.count(), glass ? 3 : 2) << name;
            EXPECT_EQ(crop.itemText(2), glass ? multiCrop : QString()) << name;
            auto& source = get<QComboBox>("source");
            for (int i = 0; i < source.count(); ++i) {
                source.setCurrentIndex(i);
                const bool feeder = source.currentText() == QStringLiteral("文档进纸器");
                EXPECT_EQ(crop.itemText(2), feeder ? QString() : multiCrop) << name << ' ' << i;
            }
        }
    }
}

TEST_F(Rebinding, WithoutAFolderTemplatesStillReachTheList)
{
    bindIn(m_scanner, "ScannerA", nullptr);
    setBrightness(-21);
    openManager([this] { add(QStringLiteral("Office")); });
    EXPECT_EQ(items(templates()), withWorking({QStringLiteral("Office")}));
    setBrightness(3);
    templates().setCurrentIndex(1);
    EXPECT_EQ(brightness(), -21);
}

TEST_F(Rebinding, ADeviceWithoutANameHasItsSettings)
{
    bind(m_scanner, "");
    setBrightness(12);
    ok();
    EXPECT_FALSE(bytes("").isEmpty());
    setBrightness(70);
    cancel();
    EXPECT_EQ(brightness(), 12);
    beginAnew();
    bind(m_scanner, "");
    EXPECT_EQ(brightness(), 12);
    FakeScanner named = fullScanner();
    bind(named, "ScannerB");
    setBrightness(40);
    ok();
    bind(m_scanner, "");
    EXPECT_EQ(brightness(), 12);
}
