#include "scanner/value_tables.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Strings = std::vector<std::string>;

template <typename Table>
Strings entries(const Table& table)
{
    return {table.begin(), table.end()};
}

namespace tables = kestrel::tables;

} // namespace

TEST(ValueTables, HoldTheScannersWordsInTheOrderOfTheCombos)
{
    EXPECT_EQ(entries(tables::source),
              (Strings{"Automatic", "Flatbed", "ADF Front", "ADF Back", "ADF Duplex"}));
    EXPECT_EQ(entries(tables::auto_scan_source_setting), (Strings{"ADF Duplex", "ADF Front"}));
    EXPECT_EQ(entries(tables::Multistream), (Strings{"No Multi-Stream", "Gray + BW", "Color + Gray",
                                                     "Color + BW", "Color + Gray + BW"}));
    EXPECT_EQ(entries(tables::gray_doc_type), (Strings{"Document", "Photo", "Normal"}));
    EXPECT_EQ(entries(tables::binarization_str),
              (Strings{"Dynamic Threshold", "Fixed Processing", "Diffusion"}));
    EXPECT_EQ(entries(tables::auto_nocolor_mode), (Strings{"BW", "Gray"}));
    EXPECT_EQ(entries(tables::auto_color_detection_mode),
              (Strings{"Normal", "Ignore Paper Color"}));
    EXPECT_EQ(entries(tables::color_dropout),
              (Strings{"No color dropout", "Red", "Green", "Blue"}));
    EXPECT_EQ(entries(tables::bg_color_setting), (Strings{"No processing", "Black", "White"}));
    EXPECT_EQ(entries(tables::rotate_mode),
              (Strings{"None", "90", "180", "270", "Auto Orientation"}));
    EXPECT_EQ(entries(tables::auto_orientation_mode),
              (Strings{"Quick", "Full text", "Complexity"}));
    EXPECT_EQ(entries(tables::splitimage), (Strings{"None", "Horizontal", "Vertical"}));
    EXPECT_EQ(entries(tables::backendground_processing), (Strings{"None", "Smooth", "Removal"}));
    EXPECT_EQ(entries(tables::backendground_setting), (Strings{"Auto", "Moire"}));
    EXPECT_EQ(entries(tables::backendground_removal), (Strings{"White", "Auto"}));
    EXPECT_EQ(entries(tables::cachemode), (Strings{"None", "Page Number", "Memory Size"}));
}

TEST(ValueTables, HoldTheUsersWords)
{
    EXPECT_EQ(entries(tables::scanner_source), (Strings{"文档进纸器", "平板", "自动选择纸张来源"}));
    EXPECT_EQ(entries(tables::crop_option_label),
              (Strings{"固定尺寸", "原稿尺寸", "自动多张图像-平台"}));
}

TEST(ValueTables, NoValueIsTooLongToBeSent)
{
    for (const auto& table :
         {entries(tables::source), entries(tables::Multistream), entries(tables::binarization_str),
          entries(tables::auto_color_detection_mode), entries(tables::color_dropout),
          entries(tables::rotate_mode), entries(tables::auto_orientation_mode),
          entries(tables::cachemode)}) {
        for (const std::string& value : table) {
            EXPECT_LT(value.size(), 64U) << value;
        }
    }
}

TEST(ValueTables, AWordOfTheScannerIsFoundInAnyCase)
{
    EXPECT_EQ(tables::indexIn(tables::cachemode, "None"), 0);
    EXPECT_EQ(tables::indexIn(tables::cachemode, "memory SIZE"), 2);
    EXPECT_EQ(tables::at(tables::cachemode, tables::indexIn(tables::cachemode, "PAGE number")),
              std::string("Page Number"));
}

TEST(ValueTables, AWordThatIsNoEntryIsNotFound)
{
    EXPECT_EQ(tables::indexIn(tables::cachemode, "Memory"), -1);
    EXPECT_EQ(tables::indexIn(tables::cachemode, "Memory Size "), -1);
    EXPECT_EQ(tables::indexIn(tables::cachemode, ""), -1);
}

TEST(ValueTables, OfTwoEntriesThatAreTheSameWordTheFirstIsFound)
{
    constexpr tables::Texts<3> kTwice = {"Auto", "White", "AUTO"};
    EXPECT_EQ(tables::indexIn(kTwice, "auto"), 0);
}
