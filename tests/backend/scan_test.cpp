// The course of a scan: which images come, in which form and order, and how it ends.
#include "backend/sim_env.h"

#include <gtest/gtest.h>

using kestrel::test::SimImage;
using kestrel::test::SimSession;

namespace {

/// The images of the session as the journal has them: "1 front color", ...
std::vector<std::string> imagesIn(const SimSession& session)
{
    std::vector<std::string> images;
    const auto field = [](const std::string& line, const std::string& name) {
        const std::size_t at = line.find(" " + name + "=") + name.size() + 2;
        return line.substr(at, line.find(' ', at) - at);
    };
    for (const std::string& line : session.journal()) {
        if (line.rfind("start good", 0) == 0) {
            images.push_back(field(line, "sheet") + " " + field(line, "side") + " " +
                             field(line, "kind"));
        }
    }
    return images;
}

void setSmall(SimSession& session)
{
    ASSERT_EQ(session.set("resolution", "72"), SANE_STATUS_GOOD);
}

} // namespace

TEST(SimScan, AnImageHasTheBytesItsParametersPromise)
{
    for (const char* mode : {"Lineart", "Gray", "Color"}) {
        SimSession session("[sim]\n");
        session.set("mode", mode);
        session.set("resolution", "100");
        session.set("br-x", "101.6");
        session.set("br-y", "50.8");
        const SimImage image = session.scan(1000);
        ASSERT_EQ(image.started, SANE_STATUS_GOOD);
        EXPECT_EQ(image.ended, SANE_STATUS_EOF);
        EXPECT_EQ(image.parameters.pixels_per_line, 400) << mode;
        EXPECT_EQ(image.parameters.lines, 200) << mode;
        EXPECT_EQ(image.parameters.last_frame, SANE_TRUE);
        EXPECT_EQ(image.bytes.size(), static_cast<std::size_t>(image.parameters.bytes_per_line *
                                                               image.parameters.lines));
    }
}

TEST(SimScan, EachModeHasItsFrame)
{
    struct Row
    {
        const char* mode;
        SANE_Frame format;
        int depth;
        int bytesFor10Pixels;
    };
    for (const Row& row :
         {Row{"Lineart", SANE_FRAME_GRAY, 1, 2}, Row{"Gray", SANE_FRAME_GRAY, 8, 10},
          Row{"Color", SANE_FRAME_RGB, 8, 30}}) {
        SimSession session("[sim]\n");
        session.set("mode", row.mode);
        session.set("resolution", "100");
        session.set("br-x", "2.54");
        session.set("br-y", "2.54");
        SANE_Parameters parameters{};
        ASSERT_EQ(sane_get_parameters(session.handle(), &parameters), SANE_STATUS_GOOD);
        EXPECT_EQ(parameters.format, row.format);
        EXPECT_EQ(parameters.depth, row.depth);
        EXPECT_EQ(parameters.pixels_per_line, 10);
        EXPECT_EQ(parameters.bytes_per_line, row.bytesFor10Pixels);
    }
}

TEST(SimScan, ParametersBeforeTheScanAreThoseOfTheImage)
{
    for (const char* rotate : {"None", "90"}) {
        SimSession session("[sim]\n");
        setSmall(session);
        session.set("rotate", rotate);
        SANE_Parameters before{};
        sane_get_parameters(session.handle(), &before);
        const SimImage image = session.scan();
        EXPECT_EQ(before.pixels_per_line, image.parameters.pixels_per_line);
        EXPECT_EQ(before.lines, image.parameters.lines);
        EXPECT_EQ(before.lines > before.pixels_per_line, std::string(rotate) == "None");
    }
}

TEST(SimScan, TheFeederEndsWhenItIsEmptyAndIsThenRefilled)
{
    SimSession session("[sim]\nstack = 3\n");
    setSmall(session);
    EXPECT_EQ(session.scanAll().size(), 3U);
    EXPECT_EQ(session.scanAll().size(), 3U);
    EXPECT_EQ(session.journal().back(), "cancel");
}

