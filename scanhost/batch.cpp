#include "batch.h"

#include "identity.h"
#include "page_export.h"
#include "scan_plan.h"
#include "scan_worker.h"
#include "scanner_device.h"
#include "settings_dialog.h"
#include "status_text.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTextStream>

#include <algorithm>
#include <optional>

namespace kestrel {

namespace {

QString batchText(const char* text)
{
    return QCoreApplication::translate("Batch", text);
}

std::optional<ScannerInfo> findDevice(const QString& wanted, QTextStream& err)
{
    SANE_Status status = SANE_STATUS_GOOD;
    const std::vector<ScannerInfo> devices = SaneLibrary::devices(&status);
    if (wanted.isEmpty()) {
        if (!devices.empty()) {
            return devices.front();
        }
        err << (status == SANE_STATUS_GOOD ? batchText(QT_TRANSLATE_NOOP("Batch", "没有找到扫描仪"))
                                           : statusText(status))
            << '\n';
        return std::nullopt;
    }
    const auto found = std::find_if(devices.begin(), devices.end(),
                                    [&](const ScannerInfo& info) { return info.name == wanted; });
    // A scanner that is not listed may open nevertheless.
    return found != devices.end() ? *found : ScannerInfo{wanted, {}, {}, {}};
}

bool prepare(SettingsDialog& settings, const ScannerDevice& device, const CommandLine& line,
             QTextStream& err)
{
    const QString ids = device.textOption("device-info").value_or(QString());
    settings.bind(device.handle(), makeIdentity(device.info().name, device.info().model, ids),
                  line.configDir);
    if (line.button && !settings.chooseButton(*line.button)) {
        err << batchText(QT_TRANSLATE_NOOP("Batch", "没有名为 button%1 的模板")).arg(*line.button)
            << '\n';
        return false;
    }
    if (line.removeBlankPages) {
        settings.setBlankPageRemoval(*line.removeBlankPages);
    }
    return true;
}

ScanEnd scan(const ScannerDevice& device, const ScanPlan& plan, const QString& folder,
             std::vector<Page>& pages, QTextStream& out)
{
    PageStore store(folder);
    ScanWorker worker;
    QEventLoop loop;
    ScanEnd result;
    QObject::connect(&worker, &ScanWorker::pageReady, &loop, [&](const Page& page) {
        pages.push_back(page);
        const QSizeF mm = pageSizeMm(page);
        out << batchText(QT_TRANSLATE_NOOP("Batch", "%1  %2 × %3 像素，%4 × %5 毫米"))
                   .arg(page.file)
                   .arg(page.pixels.width())
                   .arg(page.pixels.height())
                   .arg(mm.width(), 0, 'f', 1)
                   .arg(mm.height(), 0, 'f', 1)
            << '\n';
        out.flush();
    });
    QObject::connect(&worker, &ScanWorker::finished, &loop, [&](const ScanEnd& end) {
        result = end;
        loop.quit();
    });
    worker.start(device.handle(), plan, store);
    loop.exec();
    return result;
}

} // namespace

int runList(QTextStream& out, QTextStream& err)
{
    SANE_Status status = SANE_STATUS_GOOD;
    const std::vector<ScannerInfo> devices = SaneLibrary::devices(&status);
    if (status != SANE_STATUS_GOOD) {
        err << statusText(status) << '\n';
        return exitFailed;
    }
    for (const ScannerInfo& info : devices) {
        out << info.name << '\t' << info.title() << '\n';
    }
    return exitGood;
}

int runBatch(const CommandLine& line, QTextStream& out, QTextStream& err)
{
    const auto info = findDevice(line.device, err);
    if (!info) {
        return exitFailed;
    }
    ScannerDevice device;
    const SANE_Status opened = device.open(*info);
    if (opened != SANE_STATUS_GOOD) {
        err << batchText(QT_TRANSLATE_NOOP("Batch", "无法打开 %1：%2"))
                   .arg(info->title(), openStatusText(opened))
            << '\n';
        return exitFailed;
    }
    SettingsDialog settings(nullptr);
    if (!prepare(settings, device, line, err)) {
        return exitFailed;
    }
    const ScanAnswers answers = settings.apply();
    out << info->title() << ": " << summaryOf(answers) << '\n';
    out.flush();

    std::vector<Page> pages;
    const ScanEnd end = scan(device, planFor(device, answers), line.outputDir, pages, out);
    QString problem =
        end.kind == ScanEnd::Kind::Cancelled ? statusText(SANE_STATUS_CANCELLED) : end.message;
    // Whatever has been scanned is saved, also after a jam in the middle of the stack.
    if (!line.pdfFile.isEmpty() && !pages.empty()) {
        const QString saving = exportPages(pages, line.pdfFile, FileFormat::Pdf);
        if (saving.isEmpty()) {
            out << line.pdfFile << '\n';
        }
        problem = problem.isEmpty() ? saving : problem;
    }
    if (problem.isEmpty()) {
        return exitGood;
    }
    err << problem << '\n';
    return pages.empty() ? exitFailed : exitPartly;
}

} // namespace kestrel
