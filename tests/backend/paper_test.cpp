// What the scanner makes of the paper: cropping, cleaning, blank sides, colour detection,
// multifeeds.
#include "backend/sim_env.h"

#include <cmath>

#include <gtest/gtest.h>

using kestrel::test::SimImage;
using kestrel::test::SimSession;

namespace {

using Pixel = std::array<int, 3>;
using Settings = std::vector<std::pair<const char*, const char*>>;

void apply(SimSession& session, const Settings& settings)
{
    for (const auto& [name, value] : settings) {
        ASSERT_EQ(session.set(name, value), SANE_STATUS_GOOD) << name << " = " << value;
    }
}

/// Scans sheets cropped to their size, at 75 dpi.
std::vector<SimImage> scanCropped(const std::string& config, const Settings& settings)
{
    SimSession session("[sim]\n" + config);
    apply(session, {{"resolution", "75"}, {"autocropdeskew", "1"}});
    apply(session, settings);
    return session.scanAll();
}

SimImage scanOne(const std::string& config, const Settings& settings)
{
    std::vector<SimImage> images = scanCropped(config, settings);
    EXPECT_FALSE(images.empty());
    return images.empty() ? SimImage{} : images.front();
}

int darkPixels(const SimImage& image)
{
    int dark = 0;
    for (int y = 0; y < image.rows(); ++y) {
        for (int x = 0; x < image.parameters.pixels_per_line; ++x) {
            dark += image.pixel(x, y)[0] < 100 ? 1 : 0;
        }
    }
    return dark;
}

/// Kinds of the images in the journal: "color", "gray", "lineart".
std::vector<std::string> kindsIn(const SimSession& session)
{
    std::vector<std::string> kinds;
    for (const std::string& line : session.journal()) {
        const std::size_t at = line.find("kind=");
        if (line.rfind("start good", 0) == 0 && at != std::string::npos) {
            kinds.push_back(line.substr(at + 5, line.find(' ', at) - at - 5));
        }
    }
    return kinds;
}

std::string detectedKind(const std::string& sheet, const Settings& settings)
{
    SimSession session("[sim]\nsheets = " + sheet + "\n");
    apply(session, {{"resolution", "72"}, {"mode", "Auto Detection"}});
    apply(session, settings);
    session.scanAll();
    return kindsIn(session).empty() ? "none" : kindsIn(session).front();
}

} // namespace

TEST(SimPaper, CroppingGivesTheSheetAlone)
{
    const SimImage image = scanOne("sheets = chart:A5\n", {});
    EXPECT_EQ(image.parameters.pixels_per_line, 437);
    EXPECT_EQ(image.parameters.lines, 620);
    EXPECT_EQ(image.pixel(1, 1), (Pixel{255, 0, 0}));
}

TEST(SimPaper, CroppingPutsASkewedSheetStraight)
{
    EXPECT_EQ(scanOne("sheets = chart:A5~6\n", {}).bytes, scanOne("sheets = chart:A5\n", {}).bytes);
    SimSession session("[sim]\nsheets = chart:A5~6\n");
    apply(session, {{"resolution", "75"},
                    {"bg-color-setting", "Black"},
                    {"br-x", "148"},
                    {"br-y", "210"},
                    {"center-alignment", "1"}});
    const SimImage askew = session.scan();
    EXPECT_EQ(askew.pixel(60, 1), (Pixel{255, 0, 0})) << "the left end of its top went up";
    EXPECT_EQ(askew.pixel(435, 1), (Pixel{0, 0, 0})) << "the right end went down";
}

TEST(SimPaper, CropMarginsMoveTheEdges)
{
    const SimImage image = scanOne("sheets = chart:A5\n", {{"crop-adjust-left", "5.08"},
                                                           {"crop-adjust-bottom", "-10"},
                                                           {"bg-color-setting", "Black"}});
    EXPECT_EQ(image.parameters.pixels_per_line, 437 + 15);
    EXPECT_EQ(image.parameters.lines, 591);
    EXPECT_EQ(image.pixel(5, 5), (Pixel{0, 0, 0}));
    EXPECT_EQ(image.pixel(20, 5), (Pixel{255, 0, 0}));
}

TEST(SimPaper, SeveralOriginalsOnTheGlassBecomeSeveralImages)
{
    const std::string glass = "glass = chart:100x50+10+10, text:60x80+120+100\n";
    const std::vector<SimImage> each =
        scanCropped(glass, {{"source", "Flatbed"}, {"flatbed-multi-crop", "1"}});
    ASSERT_EQ(each.size(), 2U);
    EXPECT_EQ(each[0].parameters.pixels_per_line, 295);
    EXPECT_EQ(each[0].parameters.lines, 148);
    EXPECT_EQ(each[1].parameters.pixels_per_line, 177);
    const std::vector<SimImage> together = scanCropped(glass, {{"source", "Flatbed"}});
    ASSERT_EQ(together.size(), 1U);
    EXPECT_EQ(together[0].parameters.pixels_per_line, 502) << "from 10 to 180 mm";
    EXPECT_EQ(together[0].parameters.lines, 502);
}

