#include <command_line.h>

#include <gtest/gtest.h>

namespace {

using kestrel::CommandLine;
using kestrel::RunMode;

CommandLine parse(const QStringList& arguments, QString& problem)
{
    return kestrel::parseCommandLine(QStringList{"kestrel-scan"} + arguments, problem);
}

CommandLine parsed(const QStringList& arguments)
{
    QString problem;
    const CommandLine line = parse(arguments, problem);
    EXPECT_EQ(problem, QString()) << qPrintable(arguments.join(' '));
    return line;
}

} // namespace

TEST(CommandLine, WithoutArgumentsOpensTheWindow)
{
    const CommandLine line = parsed({});
    EXPECT_EQ(line.mode, RunMode::Window);
    EXPECT_EQ(line.device, QString());
    EXPECT_FALSE(line.simulator);
    EXPECT_FALSE(line.button.has_value());
    EXPECT_FALSE(line.removeBlankPages.has_value());
    EXPECT_TRUE(line.configDir.contains("kestrel-scan") || line.configDir.contains("scanhost"))
        << "the program's own folder: " << qPrintable(line.configDir);
}

TEST(CommandLine, BatchTakesAllItsOptions)
{
    const CommandLine line =
        parsed({"--device", "b:d", "--batch", "dir", "--pdf", "a.pdf", "--button", "3",
                "--blank-pages", "remove", "--config-dir", "/c", "--simulator"});
    EXPECT_EQ(line.mode, RunMode::Batch);
    EXPECT_EQ(line.device, "b:d");
    EXPECT_EQ(line.outputDir, "dir");
    EXPECT_EQ(line.pdfFile, "a.pdf");
    EXPECT_EQ(line.button, 3);
    EXPECT_EQ(line.removeBlankPages, true);
    EXPECT_EQ(line.configDir, "/c");
    EXPECT_TRUE(line.simulator);
}

TEST(CommandLine, OtherModes)
{
    EXPECT_EQ(parsed({"--list"}).mode, RunMode::List);
    EXPECT_EQ(parsed({"--screenshots", "s"}).outputDir, "s");
    EXPECT_EQ(parsed({"-d", "x:1"}).device, "x:1");
    EXPECT_EQ(parsed({"--batch", "d", "--blank-pages", "keep"}).removeBlankPages, false);
    EXPECT_EQ(parsed({"--tour", "t.pdf"}).tourFile, "t.pdf");
    const CommandLine scene = parsed({"--scene", "preview", "--scene-dir", "s"});
    EXPECT_EQ(scene.mode, RunMode::Scene);
    EXPECT_EQ(scene.scene, kestrel::Scene::Preview);
    EXPECT_EQ(scene.outputDir, "s");
}

TEST(CommandLine, WhatIsWrongIsSaid)
{
    const QStringList wrong[] = {
        {"--batch"},
        {"--batch", ""},
        {"--batch", "a", "--screenshots", "b"},
        {"--list", "--batch", "a"},
        {"--pdf", "a.pdf"},
        {"--button", "1"},
        {"--blank-pages", "keep"},
        {"--batch", "a", "--button", "one"},
        {"--batch", "a", "--button", "-1"},
        {"--batch", "a", "--blank-pages", "maybe"},
        {"--scene", "preview"},
        {"--scene-dir", "s"},
        {"--scene", "opera", "--scene-dir", "s"},
        {"--unknown"},
        {"left-over"},
    };
    for (const QStringList& arguments : wrong) {
        QString problem;
        parse(arguments, problem);
        EXPECT_FALSE(problem.isEmpty()) << qPrintable(arguments.join(' '));
    }
}
