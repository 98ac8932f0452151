#pragma once

#include <cstdint>
#include <vector>

#include "imageplan.h"

namespace kestrel::sim {

/// Turns a plan into rows of bytes, from the top, as SANE frames hold them: three bytes a pixel,
/// one byte a pixel, or eight pixels a byte with 1 for black.
class Renderer
{
public:
    explicit Renderer(ImagePlan plan);

    const ImagePlan& plan() const { return plan_; }
    bool isColor() const { return plan_.kind == Kind::Color && !plan_.settings->grayForColor; }
    bool isLineart() const { return plan_.kind == Kind::Lineart; }

    /// Bytes of one row without any padding.
    std::size_t rowBytes() const;

    /// Whether there is a row left.
    bool hasRow() const { return row_ < plan_.height; }

    /// Writes the next row to @p out, which has room for rowBytes().
    void nextRow(std::uint8_t* out);

private:
    void sample(double column, double row, std::vector<Rgb>& pixels) const;
    void fetchRow();
    void treatBackground();
    void smoothMoire();
    std::uint8_t grayOf(Rgb pixel) const;
    bool isDropped(Rgb pixel) const;
    void writeColor(std::uint8_t* out) const;
    void writeGray(std::uint8_t* out) const;
    void writeLineart(std::uint8_t* out);
    bool inkByMean(std::size_t x, int gray) const;
    void followMean();
    bool inkByDiffusion(std::size_t x, int gray);

    ImagePlan plan_;
    int row_ = 0;
    std::vector<Rgb> pixels_;
    std::vector<Rgb> shifted_; ///< the red sensor's line, when it reads beside the others
    std::vector<std::uint8_t> grays_;
    std::vector<int> columnMeans_; ///< running mean of each column, times 16
    std::vector<int> meanSums_;    ///< sums of the means from the left
    std::vector<int> error_;       ///< what diffusion carries to this row and the next
    std::vector<int> nextError_;
};

} // namespace kestrel::sim
