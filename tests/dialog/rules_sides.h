/// @file
/// The image tab's side choices: the names of their controls, and a second account of their rules
/// to hold the dialog against.
#pragma once

#include "dialog_fixture.h"

#include <QAbstractButton>

#include <array>
#include <ostream>
#include <set>
#include <string>
#include <utility>

namespace kestrel::test {

/// By button id.
inline constexpr std::array<const char*, 6> kBoxes = {"front_bw", "front_gray", "front_color",
                                                      "rear_bw",  "rear_gray",  "rear_color"};
inline constexpr std::array<const char*, 6> kTwins = {"front_bw_dropout",    "front_gray_dropout",
                                                      "front_color_dropout", "rear_bw_dropout",
                                                      "rear_gray_dropout",   "rear_color_dropout"};
inline constexpr std::array<const char*, 6> kImageButtons = {
    "lineart_front_image", "gray_front_image", "color_front_image",
    "lineart_back_image",  "gray_back_image",  "color_back_image"};

/// Everything of the side choices that the rules keep together.
struct SidesState
{
    int mask = 4;
    std::array<bool, 6> boxes{};
    std::array<bool, 6> twins{};
    bool frontDetection = false;
    bool frontDetectionTwin = false;
    bool backDetection = false;
    bool backDetectionTwin = false;

    bool operator==(const SidesState& o) const
    {
        return mask == o.mask && boxes == o.boxes && twins == o.twins &&
               frontDetection == o.frontDetection && frontDetectionTwin == o.frontDetectionTwin &&
               backDetection == o.backDetection && backDetectionTwin == o.backDetectionTwin;
    }
    friend std::ostream& operator<<(std::ostream& out, const SidesState& s)
    {
        const auto bits = [&out](const std::array<bool, 6>& states) {
            for (const bool state : states) {
                out << (state ? '1' : '0');
            }
        };
        out << "mask " << s.mask << " boxes ";
        bits(s.boxes);
        out << " twins ";
        bits(s.twins);
        return out << " front detection " << s.frontDetection << s.frontDetectionTwin
                   << " back detection " << s.backDetection << s.backDetectionTwin;
    }
};

/// The second account: sets of words instead of bits, one statement after the other.
class SidesModel
{
public:
    std::string source = "feeder"; ///< "feeder", "flatbed", "automatic"
    std::set<std::string> front{"colour"};
    std::set<std::string> back;
    std::set<std::string> frontBoxes{"colour"};
    std::set<std::string> backBoxes;
    bool frontBit = false; ///< detection as the mask has it
    bool backBit = false;
    bool frontDetection = false; ///< detection as its button has it
    bool backDetection = false;

    /// Starts from a mask as a settings file may have it, boxes as they show it.
    void restart(const std::string& paperSource, int mask)
    {
        source = paperSource;
        front = words(mask & 7);
        back = words(mask >> 3 & 7);
        frontBoxes = front;
        backBoxes = back;
        frontBit = backBit = frontDetection = backDetection = false;
    }

    bool containersEnabled() const { return !frontDetection && !backDetection; }
    bool frontEnabled() const { return containersEnabled(); }
    bool backEnabled() const { return containersEnabled() && source != "flatbed"; }

    /// The box with this id has been clicked; it changes, then the rule runs.
    void click(int id)
    {
        auto& boxes = id < 3 ? frontBoxes : backBoxes;
        const std::string mode = kWords.at(static_cast<std::size_t>(id % 3));
        if (boxes.erase(mode) == 0) {
            boxes.insert(mode);
        }
        runRule(id);
    }

    void runRule(int id)
    {
        const bool onFront = id < 3;
        const std::string mode = kWords.at(static_cast<std::size_t>(id % 3));
        auto& mine = onFront ? front : back;
        auto& others = onFront ? back : front;
        auto& myBoxes = onFront ? frontBoxes : backBoxes;
        auto& otherBoxes = onFront ? backBoxes : frontBoxes;
        const bool chosen = myBoxes.count(mode) != 0;

        put(mine, mode, chosen);
        bool skip = false;
        if (nothing()) {
            if (onFront ? frontEnabled() : backEnabled()) {
                myBoxes.insert(mode);
                mine.insert(mode);
            } else {
                skip = true;
            }
        }
        if (!skip && !front.empty() && !back.empty() && front != back) {
            put(otherBoxes, mode, myBoxes.count(mode) != 0);
            put(others, mode, myBoxes.count(mode) != 0);
            if (front != back) {
                for (const std::string& other : kWords) {
                    if (other != mode && otherBoxes.count(other) != 0) {
                        myBoxes.insert(other);
                        mine.insert(other);
                    }
                }
            }
        }
        if (!skip && onFront && source == "automatic" && front.empty()) {
            frontBoxes.insert(mode);
            front.insert(mode);
        }
        if (nothing()) {
            myBoxes.insert(mode);
            mine.insert(mode);
        }
    }

