#include "renderer.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

namespace kestrel::sim {
namespace {

constexpr double fixedOne = 65536.0 * 65536.0;

std::int64_t toFixed(double value)
{
    return static_cast<std::int64_t>(value * fixedOne);
}

} // namespace

Renderer::Renderer(ImagePlan plan)
    : plan_(std::move(plan)), pixels_(static_cast<std::size_t>(plan_.width)), grays_(pixels_.size())
{
    if (plan_.settings->fringeMm != 0) {
        shifted_.resize(pixels_.size());
    }
    if (isLineart()) {
        columnMeans_.assign(pixels_.size(), -1);
        meanSums_.resize(pixels_.size() + 1);
        error_.resize(pixels_.size() + 2);
        nextError_.resize(pixels_.size() + 2);
    }
}

std::size_t Renderer::rowBytes() const
{
    const std::size_t width = pixels_.size();
    return isColor() ? width * 3 : isLineart() ? (width + 7) / 8 : width;
}

void Renderer::sample(double column, double row, std::vector<Rgb>& pixels) const
{
    std::fill(pixels.begin(), pixels.end(), plan_.settings->backing);
    for (const Layer& layer : plan_.layers) {
        const Canvas& canvas = layer.print->canvas;
        const PixelMap& map = layer.map;
        const auto width = static_cast<std::uint64_t>(canvas.width());
        const auto height = static_cast<std::uint64_t>(canvas.height());
        const Rgb* const source = canvas.pixels().data();
        std::int64_t x = toFixed(map.x0 + column * map.xPerU + row * map.xPerV);
        std::int64_t y = toFixed(map.y0 + column * map.yPerU + row * map.yPerV);
        const std::int64_t stepX = toFixed(map.xPerU);
        const std::int64_t stepY = toFixed(map.yPerU);
        for (Rgb& pixel : pixels) {
            // Negative positions become huge and fall outside with the rest.
            const auto px = static_cast<std::uint64_t>(x >> 32);
            const auto py = static_cast<std::uint64_t>(y >> 32);
            if (px < width && py < height) {
                pixel = source[py * width + px];
            }
            x += stepX;
            y += stepY;
        }
    }
}

void Renderer::fetchRow()
{
    sample(0, row_, pixels_);
    if (!shifted_.empty()) {
        sample(0, row_ + plan_.settings->fringeMm * plan_.settings->dpi / 25.4, shifted_);
        for (std::size_t i = 0; i < pixels_.size(); ++i) {
            pixels_[i] = (pixels_[i] & 0x00ffffU) | (shifted_[i] & 0xff0000U);
        }
    }
    if (plan_.settings->background != Background::None) {
        treatBackground();
    }
}

void Renderer::treatBackground()
{
    const ScanSettings& settings = *plan_.settings;
    const Rgb paper = plan_.layers.front().print->paper;
    const Rgb clean = settings.background == Background::RemoveToWhite ? rgb(255, 255, 255) : paper;
    const int span = settings.backgroundSpan;
    for (Rgb& pixel : pixels_) {
        const bool near = std::abs(redOf(pixel) - redOf(paper)) <= span &&
                          std::abs(greenOf(pixel) - greenOf(paper)) <= span &&
                          std::abs(blueOf(pixel) - blueOf(paper)) <= span;
        pixel = near ? clean : pixel;
    }
    if (settings.background == Background::SmoothMoire) {
        smoothMoire();
    }
}

void Renderer::smoothMoire()
{
    Rgb left = pixels_.front();
    for (std::size_t i = 0; i + 1 < pixels_.size(); ++i) {
        const Rgb here = pixels_[i];
        const Rgb right = pixels_[i + 1];
        pixels_[i] = rgb((redOf(left) + redOf(here) + redOf(right)) / 3,
                         (greenOf(left) + greenOf(here) + greenOf(right)) / 3,
                         (blueOf(left) + blueOf(here) + blueOf(right)) / 3);
        left = here;
    }
}

/// The dropout colour is one in which its own channel stands out.
bool Renderer::isDropped(Rgb pixel) const
{
    const int red = redOf(pixel);
    const int green = greenOf(pixel);
    const int blue = blueOf(pixel);
    constexpr int margin = 40;
    switch (plan_.settings->dropout) {
    case Dropout::Red:
        return red > green + margin && red > blue + margin;
    case Dropout::Green:
        return green > red + margin && green > blue + margin;
    case Dropout::Blue:
        return blue > red + margin && blue > green + margin;
    case Dropout::None:
        break;
    }
    return false;
}

/// Dropout means to look at the page in light of that colour: print of the colour is as bright as
/// paper.
std::uint8_t Renderer::grayOf(Rgb pixel) const
{
    if (plan_.settings->dropsFromColor && isDropped(pixel)) {
        return 255;
    }
    switch (plan_.settings->dropout) {
    case Dropout::Red:
        return static_cast<std::uint8_t>(redOf(pixel));
    case Dropout::Green:
        return static_cast<std::uint8_t>(greenOf(pixel));
    case Dropout::Blue:
        return static_cast<std::uint8_t>(blueOf(pixel));
    case Dropout::None:
        break;
    }
    return static_cast<std::uint8_t>(
        (77 * redOf(pixel) + 150 * greenOf(pixel) + 29 * blueOf(pixel)) >> 8);
}

void Renderer::writeColor(std::uint8_t* out) const
{
    const auto& levels = plan_.settings->colorLevels;
    const bool drops = plan_.settings->dropsFromColor;
    for (Rgb pixel : pixels_) {
        if (drops && isDropped(pixel)) {
            pixel = rgb(255, 255, 255);
        }
        *out++ = levels[0][pixel >> 16 & 0xff];
        *out++ = levels[1][pixel >> 8 & 0xff];
        *out++ = levels[2][pixel & 0xff];
    }
}

void Renderer::writeGray(std::uint8_t* out) const
{
    const Levels& levels = plan_.settings->grayLevels;
    std::transform(pixels_.begin(), pixels_.end(), out,
                   [this, &levels](Rgb pixel) { return levels[grayOf(pixel)]; });
}

/// Local mean: each column remembers the rows above, and a row of columns about 8 mm wide is
/// averaged.
void Renderer::followMean()
{
    for (std::size_t x = 0; x < grays_.size(); ++x) {
        int& mean = columnMeans_[x];
        mean = mean < 0 ? grays_[x] * 16 : mean + grays_[x] - mean / 16;
        meanSums_[x + 1] = meanSums_[x] + mean / 16;
    }
}

bool Renderer::inkByMean(std::size_t x, int gray) const
{
    constexpr int surelyInk = 48; // inside of large black areas, where the mean is dark as well
    const auto reach = static_cast<std::size_t>(plan_.settings->dpi) / 6 + 1;
    const std::size_t first = x > reach ? x - reach : 0;
    const std::size_t last = std::max(first + 1, std::min(grays_.size(), x + reach));
    const int mean = (meanSums_[last] - meanSums_[first]) / static_cast<int>(last - first);
    return gray < surelyInk || gray < mean - plan_.settings->threshold;
}

bool Renderer::inkByDiffusion(std::size_t x, int gray)
{
    const int wanted = gray + error_[x + 1] / 16;
    const bool ink = wanted < 128;
    const int error = wanted - (ink ? 0 : 255);
    error_[x + 2] += error * 7;
    nextError_[x] += error * 3;
    nextError_[x + 1] += error * 5;
    nextError_[x + 2] += error;
    return ink;
}

void Renderer::writeLineart(std::uint8_t* out)
{
    const ScanSettings& settings = *plan_.settings;
    writeGray(grays_.data());
    if (settings.binarization == Binarization::Dynamic) {
        followMean();
    }
    std::memset(out, 0, rowBytes());
    for (std::size_t x = 0; x < grays_.size(); ++x) {
        const int gray = grays_[x];
        const bool ink = settings.binarization == Binarization::Fixed ? gray < settings.threshold
                         : settings.binarization == Binarization::Dynamic ? inkByMean(x, gray)
                                                                          : inkByDiffusion(x, gray);
        if (ink != settings.invert) {
            out[x / 8] = static_cast<std::uint8_t>(out[x / 8] | 0x80 >> (x % 8));
        }
    }
    std::swap(error_, nextError_);
    std::fill(nextError_.begin(), nextError_.end(), 0);
}

void Renderer::nextRow(std::uint8_t* out)
{
    fetchRow();
    if (isLineart()) {
        writeLineart(out);
    } else if (isColor()) {
        writeColor(out);
    } else {
        writeGray(out);
    }
    ++row_;
}

} // namespace kestrel::sim
