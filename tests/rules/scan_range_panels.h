/// @file
/// A paper tab without widgets, answered in two ways: by the rules' lists of writes, and by a
/// second model that reads and writes live, statement by statement.
#pragma once

#include "rules/scan_range.h"

#include <QString>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace kestrel::test {

/// No rule may come back to itself more often than this.
inline constexpr int kDeepest = 12;

/// A double spin box with one decimal: rounds, keeps its limits, tells of a change.
struct Spin
{
    double value = 0.0;
    double minimum = 0.0;
    double maximum = 0.0;
    std::function<void(double)> changed;

    void set(double v)
    {
        const double rounded = QString::number(v, 'f', 1).toDouble();
        const double held = rounded < minimum ? minimum : std::min(rounded, maximum);
        if (held != value) {
            value = held;
            if (changed) {
                changed(held);
            }
        }
    }
};

/// The paper tab's controls, with signals; who answers them is up to the kind of panel.
class Panel
{
public:
    Panel(double widthMax, double heightMax, double smallest)
    {
        left.maximum = widthMax;
        top.maximum = heightMax;
        width.minimum = smallest;
        height.minimum = smallest;
        width.maximum = widthMax;
        height.maximum = heightMax;
        width.value = std::min(widthMax, 210.0);
        height.value = std::min(heightMax, 297.0);
        sizes = admittedAreas(widthMax, heightMax);
        left.changed = [this](double v) { enter([&] { leftChanged(v); }); };
        top.changed = [this](double v) { enter([&] { topChanged(v); }); };
        width.changed = [this](double v) { enter([&] { widthChanged(v); }); };
        height.changed = [this](double v) { enter([&] { heightChanged(v); }); };
    }
    virtual ~Panel() = default;
    Panel(const Panel&) = delete;
    Panel& operator=(const Panel&) = delete;
    Panel(Panel&&) = delete;
    Panel& operator=(Panel&&) = delete;

    void selectSize(int index)
    {
        if (index != sizeIndex) {
            sizeIndex = index;
            enter([&] { sizeChanged(); });
        }
    }
    void clickOrientation(bool toPortrait)
    {
        if (toPortrait || landscapeEnabled) {
            portraitChecked = toPortrait;
            orientationWasClicked(toPortrait ? 1 : 0);
        }
    }
    void toggleAlignment()
    {
        aligned = !aligned;
        alignmentChanged(aligned);
    }
    void setLengthMaximum(double maximum)
    {
        length.minimum = std::min(0.0, maximum);
        length.maximum = maximum;
        length.value = std::max(length.minimum, std::min(length.value, length.maximum));
    }
    ScanArea area() const { return sizes[static_cast<std::size_t>(sizeIndex)]; }

    std::string state() const
    {
        std::string text;
        for (const double number : {left.value, top.value, width.value, height.value,
                                    length.minimum, length.maximum, length.value}) {
            text += std::to_string(number) + ' ';
        }
        for (const bool flag :
             {portraitFlag, portraitChecked, landscapeEnabled, leftEnabled, aligned, guard}) {
            text += flag ? '1' : '0';
        }
        return text + ' ' + std::to_string(sizeIndex);
    }

    Spin left;
    Spin top;
    Spin width;
    Spin height;
    Spin length;
    std::vector<ScanArea> sizes;
    int sizeIndex = 0;
    bool portraitChecked = true; ///< the group is exclusive: the other one is landscape
    bool landscapeEnabled = true;
    bool leftEnabled = true;
    bool aligned = false;
    bool portraitFlag = true;
    bool guard = false;
    int deepest = 0;

private:
    virtual void leftChanged(double v) = 0;
    virtual void topChanged(double v) = 0;
    virtual void widthChanged(double v) = 0;
    virtual void heightChanged(double v) = 0;
    virtual void sizeChanged() = 0;
    virtual void orientationWasClicked(int id) = 0;
    virtual void alignmentChanged(bool on) = 0;

    void enter(const std::function<void()>& handler)
    {
        deepest = std::max(deepest, ++m_depth);
        if (m_depth <= kDeepest) {
            handler();
        }
        --m_depth;
    }

    int m_depth = 0;
};

