// Leaving without OK, or picking another template, shows exactly what was confirmed, whatever was
// edited meanwhile.
#include "config_manager.h"

#include <QTest>

#include <functional>
#include <string>

using namespace kestrel;
using namespace kestrel::test;

namespace {

const QString nameA = QStringLiteral("A");
const QString nameB = QStringLiteral("B");

struct Area
{
    double x, y, width, height;
};

class CancelRestores : public TemplatesBench
{
protected:
    QDoubleSpinBox& box(const char* name) { return get<QDoubleSpinBox>(name); }

    /// Sets the area as a user can who makes room first.
    void setArea(const Area& area)
    {
        for (const char* const offset : {"tl_x", "tl_y"}) {
            box(offset).setValue(0.0);
        }
        box("br_x").setValue(area.width);
        box("br_y").setValue(area.height);
        box("tl_x").setValue(area.x);
        box("tl_y").setValue(area.y);
        expectArea(area);
    }
    void expectArea(const Area& area)
    {
        EXPECT_EQ(box("tl_x").value(), area.x);
        EXPECT_EQ(box("tl_y").value(), area.y);
        EXPECT_EQ(box("br_x").value(), area.width);
        EXPECT_EQ(box("br_y").value(), area.height);
    }
    void setCentring(bool on) { get<QAbstractButton>("center_alignment").setChecked(on); }
    void chooseSource(const char* text)
    {
        auto& list = get<QComboBox>("source");
        const int index = list.findText(QString::fromUtf8(text));
        ASSERT_GE(index, 0) << text;
        list.setCurrentIndex(index);
    }

    /// Confirms what is on show, then edits and leaves in every way.
    void expectBack(const std::function<void()>& edit)
    {
        ok();
        const QStringList confirmed = state();
        const std::vector<std::pair<const char*, std::function<void()>>> ways{
            {"cancel", [this] { cancel(); }},
            {"close", [this] { dialog().close(); }},
            {"escape", [this] { QTest::keyClick(&dialog(), Qt::Key_Escape); }}};
        for (const auto& [name, leave] : ways) {
            dialog().show();
            settle();
            edit();
            EXPECT_TRUE(state() != confirmed) << name << ": nothing was edited";
            leave();
            EXPECT_FALSE(dialog().isVisible()) << name;
            expectState(confirmed, name);
        }
    }

    /// Makes templates of two states and picks one after the other.
    void expectBothBack(const std::function<void()>& first, const std::function<void()>& second)
    {
        first();
        const QStringList stateA = state();
        openManager([this] { add(nameA); });
        second();
        const QStringList stateB = state();
        ASSERT_TRUE(stateA != stateB);
        openManager([this] { add(nameB); });
        for (int round = 0; round < 2; ++round) {
            templates().setCurrentIndex(1);
            expectState(stateA, "A");
            templates().setCurrentIndex(2);
            expectState(stateB, "B");
        }
    }
};

FakeScanner feederOf(double width, double height)
{
    ScannerModel model;
    model.sources = {"ADF Front", "ADF Back", "ADF Duplex"};
    model.width = width;
    model.feederHeight = height;
    return makeScanner(model);
}

constexpr Area tallAtTheTop{0.0, 0.0, 100.0, 300.0};
constexpr Area shortBelow{0.0, 200.0, 100.0, 100.0};
constexpr Area wideAtTheLeft{0.0, 10.0, 216.0, 50.0};
constexpr Area narrowInside{50.0, 10.0, 100.0, 50.0};

} // namespace

TEST_F(CancelRestores, AHeightThatTheEditedOffsetHadNoRoomFor)
{
    FakeScanner scanner = feederOf(216.0, 356.0);
    bind(scanner);
    setCentring(false);
    setArea(tallAtTheTop);
    expectBack([this] { setArea(shortBelow); });
    expectArea(tallAtTheTop);
}

TEST_F(CancelRestores, AWidthThatTheEditedOffsetHadNoRoomFor)
{
    FakeScanner scanner = feederOf(216.0, 356.0);
    bind(scanner);
    setCentring(false);
    setArea(wideAtTheLeft);
    expectBack([this] { setArea(narrowInside); });
    expectArea(wideAtTheLeft);
}

TEST_F(CancelRestores, AnOffsetThatTheEditedSizeHadNoRoomFor)
{
    FakeScanner scanner = feederOf(216.0, 356.0);
    bind(scanner);
    setCentring(false);
    setArea({50.0, 200.0, 100.0, 100.0});
    expectBack([this] { setArea({0.0, 0.0, 216.0, 356.0}); });
    expectArea({50.0, 200.0, 100.0, 100.0});
}

TEST_F(CancelRestores, APaperThatWasTurned)
{
    FakeScanner scanner = feederOf(300.0, 400.0);
    bind(scanner);
    const QString a4 = QStringLiteral("ISO A4 - 21.0 x 29.7 厘米");
    ASSERT_EQ(get<QComboBox>("scanrange_setting").currentText(), a4);
    expectBack([this] { press(get<QAbstractButton>("horizontal_range")); });
    EXPECT_EQ(get<QComboBox>("scanrange_setting").currentText(), a4);
    EXPECT_TRUE(checked("vertical_range"));
    EXPECT_TRUE(dialog().portrait);
    EXPECT_EQ(box("br_x").value(), 210.0);
    EXPECT_EQ(box("br_y").value(), 297.0);
}

