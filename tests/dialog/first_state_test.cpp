// The state that a scanner is found in at its first binding, and when only half of it was said.
#include "config_manager.h"

#include <QAbstractSlider>

using namespace kestrel;
using namespace kestrel::test;

namespace {

class FirstState : public TemplatesBench
{
protected:
    static inline const QString width = QStringLiteral("ScannerA/br_x");
    static inline const QString defaultWidth = QStringLiteral("ScannerAdefault/br_x");
    static inline const QString version = QStringLiteral("ScannerAconfig_version/config_version");
    static inline const QString formsWidth = QStringLiteral("100");
    static inline const QString scannersWidth = QStringLiteral("210");

    /// The walk does not see the width; whoever asks again does.
    FakeScanner& missingOnce()
    {
        m_scanner.option("br-x").undescribed(1);
        return m_scanner;
    }
    void restartWhole() { restart(m_whole); }
    void noteOtherVersion(const char* text)
    {
        store(version, QString::fromLatin1(text));
        saveSettings(*dialog().settings);
    }
    QAbstractSlider& gamma() { return get<QAbstractSlider>("gamma_set"); }

    FakeScanner m_whole = fullScanner();
};

} // namespace

TEST_F(FirstState, SaidInPartsIsMadeGoodByTheNextBinding)
{
    bind(missingOnce());
    EXPECT_EQ(onDisk(width), formsWidth);
    EXPECT_EQ(keysOnDisk(QStringLiteral("ScannerAconfig_version")), 0);
    restartWhole();
    EXPECT_EQ(onDisk(width), scannersWidth);
    EXPECT_EQ(onDisk(defaultWidth), scannersWidth);
    EXPECT_EQ(onDisk(version), QStringLiteral("102"));
}

TEST_F(FirstState, ConfirmedMeanwhileStaysAndTheDefaultsAreMadeGood)
{
    bind(missingOnce());
    setBrightness(33);
    ok();
    EXPECT_EQ(onDisk(version), QStringLiteral("102"));
    restartWhole();
    EXPECT_EQ(onDisk(QStringLiteral("ScannerA/brightness")), QStringLiteral("33"));
    EXPECT_EQ(onDisk(QStringLiteral("ScannerAdefault/brightness")), QStringLiteral("0"));
    EXPECT_EQ(onDisk(defaultWidth), scannersWidth);
    const QByteArray good = bytes();
    restartWhole();
    EXPECT_EQ(bytes(), good) << "once";
}

TEST_F(FirstState, OfAnotherVersionStaysUntilAllIsSaid)
{
    bind(m_scanner);
    get<QComboBox>("source").setCurrentIndex(1);
    ok();
    noteOtherVersion("101");
    restart(missingOnce());
    EXPECT_EQ(onDisk(width), scannersWidth);
    EXPECT_EQ(onDisk(version), QStringLiteral("101"));
    restartWhole();
    EXPECT_EQ(onDisk(version), QStringLiteral("102"));
    EXPECT_EQ(onDisk(QStringLiteral("ScannerA/source")), QStringLiteral("0"))
        << "the scanner's own state";
}

TEST_F(FirstState, OfAnotherVersionIsNoDefaultAfterAConfirmation)
{
    bind(m_scanner);
    store(QStringLiteral("ScannerAdefault/brightness"), QStringLiteral("-77"));
    noteOtherVersion("101");
    restart(missingOnce());
    setBrightness(33);
    ok();
    restartWhole();
    EXPECT_EQ(brightness(), 33);
    press(get<QAbstractButton>("default_setting"));
    EXPECT_EQ(brightness(), 0);
}

TEST_F(FirstState, IsNotWhatWasTriedAndCancelled)
{
    bind(missingOnce());
    gamma().setValue(222);
    cancel();
    bind(m_whole);
    EXPECT_EQ(onDisk(QStringLiteral("ScannerAdefault/gamma")), QStringLiteral("200"));
    EXPECT_EQ(onDisk(QStringLiteral("ScannerA/gamma")), QStringLiteral("200"));
}

TEST_F(FirstState, IsNotWhatWasTriedWhileTheScannerSaidNothing)
{
    m_scanner.hideCount();
    bind(m_scanner);
    gamma().setValue(222);
    cancel();
    bind(m_whole);
    EXPECT_EQ(onDisk(QStringLiteral("ScannerAdefault/gamma")), QStringLiteral("200"));
}

TEST_F(FirstState, IsNotATemplate)
{
    start({QStringLiteral("T")});
    store(QStringLiteral("T/gamma"), QStringLiteral("222"));
    noteOtherVersion("101");
    restart(missingOnce());
    templates().setCurrentIndex(1);
    ok();
    ASSERT_EQ(gamma().value(), 222);
    bind(m_whole);
    EXPECT_EQ(onDisk(QStringLiteral("ScannerAdefault/gamma")), QStringLiteral("200"));
}

