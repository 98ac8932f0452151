// How sheets are written in the configuration.
#include "sheetlist.h"

#include <gtest/gtest.h>

using namespace kestrel::sim;

TEST(SimSheets, ASideAloneIsAnA4SheetWithABlankBack)
{
    const auto sheets = parseSheets("photo");
    ASSERT_TRUE(sheets && sheets->size() == 1);
    EXPECT_EQ(sheets->front().front, Print::Photo);
    EXPECT_EQ(sheets->front().back, Print::Blank);
    EXPECT_EQ(sheets->front().size.width, 210);
    EXPECT_EQ(sheets->front().turned, 0);
}

TEST(SimSheets, EverythingAtOnce)
{
    const auto sheets = parseSheets("mixed/text:A5+12.5+30@270~-2.5, form:80x120");
    ASSERT_TRUE(sheets && sheets->size() == 2);
    const Sheet& first = sheets->front();
    EXPECT_EQ(first.back, Print::Text);
    EXPECT_EQ(first.size.height, 210);
    EXPECT_EQ(first.xMm, 12.5);
    EXPECT_EQ(first.yMm, 30);
    EXPECT_EQ(first.turned, 270);
    EXPECT_EQ(first.skew, -2.5);
    EXPECT_EQ(sheets->back().size.width, 80);
}

TEST(SimSheets, NonsenseIsRefused)
{
    for (const char* text :
         {"novel", "text/", "text/text/text", "text:A9", "text:5x5", "text:100x20000", "text@45",
          "text@360", "text@-90", "text~50", "text+5", "text+x+y", "text,", "text:1e999x20"}) {
        EXPECT_FALSE(parseSheets(text)) << text;
    }
}

TEST(SimSheets, NoTextIsNoSheets)
{
    const auto sheets = parseSheets("  ");
    ASSERT_TRUE(sheets);
    EXPECT_TRUE(sheets->empty());
}

TEST(SimSheets, SizesHaveNames)
{
    EXPECT_EQ(parseSize("Legal")->height, 355.6);
    EXPECT_EQ(parseSize(" A3 ")->width, 297);
    EXPECT_FALSE(parseSize("210"));
    EXPECT_FALSE(parseSize("nanxnan"));
}