/// Reads, asks the rules, writes.
class RulePanel : public Panel
{
public:
    using Panel::Panel;

private:
    static SpinMm spin(const Spin& box) { return {box.value, box.minimum, box.maximum}; }
    ScanRange read() const
    {
        return {spin(left),
                spin(top),
                spin(width),
                spin(height),
                portraitChecked ? Orientation::Portrait : Orientation::Landscape,
                portraitFlag,
                aligned,
                sizeIndex == 0};
    }
    void write(const RangeWrites& writes)
    {
        for (const RangeWrite& write : writes) {
            const bool on = write.value != 0.0;
            switch (write.field) {
            case RangeField::Left:
                left.set(write.value);
                break;
            case RangeField::Top:
                top.set(write.value);
                break;
            case RangeField::Width:
                width.set(write.value);
                break;
            case RangeField::Height:
                height.set(write.value);
                break;
            case RangeField::PortraitFlag:
                portraitFlag = on;
                break;
            case RangeField::CheckPortrait:
                portraitChecked = true;
                break;
            case RangeField::UncheckLandscape:
                break; // the checked button of an exclusive group stays checked
            case RangeField::LandscapeEnabled:
                landscapeEnabled = on;
                break;
            case RangeField::LeftEnabled:
                leftEnabled = on;
                break;
            case RangeField::SelectCustom:
                selectSize(0);
                break;
            case RangeField::LengthDetectionMaximum:
                setLengthMaximum(write.value);
                break;
            }
        }
    }
    void leftChanged(double v) override { write(leftEdited(read(), v)); }
    void topChanged(double v) override { write(topEdited(read(), v)); }
    void widthChanged(double v) override { write(widthEdited(read(), v, guard)); }
    void heightChanged(double v) override { write(heightEdited(read(), v, guard)); }
    void sizeChanged() override
    {
        guard = true;
        write(paperChosen(read(), area()));
        guard = false;
    }
    void orientationWasClicked(int id) override
    {
        guard = true;
        write(orientationClicked(read(), id));
        guard = false;
    }
    void alignmentChanged(bool on) override { write(centreAlignmentToggled(read(), on)); }
};

/// The second model: every statement reads the controls as they are at that moment.
class LivePanel : public Panel
{
public:
    using Panel::Panel;

private:
    void centre() { left.set((width.maximum - width.value) * 0.5); }
    void leftChanged(double v) override
    {
        if (v >= width.maximum - width.value) {
            left.set(width.maximum - width.value);
        }
    }
    void topChanged(double v) override
    {
        if (v >= height.maximum - height.value) {
            top.set(height.maximum - height.value);
        }
        setLengthMaximum((height.maximum - height.value) - v);
    }
    void widthChanged(double v) override
    {
        if (guard) {
            return;
        }
        if (aligned) {
            if (sizeIndex != 0) {
                selectSize(0);
            }
            centre();
        } else if (v >= width.maximum - left.value) {
            width.set(width.maximum - left.value);
        }
    }
    void heightChanged(double v) override
    {
        setLengthMaximum((height.maximum - top.value) - v);
        landscapeEnabled = !(v > width.maximum);
        if (guard) {
            return;
        }
        if (v >= height.maximum - top.value) {
            height.set(height.maximum - top.value);
        }
        if (sizeIndex != 0) {
            selectSize(0);
        }
    }
    void sizeChanged() override
    {
        struct Paper
        {
            ScanArea area;
            double s;
            double l;
        };
        static constexpr Paper papers[] = {
            {ScanArea::UsLegal, 215.9, 279.4}, {ScanArea::UsLetter, 215.9, 355.6},
            {ScanArea::IsoA3, 297.0, 420.0},   {ScanArea::IsoA4, 210.0, 297.0},
            {ScanArea::IsoA5, 148.0, 210.0},   {ScanArea::IsoA6, 105.0, 148.0},
            {ScanArea::JisB4, 257.0, 364.0},   {ScanArea::JisB5, 182.0, 257.0}};
        guard = true;
        if (area() == ScanArea::Maximum) {
            portraitChecked = true;
            landscapeEnabled = false;
            left.set(0.0);
            top.set(0.0);
            width.set(width.maximum);
            height.set(height.maximum);
            guard = false;
            return;
        }
        for (const Paper& paper : papers) {
            if (paper.area != area()) {
                continue;
            }
            if (portraitChecked) {
                width.set(paper.s);
                height.set(paper.l);
            } else if (width.maximum >= paper.l) {
                width.set(paper.l);
                height.set(paper.s);
            } else {
                portraitChecked = true;
                portraitFlag = true;
                landscapeEnabled = false;
                width.set(paper.s);
                height.set(paper.l);
            }
        }
        centre();
        guard = false;
    }
    void orientationWasClicked(int id) override
    {
        guard = true;
        if ((id == 1) != portraitFlag) {
            portraitFlag = id != 0;
            const double oldWidth = width.value;
            width.set(height.value);
            height.set(oldWidth);
            centre();
            if (top.value > height.maximum - height.value) {
                top.set(0.0);
            }
        }
        guard = false;
    }
    void alignmentChanged(bool on) override
    {
        centre();
        leftEnabled = !on;
    }
};

} // namespace kestrel::test
