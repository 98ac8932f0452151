// The program without its window, on the simulated scanner behind the real libsane.
#include "program.h"

#include <QSet>

namespace {

// Small sheets: what is tested here is not the drawing of them.
const std::string feeder =
    "[sim]\nmodel = Q150A\nfeeder-area = 105x148\nsheets = text, photo, form\n";

int colours(const QImage& image)
{
    QSet<QRgb> seen;
    for (int y = 0; y < image.height(); y += 5) {
        for (int x = 0; x < image.width(); x += 5) {
            seen.insert(image.pixel(x, y));
        }
    }
    return seen.size();
}

std::size_t indexOf(const std::vector<std::string>& lines, const std::string& start)
{
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].rfind(start, 0) == 0) {
            return i;
        }
    }
    return lines.size();
}

} // namespace

using Batch = kestrel::test::Program;

TEST_F(Batch, ScansTheWholeStackIntoPicturesAndOneDocument)
{
    const Run result = run(feeder, {"--device", "kestrel_adv:sim", "--batch", path("pages"),
                                    "--pdf", path("all.pdf")});
    EXPECT_EQ(result.exitCode, 0) << qPrintable(result.err);
    ASSERT_EQ(pages().size(), 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_GT(colours(page("pages", i)), 1);
        EXPECT_TRUE(result.out.contains(path("pages/" + pages()[i])));
    }
    EXPECT_NE(page("pages", 0), page("pages", 1));
    EXPECT_EQ(kestrel::test::pdfPages(path("all.pdf")), 3);
    EXPECT_TRUE(result.out.contains(path("all.pdf")));
}

TEST_F(Batch, SettingsAreSentBeforeTheFirstStartAndTheScanIsEnded)
{
    run(feeder, {"--device", "kestrel_adv:sim", "--batch", path("pages")});
    const auto& lines = journal();
    const std::size_t start = indexOf(lines, "start good");
    ASSERT_LT(start, lines.size());
    EXPECT_LT(indexOf(lines, "set source"), start);
    EXPECT_LT(indexOf(lines, "set resolution"), start);
    EXPECT_LT(indexOf(lines, "start no-docs"), indexOf(lines, "cancel"));
    EXPECT_LT(indexOf(lines, "cancel"), indexOf(lines, "close"));
}

TEST_F(Batch, FirstScannerIsTakenWhenNoneIsNamed)
{
    EXPECT_EQ(run(feeder, {"--batch", path("pages")}).exitCode, 0);
    EXPECT_EQ(pages().size(), 3);
}

TEST_F(Batch, FlatbedGivesOnePage)
{
    const Run result =
        run("[sim]\nmodel = Q110F\n", {"--device", "kestrel_adv:sim", "--batch", path("pages")});
    EXPECT_EQ(result.exitCode, 0) << qPrintable(result.err);
    EXPECT_EQ(pages().size(), 1);
    EXPECT_TRUE(result.out.contains(QStringLiteral("平板")));
}

TEST_F(Batch, SecondRunKeepsThePagesOfTheFirst)
{
    run(feeder, {"--batch", path("pages")});
    const QImage first = page("pages", 0);
    EXPECT_EQ(run(feeder, {"--batch", path("pages"), "--pdf", path("second.pdf")}).exitCode, 0);
    EXPECT_EQ(pages().size(), 6);
    EXPECT_EQ(page("pages", 0), first);
    EXPECT_EQ(kestrel::test::pdfPages(path("second.pdf")), 3);
}

TEST_F(Batch, JamKeepsWhatHasBeenScannedAndSaysSo)
{
    for (const char* fault : {"fault = start 3 jammed\n", "fault = read 3 5000 jammed\n"}) {
        const QString folder = QString::number(qHash(QByteArray(fault)));
        const Run result =
            run(feeder + fault, {"--batch", path(folder), "--pdf", path(folder + ".pdf")});
        EXPECT_EQ(result.exitCode, 3) << fault;
        EXPECT_EQ(pages(folder).size(), 2) << fault;
        EXPECT_EQ(kestrel::test::pdfPages(path(folder + ".pdf")), 2) << fault;
        EXPECT_TRUE(result.err.contains(QStringLiteral("卡纸"))) << fault;
    }
}

TEST_F(Batch, NothingScannedIsAFailureInWords)
{
    struct Row
    {
        const char* config;
        const char* words;
    };
    const Row rows[] = {
        {"[sim]\nmodel = Q150A\nfault = start * no-docs\n", "没有纸张"},
        {"[sim]\nmodel = Q150A\nfault = start * cover-open\n", "盖子被打开"},
        {"[sim]\nmodel = Q150A\nfault = start * busy\n", "扫描仪忙"},
        {"[sim]\nmodel = Q150A\nfault = open access-denied\n", "权限"},
        {"[sim]\nmodel = Q150A\nfault = vanish 1 1000\n", "可能已断开"},
    };
    for (const Row& row : rows) {
        const Run result = run(row.config, {"--device", "kestrel_adv:sim", "--batch", path("pages"),
                                            "--pdf", path("none.pdf")});
        EXPECT_EQ(result.exitCode, 1) << row.config;
        EXPECT_TRUE(result.err.contains(QString::fromUtf8(row.words)))
            << row.config << qPrintable(result.err);
        EXPECT_EQ(pages().size(), 0) << row.config;
        EXPECT_FALSE(QFile::exists(path("none.pdf"))) << row.config;
    }
}