    /// The front detection button changes to @p on, by a click or by a rule.
    void detectFront(bool on)
    {
        if (frontDetection != on) {
            frontDetection = on;
            frontBit = on;
            followDetection();
        }
    }
    void detectBack(bool on)
    {
        if (backDetection != on) {
            backDetection = on;
            backBit = on;
            followDetection();
        }
    }

    void choose(const std::string& paperSource)
    {
        if (source == paperSource) {
            return;
        }
        source = paperSource;
        if (source == "flatbed") {
            detectBack(false);
            backBoxes.clear();
            back.clear();
            frontBit = false;
            backBit = false;
        } else if (source == "automatic" && backDetection) {
            detectFront(true);
        }
        if (nothing()) {
            frontBoxes.insert("colour");
            front.insert("colour");
        }
    }

    SidesState state() const
    {
        SidesState s;
        s.mask = number(front) + 8 * number(back) + (frontBit ? 64 : 0) + (backBit ? 128 : 0);
        for (std::size_t i = 0; i < 3; ++i) {
            s.boxes.at(i) = frontBoxes.count(kWords.at(i)) != 0;
            s.boxes.at(i + 3) = backBoxes.count(kWords.at(i)) != 0;
        }
        s.twins = s.boxes;
        s.frontDetection = s.frontDetectionTwin = frontDetection;
        s.backDetection = s.backDetectionTwin = backDetection;
        return s;
    }

private:
    inline static const std::array<std::string, 3> kWords{"bw", "gray", "colour"};

    static std::set<std::string> words(int bits)
    {
        std::set<std::string> result;
        for (std::size_t i = 0; i < 3; ++i) {
            if ((bits >> i & 1) != 0) {
                result.insert(kWords.at(i));
            }
        }
        return result;
    }
    static int number(const std::set<std::string>& modes)
    {
        int bits = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            bits += modes.count(kWords.at(i)) != 0 ? 1 << i : 0;
        }
        return bits;
    }
    static void put(std::set<std::string>& modes, const std::string& mode, bool in)
    {
        if (in) {
            modes.insert(mode);
        } else {
            modes.erase(mode);
        }
    }
    bool nothing() const { return front.empty() && back.empty() && !frontBit && !backBit; }
    void followDetection()
    {
        if (source == "automatic" && backDetection) {
            detectFront(true);
        }
        const bool detecting = frontDetection || backDetection;
        frontBoxes = detecting ? std::set<std::string>{} : front;
        backBoxes = detecting ? std::set<std::string>{} : back;
    }
};

/// A dialog whose side choices can be read and set up.
class SidesTest : public DialogTest
{
protected:
    SidesState state()
    {
        SidesState s;
        s.mask = dialog().mask();
        for (std::size_t i = 0; i < 6; ++i) {
            s.boxes.at(i) = checked(kBoxes.at(i));
            s.twins.at(i) = checked(kTwins.at(i));
        }
        s.frontDetection = checked("color_detection_image_front");
        s.frontDetectionTwin = checked("color_detection_checkbox");
        s.backDetection = checked("color_detection_image_back");
        s.backDetectionTwin = checked("color_detection_checkbox_2");
        return s;
    }

    /// Puts mask and boxes as the loading of a file does.
    void load(int mask)
    {
        dialog().setMask(mask);
        for (std::size_t i = 0; i < 6; ++i) {
            button(kBoxes.at(i)).setChecked((mask >> i & 1) != 0);
        }
    }

    /// @return the names of the checked image buttons, test_button included
    Strings panelButtons() const
    {
        Strings names;
        for (const char* name : kImageButtons) {
            if (checked(name)) {
                names.emplace_back(name);
            }
        }
        if (checked("test_button")) {
            names.emplace_back("test_button");
        }
        return names;
    }
};

} // namespace kestrel::test
