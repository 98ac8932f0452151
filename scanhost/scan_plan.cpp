#include "scan_plan.h"

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>

namespace kestrel {

namespace {

QString planText(const char* text)
{
    return QCoreApplication::translate("ScanPlan", text);
}

QString sourceText(PaperSource source)
{
    switch (source) {
    case PaperSource::Feeder:
        return planText(QT_TRANSLATE_NOOP("ScanPlan", "文档进纸器"));
    case PaperSource::Flatbed:
        return planText(QT_TRANSLATE_NOOP("ScanPlan", "平板"));
    case PaperSource::Automatic:
        return planText(QT_TRANSLATE_NOOP("ScanPlan", "自动选择纸张来源"));
    }
    return {};
}

} // namespace

int imagesPerSide(const QString& multistream, bool split)
{
    const int kinds = 1 + static_cast<int>(multistream.count('+'));
    return split ? 2 * kinds : kinds;
}

ScanPlan planFor(const ScannerDevice& device, const ScanAnswers& answers)
{
    ScanPlan plan;
    // The scanner may have rounded what the dialog asked for; its own word gives the true page
    // size.
    plan.dpi = qRound(device.numberOption("resolution").value_or(answers.dpi));
    if (plan.dpi <= 0) {
        plan.dpi = std::max(answers.dpi, 0);
    }
    // Of several originals on the glass only the scanner knows how many it finds.
    const bool severalOnGlass = answers.source == PaperSource::Flatbed &&
                                device.numberOption("flatbed-multi-crop").value_or(0) != 0;
    if ((answers.source == PaperSource::Flatbed || answers.singleSheet) && !severalOnGlass) {
        const QString streams = device.textOption("multistream-list").value_or(QString());
        plan.imageLimit = imagesPerSide(streams, answers.split) * (answers.duplex ? 2 : 1);
    }
    return plan;
}

QString summaryOf(const ScanAnswers& answers)
{
    QStringList parts;
    if (answers.dpi > 0) {
        parts << QStringLiteral("%1 dpi").arg(answers.dpi);
    }
    parts << sourceText(answers.source);
    parts << (answers.duplex ? planText(QT_TRANSLATE_NOOP("ScanPlan", "双面"))
                             : planText(QT_TRANSLATE_NOOP("ScanPlan", "单面")));
    if (answers.split) {
        parts << planText(QT_TRANSLATE_NOOP("ScanPlan", "拆分图像"));
    }
    if (answers.pauseSeconds > 0) {
        parts << planText(QT_TRANSLATE_NOOP("ScanPlan", "间隔 %1 秒")).arg(answers.pauseSeconds);
    }
    return parts.join(QStringLiteral(" · "));
}

} // namespace kestrel