TEST_F(CancelRestores, EveryPaperOverEveryOther)
{
    FakeScanner scanner = feederOf(300.0, 400.0);
    bind(scanner);
    auto& papers = get<QComboBox>("scanrange_setting");
    ASSERT_GE(papers.count(), 7);
    for (int stored = 1; stored < papers.count(); ++stored) {
        papers.setCurrentIndex(stored);
        ok();
        const QStringList confirmed = state();
        for (int edited = 1; edited < papers.count(); ++edited) {
            papers.setCurrentIndex(edited);
            auto& across = get<QAbstractButton>("horizontal_range");
            if (across.isEnabled()) {
                press(across);
            }
            cancel();
            expectState(confirmed, std::to_string(stored) + " over " + std::to_string(edited));
        }
    }
}

TEST_F(CancelRestores, DetectionOfTheBackAlone)
{
    bind(m_scanner);
    chooseSource("文档进纸器");
    press(get<QAbstractButton>("color_detection_image_back"));
    ASSERT_EQ(dialog().mask(), 132);
    expectBack([this] {
        chooseSource("自动选择纸张来源");
        EXPECT_EQ(dialog().mask(), 196);
    });
    EXPECT_EQ(dialog().mask(), 132);
    EXPECT_FALSE(checked("color_detection_image_front"));
    EXPECT_TRUE(checked("color_detection_image_back"));
    restart(m_scanner);
    EXPECT_EQ(dialog().mask(), 132);
    EXPECT_FALSE(checked("color_detection_image_front"));
}

TEST_F(CancelRestores, TheFlatbedDropsTheFrontsDetectionAlsoWhenItIsLoaded)
{
    bind(m_scanner);
    chooseSource("平板");
    press(get<QAbstractButton>("color_detection_image_front"));
    ASSERT_EQ(dialog().mask(), 68);
    ok();
    dialog().show();
    chooseSource("文档进纸器");
    cancel();
    EXPECT_EQ(dialog().mask(), 4);
    EXPECT_TRUE(checked("color_detection_image_front"));
    EXPECT_EQ(get<QComboBox>("source").currentText(), QStringLiteral("平板"));
    restart(m_scanner);
    EXPECT_EQ(dialog().mask(), 4);
    EXPECT_TRUE(checked("color_detection_image_front"));
    EXPECT_FALSE(checked("color_detection_image_back"));
    EXPECT_EQ(get<QComboBox>("source").currentText(), QStringLiteral("平板"));
}

TEST_F(CancelRestores, TheFlatbedKeepsADetectionThatWasConfirmedOnIt)
{
    bind(m_scanner);
    chooseSource("平板");
    press(get<QAbstractButton>("color_detection_image_front"));
    expectBack([this] { press(get<QAbstractButton>("color_detection_image_front")); });
    EXPECT_EQ(dialog().mask(), 68);
}

TEST_F(CancelRestores, ALengthBelowAnOffsetThatWasTypedAndNotTaken)
{
    FakeScanner scanner = feederOf(216.0, 356.0);
    bind(scanner);
    auto& sizes = get<QComboBox>("scanrange_setting");
    sizes.setCurrentIndex(sizes.count() - 1);
    ASSERT_EQ(box("length_detection_value").value(), 0.0);
    expectBack([this] { box("tl_y").setValue(50.0); });
    EXPECT_EQ(box("length_detection_value").value(), 0.0);
    EXPECT_EQ(box("length_detection_value").maximum(), 0.0);
}

TEST_F(CancelRestores, AnotherTemplatesHeight)
{
    FakeScanner scanner = feederOf(216.0, 356.0);
    bind(scanner);
    setCentring(false);
    expectBothBack([this] { setArea(tallAtTheTop); }, [this] { setArea(shortBelow); });
}

TEST_F(CancelRestores, AnotherTemplatesWidth)
{
    FakeScanner scanner = feederOf(216.0, 356.0);
    bind(scanner);
    setCentring(false);
    expectBothBack([this] { setArea(wideAtTheLeft); }, [this] { setArea(narrowInside); });
}

TEST_F(CancelRestores, AnotherTemplatesOrientation)
{
    FakeScanner scanner = feederOf(300.0, 400.0);
    bind(scanner);
    expectBothBack([] {}, [this] { press(get<QAbstractButton>("horizontal_range")); });
}

TEST_F(CancelRestores, AnotherTemplatesDetection)
{
    bind(m_scanner);
    expectBothBack(
        [this] {
            chooseSource("文档进纸器");
            press(get<QAbstractButton>("color_detection_image_back"));
            EXPECT_EQ(dialog().mask(), 132);
        },
        [this] {
            chooseSource("自动选择纸张来源");
            get<QAbstractButton>("color_detection_image_back").setChecked(true);
            EXPECT_EQ(dialog().mask(), 196);
        });
}

TEST_F(CancelRestores, AStoredIndexThatTheListDoesNotHaveSelectsNothing)
{
    start({nameA, nameB});
    for (const char* const text : {"3", "99", "2147483647", "-1", "-2147483648"}) {
        for (const int selected : {0, 1, 2}) {
            templates().setCurrentIndex(selected);
            const int stored = selected == 0 ? 50 : selected;
            ASSERT_EQ(brightness(), stored);
            store(storedIndex, QString::fromLatin1(text));
            setBrightness(70);
            dialog().close();
            EXPECT_EQ(templates().currentIndex(), selected) << text;
            EXPECT_EQ(brightness(), stored) << text << ' ' << selected;
        }
    }
}

TEST_F(CancelRestores, AStoredIndexThatIsNoNumberIsTheWorkingEntry)
{
    start({nameA, nameB});
    for (const char* const text : {"abc", "1.5", "99999999999", " "}) {
        for (const int selected : {0, 1, 2}) {
            templates().setCurrentIndex(selected);
            store(storedIndex, QString::fromLatin1(text));
            setBrightness(70);
            dialog().close();
            EXPECT_EQ(templates().currentIndex(), 0) << text << ' ' << selected;
            EXPECT_EQ(brightness(), 50) << text << ' ' << selected;
        }
    }
}
