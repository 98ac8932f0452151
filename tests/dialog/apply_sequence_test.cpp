// The whole sequence that reaches the scanner before a scan, letter by letter, for whole
// configurations.
#include "dialog_fixture.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QSpinBox>

#include <gtest/gtest.h>

#include <algorithm>

using namespace kestrel::test;

namespace {

class Sequence : public DialogTest
{
protected:
    void choose(const char* name, int index)
    {
        combo(name).setCurrentIndex(index);
        ASSERT_EQ(combo(name).currentIndex(), index) << name;
    }
    void chooseSource(const QString& text)
    {
        combo("source").setCurrentText(text);
        ASSERT_EQ(combo("source").currentText(), text);
    }
    void check(const char* name, bool on = true) { button(name).setChecked(on); }
    void set(const char* name, double value)
    {
        real(name).setValue(value);
        ASSERT_DOUBLE_EQ(real(name).value(), value) << name;
    }
    void set(const char* name, int value)
    {
        bar(name).setValue(value);
        ASSERT_EQ(bar(name).value(), value) << name;
    }
    /// Binding loads a gamma of 2.0; the table that goes with 1.0 is easier to read.
    void plainGamma() { dialog().SetupGammaTable1(dialog().gamma_table.data(), 1.0); }
    static Strings apply(DialogProbe& dialog, FakeScanner& scanner)
    {
        scanner.clearJournal();
        dialog.setAllParam();
        EXPECT_TRUE(scanner.journal().straySets().empty());
        return scanner.journal().sets();
    }
};

const QString feeder = QStringLiteral("文档进纸器");
const QString flatbed = QStringLiteral("平板");
const QString automatic = QStringLiteral("自动选择纸张来源");

} // namespace

TEST_F(Sequence, AFeederAsItComes)
{
    FakeScanner scanner = feederScanner();
    bindForTexts(scanner);
    plainGamma();
    EXPECT_EQ(apply(dialog(), scanner), (Strings{
                                            "source=ADF Front",
                                            "mode=Color",
                                            "multistream-list=No Multi-Stream",
                                            "brightness=0",
                                            "contrast=0",
                                            "gamma-table={0,64,128,192,255}",
                                            "gray_doc_type=Document",
                                            "binarization=Dynamic Threshold",
                                            "binarization-value=20",
                                            "invert=0",
                                            "resolution=200",
                                            "color-register=0",
                                            "color-dropout=No color dropout",
                                            "adv-color-dropout=0",
                                            "long-paper-scan=0",
                                            "autocropdeskew=0",
                                            "flatbed-multi-crop=0",
                                            "center-alignment=1",
                                            "tl-x=0",
                                            "br-x=210",
                                            "br-y=297",
                                            "tl-y=0",
                                            "bg-color-setting=No processing",
                                            "prefeed=0",
                                            "prefeed-time=1",
                                            "ultrasonic=Enable",
                                            "additional-length-detection=Disable",
                                            "stop-scanning-after-multifeed=1",
                                            "rotate=None",
                                            "flip-side-rotation=Book",
                                            "blank-page-removal=0",
                                            "split-image=None",
                                            "punch-hole-removal=0",
                                            "background-processing=None",
                                            "despeckle=0",
                                            "cachemode=None",
                                            "cachemode-value=1",
                                            "cachemode-use-default=1",
                                            "eject-paper-opposite-side=0",
                                        }));
    EXPECT_FALSE(dialog().double_side);
}