// An option that is not described whenever it is asked for is simply not there.
TEST_F(FirstState, OfAScannerThatLeavesOutANumberIsWhole)
{
    m_scanner.option("br-x").undescribed();
    bind(m_scanner);
    EXPECT_EQ(onDisk(version), QStringLiteral("102"));
    noteOtherVersion("101");
    restart(m_scanner);
    EXPECT_EQ(onDisk(version), QStringLiteral("102"));
}

TEST_F(FirstState, OfAScannerWhoseCountCannotBeReadAgainIsNotWhole)
{
    const auto gaps = [this](int answers) {
        beginAnew();
        const TempConfigDir fresh;
        FakeScanner scanner = fullScanner();
        scanner.option("br-x").undescribed();
        if (answers > 0) {
            scanner.failNth(CallKind::Get, answers + 1, SANE_STATUS_IO_ERROR);
        }
        bindIn(scanner, "ScannerA", fresh.path());
        return fresh.read(QStringLiteral("ScannerA.ini")).contains("config_version=102");
    };
    ASSERT_TRUE(gaps(0));
    beginAnew();
    const TempConfigDir fresh;
    FakeScanner whole = fullScanner();
    bindIn(whole, "ScannerA", fresh.path());
    int refused = 0;
    const auto count = static_cast<int>(whole.journal().of(CallKind::Get).size());
    for (int answers = 1; answers < count; ++answers) {
        refused += gaps(answers) ? 0 : 1;
    }
    EXPECT_EQ(refused, 1) << "the count that is read again";
}

TEST_F(FirstState, OfAScannerThatRefusesLongPaperIsWhole)
{
    FakeScanner feeder = feederScanner();
    feeder.failOption(CallKind::Set, "long-paper-scan", SANE_STATUS_INVAL);
    bind(feeder);
    EXPECT_EQ(onDisk(version), QStringLiteral("102"));
    beginAnew();
}

TEST_F(FirstState, OfAnotherProgramsVersionIsNotForTheConfirmationToChange)
{
    bind(m_scanner);
    folder().write(QStringLiteral("ScannerA.ini"),
                   bytes().replace("config_version=102", "config_version=103"));
    for (const int value : {1, 2}) {
        setBrightness(value);
        ok();
        EXPECT_EQ(onDisk(version), QStringLiteral("103"));
    }
}

TEST_F(FirstState, ThatTheFileHasLostIsNotTakenAnewAfterAConfirmation)
{
    const QByteArray defaults = "[ScannerAdefault]\nbrightness=-77\n";
    const QByteArray earlier = "[ScannerAconfig_version]\nconfig_version=101\n";
    // A default group of an earlier version is not taken for the scanner's.
    for (const auto& [left, dark] :
         {std::pair(QByteArray(), 0), std::pair(defaults, -77), std::pair(earlier + defaults, 0)}) {
        for (const int confirmations : {1, 2}) {
            beginAnew();
            bind(m_scanner);
            folder().write(QStringLiteral("ScannerA.ini"), left);
            for (int value = 1; value <= confirmations; ++value) {
                setBrightness(30 + value);
                ok();
                EXPECT_EQ(onDisk(version), QStringLiteral("102")) << left.data();
            }
            restartWhole();
            EXPECT_EQ(brightness(), 30 + confirmations) << left.data();
            press(get<QAbstractButton>("default_setting"));
            EXPECT_EQ(brightness(), dark) << left.data();
        }
    }
}

TEST_F(FirstState, InDoubtIsMadeGoodInTheSameProcessWithoutWhatWasTried)
{
    bind(m_scanner);
    folder().write(QStringLiteral("ScannerA.ini"), {});
    gamma().setValue(222);
    ok();
    bind(m_whole);
    EXPECT_EQ(onDisk(QStringLiteral("ScannerAdefault/gamma")), QStringLiteral("200"));
    EXPECT_EQ(onDisk(QStringLiteral("ScannerA/gamma")), QStringLiteral("222"));
}

TEST_F(FirstState, OfAScannerWhoseOptionsGrowInNumberIsNotWhole)
{
    const auto all = static_cast<SANE_Word>(m_scanner.names().size() + 1);
    m_scanner.option("mode").undescribed();
    m_scanner.reportCount(all - 1);
    int counts = 0;
    m_scanner.before(CallKind::Get, [all, &counts](FakeScanner& scanner) {
        if (++counts == 2) {
            scanner.reportCount(all);
        }
    });
    bind(m_scanner);
    EXPECT_GE(counts, 2);
    EXPECT_EQ(keysOnDisk(QStringLiteral("ScannerAconfig_version")), 0);
    beginAnew();
}

TEST_F(FirstState, IsNotWholeWhileItsGapsWander)
{
    m_scanner.option("br-x").undescribed(1);
    m_scanner.option("brightness").undescribed(2);
    bind(m_scanner);
    EXPECT_EQ(keysOnDisk(QStringLiteral("ScannerAconfig_version")), 0);
}
