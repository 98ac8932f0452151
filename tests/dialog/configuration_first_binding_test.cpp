// What the first binding of a device keeps of it.
#include "config_bench.h"
#include "config_first_file.h"

#include <QFileInfo>

using namespace kestrel;
using namespace kestrel::test;

namespace {

class FirstBinding : public SettingsBench
{
};

/// A scanner that reports something else than the form shows, wherever it can.
FakeScanner unusualScanner()
{
    FakeScanner scanner = fullScanner();
    scanner.option("brightness").word(33);
    scanner.option("contrast").word(-7);
    scanner.option("binarization").string("Fixed Processing");
    scanner.option("binarization-value").word(77);
    scanner.option("color-dropout").string("Green");
    scanner.option("adv-color-dropout").word(1);
    scanner.option("prefeed").word(1);
    scanner.option("ultrasonic").string("Disable");
    scanner.option("rotate").string("180");
    scanner.option("blank-page-removal").word(1);
    scanner.option("blank-page-threshold").word(61);
    scanner.option("punch-hole-removal").word(1);
    scanner.option("cachemode").string("Memory Size");
    scanner.option("cachemode-use-default").word(0);
    scanner.option("cachemode-value").word(200);
    scanner.option("powersaving").string("Disable");
    scanner.option("powersaving-time").word(45);
    scanner.option("poweroff").string("Disable");
    return scanner;
}

} // namespace

TEST_F(FirstBinding, MakesTheWholeFileAtOnce)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    EXPECT_EQ(bytes(), firstFile());
    EXPECT_EQ(firstWorkingGroup().size(), 63);
    EXPECT_EQ(firstDefaultGroup().size(), 63);
}

TEST_F(FirstBinding, AFreshFolderGetsFourGroups)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    EXPECT_EQ(groupsOnDisk(),
              (QStringList{QStringLiteral("ScannerA"), QStringLiteral("ScannerAconfig_version"),
                           QStringLiteral("ScannerAdefault"), QStringLiteral("UserTemplates")}));
    EXPECT_EQ(QDir(QString::fromUtf8(folder().path())).entryList(QDir::Files | QDir::Hidden),
              QStringList{QStringLiteral("ScannerA.ini")});
}

TEST_F(FirstBinding, BindingAgainChangesNothing)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    const QStringList before = state();
    bind(scanner);
    EXPECT_EQ(bytes(), firstFile());
    expectState(before);
    restart(scanner);
    EXPECT_EQ(bytes(), firstFile());
    expectState(before);
}

TEST_F(FirstBinding, TheDefaultsAreWhatTheDeviceReports)
{
    FakeScanner scanner = unusualScanner();
    bind(scanner);
    const StoredList expected{{QStringLiteral("brightness"), QStringLiteral("33")},
                              {QStringLiteral("contrast"), QStringLiteral("-7")},
                              {QStringLiteral("binarization"), QStringLiteral("1")},
                              {QStringLiteral("binarization_value"), QStringLiteral("77")},
                              {QStringLiteral("color_dropout"), QStringLiteral("2")},
                              {QStringLiteral("adv_color_dropout"), QStringLiteral("1")},
                              {QStringLiteral("prefeed"), QStringLiteral("1")},
                              {QStringLiteral("ultrasonic"), QStringLiteral("Disable")},
                              {QStringLiteral("rotate"), QStringLiteral("2")},
                              {QStringLiteral("remove_blankpage"), QStringLiteral("1")},
                              {QStringLiteral("blankpage_threshold"), QStringLiteral("61")},
                              {QStringLiteral("punch_hole_removal"), QStringLiteral("1")},
                              {QStringLiteral("cachemode"), QStringLiteral("2")},
                              {QStringLiteral("cachemode_use_default"), QStringLiteral("0")},
                              {QStringLiteral("cachemode_value"), QStringLiteral("200")},
                              {QStringLiteral("powersaving"), QStringLiteral("Disable")},
                              {QStringLiteral("poweroff"), QStringLiteral("Disable")}};
    for (const QString& group : {QStringLiteral("ScannerA/"), QStringLiteral("ScannerAdefault/")}) {
        for (const auto& [key, text] : expected) {
            EXPECT_EQ(onDisk(group + key), text) << (group + key).toStdString();
        }
    }
    EXPECT_EQ(onDisk(QStringLiteral("ScannerA/powersaving_time")), QStringLiteral("45"));
}

TEST_F(FirstBinding, TheDefaultGroupHoldsTheMakersPowerTimes)
{
    FakeScanner scanner = unusualScanner();
    bind(scanner);
    EXPECT_EQ(onDisk(QStringLiteral("ScannerAdefault/powersaving_time")), QStringLiteral("15"));
    EXPECT_EQ(onDisk(QStringLiteral("ScannerAdefault/poweroff_time")), QStringLiteral("240"));
}

TEST_F(FirstBinding, GrayValueIsInTheDefaultGroupOnlyAndInvertEverywhereElse)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    dialog().writeConfig(QStringLiteral("T"));
    const QString none = QStringLiteral("(none)");
    EXPECT_EQ(onDisk(QStringLiteral("ScannerAdefault/gray_value")), QStringLiteral("1"));
    EXPECT_EQ(onDisk(QStringLiteral("ScannerAdefault/invert")), none);
    for (const QString& group : {QStringLiteral("ScannerA"), QStringLiteral("T")}) {
        EXPECT_EQ(onDisk(group + QStringLiteral("/gray_value")), none);
        EXPECT_EQ(onDisk(group + QStringLiteral("/invert")), QStringLiteral("0"));
    }
}

TEST_F(FirstBinding, TheDeviceIsNotAskedToKeepItsStateASecondTime)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    FakeScanner changed = unusualScanner();
    restart(changed);
    EXPECT_EQ(bytes(), firstFile());
    EXPECT_EQ(brightness(), 0);
}

TEST_F(FirstBinding, TheLoadedStateIsTheDevicesOwn)
{
    FakeScanner scanner = unusualScanner();
    bind(scanner);
    EXPECT_EQ(brightness(), 33);
    EXPECT_EQ(get<QAbstractSlider>("binarization_value").value(), 77);
    EXPECT_EQ(get<QAbstractSlider>("powersaving_time").value(), 45);
    EXPECT_FALSE(checked("poweroff"));
}

TEST_F(FirstBinding, ANameWithASlashLeadsIntoASubfolder)
{
    FakeScanner scanner = fullScanner();
    bind(scanner, "sub/ScannerA");
    setBrightness(12);
    press(get<QAbstractButton>("sure"));
    EXPECT_TRUE(QFileInfo::exists(folder().file(QStringLiteral("sub/ScannerA.ini"))));
    EXPECT_EQ(onDisk(QStringLiteral("sub/ScannerA/brightness"), "sub/ScannerA"),
              QStringLiteral("12"));
    EXPECT_EQ(onDisk(QStringLiteral("sub/ScannerAconfig_version/config_version"), "sub/ScannerA"),
              QStringLiteral("102"));
    setBrightness(-40);
    bind(scanner, "sub/ScannerA");
    EXPECT_EQ(brightness(), 12);
}

TEST_F(FirstBinding, ADeviceCalledGeneralIsLikeAnyOther)
{
    FakeScanner scanner = fullScanner();
    for (const char* const name : {"General", "general", "GENERAL"}) {
        bind(scanner, name);
        setBrightness(12);
        press(get<QAbstractButton>("sure"));
        restart(scanner, name);
        EXPECT_EQ(brightness(), 12) << name;
    }
}