TEST_F(Batch, HoweverTheBytesComeThePicturesAreTheSame)
{
    run(feeder, {"--batch", path("plain")});
    ASSERT_EQ(pages("plain").size(), 3);
    for (const char* oddity :
         {"pad-lines = 13\n", "short-reads = 777\n", "unknown-lines = yes\n"}) {
        const QString folder = QString::number(qHash(QByteArray(oddity)));
        EXPECT_EQ(run(feeder + oddity, {"--batch", path(folder)}).exitCode, 0) << oddity;
        ASSERT_EQ(pages(folder).size(), 3) << oddity;
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(page(folder, i), page("plain", i)) << oddity << i;
        }
    }
}

TEST_F(Batch, GrayWhereColourWasAskedIsTaken)
{
    EXPECT_EQ(run(feeder + "gray-for-color = yes\n", {"--batch", path("pages")}).exitCode, 0);
    ASSERT_EQ(pages().size(), 3);
    EXPECT_TRUE(page("pages", 0).allGray());
}

TEST_F(Batch, NoSuchScannerIsSaid)
{
    const Run named = run(feeder, {"--device", "kestrel_adv:other", "--batch", path("pages")});
    EXPECT_EQ(named.exitCode, 1);
    EXPECT_TRUE(named.err.contains("kestrel_adv:other"));
    const Run none = run("# no scanner at all\n", {"--batch", path("pages")});
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_TRUE(none.err.contains(QStringLiteral("没有找到扫描仪")));
}

TEST_F(Batch, ButtonWithoutTemplateIsRefused)
{
    const Run result = run(feeder, {"--batch", path("pages"), "--button", "7"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_TRUE(result.err.contains("button7"));
    EXPECT_EQ(pages().size(), 0);
}

TEST_F(Batch, BlankPagesCanBeLeftOut)
{
    const std::string stack = "[sim]\nmodel = Q150A\nsheets = text, blank, text\n";
    EXPECT_EQ(run(stack, {"--batch", path("kept"), "--blank-pages", "keep"}).exitCode, 0);
    EXPECT_EQ(run(stack, {"--batch", path("removed"), "--blank-pages", "remove"}).exitCode, 0);
    EXPECT_EQ(pages("kept").size(), 3);
    EXPECT_EQ(pages("removed").size(), 2);
}

TEST_F(Batch, SettingsFileIsNamedAfterTheModelInTheGivenFolder)
{
    run(feeder, {"--batch", path("pages")});
    EXPECT_TRUE(QFile::exists(path("settings/Q150A.ini")));
}

TEST_F(Batch, ListNamesTheScanners)
{
    const Run result = run("[one]\nmodel = Q150A\n[two]\nmodel = Q1410A\n", {"--list"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(result.out.contains("kestrel_adv:one\tKestrel Q150A\n"));
    EXPECT_TRUE(result.out.contains("kestrel_adv:two\tKestrel Q1410A\n"));
}

TEST_F(Batch, WrongArgumentsHaveAnExitCodeOfTheirOwn)
{
    EXPECT_EQ(run(feeder, {"--pdf", "x.pdf"}).exitCode, 2);
    EXPECT_EQ(run(feeder, {"--nonsense"}).exitCode, 2);
}

TEST_F(Batch, ScreenshotsAreTakenWithoutAnyone)
{
    const Run result = run(feeder, {"--screenshots", path("shots")});
    EXPECT_EQ(result.exitCode, 0) << qPrintable(result.err);
    const QStringList files = QDir(path("shots")).entryList({"*.png"});
    EXPECT_TRUE(files.contains("window.png"));
    EXPECT_GE(files.filter("tab-").size(), 9);
    for (const QString& file : files) {
        EXPECT_GT(colours(QImage(path("shots/" + file))), 1) << qPrintable(file);
    }
}

TEST_F(Batch, ScreenshotsWithoutScannerFail)
{
    const Run result = run("# no scanner at all\n", {"--screenshots", path("shots")});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_TRUE(result.err.contains(QStringLiteral("没有找到扫描仪")));
}

TEST_F(Batch, SceneFailsWhenTheDialogIsNotAsItShouldBe)
{
    const Run nothingConfirmed =
        run(feeder, {"--scene", "second-start", "--scene-dir", path("scene")});
    EXPECT_EQ(nothingConfirmed.exitCode, 1);
    EXPECT_TRUE(nothingConfirmed.err.contains("not there")) << qPrintable(nothingConfirmed.err);
    const Run noFlatbed = run(feeder, {"--scene", "preview", "--scene-dir", path("scene")});
    EXPECT_EQ(noFlatbed.exitCode, 1);
    EXPECT_TRUE(noFlatbed.err.contains("source")) << qPrintable(noFlatbed.err);
    EXPECT_FALSE(QFile::exists(path("scene/area.png")));
}

TEST_F(Batch, ConfirmedSettingsAreThereAtTheNextStart)
{
    EXPECT_EQ(run(feeder, {"--scene", "first-start", "--scene-dir", path("scene")}).exitCode, 0);
    EXPECT_EQ(run(feeder, {"--scene", "second-start", "--scene-dir", path("scene")}).exitCode, 0);
    EXPECT_EQ(QImage(path("scene/first-start.png")), QImage(path("scene/second-start.png")));
}
