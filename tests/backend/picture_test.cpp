// Each setting can be seen in the picture: a chart with known patches is scanned and measured.
#include "backend/sim_env.h"

#include <cmath>

#include <gtest/gtest.h>

using kestrel::test::SimImage;
using kestrel::test::SimSession;

namespace {

using Pixel = std::array<int, 3>;

constexpr Pixel red{255, 0, 0};
constexpr Pixel green{0, 255, 0};
constexpr Pixel blue{0, 0, 255};
constexpr Pixel black{0, 0, 0};

/// The scan area is exactly the sheet, which the feeder puts in the middle.
void setA4(SimSession& session)
{
    ASSERT_EQ(session.set("resolution", "75"), SANE_STATUS_GOOD);
    ASSERT_EQ(session.set("br-x", "210"), SANE_STATUS_GOOD);
    ASSERT_EQ(session.set("br-y", "297"), SANE_STATUS_GOOD);
    ASSERT_EQ(session.set("center-alignment", "1"), SANE_STATUS_GOOD);
}

using Settings = std::vector<std::pair<const char*, const char*>>;

SimImage scanSheet(const std::string& config, const Settings& settings)
{
    SimSession session("[sim]\n" + config);
    setA4(session);
    for (const auto& [name, value] : settings) {
        EXPECT_EQ(session.set(name, value), SANE_STATUS_GOOD) << name << " = " << value;
    }
    const SimImage image = session.scan();
    EXPECT_EQ(image.ended, SANE_STATUS_EOF);
    return image;
}

SimImage scanChart(const Settings& settings)
{
    return scanSheet("sheets = chart\n", settings);
}

std::array<Pixel, 4> cornersOf(const SimImage& image)
{
    return {image.at(0.02, 0.02), image.at(0.98, 0.02), image.at(0.02, 0.98), image.at(0.98, 0.98)};
}

/// Patch @p i of the gray wedge; it was printed with level 32 * i.
int wedge(const SimImage& image, int i)
{
    return image.at((42 + 14 * i + 7) / 210.0, 159 / 297.0)[0];
}

/// Patch @p i of the hues: red, green, blue, cyan, magenta, yellow.
Pixel hue(const SimImage& image, int i)
{
    return image.at((42 + 14 * i + 7) / 210.0, 201 / 297.0);
}

double darkShare(const SimImage& image)
{
    int dark = 0;
    for (int y = 0; y < image.rows(); ++y) {
        for (int x = 0; x < image.parameters.pixels_per_line; ++x) {
            dark += image.pixel(x, y)[0] < 128 ? 1 : 0;
        }
    }
    return static_cast<double>(dark) / (image.rows() * image.parameters.pixels_per_line);
}

} // namespace

TEST(SimPicture, AnUntouchedScanIsTheChart)
{
    const SimImage image = scanChart({});
    EXPECT_EQ(cornersOf(image), (std::array<Pixel, 4>{red, green, blue, black}));
    for (int i = 0; i < 9; ++i) {
        EXPECT_EQ(wedge(image, i), std::min(255, 32 * i)) << i;
    }
}

TEST(SimPicture, RotationTurnsClockwise)
{
    EXPECT_EQ(cornersOf(scanChart({{"rotate", "90"}})),
              (std::array<Pixel, 4>{blue, red, black, green}));
    EXPECT_EQ(cornersOf(scanChart({{"rotate", "180"}})),
              (std::array<Pixel, 4>{black, blue, green, red}));
    EXPECT_EQ(cornersOf(scanChart({{"rotate", "270"}})),
              (std::array<Pixel, 4>{green, black, red, blue}));
}

TEST(SimPicture, OrientationPutsATurnedSheetUpright)
{
    for (const char* sheet :
         {"sheets = chart@90\n", "sheets = chart@180\n", "sheets = chart@270\n"}) {
        SimSession session(std::string("[sim]\n") + sheet);
        session.set("resolution", "75");
        session.set("autocropdeskew", "1");
        session.set("rotate", "Auto Orientation");
        EXPECT_EQ(cornersOf(session.scan()), (std::array<Pixel, 4>{red, green, blue, black}))
            << sheet;
    }
    EXPECT_EQ(cornersOf(scanSheet("sheets = chart@180\n", {})),
              (std::array<Pixel, 4>{black, blue, green, red}));
}

TEST(SimPicture, FanfoldTurnsTheBackOver)
{
    const Settings back{{"source", "ADF Back"}, {"flip-side-rotation", "Fanfold"}};
    EXPECT_EQ(cornersOf(scanSheet("sheets = text/chart\n", back)),
              (std::array<Pixel, 4>{black, blue, green, red}));
    EXPECT_EQ(cornersOf(scanSheet("sheets = chart\n", {{"flip-side-rotation", "Fanfold"}})),
              (std::array<Pixel, 4>{red, green, blue, black}));
}