TEST_F(Sequence, ADuplexBatchWithEverythingSwitchedOn)
{
    FakeScanner scanner = fullScanner();
    bindForTexts(scanner, "avision_adv");
    show();
    chooseSource(feeder);
    set("brightness_set", 12);
    set("contrast_set", -34);
    dialog().SetupGammaTable1(dialog().gamma_table.data(), 2.0);
    choose("gray_doc_type", 2);
    choose("binarization", 1);
    set("binarization_value", 200);
    choose("invert", 1);
    combo("resolution_gengel_slide").addItem(QStringLiteral("custom-320"));
    choose("resolution_gengel_slide", 7);
    check("redhead");
    choose("acd_nocolor_mode_front", 1);
    set("acd_sensitivity_front", 31);
    choose("acd_mode_front", 1);
    choose("acd_nocolor_mode_back", 0);
    set("acd_sensitivity_back", 32);
    choose("acd_mode_back", 0);
    choose("color_dropout", 3);
    check("adv_color_dropout");
    check("center_alignment", false);
    set("br_x", 150.5);
    set("br_y", 200.5);
    set("tl_x", 20.2);
    set("tl_y", 30.3);
    choose("background_setting_combobox", 2);
    check("prefeed");
    set("prefeed_time", 3.5);
    check("ultrasonic", false);
    check("length_detection");
    ASSERT_TRUE(reveal(widget("length_detection")));
    set("length_detection_value", 25.5);
    check("stop_scanning_after_multifeed", false);
    choose("rotate", 4);
    choose("auto_orientation_mode", 2);
    check("rotation_fanfold");
    check("remove_blankpage");
    set("blankpage_threshold", 40);
    choose("split_image", 2);
    check("punch_hole_removal");
    choose("background_processing", 1);
    set("background_processing_sensitivity", 15);
    choose("background_processing_setting", 1);
    check("despeckle");
    spin("despeckle_dotsnumber").setValue(100);
    spin("despeckle_ratios").setValue(20);
    choose("cachemode", 2);
    check("cachemode_use_default", false);
    set("cachemode_value", 256);
    check("eject_paper_opposite_side");
    dialog().setMask(192);
    EXPECT_EQ(apply(dialog(), scanner), (Strings{
                                            "source=ADF Duplex",
                                            "mode=Auto Color Detection",
                                            "brightness=12",
                                            "contrast=-34",
                                            "gamma-table={0,16,64,145,255}",
                                            "gray_doc_type=Normal",
                                            "binarization=Fixed Processing",
                                            "binarization-value=200",
                                            "invert=1",
                                            "resolution=320",
                                            "color-register=1",
                                            "auto-color-front-noncolor-mode=Gray",
                                            "auto-color-front-sensitivity=31",
                                            "auto-color-front-mode=Ignore Paper Color",
                                            "auto-color-back-noncolor-mode=BW",
                                            "auto-color-back-sensitivity=32",
                                            "auto-color-back-mode=Normal",
                                            "color-dropout=Blue",
                                            "adv-color-dropout=1",
                                            "long-paper-scan=0",
                                            "autocropdeskew=0",
                                            "flatbed-multi-crop=0",
                                            "center-alignment=0",
                                            "tl-x=20.2",
                                            "br-x=170.7",
                                            "br-y=230.8",
                                            "tl-y=30.3",
                                            "bg-color-setting=White",
                                            "prefeed=1",
                                            "prefeed-time=3.5",
                                            "ultrasonic=Disable",
                                            "additional-length-detection=Enable",
                                            "additional-length-detection-length=25.5",
                                            "stop-scanning-after-multifeed=0",
                                            "rotate=Auto Orientation",
                                            "auto-orientation-mode=Complexity",
                                            "flip-side-rotation=Fanfold",
                                            "blank-page-removal=1",
                                            "blank-page-threshold=40",
                                            "split-image=Vertical",
                                            "punch-hole-removal=1",
                                            "background-processing=Smooth",
                                            "background-processing-sensitivity=15",
                                            "background-processing-setting=Moire",
                                            "despeckle=1",
                                            "despeckle-ratio=20",
                                            "despeckle-dotsnumber=100",
                                            "cachemode=Memory Size",
                                            "cachemode-value=256",
                                            "cachemode-use-default=0",
                                            "eject-paper-opposite-side=1",
                                        }));
    EXPECT_TRUE(dialog().double_side);
}

