// Applying the settings: source, duplex, mode and multistream.
#include "apply_fixture.h"

using namespace kestrel::test;

TEST_F(Apply, TheFeederGoesByTheMask)
{
    chooseText("source", feeder);
    for (int mask = 0; mask < 256; ++mask) {
        dialog().setMask(mask);
        dialog().double_side = false;
        const bool frontDetection = (mask & 64) != 0;
        const bool backDetection = (mask & 128) != 0;
        const bool back = (mask & 56) != 0;
        const bool front = (mask & 7) != 0;
        std::string expected = "ADF Front";
        if (frontDetection && backDetection) {
            expected = "ADF Duplex";
        } else if (frontDetection) {
            expected = "ADF Front";
        } else if (backDetection) {
            expected = "ADF Back";
        } else if (back && front) {
            expected = "ADF Duplex";
        } else if (back) {
            expected = "ADF Back";
        }
        EXPECT_EQ(sent("source"), Strings{expected}) << mask;
        EXPECT_EQ(dialog().double_side, expected == "ADF Duplex") << mask;
        EXPECT_EQ(m_journal.setsOf("auto-scan-source-setting"), nothing) << mask;
    }
}

TEST_F(Apply, TheDuplexFlagIsTakenBack)
{
    chooseText("source", feeder);
    dialog().setMask(36);
    apply();
    EXPECT_TRUE(dialog().double_side);
    for (const int mask : {4, 32, 64, 128, 0}) {
        dialog().double_side = true;
        dialog().setMask(mask);
        apply();
        EXPECT_FALSE(dialog().double_side) << mask;
    }
}

TEST_F(Apply, TheAutomaticSourceNamesItsFeederSide)
{
    chooseText("source", automatic);
    for (int mask = 0; mask < 256; ++mask) {
        dialog().setMask(mask);
        const bool detection = mask >= 64;
        const bool duplex = detection ? (mask & 192) == 192 : (mask & 56) != 0 && (mask & 7) != 0;
        dialog().double_side = !duplex;
        EXPECT_EQ(sent("source"), (Strings{"Automatic"})) << mask;
        EXPECT_EQ(m_journal.setsOf("auto-scan-source-setting"),
                  (Strings{duplex ? "ADF Duplex" : "ADF Front"}))
            << mask;
        EXPECT_EQ(dialog().double_side, duplex) << mask;
        EXPECT_EQ(position("auto-scan-source-setting"), position("source") + 1);
    }
}

TEST_F(Apply, TheFlatbedIsNeverDuplex)
{
    chooseText("source", flatbed);
    for (const int mask : {4, 36, 63, 192, 255}) {
        dialog().setMask(mask);
        dialog().double_side = true;
        EXPECT_EQ(sent("source"), (Strings{"Flatbed"})) << mask;
        EXPECT_FALSE(dialog().double_side) << mask;
        EXPECT_EQ(m_journal.setsOf("auto-scan-source-setting"), nothing);
    }
}

TEST_F(Apply, WithoutASourceNoneIsSentAndTheDuplexFlagStays)
{
    combo("source").clear();
    for (const bool before : {true, false}) {
        dialog().double_side = before;
        dialog().setMask(36);
        EXPECT_EQ(sent("source"), nothing);
        EXPECT_EQ(dialog().double_side, before);
        EXPECT_EQ(m_journal.setsOf("mode"), (Strings{"Color"}));
    }
}

TEST_F(Apply, AnUnknownSourceTextIsNotSent)
{
    combo("source").clear();
    combo("source").addItem(QStringLiteral("别的"));
    EXPECT_EQ(sent("source"), nothing);
}

TEST_F(Apply, ModeAndMultistreamGoByTheMask)
{
    for (int mask = 0; mask < 64; ++mask) {
        dialog().setMask(mask);
        const int front = mask & 7;
        const int back = mask & 56;
        std::string mode = "Color";
        if (front < 4 && back < 32) {
            mode = front < 2 && back < 16 ? "Lineart" : "Gray";
        }
        std::string images = "No Multi-Stream";
        if (front == 3 || back == 24) {
            images = "Gray + BW";
        } else if (front == 5 || back == 40) {
            images = "Color + BW";
        } else if (front == 6 || back == 48) {
            images = "Color + Gray";
        } else if (front == 7 || back == 56) {
            images = "Color + Gray + BW";
        }
        EXPECT_EQ(sent("mode"), Strings{mode}) << mask;
        EXPECT_EQ(m_journal.setsOf("multistream-list"), Strings{images}) << mask;
    }
}

TEST_F(Apply, SingleModesOfTheFront)
{
    for (const auto& [mask, mode] :
         {std::pair(1, "Lineart"), std::pair(2, "Gray"), std::pair(4, "Color")}) {
        dialog().setMask(mask);
        EXPECT_EQ(sent("mode"), Strings{mode});
        EXPECT_EQ(m_journal.setsOf("multistream-list"), (Strings{"No Multi-Stream"}));
    }
}

TEST_F(Apply, DetectionReplacesModeAndMultistream)
{
    for (int mask = 64; mask < 256; ++mask) {
        dialog().setMask(mask);
        EXPECT_EQ(sent("mode"), (Strings{"Auto Detection"})) << mask;
        EXPECT_EQ(m_journal.setsOf("multistream-list"), nothing) << mask;
    }
}

TEST_F(Apply, TheDetectionModeIsNamedAfterTheBackend)
{
    dialog().setMask(192);
    for (const auto& [backend, mode] :
         {std::pair("avision_adv", "Auto Color Detection"),
          std::pair("kestrel_adv", "Auto Detection"), std::pair("AVISION_ADV", "Auto Detection"),
          std::pair("avision_adv2", "Auto Detection"), std::pair("avision_ad", "Auto Detection"),
          std::pair("", "Auto Detection")}) {
        dialog().backend_name = QString::fromLatin1(backend);
        EXPECT_EQ(sent("mode"), Strings{mode}) << backend;
    }
}