TEST(SimPicture, SplitGivesTwoHalves)
{
    struct Row
    {
        const char* split;
        std::array<Pixel, 2> first; ///< the corners of the sheet that are on the first half
        std::array<Pixel, 2> second;
    };
    for (const Row& row : {Row{"Horizontal", {red, green}, {blue, black}},
                           Row{"Vertical", {red, blue}, {green, black}}}) {
        SimSession session("[sim]\nsheets = chart\n");
        setA4(session);
        session.set("split-image", row.split);
        const std::vector<SimImage> images = session.scanAll();
        ASSERT_EQ(images.size(), 2U);
        const bool across = std::string(row.split) == "Horizontal";
        const std::array<Pixel, 4> first = cornersOf(images[0]);
        const std::array<Pixel, 4> second = cornersOf(images[1]);
        EXPECT_EQ((std::array<Pixel, 2>{first[0], first[across ? 1 : 2]}), row.first);
        EXPECT_EQ((std::array<Pixel, 2>{second[across ? 2 : 1], second[3]}), row.second);
        EXPECT_EQ(images[0].parameters.lines, across ? 438 : 877);
        EXPECT_EQ(images[0].parameters.pixels_per_line, across ? 620 : 310);
    }
}

TEST(SimPicture, ResolutionIsPixelsPerInch)
{
    for (const auto& [dpi, width, height] : {std::tuple{"75", 620, 877},
                                             {"100", 827, 1169},
                                             {"300", 2480, 3508},
                                             {"600", 4961, 7016}}) {
        SimSession session("[sim]\nsheets = chart\n");
        setA4(session);
        session.set("resolution", dpi);
        SANE_Parameters parameters{};
        ASSERT_EQ(sane_start(session.handle()), SANE_STATUS_GOOD);
        sane_get_parameters(session.handle(), &parameters);
        EXPECT_EQ(parameters.pixels_per_line, width) << dpi;
        EXPECT_EQ(parameters.lines, height) << dpi;
    }
}

TEST(SimPicture, TheAreaChoosesWhatIsSeen)
{
    // The lower right quarter of the sheet, which lies 3 mm from the left end of the feeder.
    const SimImage image = scanChart({{"center-alignment", "0"},
                                      {"tl-x", "108"},
                                      {"tl-y", "148.5"},
                                      {"br-x", "213"},
                                      {"br-y", "297"}});
    EXPECT_EQ(image.parameters.pixels_per_line, 310);
    EXPECT_EQ(image.at(0.97, 0.97), black);
    EXPECT_NE(image.at(0.02, 0.98), blue);
}

TEST(SimPicture, WithoutCentringTheAreaBeginsAtTheEdge)
{
    const SimImage image = scanChart({{"center-alignment", "0"}, {"bg-color-setting", "White"}});
    EXPECT_EQ(image.pixel(2, 2), (Pixel{255, 255, 255})) << "beside the sheet";
    EXPECT_EQ(image.pixel(12, 2), red);
}

TEST(SimPicture, BrightnessAndContrast)
{
    const SimImage plain = scanChart({});
    const SimImage light = scanChart({{"brightness", "30"}});
    const SimImage dark = scanChart({{"brightness", "-30"}});
    const SimImage hard = scanChart({{"contrast", "50"}});
    const SimImage soft = scanChart({{"contrast", "-50"}});
    EXPECT_EQ(wedge(light, 4) - wedge(plain, 4), 38);
    EXPECT_EQ(wedge(plain, 4) - wedge(dark, 4), 38);
    EXPECT_LT(wedge(hard, 2), wedge(plain, 2));
    EXPECT_GT(wedge(hard, 6), wedge(plain, 6));
    EXPECT_GT(wedge(soft, 2), wedge(plain, 2));
    EXPECT_LT(wedge(soft, 6), wedge(plain, 6));
}

TEST(SimPicture, GammaTablesAreApplied)
{
    SimSession session("[sim]\nsheets = chart\n");
    setA4(session);
    std::array<SANE_Word, 256> table{};
    for (int i = 0; i < 256; ++i) {
        table[static_cast<std::size_t>(i)] = 255 - i;
    }
    ASSERT_EQ(session.control("gamma-table", table.data()), SANE_STATUS_GOOD);
    table.fill(77);
    ASSERT_EQ(session.control("green-gamma-table", table.data()), SANE_STATUS_GOOD);
    const SimImage image = session.scan();
    EXPECT_EQ(cornersOf(image)[0], (Pixel{0, 77, 255}));
    EXPECT_EQ(wedge(image, 2), 255 - 64);
}

TEST(SimPicture, GrayIsLuminanceAndDocumentsAreHarder)
{
    const SimImage normal = scanChart({{"mode", "Gray"}});
    const SimImage document = scanChart({{"mode", "Gray"}, {"gray_doc_type", "Document"}});
    const SimImage photo = scanChart({{"mode", "Gray"}, {"gray_doc_type", "Photo"}});
    EXPECT_EQ(wedge(normal, 3), 96);
    EXPECT_LT(wedge(document, 2), wedge(normal, 2));
    EXPECT_GT(wedge(photo, 2), wedge(normal, 2));
    EXPECT_LT(hue(normal, 2)[0], hue(normal, 0)[0]) << "blue is darker than red";
    EXPECT_LT(hue(normal, 0)[0], hue(normal, 1)[0]) << "red is darker than green";
}

