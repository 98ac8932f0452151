#include "imageplan.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace kestrel::sim {
namespace {

/// From a point of the viewed rectangle (mm from its corner) to a point of a print (mm).
using ViewMap = std::function<Point(const Point&)>;

struct View
{
    SizeMm size;
    std::vector<std::shared_ptr<const PrintedSide>> prints;
    std::vector<ViewMap> maps; ///< one for each of the prints
    int turn = 0;              ///< degrees clockwise
};

int toPixels(double mm, int dpi)
{
    return static_cast<int>(std::clamp(std::lround(mm * dpi / 25.4), 0L, 200000L));
}

/// A print lies in the image by an affine map, so three points of it tell the whole.
PixelMap pixelMap(const View& view, std::size_t layer, int dpi, int firstColumn, int firstRow)
{
    const double scale = view.prints[layer]->canvas.pixelsPerMm();
    const auto source = [&](double u, double v) {
        const Point onImage{(u + firstColumn + 0.5) * 25.4 / dpi,
                            (v + firstRow + 0.5) * 25.4 / dpi};
        const Point print = view.maps[layer](beforeTurn(view.turn, view.size, onImage));
        return Point{print.x * scale, print.y * scale};
    };
    const Point origin = source(0, 0);
    const Point right = source(1, 0);
    const Point down = source(0, 1);
    return {origin.x, right.x - origin.x, down.x - origin.x,
            origin.y, right.y - origin.y, down.y - origin.y};
}

int turnOf(const ScanSettings& settings, const Sheet& sheet, Side side)
{
    const int asked = settings.orients ? 360 - sheet.turned : settings.rotation;
    const int back = settings.turnsBack && side == Side::Back ? 180 : 0;
    return (asked + back) % 360;
}

bool isColorSide(const ColorDetection& detection, const PrintedSide& print)
{
    const double colored = detection.ignoresPaper ? print.printColorPercent : print.colorPercent;
    return colored >= detection.leastPercent;
}

std::vector<Kind> kindsFor(const ScanSettings& settings, Side side, const PrintedSide& print)
{
    const ColorDetection& detection = settings.detection[side == Side::Front ? 0 : 1];
    if (!detection.on) {
        return settings.kinds;
    }
    return {isColorSide(detection, print) ? Kind::Color : detection.otherwise};
}

/// A score of 100, which no threshold calls blank, is reached when a fiftieth of the side is
/// printed.
bool isBlank(const ScanSettings& settings, const PrintedSide& print)
{
    const double score = std::min(100.0, print.inkPercent * 50);
    return settings.dropsBlank && score < settings.blankThreshold;
}

void addImages(std::vector<ImagePlan>& plans, const std::shared_ptr<const ScanSettings>& settings,
               const View& view, Side side, int sheet)
{
    const SizeMm turned = afterTurn(view.turn, view.size);
    const int width = toPixels(turned.width, settings->dpi);
    const int height = toPixels(turned.height, settings->dpi);
    const int columns = settings->split == Split::Vertical ? 2 : 1;
    const int rows = settings->split == Split::Horizontal ? 2 : 1;
    for (const Kind kind : kindsFor(*settings, side, *view.prints.front())) {
        for (int part = 0; part < columns * rows; ++part) {
            ImagePlan plan;
            plan.kind = kind;
            plan.side = side;
            plan.sheet = sheet;
            plan.width = width / columns;
            plan.height = height / rows;
            plan.settings = settings;
            for (std::size_t i = 0; i < view.prints.size(); ++i) {
                plan.layers.push_back(
                    {view.prints[i],
                     pixelMap(view, i, settings->dpi, columns == 2 ? part * plan.width : 0,
                              rows == 2 ? part * plan.height : 0)});
            }
            if (plan.width > 0 && plan.height > 0) {
                plans.push_back(std::move(plan));
            }
        }
    }
}

RectMm withMargins(const ScanSettings& settings, RectMm rect)
{
    rect.x -= settings.cropLeft;
    rect.y -= settings.cropTop;
    rect.width = std::max(1.0, rect.width + settings.cropLeft + settings.cropRight);
    rect.height = std::max(1.0, rect.height + settings.cropTop + settings.cropBottom);
    return rect;
}

/// The sheet alone, put straight.
View croppedView(const ScanSettings& settings, const Sheet& sheet,
                 const std::shared_ptr<const PrintedSide>& print)
{
    const SizeMm lying = afterTurn(sheet.turned, sheet.size);
    const RectMm rect = withMargins(settings, {0, 0, lying.width, lying.height});
    const auto map = [sheet, rect](const Point& point) {
        return printAtStraight(sheet, {point.x + rect.x, point.y + rect.y});
    };
    return {{rect.width, rect.height}, {print}, {map}, 0};
}

ViewMap pathMap(const Sheet& sheet, const Point& corner, const RectMm& rect)
{
    return [sheet, corner, rect](const Point& point) {
        return printAt(sheet, corner, {point.x + rect.x, point.y + rect.y});
    };
}

Point feederCorner(const ScanSettings& settings, const Sheet& sheet)
{
    return {(settings.path.width - afterTurn(sheet.turned, sheet.size).width) / 2, 0};
}

RectMm boundsOf(const std::vector<Sheet>& glass)
{
    RectMm bounds;
    double right = 0;
    double bottom = 0;
    bounds.x = bounds.y = 1e6;
    for (const Sheet& sheet : glass) {
        const SizeMm lying = afterTurn(sheet.turned, sheet.size);
        bounds.x = std::min(bounds.x, sheet.xMm);
        bounds.y = std::min(bounds.y, sheet.yMm);
        right = std::max(right, sheet.xMm + lying.width);
        bottom = std::max(bottom, sheet.yMm + lying.height);
    }
    bounds.width = right - bounds.x;
    bounds.height = bottom - bounds.y;
    return bounds;
}

} // namespace