TEST(SimPaper, TheBackingShowsAroundTheSheet)
{
    for (const auto& [setting, color] : {std::pair{"Black", Pixel{0, 0, 0}},
                                         {"White", Pixel{255, 255, 255}},
                                         {"No processing", Pixel{72, 72, 76}}}) {
        SimSession session("[sim]\nsheets = text:A5\n");
        apply(session, {{"resolution", "72"}, {"bg-color-setting", setting}});
        EXPECT_EQ(session.scan().pixel(5, 5), color) << setting;
    }
}

TEST(SimPaper, PunchHolesAreFilled)
{
    const int x = static_cast<int>(10 * 75 / 25.4);
    const int y = static_cast<int>((148.5 + 40) * 75 / 25.4);
    EXPECT_LT(scanOne("sheets = sparse\n", {}).pixel(x, y)[0], 100);
    EXPECT_GT(scanOne("sheets = sparse\n", {{"punch-hole-removal", "1"}}).pixel(x, y)[0], 240);
}

TEST(SimPaper, TheFoldOfABookIsLightened)
{
    EXPECT_LT(scanOne("sheets = book\n", {}).pixel(309, 60)[0], 100);
    EXPECT_GT(scanOne("sheets = book\n", {{"book-scan-correction", "1"}}).pixel(309, 60)[0], 240);
}

TEST(SimPaper, BackgroundIsSmoothedOrRemoved)
{
    const auto tonesOf = [](const Settings& settings) {
        const SimImage image = scanOne("sheets = tinted\n", settings);
        std::vector<Pixel> tones;
        for (int x = 150; x < 400; ++x) {
            tones.push_back(image.pixel(x, 860));
        }
        std::sort(tones.begin(), tones.end());
        tones.erase(std::unique(tones.begin(), tones.end()), tones.end());
        return tones;
    };
    EXPECT_GT(tonesOf({}).size(), 1U) << "paper has a grain";
    EXPECT_EQ(tonesOf({{"background-processing", "Smooth"}}),
              (std::vector<Pixel>{{255, 236, 150}}));
    EXPECT_EQ(
        tonesOf({{"background-processing", "Removal"}, {"background-processing-setting", "White"}}),
        (std::vector<Pixel>{{255, 255, 255}}));
    EXPECT_EQ(
        tonesOf({{"background-processing", "Removal"}, {"background-processing-setting", "Auto"}}),
        (std::vector<Pixel>{{255, 236, 150}}));
}

TEST(SimPaper, MoireSmoothingSoftensTheImage)
{
    const SimImage plain = scanOne("sheets = text\n", {{"background-processing", "Smooth"}});
    const SimImage soft = scanOne("sheets = text\n", {{"background-processing", "Smooth"},
                                                      {"background-processing-setting", "Moire"}});
    EXPECT_LT(darkPixels(soft), darkPixels(plain));
}

TEST(SimPaper, DespecklingRemovesDotsUpToASize)
{
    const Settings fine{{"resolution", "150"}, {"punch-hole-removal", "1"}};
    const auto with = [&fine](const char* dots, const char* ratio) {
        Settings settings = fine;
        settings.emplace_back("despeckle", "1");
        settings.emplace_back("despeckle-dotsnumber", dots);
        settings.emplace_back("despeckle-ratio", ratio);
        return darkPixels(scanOne("sheets = blank\n", settings));
    };
    const int all = darkPixels(scanOne("sheets = blank\n", fine));
    EXPECT_GT(all, 0);
    EXPECT_LT(with("4", "1"), all);
    EXPECT_GT(with("4", "2"), 0) << "dots of nine remain";
    EXPECT_GT(with("9", "1"), 0) << "dots wider than two remain";
    EXPECT_EQ(with("9", "2"), 0);
}

TEST(SimPaper, BlankSidesAreLeftOut)
{
    const std::string config = "sheets = text/blank, blank/text, blank/blank, text/sparse\n";
    EXPECT_EQ(scanCropped(config, {{"source", "ADF Duplex"}}).size(), 8U);
    EXPECT_EQ(scanCropped(config, {{"source", "ADF Duplex"}, {"blank-page-removal", "1"}}).size(),
              3U);
}