TEST(SimScan, TheFlatbedGivesOneImageASession)
{
    SimSession session("[sim]\n");
    setSmall(session);
    session.set("source", "Flatbed");
    EXPECT_EQ(session.scan().started, SANE_STATUS_GOOD);
    EXPECT_EQ(session.scan().started, SANE_STATUS_NO_DOCS);
    EXPECT_EQ(session.scan().started, SANE_STATUS_GOOD) << "a new session";
}

TEST(SimScan, DuplexGivesFrontThenBack)
{
    SimSession session("[sim]\nstack = 2\n");
    setSmall(session);
    session.set("source", "ADF Duplex");
    session.scanAll();
    EXPECT_EQ(imagesIn(session), (std::vector<std::string>{"1 front color", "1 back color",
                                                           "2 front color", "2 back color"}));
}

TEST(SimScan, TheBackAloneCanBeScanned)
{
    SimSession session("[sim]\nstack = 1\n");
    setSmall(session);
    session.set("source", "ADF Back");
    session.scanAll();
    EXPECT_EQ(imagesIn(session), (std::vector<std::string>{"1 back color"}));
}

TEST(SimScan, MultistreamGivesSeveralKindsOfEachSide)
{
    struct Row
    {
        const char* list;
        std::vector<std::string> images;
    };
    const std::vector<Row> rows{
        {"No Multi-Stream", {"1 front gray"}},
        {"Gray + BW", {"1 front gray", "1 front lineart"}},
        {"Color + Gray", {"1 front color", "1 front gray"}},
        {"Color + BW", {"1 front color", "1 front lineart"}},
        {"Color + Gray + BW", {"1 front color", "1 front gray", "1 front lineart"}}};
    for (const Row& row : rows) {
        SimSession session("[sim]\nstack = 1\n");
        setSmall(session);
        session.set("mode", "Gray");
        ASSERT_EQ(session.set("multistream-list", row.list), SANE_STATUS_GOOD);
        session.scanAll();
        EXPECT_EQ(imagesIn(session), row.images) << row.list;
    }
}

TEST(SimScan, MultistreamInDuplexFinishesTheFrontFirst)
{
    SimSession session("[sim]\nstack = 1\n");
    setSmall(session);
    session.set("source", "ADF Duplex");
    session.set("multistream-list", "Color + BW");
    session.scanAll();
    EXPECT_EQ(imagesIn(session), (std::vector<std::string>{"1 front color", "1 front lineart",
                                                           "1 back color", "1 back lineart"}));
}

TEST(SimScan, TheAutomaticSourcePrefersTheFeeder)
{
    SimSession session("[sim]\nstack = 2\n");
    setSmall(session);
    session.set("source", "Automatic");
    session.set("auto-scan-source-setting", "ADF Duplex");
    EXPECT_EQ(session.scanAll().size(), 4U) << "and ends with it, without a turn to the glass";
}

TEST(SimScan, TheAutomaticSourceTakesTheGlassWhenTheFeederIsEmpty)
{
    SimSession session("[sim]\nstack = 0\n");
    setSmall(session);
    session.set("source", "Automatic");
    session.set("auto-scan-source-setting", "ADF Duplex");
    EXPECT_EQ(session.scanAll().size(), 1U);
}

TEST(SimScan, ReadingPastTheEndKeepsSayingSo)
{
    SimSession session("[sim]\n");
    setSmall(session);
    session.scan();
    SANE_Byte byte = 0;
    SANE_Int length = 5;
    EXPECT_EQ(sane_read(session.handle(), &byte, 1, &length), SANE_STATUS_EOF);
    EXPECT_EQ(length, 0);
}

TEST(SimScan, ReadingWithoutAScanIsRefused)
{
    SimSession session("[sim]\n");
    SANE_Byte byte = 0;
    SANE_Int length = 5;
    EXPECT_EQ(sane_read(session.handle(), &byte, 1, &length), SANE_STATUS_INVAL);
    EXPECT_EQ(length, 0);
}