TEST(SimPicture, DropoutMakesAColorVanish)
{
    const std::array<const char*, 3> colors{"Red", "Green", "Blue"};
    const SimImage plain = scanChart({{"mode", "Gray"}});
    for (int i = 0; i < 3; ++i) {
        const char* const color = colors[static_cast<std::size_t>(i)];
        const SimImage dropped = scanChart({{"mode", "Gray"}, {"color-dropout", color}});
        EXPECT_GT(hue(dropped, i)[0], hue(plain, i)[0] + 50) << color;
        EXPECT_EQ(hue(dropped, (i + 1) % 3)[0], 0) << color << " leaves the others";
        const SimImage strong =
            scanChart({{"mode", "Gray"}, {"color-dropout", color}, {"adv-color-dropout", "1"}});
        EXPECT_EQ(hue(strong, i)[0], 255) << color;
    }
    const SimImage inColor = scanChart({{"color-dropout", "Red"}, {"adv-color-dropout", "1"}});
    EXPECT_EQ(hue(inColor, 0), (Pixel{255, 255, 255}));
    EXPECT_EQ(hue(inColor, 1), (Pixel{0, 180, 0}));
}

TEST(SimPicture, AFixedThresholdDividesTheWedge)
{
    const auto scanAt = [](const char* value) {
        return scanChart({{"mode", "Lineart"},
                          {"binarization", "Fixed Processing"},
                          {"binarization-value", value}});
    };
    const SimImage low = scanAt("60");
    const SimImage high = scanAt("200");
    for (int i = 0; i < 9; ++i) {
        EXPECT_EQ(wedge(low, i), 32 * i < 60 ? 0 : 255) << i;
        EXPECT_EQ(wedge(high, i), 32 * i < 200 ? 0 : 255) << i;
    }
}

TEST(SimPicture, ADynamicThresholdFindsTextOnAnyPaper)
{
    const SimImage image =
        scanSheet("sheets = tinted\n", {{"mode", "Lineart"}, {"resolution", "150"}});
    EXPECT_GT(darkShare(image), 0.01);
    EXPECT_LT(darkShare(image), 0.2);
    const SimImage timid =
        scanSheet("sheets = photo\n",
                  {{"mode", "Lineart"}, {"resolution", "150"}, {"binarization-value", "30"}});
    const SimImage eager =
        scanSheet("sheets = photo\n",
                  {{"mode", "Lineart"}, {"resolution", "150"}, {"binarization-value", "1"}});
    EXPECT_GT(darkShare(eager), darkShare(timid));
}

TEST(SimPicture, DiffusionKeepsTheMeanTone)
{
    const SimImage image = scanChart({{"mode", "Lineart"}, {"binarization", "Diffusion"}});
    const auto whiteShare = [&image](int patch) {
        int white = 0;
        for (int y = 480; y < 495; ++y) {
            for (int x = 0; x < 20; ++x) {
                white +=
                    image.pixel(static_cast<int>((42 + 14 * patch + 4) * 620 / 210.0) + x, y)[0] /
                    255;
            }
        }
        return white / 300.0;
    };
    EXPECT_NEAR(whiteShare(2), 64 / 255.0, 0.08);
    EXPECT_NEAR(whiteShare(4), 128 / 255.0, 0.08);
    EXPECT_NEAR(whiteShare(6), 192 / 255.0, 0.08);
}

TEST(SimPicture, InversionSwapsBlackAndWhite)
{
    const Settings plain{
        {"mode", "Lineart"}, {"binarization", "Fixed Processing"}, {"binarization-value", "128"}};
    Settings inverted = plain;
    inverted.emplace_back("invert", "1");
    EXPECT_NEAR(darkShare(scanChart(plain)), 1 - darkShare(scanChart(inverted)), 1e-9);
    EXPECT_EQ(scanChart({{"invert", "1"}}).at(0.02, 0.02), red) << "colour is not inverted";
}

TEST(SimPicture, TheRedSensorIsBroughtIntoLine)
{
    // 2 mm off, so that just above a corner patch's lower edge red is already that of the paper
    // below.
    const std::string config = "sheets = chart\ncolor-fringe = 2\n";
    const int row = static_cast<int>(20.5 * 75 / 25.4);
    const Pixel fringed = scanSheet(config, {}).pixel(615, row);
    const Pixel straight = scanSheet(config, {{"color-register", "1"}}).pixel(615, row);
    EXPECT_EQ(straight, green);
    EXPECT_EQ(fringed, (Pixel{255, 255, 0}));
}

TEST(SimPicture, PagesAndSidesAreNumbered)
{
    SimSession session("[sim]\nsheets = sparse/sparse\nstack = 2\n");
    setA4(session);
    session.set("source", "ADF Duplex");
    const std::vector<SimImage> images = session.scanAll();
    ASSERT_EQ(images.size(), 4U);
    for (std::size_t i = 0; i < images.size(); ++i) {
        for (std::size_t j = i + 1; j < images.size(); ++j) {
            EXPECT_NE(images[i].bytes, images[j].bytes) << i << " and " << j;
        }
    }
}
