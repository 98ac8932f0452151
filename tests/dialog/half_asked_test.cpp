// A scanner that could not be asked, or only in parts: what was confirmed stays, whatever the user
// does with the controls that say nothing.
#include "config_manager.h"

using namespace kestrel;
using namespace kestrel::test;

namespace {

class HalfAsked : public TemplatesBench
{
protected:
    static inline const QString source = QStringLiteral("ScannerA/source");
    static inline const QString width = QStringLiteral("ScannerA/br_x");
    static inline const QString version = QStringLiteral("ScannerAconfig_version/config_version");

    /// Confirms a source that is not the form's.
    void confirm()
    {
        bind(m_scanner);
        get<QComboBox>("source").setCurrentIndex(1);
        ok();
        ASSERT_EQ(onDisk(source), QStringLiteral("1"));
        ASSERT_EQ(onDisk(width), QStringLiteral("210"));
    }
    /// Starts the program with a scanner that does not describe its source.
    void restartWithoutSource()
    {
        m_scanner.option("source").undescribed();
        restart(m_scanner);
    }
    /// The calls of a binding that have to do with how long a sheet may be, counted from 1 among
    /// those of their kind.
    std::vector<int> measuringCalls(CallKind kind, const QByteArray& file)
    {
        beginAnew();
        const TempConfigDir fresh;
        fresh.write(QStringLiteral("ScannerA.ini"), file);
        FakeScanner feeder = feederScanner();
        bindIn(feeder, "ScannerA", fresh.path());
        std::vector<int> numbers;
        int number = 0;
        for (const Call& call : feeder.journal().of(kind)) {
            ++number;
            if (call.name == "long-paper-scan" || call.name == "br-y") {
                numbers.push_back(number);
            }
        }
        return numbers;
    }
    double shownWidth() { return get<QDoubleSpinBox>("br_x").value(); }
};

} // namespace

TEST_F(HalfAsked, TheManagerChangesNothingForOneThatSaysNothing)
{
    confirm();
    openManager([this] { add(QStringLiteral("T")); });
    m_scanner.hideCount();
    restart(m_scanner);
    openManager();
    ok();
    EXPECT_EQ(onDisk(source), QStringLiteral("1"));
    EXPECT_EQ(onDisk(width), QStringLiteral("210"));
}

TEST_F(HalfAsked, TheManagerChangesNothingForOneThatSaysLess)
{
    confirm();
    restartWithoutSource();
    openManager();
    ok();
    EXPECT_EQ(onDisk(source), QStringLiteral("1"));
}

TEST_F(HalfAsked, ATemplateThatDoesNotNameASettingTakesTheStoredOne)
{
    confirm();
    openManager([this] { add(QStringLiteral("T")); });
    dialog().settings->remove(QStringLiteral("T/source"));
    saveSettings(*dialog().settings);
    restartWithoutSource();
    templates().setCurrentIndex(1);
    ok();
    EXPECT_EQ(onDisk(QStringLiteral("T/source")), QStringLiteral("1"));
}

TEST_F(HalfAsked, TheTemplatesOfOneThatSaysNothingAreOnShow)
{
    start({QStringLiteral("X"), QStringLiteral("Y")}, QStringLiteral("2"));
    m_scanner.hideCount();
    restart(m_scanner);
    EXPECT_EQ(items(templates()), withWorking({QStringLiteral("X"), QStringLiteral("Y")}));
    EXPECT_EQ(templates().currentIndex(), 2);
    EXPECT_EQ(brightness(), 0) << "none is loaded";
    const QByteArray before = bytes();
    ok();
    EXPECT_EQ(bytes(), before);
}

TEST_F(HalfAsked, ClosingAndConfirmingStoresInTheTemplateThatWasConfirmed)
{
    start({QStringLiteral("X"), QStringLiteral("Y")}, QStringLiteral("2"));
    m_scanner.hideCount();
    restart(m_scanner);
    cancel();
    EXPECT_EQ(brightness(), 2);
    setBrightness(44);
    ok();
    EXPECT_EQ(onDisk(storedIndex), QStringLiteral("2"));
    EXPECT_EQ(onDisk(QStringLiteral("Y/brightness")), QStringLiteral("44"));
    EXPECT_EQ(onDisk(QStringLiteral("ScannerA/brightness")), QStringLiteral("50"));
}

TEST_F(HalfAsked, TheTemplatesOfTheScannerBeforeAreGone)
{
    start({QStringLiteral("X"), QStringLiteral("Y")});
    FakeScanner mute = fullScanner();
    mute.hideCount();
    bind(mute, "ScannerB");
    EXPECT_EQ(items(templates()), QStringList(working));
}

