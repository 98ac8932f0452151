#include "command_line.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QStandardPaths>

#include <algorithm>
#include <iterator>
#include <utility>

namespace kestrel {

namespace {

QString lineText(const char* text)
{
    return QCoreApplication::translate("CommandLine", text);
}

struct Options
{
    QCommandLineOption list{"list",
                            lineText(QT_TRANSLATE_NOOP("CommandLine", "列出扫描仪，然后结束"))};
    QCommandLineOption device{
        {"d", "device"},
        lineText(QT_TRANSLATE_NOOP("CommandLine", "使用这台扫描仪（SANE 设备名）")),
        "NAME"};
    QCommandLineOption batch{
        "batch",
        lineText(QT_TRANSLATE_NOOP("CommandLine", "不打开窗口，扫描并把图像存入文件夹 DIR")),
        "DIR"};
    QCommandLineOption pdf{
        "pdf", lineText(QT_TRANSLATE_NOOP("CommandLine", "与 --batch 一起：另外保存为 PDF 文件")),
        "FILE"};
    QCommandLineOption button{
        "button",
        lineText(QT_TRANSLATE_NOOP("CommandLine",
                                   "与 --batch 一起：使用扫描仪按钮 N 的模板（buttonN）")),
        "N"};
    QCommandLineOption blankPages{
        "blank-pages",
        lineText(QT_TRANSLATE_NOOP("CommandLine",
                                   "与 --batch 一起：保留（keep）或去除（remove）空白页")),
        "keep|remove"};
    QCommandLineOption configDir{
        "config-dir", lineText(QT_TRANSLATE_NOOP("CommandLine", "设置文件所在的文件夹")), "DIR"};
    QCommandLineOption simulator{
        "simulator",
        lineText(QT_TRANSLATE_NOOP("CommandLine", "使用随附的模拟扫描仪，不需要真实设备"))};
    QCommandLineOption screenshots = hidden("screenshots", "DIR");
    QCommandLineOption tour = hidden("tour", "FILE");
    QCommandLineOption scene = hidden("scene", "NAME");
    QCommandLineOption sceneDir = hidden("scene-dir", "DIR");

private:
    static QCommandLineOption hidden(const char* name, const char* value)
    {
        QCommandLineOption option(name, QString(), value);
        option.setFlags(QCommandLineOption::HiddenFromHelp);
        return option;
    }
};

std::optional<Scene> sceneNamed(const QString& name)
{
    static constexpr std::pair<const char*, Scene> scenes[] = {
        {"first-start", Scene::FirstStart},
        {"second-start", Scene::SecondStart},
        {"preview", Scene::Preview},
        {"templates", Scene::Templates},
    };
    const auto* found = std::find_if(std::begin(scenes), std::end(scenes), [&](const auto& scene) {
        return name == QLatin1String(scene.first);
    });
    return found != std::end(scenes) ? std::optional<Scene>(found->second) : std::nullopt;
}

QString understand(const QCommandLineParser& parser, const Options& options, CommandLine& line)
{
    const QCommandLineOption* const modes[] = {&options.list, &options.batch, &options.screenshots,
                                               &options.sceneDir};
    const RunMode meanings[] = {RunMode::List, RunMode::Batch, RunMode::Screenshots,
                                RunMode::Scene};
    for (std::size_t i = 0; i < std::size(modes); ++i) {
        if (!parser.isSet(*modes[i])) {
            continue;
        }
        if (line.mode != RunMode::Window) {
            return lineText(QT_TRANSLATE_NOOP("CommandLine", "只能选择一种运行方式"));
        }
        line.mode = meanings[i];
        line.outputDir = parser.value(*modes[i]);
    }
    if (line.mode != RunMode::Window && line.mode != RunMode::List && line.outputDir.isEmpty()) {
        return lineText(QT_TRANSLATE_NOOP("CommandLine", "没有给出文件夹"));
    }
    for (const auto* option : {&options.pdf, &options.button, &options.blankPages}) {
        if (parser.isSet(*option) && line.mode != RunMode::Batch) {
            return lineText(QT_TRANSLATE_NOOP("CommandLine", "--%1 只能与 --batch 一起使用"))
                .arg(option->names().constFirst());
        }
    }
    line.pdfFile = parser.value(options.pdf);
    if (parser.isSet(options.button)) {
        bool ok = false;
        line.button = parser.value(options.button).toInt(&ok);
        if (!ok || *line.button < 0) {
            return lineText(QT_TRANSLATE_NOOP("CommandLine", "--button 需要一个按钮号"));
        }
    }
    if (parser.isSet(options.blankPages)) {
        const QString wish = parser.value(options.blankPages);
        if (wish != "keep" && wish != "remove") {
            return lineText(
                QT_TRANSLATE_NOOP("CommandLine", "--blank-pages 只能是 keep 或 remove"));
        }
        line.removeBlankPages = wish == "remove";
    }
    line.scene = sceneNamed(parser.value(options.scene));
    if (line.scene.has_value() != (line.mode == RunMode::Scene) ||
        parser.isSet(options.scene) != (line.mode == RunMode::Scene)) {
        return lineText(
            QT_TRANSLATE_NOOP("CommandLine", "--scene-dir 要与 --scene 一起使用，且要有此场景"));
    }
    return {};
}

} // namespace

CommandLine parseCommandLine(const QStringList& arguments, QString& problem)
{
    const Options options;
    QCommandLineParser parser;
    parser.setApplicationDescription(
        lineText(QT_TRANSLATE_NOOP("CommandLine", "扫描文档，保存为 PDF、PNG 或 TIFF。")));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    parser.addOptions({options.list, options.device, options.batch, options.pdf, options.button,
                       options.blankPages, options.configDir, options.simulator,
                       options.screenshots, options.tour, options.scene, options.sceneDir});
    CommandLine line;
    if (!parser.parse(arguments)) {
        problem = parser.errorText();
        return line;
    }
    if (parser.isSet(help)) {
        parser.showHelp();
    }
    if (parser.isSet(version)) {
        parser.showVersion();
    }
    line.device = parser.value(options.device);
    line.simulator = parser.isSet(options.simulator);
    line.tourFile = parser.value(options.tour);
    line.configDir = parser.isSet(options.configDir)
                         ? parser.value(options.configDir)
                         : QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
    problem = parser.positionalArguments().isEmpty()
                  ? understand(parser, options, line)
                  : lineText(QT_TRANSLATE_NOOP("CommandLine", "不认识的参数：%1"))
                        .arg(parser.positionalArguments().constFirst());
    return line;
}

} // namespace kestrel
