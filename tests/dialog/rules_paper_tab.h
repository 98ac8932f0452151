/// @file
/// A second account of the paper tab: fields that report their changes, as spin boxes do, and the
/// rules written down one after the other on top of them.
#pragma once

#include <QString>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace kestrel::test {

/// A number with one decimal between limits.
class Field
{
public:
    std::function<void(double)> changed = [](double) {};

    double value() const { return m_value; }
    double min() const { return m_min; }
    double max() const { return m_max; }

    void set(double v)
    {
        const double next = within(rounded(v));
        if (next != m_value) {
            m_value = next;
            changed(next);
        }
    }
    void setRange(double min, double max)
    {
        m_min = rounded(min);
        m_max = std::max(m_min, rounded(max));
        set(m_value);
    }
    /// The start of a test: nothing is reported.
    void start(double value, double min, double max)
    {
        m_value = value;
        m_min = min;
        m_max = max;
    }

private:
    static double rounded(double v) { return QString::number(v, 'f', 1).toDouble(); }
    double within(double v) const { return v < m_min ? m_min : v > m_max ? m_max : v; }

    double m_value = 0.0;
    double m_min = 0.0;
    double m_max = 0.0;
};

/// What the paper tab shows.
struct PaperState
{
    std::vector<double> numbers; ///< left, top, width, height, height limit, length, its limits
    int paper = 0;
    bool landscapeChecked = false;
    bool landscapeEnabled = true;
    bool centred = true;
    bool leftEnabled = false;
    bool flag = true;
    bool guard = false;

    bool operator==(const PaperState& o) const
    {
        return numbers == o.numbers && paper == o.paper && landscapeChecked == o.landscapeChecked &&
               landscapeEnabled == o.landscapeEnabled && centred == o.centred &&
               leftEnabled == o.leftEnabled && flag == o.flag && guard == o.guard;
    }
    friend std::ostream& operator<<(std::ostream& out, const PaperState& s)
    {
        out << "left, top, width, height, limit, length, min, max:";
        for (const double number : s.numbers) {
            out << ' ' << number;
        }
        return out << " paper " << s.paper << " landscape " << s.landscapeChecked << '/'
                   << s.landscapeEnabled << " centred " << s.centred << " left enabled "
                   << s.leftEnabled << " flag " << s.flag << " guard " << s.guard;
    }
};

/// The second account. Papers are named by the beginning of their texts.
class PaperTab
{
public:
    Field left, top, width, height, length;
    std::vector<std::string> papers;
    std::size_t paper = 0;
    bool landscapeChecked = false;
    bool landscapeEnabled = true;
    bool centred = true;
    bool leftEnabled = false;
    bool flag = true; ///< portrait
    bool guard = false;

    PaperTab()
    {
        left.changed = [this](double v) { leftTyped(v); };
        top.changed = [this](double v) { topTyped(v); };
        width.changed = [this](double v) { widthTyped(v); };
        height.changed = [this](double v) { heightTyped(v); };
    }
    PaperTab(const PaperTab&) = delete;
    PaperTab& operator=(const PaperTab&) = delete;

    void choosePaper(std::size_t index)
    {
        if (index != paper) {
            paper = index;
            paperRule();
        }
    }

    void clickOrientation(bool landscape)
    {
        landscapeChecked = landscape;
        guard = true;
        if (flag == landscape) {
            flag = !landscape;
            const double w = width.value();
            const double h = height.value();
            width.set(h);
            height.set(w);
            centre();
            if (top.value() > height.max() - height.value()) {
                top.set(0.0);
            }
        }
        guard = false;
    }

    void clickCentred()
    {
        centred = !centred;
        centre();
        leftEnabled = !centred;
    }

    void longPaper(double limit)
    {
        guard = true;
        height.setRange(height.min(), limit);
        const auto whole = std::find(papers.begin(), papers.end(), "whole");
        if (whole != papers.end()) {
            height.set(height.max());
            top.set(0.0);
            choosePaper(static_cast<std::size_t>(whole - papers.begin()));
        }
        guard = false;
    }

    PaperState state() const
    {
        return {{left.value(), top.value(), width.value(), height.value(), height.max(),
                 length.value(), length.min(), length.max()},
                static_cast<int>(paper),
                landscapeChecked,
                landscapeEnabled,
                centred,
                leftEnabled,
                flag,
                guard};
    }

private:
    /// Short and long side as they are on the market, but for the two US sizes, which every
    /// release has had the other way round.
    static std::pair<double, double> sides(const std::string& name)
    {
        if (name == "US Legal") {
            return {215.9, 279.4};
        }
        if (name == "US Letter") {
            return {215.9, 355.6};
        }
        if (name == "ISO A3") {
            return {297.0, 420.0};
        }
        if (name == "ISO A4") {
            return {210.0, 297.0};
        }
        if (name == "ISO A5") {
            return {148.0, 210.0};
        }
        if (name == "ISO A6") {
            return {105.0, 148.0};
        }
        if (name == "JIS B4") {
            return {257.0, 364.0};
        }
        if (name == "JIS B5") {
            return {182.0, 257.0};
        }
        return {0.0, 0.0};
    }

    void centre() { left.set((width.max() - width.value()) * 0.5); }

    void paperRule()
    {
        guard = true;
        const std::string& name = papers.at(paper);
        if (name == "whole") {
            landscapeChecked = false;
            landscapeEnabled = false;
            left.set(0.0);
            top.set(0.0);
            width.set(width.max());
            height.set(height.max());
            guard = false;
            return;
        }
        const auto [shortSide, longSide] = sides(name);
        if (longSide > 0.0) {
            if (landscapeChecked && width.max() >= longSide) {
                width.set(longSide);
                height.set(shortSide);
            } else {
                if (landscapeChecked) {
                    landscapeChecked = false;
                    flag = true;
                    landscapeEnabled = false;
                }
                width.set(shortSide);
                height.set(longSide);
            }
        }
        centre();
        guard = false;
    }

    void leftTyped(double v)
    {
        const double limit = width.max() - width.value();
        if (v >= limit) {
            left.set(limit);
        }
    }

    void topTyped(double v)
    {
        const double limit = height.max() - height.value();
        if (v >= limit) {
            top.set(limit);
        }
        limitLength(height.max() - height.value() - v);
    }

    void widthTyped(double v)
    {
        if (guard) {
            return;
        }
        if (centred) {
            choosePaper(0);
            centre();
        } else if (v >= width.max() - left.value()) {
            width.set(width.max() - left.value());
        }
    }

    void heightTyped(double v)
    {
        limitLength(height.max() - top.value() - v);
        // A checked radio button of a pair cannot be unchecked, only disabled.
        landscapeEnabled = v <= width.max();
        if (guard) {
            return;
        }
        if (v >= height.max() - top.value()) {
            height.set(height.max() - top.value());
        }
        choosePaper(0);
    }

    void limitLength(double max) { length.setRange(std::min(0.0, max), max); }
};

} // namespace kestrel::test
