// Random walks over the paper tab of several scanners against a second account.
#include "rules_paper_tab.h"
#include "rules_range.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

using namespace kestrel::test;

namespace {

class Walk : public RangeTest, public testing::WithParamInterface<Device>
{
protected:
    PaperState shown()
    {
        const auto& length = real("length_detection_value");
        return {{left(), top(), wide(), high(), real("br_y").maximum(), length.value(),
                 length.minimum(), length.maximum()},
                papers().currentIndex(),
                checked("horizontal_range"),
                button("horizontal_range").isEnabled(),
                checked("center_alignment"),
                real("tl_x").isEnabled(),
                dialog().portrait,
                dialog().updating};
    }
    void startModel()
    {
        const auto copy = [this](Field& field, const char* name) {
            const auto& box = real(name);
            field.start(box.value(), box.minimum(), box.maximum());
        };
        copy(model.left, "tl_x");
        copy(model.top, "tl_y");
        copy(model.width, "br_x");
        copy(model.height, "br_y");
        copy(model.length, "length_detection_value");
        for (const QString& text : itemsOf("scanrange_setting")) {
            model.papers.push_back(
                text == kWhole ? "whole" : text.section(QStringLiteral(" - "), 0, 0).toStdString());
        }
        model.paper = static_cast<std::size_t>(papers().currentIndex());
        model.landscapeChecked = checked("horizontal_range");
        model.landscapeEnabled = button("horizontal_range").isEnabled();
        model.centred = checked("center_alignment");
        model.leftEnabled = real("tl_x").isEnabled();
        model.flag = dialog().portrait;
        model.guard = dialog().updating;
    }

    /// Gives a value by hand, and to the model unless the field refuses it.
    void give(const char* name, Field& field, double v)
    {
        const QString text = QString::number(v, 'f', 1);
        paste(real(name), text);
        if (v <= field.max() && v >= field.min()) {
            field.set(v);
        }
    }

    PaperTab model;
};

constexpr Device kDevices[] = {
    {"A4Feeder", 215.9, 355.6, 3000.0}, {"A3Feeder", 304.8, 431.8, 5080.0},
    {"Round", 216.0, 297.0, 3000.0},    {"Wide", 420.0, 297.0, 1000.0},
    {"Small", 105.0, 148.0, 300.0},     {"Square", 300.0, 300.0, 300.0}};

} // namespace

TEST_P(Walk, AgreesWithTheSecondAccount)
{
    const Device& device = GetParam();
    start(device);
    for (const unsigned seed : {11U, 12U}) {
        model.papers.clear();
        startModel();
        std::mt19937 random(seed);
        const auto pick = [&random](int n) {
            return static_cast<int>(random() % static_cast<unsigned>(n));
        };
        const auto mm = [&pick](double limit) {
            return pick(static_cast<int>(limit * 10.0) + 20) / 10.0;
        };
        reveal(widget("tl_x"));
        for (int i = 0; i < 700; ++i) {
            std::string what;
            switch (pick(9)) {
            case 0:
            case 1: {
                const int index = pick(papers().count());
                what = "paper " + model.papers.at(static_cast<std::size_t>(index));
                if (pick(4) == 0) {
                    choose(papers(), index);
                } else {
                    papers().setCurrentIndex(index);
                }
                model.choosePaper(static_cast<std::size_t>(index));
                break;
            }
            case 2: {
                const bool landscape = pick(2) == 0;
                what = landscape ? "across" : "upright";
                auto& radio = button(landscape ? "horizontal_range" : "vertical_range");
                ASSERT_EQ(radio.isEnabled(), !landscape || model.landscapeEnabled);
                if (radio.isEnabled()) {
                    click(radio);
                    model.clickOrientation(landscape);
                }
                break;
            }
            case 3:
                what = "centring";
                click(button("center_alignment"));
                model.clickCentred();
                break;
            case 4: {
                const double v = mm(device.width);
                what = "left " + std::to_string(v);
                if (model.leftEnabled) {
                    give("tl_x", model.left, v);
                }
                break;
            }
            case 5: {
                const double v = mm(model.height.max() / (pick(3) == 0 ? 1.0 : 8.0));
                what = "top " + std::to_string(v);
                give("tl_y", model.top, v);
                break;
            }
            case 6: {
                const double v = mm(device.width);
                what = "width " + std::to_string(v);
                give("br_x", model.width, v);
                break;
            }
            case 7: {
                const double v = mm(model.height.max());
                what = "height " + std::to_string(v);
                give("br_y", model.height, v);
                break;
            }
            default:
                what = "long paper";
                click(button("long_paper_scan"));
                model.longPaper(checked("long_paper_scan") ? device.longHeight : device.height);
                break;
            }
            const PaperState now = shown();
            ASSERT_EQ(now, model.state()) << "seed " << seed << " step " << i << ": " << what;
            // Across, the area never leaves the scanner; halves of a tenth are rounded away.
            EXPECT_LE(left() + wide(), device.width + 0.0501) << what;
            EXPECT_FALSE(now.guard) << what;
            EXPECT_LE(real("length_detection_value").minimum(), 0.0) << what;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Devices, Walk, testing::ValuesIn(kDevices),
                         [](const auto& info) { return std::string(info.param.name); });