TEST(SimPaper, TheBlankThresholdDecidesAboutSparseSides)
{
    const std::string config = "sheets = sparse\n";
    EXPECT_EQ(
        scanCropped(config, {{"blank-page-removal", "1"}, {"blank-page-threshold", "5"}}).size(),
        1U);
    EXPECT_EQ(
        scanCropped(config, {{"blank-page-removal", "1"}, {"blank-page-threshold", "100"}}).size(),
        0U);
    EXPECT_EQ(scanCropped("sheets = text\n",
                          {{"blank-page-removal", "1"}, {"blank-page-threshold", "100"}})
                  .size(),
              1U);
}

TEST(SimPaper, ColorIsDetectedBySide)
{
    SimSession session("[sim]\nsheets = photo/text\n");
    apply(session, {{"resolution", "72"},
                    {"source", "ADF Duplex"},
                    {"mode", "Auto Detection"},
                    {"auto-color-back-noncolor-mode", "Gray"}});
    session.scanAll();
    EXPECT_EQ(kindsIn(session), (std::vector<std::string>{"color", "gray"}));
}

TEST(SimPaper, ColorDetectionHasASensitivityAndAnAlternative)
{
    EXPECT_EQ(detectedKind("photo", {}), "color");
    EXPECT_EQ(detectedKind("text", {}), "lineart");
    EXPECT_EQ(detectedKind("text", {{"auto-color-front-noncolor-mode", "Gray"}}), "gray");
    EXPECT_EQ(detectedKind("text", {{"auto-color-front-sensitivity", "100"}}), "color")
        << "the blue letterhead";
}

TEST(SimPaper, ColorDetectionCanIgnoreThePaper)
{
    EXPECT_EQ(detectedKind("tinted", {}), "color");
    EXPECT_EQ(detectedKind("tinted", {{"auto-color-front-mode", "Ignore Paper Color"}}), "lineart");
    EXPECT_EQ(detectedKind("photo", {{"auto-color-front-mode", "Ignore Paper Color"}}), "color");
}

TEST(SimPaper, AMultifeedIsHeardAndStopsTheScan)
{
    SimSession session("[sim]\nstack = 5\ndouble-feed-at = 2\n");
    apply(session,
          {{"resolution", "72"}, {"ultrasonic", "Enable"}, {"stop-scanning-after-multifeed", "1"}});
    EXPECT_EQ(session.scan().started, SANE_STATUS_GOOD);
    EXPECT_EQ(session.scan().started, SANE_STATUS_JAMMED);
    const std::vector<std::string> journal = session.journal();
    EXPECT_NE(std::find(journal.begin(), journal.end(), "multifeed heard"), journal.end());
}

TEST(SimPaper, AMultifeedLosesASheetWhenItDoesNotStop)
{
    for (const Settings& settings :
         {Settings{{"stop-scanning-after-multifeed", "0"}}, Settings{{"ultrasonic", "Disable"}}}) {
        SimSession session("[sim]\nstack = 5\ndouble-feed-at = 2\n");
        apply(session, {{"resolution", "72"}});
        apply(session, settings);
        EXPECT_EQ(session.scanAll().size(), 4U);
    }
}

TEST(SimPaper, AMultifeedIsMeasuredByItsLength)
{
    for (const auto& [tolerance, status] :
         {std::pair{"10", SANE_STATUS_JAMMED}, {"150", SANE_STATUS_GOOD}}) {
        SimSession session("[sim]\nstack = 2\ndouble-feed-at = 1\n");
        apply(session, {{"resolution", "72"},
                        {"br-y", "297"},
                        {"ultrasonic", "Disable"},
                        {"additional-length-detection", "Enable"},
                        {"additional-length-detection-length", tolerance}});
        EXPECT_EQ(session.scan().started, status) << tolerance;
    }
}

TEST(SimPaper, LongPaperIsSeenToItsEnd)
{
    SimSession session("[sim]\nmodel = Q150L\nsheets = chart:200x1000\n");
    apply(session, {{"resolution", "75"},
                    {"long-paper-scan", "1"},
                    {"br-y", "1000"},
                    {"br-x", "200"},
                    {"center-alignment", "1"}});
    const SimImage image = session.scan();
    EXPECT_EQ(image.rows(), 2953);
    EXPECT_EQ(image.pixel(5, 2945), (Pixel{0, 0, 255}));
}

TEST(SimPaper, WearIsCounted)
{
    SimSession session("[sim]\nstack = 3\nroller-count = 100\npad-count = 50\n");
    apply(session, {{"resolution", "72"}});
    session.scanAll();
    EXPECT_EQ(session.word("roller-count"), 103);
    EXPECT_EQ(session.word("padscan-count"), 53);
}