TEST(SimScan, CancelEndsTheImageAndTheRestOfTheStackStays)
{
    SimSession session("[sim]\nstack = 3\n");
    setSmall(session);
    ASSERT_EQ(sane_start(session.handle()), SANE_STATUS_GOOD);
    SANE_Byte bytes[100];
    SANE_Int length = 0;
    ASSERT_EQ(sane_read(session.handle(), bytes, 100, &length), SANE_STATUS_GOOD);
    sane_cancel(session.handle());
    EXPECT_EQ(sane_read(session.handle(), bytes, 100, &length), SANE_STATUS_CANCELLED);
    session.scanAll();
    EXPECT_EQ(imagesIn(session),
              (std::vector<std::string>{"1 front color", "2 front color", "3 front color"}));
}

TEST(SimScan, TheStackCanComeBackWithACancelOrNever)
{
    for (const auto& [reload, second] : {std::pair{"empty", std::size_t{1}},
                                         {"cancel", std::size_t{2}},
                                         {"never", std::size_t{1}}}) {
        SimSession session(std::string("[sim]\nstack = 2\nreload = ") + reload + "\n");
        setSmall(session);
        session.scan();
        sane_cancel(session.handle());
        EXPECT_EQ(session.scanAll().size(), second) << reload;
        EXPECT_EQ(session.scanAll().empty(), std::string(reload) == "never") << reload;
    }
}

TEST(SimScan, NothingElseStartsWhileAFrameIsRead)
{
    SimSession session("[sim]\n");
    setSmall(session);
    ASSERT_EQ(sane_start(session.handle()), SANE_STATUS_GOOD);
    EXPECT_EQ(sane_start(session.handle()), SANE_STATUS_DEVICE_BUSY);
    EXPECT_EQ(session.set("brightness", "5"), SANE_STATUS_DEVICE_BUSY);
    sane_cancel(session.handle());
    EXPECT_EQ(session.set("brightness", "5"), SANE_STATUS_GOOD);
}

TEST(SimScan, AnAreaWithoutWidthIsRefused)
{
    SimSession session("[sim]\n");
    session.set("tl-x", "50");
    session.set("br-x", "50");
    EXPECT_EQ(session.scan().started, SANE_STATUS_INVAL);
    session.set("br-x", "80");
    EXPECT_EQ(session.scan().started, SANE_STATUS_GOOD) << "and no sheet was lost";
    EXPECT_EQ(imagesIn(session), (std::vector<std::string>{"1 front color"}));
}

TEST(SimScan, CornersInTheWrongOrderAreSwapped)
{
    SimSession session("[sim]\n");
    session.set("resolution", "100");
    session.set("tl-x", "76.2");
    session.set("br-x", "25.4");
    EXPECT_EQ(session.scan().parameters.pixels_per_line, 200);
}

TEST(SimScan, OnlyBlockingReadsAreOffered)
{
    SimSession session("[sim]\n");
    setSmall(session);
    ASSERT_EQ(sane_start(session.handle()), SANE_STATUS_GOOD);
    EXPECT_EQ(sane_set_io_mode(session.handle(), SANE_FALSE), SANE_STATUS_GOOD);
    EXPECT_EQ(sane_set_io_mode(session.handle(), SANE_TRUE), SANE_STATUS_UNSUPPORTED);
    SANE_Int fd = -1;
    EXPECT_EQ(sane_get_select_fd(session.handle(), &fd), SANE_STATUS_UNSUPPORTED);
}

TEST(SimScan, CancelAndCloseAreInTheJournal)
{
    SimSession session("[sim]\n");
    setSmall(session);
    sane_start(session.handle());
    sane_cancel(session.handle());
    const std::vector<std::string> journal = session.journal();
    ASSERT_GE(journal.size(), 2U);
    EXPECT_EQ(journal.back(), "cancel");
    EXPECT_EQ(journal[journal.size() - 2],
              "start good sheet=1 side=front kind=color dpi=72 size=612x1009");
}