TEST_F(HalfAsked, WhatIsChangedAtOneThatSaysNothingIsStored)
{
    start({}, QStringLiteral("0"));
    const int keys = keysOnDisk(QStringLiteral("ScannerA"));
    m_scanner.hideCount();
    restart(m_scanner);
    setBrightness(33);
    ok();
    EXPECT_EQ(onDisk(QStringLiteral("ScannerA/brightness")), QStringLiteral("33"));
    EXPECT_EQ(keysOnDisk(QStringLiteral("ScannerA")), keys);
}

TEST_F(HalfAsked, WhatWasTriedBeforeOneSaysNothingMakesRoomForWhatWasConfirmed)
{
    start({QStringLiteral("X"), QStringLiteral("Y")}, QStringLiteral("1"));
    FakeScanner mute = fullScanner();
    mute.hideCount();
    for (const int times : {1, 2}) {
        templates().setCurrentIndex(2);
        setBrightness(77);
        bind(mute);
        EXPECT_EQ(templates().currentIndex(), 1);
        EXPECT_EQ(brightness(), 1) << times;
    }
    setBrightness(78);
    ok();
    EXPECT_EQ(onDisk(QStringLiteral("X/brightness")), QStringLiteral("78"));
    EXPECT_EQ(onDisk(QStringLiteral("Y/brightness")), QStringLiteral("2"));
}

TEST_F(HalfAsked, ARuleThatMovesAControlAddsNothingToATemplate)
{
    start({QStringLiteral("X")}, QStringLiteral("1"));
    store(QStringLiteral("X/br_y"), QStringLiteral("90"));
    saveSettings(*dialog().settings);
    restart(m_scanner);
    FakeScanner mute = fullScanner();
    mute.hideCount();
    get<QDoubleSpinBox>("br_y").setValue(12.0);
    get<QDoubleSpinBox>("length_detection_value").setValue(80.0);
    const int keys = keysOnDisk(QStringLiteral("X"));
    bind(mute);
    ok();
    EXPECT_EQ(keysOnDisk(QStringLiteral("X")), keys);
}

TEST_F(HalfAsked, ATemplateOfOneThatSaysNothingIsStoredWhateverTheVersion)
{
    FakeScanner mute = fullScanner();
    mute.hideCount();
    for (const char* const noted : {"102", "101", ""}) {
        start({QStringLiteral("X")}, QStringLiteral("1"));
        store(version, QString::fromLatin1(noted));
        saveSettings(*dialog().settings);
        restart(mute);
        setBrightness(44);
        ok();
        EXPECT_EQ(onDisk(QStringLiteral("X/brightness")), QStringLiteral("44")) << noted;
    }
}

// The default group holds no inversion: the button leaves what was confirmed.
TEST_F(HalfAsked, TheDefaultsOfOneThatSaysNothingLeaveTheInversion)
{
    bind(m_scanner);
    get<QComboBox>("invert").setCurrentIndex(1);
    ok();
    m_scanner.hideCount();
    restart(m_scanner);
    press(get<QAbstractButton>("default_setting"));
    ok();
    EXPECT_EQ(onDisk(QStringLiteral("ScannerA/invert")), QStringLiteral("1"));
}

TEST_F(HalfAsked, GoingBackToWhatWasOnShowIsStored)
{
    confirm();
    m_scanner.option("br-x").undescribed();
    restart(m_scanner);
    const double at_first = shownWidth();
    ASSERT_LT(at_first, 210.0);
    for (const double millimetres : {50.0, at_first}) {
        get<QDoubleSpinBox>("br_x").setValue(millimetres);
        ok();
        EXPECT_EQ(onDisk(width), QString::number(millimetres));
    }
}

TEST_F(HalfAsked, LongPaperThatCouldNotBeMeasuredKeepsItsLength)
{
    FakeScanner feeder = feederScanner();
    bind(feeder);
    get<QAbstractButton>("long_paper_scan").setChecked(true);
    get<QDoubleSpinBox>("br_y").setValue(1000.0);
    ok();
    ASSERT_EQ(onDisk(QStringLiteral("ScannerA/br_y")), QStringLiteral("1000"));
    const QByteArray good = bytes();
    int failed = 0;
    for (const CallKind kind : {CallKind::Describe, CallKind::Set, CallKind::Get}) {
        for (const int n : measuringCalls(kind, good)) {
            beginAnew();
            const TempConfigDir fresh;
            fresh.write(QStringLiteral("ScannerA.ini"), good);
            FakeScanner failing = feederScanner();
            failing.failNth(kind, n, SANE_STATUS_IO_ERROR);
            bindIn(failing, "ScannerA", fresh.path());
            failing.mend();
            ok();
            EXPECT_TRUE(fresh.read(QStringLiteral("ScannerA.ini")).contains("\nbr_y=1000\n"))
                << static_cast<int>(kind) << ", call " << n;
            ++failed;
        }
    }
    EXPECT_GE(failed, 10);
}