TEST_F(Sequence, SeveralImagesOnTheFlatbed)
{
    FakeScanner scanner = fullScanner();
    bindForTexts(scanner);
    plainGamma();
    chooseSource(flatbed);
    choose("autocropdeskew", 2);
    set("crop_adjust_top", 1.0);
    set("crop_adjust_bottom", 2.5);
    set("crop_adjust_left", -3.0);
    set("crop_adjust_right", 0.0);
    choose("binarization", 2);
    choose("background_processing", 2);
    set("background_processing_sensitivity", 3);
    choose("background_processing_setting", 0);
    choose("cachemode", 1);
    set("cachemode_page_num", 9);
    check("ultrasonic", false);
    dialog().setMask(3);
    EXPECT_EQ(apply(dialog(), scanner), (Strings{
                                            "source=Flatbed",
                                            "mode=Gray",
                                            "multistream-list=Gray + BW",
                                            "brightness=0",
                                            "contrast=0",
                                            "gamma-table={0,64,128,192,255}",
                                            "gray_doc_type=Document",
                                            "binarization=Diffusion",
                                            "invert=0",
                                            "resolution=200",
                                            "color-register=0",
                                            "color-dropout=No color dropout",
                                            "adv-color-dropout=0",
                                            "long-paper-scan=0",
                                            "autocropdeskew=1",
                                            "flatbed-multi-crop=1",
                                            "crop-adjust-top=1",
                                            "crop-adjust-bottom=2.5",
                                            "crop-adjust-left=-3",
                                            "crop-adjust-right=0",
                                            "bg-color-setting=No processing",
                                            "prefeed=0",
                                            "prefeed-time=1",
                                            "ultrasonic=Disable",
                                            "additional-length-detection=Disable",
                                            "rotate=None",
                                            "flip-side-rotation=Book",
                                            "blank-page-removal=0",
                                            "split-image=None",
                                            "punch-hole-removal=0",
                                            "background-processing=Removal",
                                            "background-processing-sensitivity=3",
                                            "background-processing-setting=White",
                                            "despeckle=0",
                                            "cachemode=Page Number",
                                            "cachemode-value=9",
                                            "eject-paper-opposite-side=0",
                                        }));
    EXPECT_FALSE(dialog().double_side);
}

TEST_F(Sequence, APreviewSelectionWithTheAutomaticSource)
{
    FakeScanner scanner = fullScanner();
    bindForTexts(scanner);
    chooseSource(automatic);
    set("offset_w", 100.0);
    set("offset_h", 120.5);
    set("offset_x", 15.5);
    set("offset_y", 25.0);
    dialog().use_preview_area = true;
    dialog().setMask(63);
    const Strings sent = apply(dialog(), scanner);
    EXPECT_EQ(Strings(sent.begin(), sent.begin() + 4),
              (Strings{"source=Automatic", "auto-scan-source-setting=ADF Duplex", "mode=Color",
                       "multistream-list=Color + Gray + BW"}));
    const auto area = std::find(sent.begin(), sent.end(), "flatbed-multi-crop=0");
    ASSERT_GE(sent.end() - area, 7);
    EXPECT_EQ(Strings(area + 1, area + 7),
              (Strings{"center-alignment=0", "tl-x=15.5", "br-x=115.5", "br-y=145.5", "tl-y=25",
                       "bg-color-setting=No processing"}));
    EXPECT_TRUE(dialog().double_side);
}

TEST_F(Sequence, LongLengthsHaveSixDigits)
{
    ScannerModel model;
    model.feederHeight = 12345.6;
    FakeScanner scanner = makeScanner(model);
    bindForTexts(scanner);
    set("br_y", 12000.5);
    set("tl_y", 100.2);
    scanner.clearJournal();
    dialog().setAllParam();
    EXPECT_EQ(scanner.journal().setsOf("br-y"), (Strings{"12100.7"}));
    set("tl_y", 0.0);
    set("br_y", 12345.6);
    scanner.clearJournal();
    dialog().setAllParam();
    EXPECT_EQ(scanner.journal().setsOf("br-y"), (Strings{"12345.6"}));
}

TEST_F(Sequence, TheSameValuesAsNumbers)
{
    FakeScanner scanner = feederScanner();
    bind(scanner);
    plainGamma();
    check("center_alignment", false);
    set("br_x", 150.5);
    set("tl_x", 20.2);
    const Strings sent = apply(dialog(), scanner);
    EXPECT_NE(std::find(sent.begin(), sent.end(), "br-x=170.7"), sent.end());
    EXPECT_NE(std::find(sent.begin(), sent.end(), "resolution=200"), sent.end());
    EXPECT_NE(std::find(sent.begin(), sent.end(), "gamma-table={0,64,128,192,255}"), sent.end());
}