std::vector<ImagePlan> planSheet(const std::shared_ptr<const ScanSettings>& settings,
                                 const Sheet& sheet, int number)
{
    std::vector<ImagePlan> plans;
    for (const Side side : settings->sides) {
        const auto print =
            std::make_shared<const PrintedSide>(printSide(sheet, side, number, settings->cleaning));
        if (isBlank(*settings, *print)) {
            continue;
        }
        View view;
        if (settings->crops) {
            view = croppedView(*settings, sheet, print);
        } else {
            view.size = {settings->area.width, settings->area.height};
            view.prints = {print};
            view.maps = {pathMap(sheet, feederCorner(*settings, sheet), settings->area)};
        }
        view.turn = turnOf(*settings, sheet, side);
        addImages(plans, settings, view, side, number);
    }
    return plans;
}

std::vector<ImagePlan> planGlass(const std::shared_ptr<const ScanSettings>& settings,
                                 const std::vector<Sheet>& glass)
{
    std::vector<ImagePlan> plans;
    View whole;
    const bool bounds = settings->crops && !glass.empty();
    const RectMm rect = bounds ? withMargins(*settings, boundsOf(glass)) : settings->area;
    whole.size = {rect.width, rect.height};
    int number = 0;
    for (const Sheet& sheet : glass) {
        const auto print = std::make_shared<const PrintedSide>(
            printSide(sheet, Side::Front, ++number, settings->cleaning));
        whole.turn = turnOf(*settings, sheet, Side::Front);
        if (settings->cropsEach || (settings->crops && glass.size() == 1)) {
            View view = croppedView(*settings, sheet, print);
            view.turn = whole.turn;
            if (!isBlank(*settings, *print)) {
                addImages(plans, settings, view, Side::Front, number);
            }
            continue;
        }
        whole.prints.push_back(print);
        whole.maps.push_back(pathMap(sheet, {sheet.xMm, sheet.yMm}, rect));
    }
    const bool allBlank = std::all_of(whole.prints.begin(), whole.prints.end(),
                                      [&settings](const std::shared_ptr<const PrintedSide>& print) {
                                          return isBlank(*settings, *print);
                                      });
    if (!whole.prints.empty() && !allBlank) {
        addImages(plans, settings, whole, Side::Front, 1);
    }
    return plans;
}

ImagePlan expectedImage(const ScanSettings& settings, const Sheet& likely)
{
    const SizeMm lying = afterTurn(likely.turned, likely.size);
    const RectMm rect =
        settings.crops ? withMargins(settings, {0, 0, lying.width, lying.height}) : settings.area;
    const int turn = turnOf(settings, likely, settings.sides.front());
    const SizeMm turned = afterTurn(turn, {rect.width, rect.height});
    ImagePlan plan;
    plan.kind = settings.detection[0].on ? Kind::Color : settings.kinds.front();
    plan.width = toPixels(turned.width, settings.dpi) / (settings.split == Split::Vertical ? 2 : 1);
    plan.height =
        toPixels(turned.height, settings.dpi) / (settings.split == Split::Horizontal ? 2 : 1);
    return plan;
}

} // namespace kestrel::sim
