// Applying the settings: image processing, cache and eject.
#include "apply_fixture.h"

using namespace kestrel::test;

TEST_F(Apply, AutomaticOrientationNamesItsMode)
{
    const Strings rotations{"None", "90", "180", "270", "Auto Orientation"};
    const Strings modes{"Quick", "Full text", "Complexity"};
    for (int i = 0; i < 5; ++i) {
        choose("rotate", i);
        choose("auto_orientation_mode", i % 3);
        EXPECT_EQ(sent("rotate"), Strings{rotations[static_cast<std::size_t>(i)]});
        EXPECT_EQ(m_journal.setsOf("auto-orientation-mode"),
                  i == 4 ? Strings{modes[static_cast<std::size_t>(i % 3)]} : nothing);
    }
}

TEST_F(Apply, BookOrFanfold)
{
    check("rotation_book");
    EXPECT_EQ(sent("flip-side-rotation"), (Strings{"Book"}));
    check("rotation_fanfold");
    EXPECT_EQ(sent("flip-side-rotation"), (Strings{"Fanfold"}));
}

TEST_F(Apply, TheBlankPageThresholdGoesWithTheRemoval)
{
    bar("blankpage_threshold").setValue(61);
    for (const bool on : {true, false}) {
        check("remove_blankpage", on);
        EXPECT_EQ(sent("blank-page-removal"), Strings{on ? "1" : "0"});
        EXPECT_EQ(m_journal.setsOf("blank-page-threshold"), on ? Strings{"61"} : nothing);
    }
}

TEST_F(Apply, SplitAndPunchHoles)
{
    const Strings table{"None", "Horizontal", "Vertical"};
    for (int i = 0; i < 3; ++i) {
        choose("split_image", i);
        check("punch_hole_removal", i == 1);
        EXPECT_EQ(sent("split-image"), Strings{table[static_cast<std::size_t>(i)]});
        EXPECT_EQ(m_journal.setsOf("punch-hole-removal"), Strings{i == 1 ? "1" : "0"});
    }
}

TEST_F(Apply, BackgroundProcessingNamesTheSettingOfItsKind)
{
    bar("background_processing_sensitivity").setValue(7);
    choose("background_processing", 0);
    apply();
    EXPECT_EQ(m_journal.setsOf("background-processing"), (Strings{"None"}));
    EXPECT_EQ(m_journal.setsOf("background-processing-sensitivity"), nothing);
    EXPECT_EQ(m_journal.setsOf("background-processing-setting"), nothing);
    const Strings smooth{"Auto", "Moire"};
    const Strings removal{"White", "Auto"};
    for (int kind = 1; kind <= 2; ++kind) {
        choose("background_processing", kind);
        ASSERT_EQ(combo("background_processing_setting").count(), 2);
        for (int i = 0; i < 2; ++i) {
            choose("background_processing_setting", i);
            apply();
            EXPECT_EQ(m_journal.setsOf("background-processing"),
                      Strings{kind == 1 ? "Smooth" : "Removal"});
            EXPECT_EQ(m_journal.setsOf("background-processing-sensitivity"), (Strings{"7"}));
            EXPECT_EQ(m_journal.setsOf("background-processing-setting"),
                      Strings{(kind == 1 ? smooth : removal)[static_cast<std::size_t>(i)]});
        }
    }
}

TEST_F(Apply, DespeckleDetailsGoWithTheSwitch)
{
    spin("despeckle_dotsnumber").setValue(30);
    spin("despeckle_ratios").setValue(9);
    for (const bool on : {true, false}) {
        check("despeckle", on);
        EXPECT_EQ(sent("despeckle"), Strings{on ? "1" : "0"});
        EXPECT_EQ(m_journal.setsOf("despeckle-ratio"), on ? Strings{"9"} : nothing);
        EXPECT_EQ(m_journal.setsOf("despeckle-dotsnumber"), on ? Strings{"30"} : nothing);
    }
}

// Without a cache mode the page count is sent, though the image count is on show.
TEST_F(Apply, CacheModesSendTheirValues)
{
    bar("cachemode_image_num").setValue(90);
    bar("cachemode_page_num").setValue(17);
    bar("cachemode_value").setValue(123);
    for (const bool on : {true, false}) {
        check("cachemode_image_num_default", on);
        check("cachemode_use_default", !on);
        choose("cachemode", 0);
        EXPECT_EQ(sent("cachemode"), (Strings{"None"}));
        EXPECT_EQ(m_journal.setsOf("cachemode-value"), (Strings{"17"}));
        EXPECT_EQ(m_journal.setsOf("cachemode-use-default"), Strings{on ? "1" : "0"});
        choose("cachemode", 1);
        EXPECT_EQ(sent("cachemode"), (Strings{"Page Number"}));
        EXPECT_EQ(m_journal.setsOf("cachemode-value"), (Strings{"17"}));
        EXPECT_EQ(m_journal.setsOf("cachemode-use-default"), nothing);
        choose("cachemode", 2);
        EXPECT_EQ(sent("cachemode"), (Strings{"Memory Size"}));
        EXPECT_EQ(m_journal.setsOf("cachemode-value"), (Strings{"123"}));
        EXPECT_EQ(m_journal.setsOf("cachemode-use-default"), Strings{on ? "0" : "1"});
    }
}

TEST_F(Apply, EjectSideComesLast)
{
    for (const bool on : {true, false}) {
        check("eject_paper_opposite_side", on);
        EXPECT_EQ(sent("eject-paper-opposite-side"), Strings{on ? "1" : "0"});
        EXPECT_EQ(m_journal.sets().back(),
                  std::string("eject-paper-opposite-side=") + (on ? "1" : "0"));
    }
}
