// Random walks over a paper tab without widgets. One panel is driven by the rules' lists of writes,
// the other by a second model that reads and writes live, statement by statement; both must stay
// alike.
#include "rules/scan_range.h"

#include <QString>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <random>
#include <string>
#include <vector>

using namespace kestrel;

namespace {

/// No rule may come back to itself more often than this.
constexpr int kDeepest = 12;

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

struct Device
{
    double width;
    double height;
    double smallest;
};

constexpr Device kDevices[] = {{216.0, 297.0, 0.0},   {215.9, 355.6, 0.0},  {216.0, 356.0, 50.8},
                               {216.0, 5080.0, 50.8}, {304.8, 431.8, 0.0},  {300.0, 300.0, 10.0},
                               {420.0, 297.0, 0.0},   {105.0, 148.0, 10.0}, {431.8, 3048.0, 50.8}};

enum class Step
{
    Size,
    Orientation,
    Alignment,
    Left,
    Top,
    Width,
    Height,
    LongPaper
};

/// One thing that a user may do, the same on both panels.
struct Move
{
    Step step;
    double value;
    unsigned choice;
};

void apply(Panel& panel, const Move& move, const Device& device)
{
    switch (move.step) {
    case Step::Size:
        panel.selectSize(static_cast<int>(move.choice % panel.sizes.size()));
        break;
    case Step::Orientation:
        panel.clickOrientation(move.choice % 2 == 1);
        break;
    case Step::Alignment:
        panel.toggleAlignment();
        break;
    case Step::Left:
        if (panel.leftEnabled) {
            panel.left.set(move.value);
        }
        break;
    case Step::Top:
        panel.top.set(move.value);
        break;
    case Step::Width:
        panel.width.set(move.value);
        break;
    case Step::Height:
        panel.height.set(move.value);
        break;
    case Step::LongPaper:
        // A longer bed, or the normal one again, with the whole of it selected.
        panel.guard = true;
        panel.height.maximum = move.choice % 2 == 1 ? device.height * 2.0 : device.height;
        panel.height.set(std::min(panel.height.value, panel.height.maximum));
        panel.height.set(panel.height.maximum);
        panel.top.set(0.0);
        panel.selectSize(static_cast<int>(panel.sizes.size()) - 1);
        panel.guard = false;
        break;
    }
}

Move randomMove(std::mt19937& random, const Device& device)
{
    const auto step = static_cast<Step>(random() % 8);
    const bool vertical = step == Step::Top || step == Step::Height;
    const double limit = (vertical ? device.height : device.width) * 1.1;
    const double value =
        std::round(std::uniform_real_distribution<double>(0.0, limit)(random) * 10.0);
    return {step, value / 10.0, static_cast<unsigned>(random())};
}

void expectSound(const Panel& panel, const Move& move, bool changed)
{
    constexpr double slack = 1e-6;
    EXPECT_FALSE(panel.guard);
    EXPECT_LE(panel.deepest, kDeepest) << "a rule came back to itself";
    EXPECT_GE(panel.left.value, 0.0);
    EXPECT_LE(panel.left.value + panel.width.value, panel.width.maximum + slack);
    // A paper chosen while the area is moved down is not moved up again; an edit by hand moves it.
    const bool edited = move.step == Step::Top || move.step == Step::Height;
    if (edited && changed && panel.height.value > panel.height.minimum) {
        EXPECT_LE(panel.top.value + panel.height.value, panel.height.maximum + slack);
    }
    if (move.step == Step::LongPaper) {
        EXPECT_EQ(panel.top.value, 0.0);
        EXPECT_EQ(panel.height.value, panel.height.maximum);
    }
    if (move.step == Step::Height && changed) {
        EXPECT_EQ(panel.sizeIndex, 0);
    }
    EXPECT_EQ(panel.leftEnabled, !panel.aligned);
    EXPECT_LE(panel.length.minimum, 0.0);
    EXPECT_EQ(panel.length.minimum, std::min(0.0, panel.length.maximum));
}

} // namespace

TEST(ScanRangeWalk, RulesAndLiveModelStayAlikeOnEveryScanner)
{
    std::mt19937 random(4711);
    for (const Device& device : kDevices) {
        RulePanel byRule(device.width, device.height, device.smallest);
        LivePanel byModel(device.width, device.height, device.smallest);
        for (int i = 0; i < 20000; ++i) {
            const Move move = randomMove(random, device);
            const std::string before = byRule.state();
            apply(byRule, move, device);
            apply(byModel, move, device);
            ASSERT_EQ(byRule.state(), byModel.state())
                << device.width << " x " << device.height << ", step "
                << static_cast<int>(move.step) << " " << move.value << " from " << before;
            expectSound(byRule, move, byRule.state() != before);
            ASSERT_FALSE(HasFailure())
                << "step " << static_cast<int>(move.step) << " " << move.value << " from " << before
                << " to " << byRule.state();
        }
    }
}
