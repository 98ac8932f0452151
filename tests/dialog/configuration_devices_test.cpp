// One dialog and several devices, one device and several dialogs.
#include "config_manager.h"

#include <array>

using namespace kestrel;
using namespace kestrel::test;

namespace {

const QString office = QStringLiteral("Office");

class Devices : public TemplatesBench
{
protected:
    static StoredList fileOf(const QString& device, const QString& brightness,
                             const StoredList& more = {})
    {
        StoredList values{
            {device + QStringLiteral("config_version/config_version"), QStringLiteral("102")},
            {device + QStringLiteral("/brightness"), brightness},
            {device + QStringLiteral("default/brightness"), QStringLiteral("99")}};
        values.insert(values.end(), more.begin(), more.end());
        return values;
    }

    /// Two devices: ScannerA with two templates, the second confirmed, and ScannerB.
    void prepareBoth(const StoredList& moreOfB = {})
    {
        prepare(fileOf(QStringLiteral("ScannerA"), QStringLiteral("10"),
                       {{list, QStringLiteral("自订;A;B")},
                        {QStringLiteral("A/brightness"), QStringLiteral("11")},
                        {QStringLiteral("B/brightness"), QStringLiteral("12")},
                        {storedIndex, QStringLiteral("2")}}));
        prepare(fileOf(QStringLiteral("ScannerB"), QStringLiteral("20"), moreOfB), "ScannerB");
    }
};

} // namespace

TEST_F(Devices, EveryDeviceHasItsFile)
{
    bind(m_scanner, "ScannerA");
    setBrightness(1);
    ok();
    bind(m_scanner, "ScannerB");
    setBrightness(2);
    ok();
    EXPECT_EQ(onDisk(QStringLiteral("ScannerA/brightness")), QStringLiteral("1"));
    EXPECT_EQ(onDisk(QStringLiteral("ScannerB/brightness"), "ScannerB"), QStringLiteral("2"));
    EXPECT_FALSE(
        groupsOnDisk("ScannerA").join(QLatin1Char(' ')).contains(QStringLiteral("ScannerB")));
    EXPECT_FALSE(
        groupsOnDisk("ScannerB").join(QLatin1Char(' ')).contains(QStringLiteral("ScannerA")));
    bind(m_scanner, "ScannerA");
    EXPECT_EQ(brightness(), 1);
    bind(m_scanner, "ScannerB");
    EXPECT_EQ(brightness(), 2);
}

TEST_F(Devices, AnotherDevicesListReplacesTheFirst)
{
    prepareBoth({{list, QStringLiteral("第一;Office")},
                 {QStringLiteral("Office/brightness"), QStringLiteral("21")}});
    bind(m_scanner, "ScannerA");
    EXPECT_EQ(templates().currentIndex(), 2);
    EXPECT_EQ(brightness(), 12);
    bind(m_scanner, "ScannerB");
    EXPECT_EQ(items(templates()), (QStringList{QStringLiteral("第一"), office}));
    EXPECT_EQ(templates().currentIndex(), 0);
    EXPECT_EQ(brightness(), 20);
    bind(m_scanner, "ScannerA");
    EXPECT_EQ(items(templates()), withWorking({QStringLiteral("A"), QStringLiteral("B")}));
    EXPECT_EQ(templates().currentIndex(), 2);
    EXPECT_EQ(brightness(), 12);
}

TEST_F(Devices, ADeviceWithoutTemplatesShowsTheWorkingEntryAlone)
{
    prepareBoth();
    bind(m_scanner, "ScannerA");
    ASSERT_EQ(templates().count(), 3);
    bind(m_scanner, "ScannerB");
    EXPECT_EQ(items(templates()), QStringList(working));
    EXPECT_EQ(brightness(), 20);
    setBrightness(22);
    ok();
    EXPECT_EQ(onDisk(QStringLiteral("ScannerB/brightness"), "ScannerB"), QStringLiteral("22"));
    EXPECT_EQ(onDisk(QStringLiteral("B/brightness")), QStringLiteral("12"));
    EXPECT_EQ(onDisk(QStringLiteral("ScannerA/brightness")), QStringLiteral("10"));
}

TEST_F(Devices, TheWorkingEntryHasItsOwnNameAgain)
{
    prepareBoth();
    prepare(fileOf(QStringLiteral("ScannerC"), QStringLiteral("30"),
                   {{list, QStringLiteral("第一;A")}}),
            "ScannerC");
    bind(m_scanner, "ScannerC");
    ASSERT_EQ(templates().itemText(0), QStringLiteral("第一"));
    bind(m_scanner, "ScannerB");
    EXPECT_EQ(items(templates()), QStringList(working));
}

TEST_F(Devices, TheManagerWorksOnTheNewFile)
{
    prepareBoth();
    bind(m_scanner, "ScannerA");
    bind(m_scanner, "ScannerB");
    const QByteArray other = bytes("ScannerA");
    openManager([this] {
        EXPECT_EQ(items(managed()), QStringList(working));
        add(office);
    });
    EXPECT_EQ(onDisk(list, "ScannerB"), QStringLiteral("自订;Office"));
    EXPECT_EQ(onDisk(QStringLiteral("Office/brightness"), "ScannerB"), QStringLiteral("20"));
    EXPECT_EQ(bytes("ScannerA"), other);
}

TEST_F(Devices, DefaultsAndLeavingAreTheNewDevices)
{
    prepareBoth({{storedIndex, QStringLiteral("0")}});
    bind(m_scanner, "ScannerA");
    bind(m_scanner, "ScannerB");
    press(get<QAbstractButton>("default_setting"));
    EXPECT_EQ(brightness(), 99);
    cancel();
    EXPECT_EQ(brightness(), 20);
    EXPECT_EQ(templates().currentIndex(), 0);
}

TEST_F(Devices, TheButtonsPickTheNewDevicesTemplates)
{
    prepareBoth({{list, QStringLiteral("自订;button1")},
                 {QStringLiteral("button1/brightness"), QStringLiteral("21")}});
    bind(m_scanner, "ScannerA");
    EXPECT_EQ(setButtonTemplage(dialog().host(), 1), 0);
    bind(m_scanner, "ScannerB");
    EXPECT_EQ(setButtonTemplage(dialog().host(), 1), 1);
    EXPECT_EQ(brightness(), 21);
}

TEST_F(Devices, AStoredConfigurationWithoutACustomResolutionRemovesTheFirstDevicesOne)
{
    prepareBoth({{QStringLiteral("ScannerB/custom_resolution"), QString()}});
    bind(m_scanner, "ScannerA");
    dialog().getCustomResolution(QStringLiteral("custom-250"));
    resolutions().setCurrentIndex(7);
    bind(m_scanner, "ScannerB");
    EXPECT_EQ(resolutions().count(), 7);
}

TEST_F(Devices, ANewDevicesFirstStateIsItsOwnWhereItReportsOne)
{
    prepareBoth();
    bind(m_scanner, "ScannerA");
    FakeScanner other = flatbedScanner();
    other.option("brightness").word(-50);
    bind(other, "ScannerNew");
    EXPECT_EQ(brightness(), -50);
    EXPECT_EQ(onDisk(QStringLiteral("ScannerNewdefault/brightness"), "ScannerNew"),
              QStringLiteral("-50"));
    EXPECT_EQ(items(templates()), QStringList(working));
}

TEST_F(Devices, BindingTheSameDeviceAgainKeepsWhatWasConfirmedOnly)
{
    start({office});
    templates().setCurrentIndex(1);
    setBrightness(31);
    ok();
    templates().setCurrentIndex(0);
    setBrightness(32);
    bind(m_scanner);
    EXPECT_EQ(templates().currentIndex(), 1);
    EXPECT_EQ(brightness(), 31);
    templates().setCurrentIndex(0);
    EXPECT_EQ(brightness(), 50);
}

TEST_F(Devices, TwoDialogsOfOneDeviceSeeWhatTheOtherConfirmed)
{
    start({});
    ok();
    DialogProbe second;
    ScannerIdentity record = identity("ScannerA");
    initKestrelSetUI(second.host(), m_scanner.handle(), &record, folder().path());
    const SettingsHandle left(second.settings);
    setBrightness(13);
    ok();
    press(child<QAbstractButton>(second, "cancel"));
    EXPECT_EQ(child<QAbstractSlider>(second, "brightness_set").value(), 13);
    child<QAbstractSlider>(second, "brightness_set").setValue(14);
    press(child<QAbstractButton>(second, "sure"));
    cancel();
    EXPECT_EQ(brightness(), 14);
    EXPECT_EQ(onDisk(QStringLiteral("ScannerA/brightness")), QStringLiteral("14"));
}

TEST_F(Devices, HandWrittenKeysAndGroupsSurviveEverySave)
{
    folder().write(QStringLiteral("ScannerA.ini"),
                   "loose=1\n[ScannerAconfig_version]\nconfig_version=102\nby=hand\n"
                   "[ScannerA]\nbrightness=5\nnew_key=\"a, b\"\n[Future]\nx\\y=\\x4e2d\n"
                   "[UserTemplates]\nusertemplate=\"\\x81ea\\x8ba2;A\"\nnote=n\n"
                   "[A]\nbrightness=6\nalso=kept\n");
    const StoredList foreign{{QStringLiteral("loose"), QStringLiteral("1")},
                             {QStringLiteral("ScannerAconfig_version/by"), QStringLiteral("hand")},
                             {QStringLiteral("ScannerA/new_key"), QStringLiteral("a, b")},
                             {QStringLiteral("Future/x/y"), QStringLiteral("中")},
                             {QStringLiteral("UserTemplates/note"), QStringLiteral("n")},
                             {QStringLiteral("A/also"), QStringLiteral("kept")}};
    const auto expectForeign = [&](const char* after) {
        for (const auto& [key, text] : foreign) {
            EXPECT_EQ(onDisk(key), text) << key.toStdString() << ' ' << after;
        }
    };
    bind(m_scanner);
    EXPECT_EQ(brightness(), 5);
    expectForeign("binding");
    setBrightness(7);
    ok();
    expectForeign("OK");
    templates().setCurrentIndex(1);
    ok();
    expectForeign("OK on a template");
    openManager([this] { add(office); });
    expectForeign("adding");
    openManager([this] { rename(2, QStringLiteral("B")); });
    expectForeign("renaming");
    openManager([this] { remove(2); });
    expectForeign("removing");
    restart(m_scanner);
    expectForeign("a restart");
    EXPECT_EQ(onDisk(QStringLiteral("ScannerA/brightness")), QStringLiteral("7"));
}

TEST_F(Devices, TheSavePathIsTheHostsBuffer)
{
    struct Row
    {
        const char* given;
        const char* kept;
    };
    for (const Row& row : {Row{"/out", "/out/"}, Row{"/out/", "/out/"}, Row{"/", "/"},
                           Row{"x", "x/"}, Row{"/输出", "/输出/"}, Row{"", ""}}) {
        std::array<char, 32> buffer{};
        buffer.fill('#');
        char* const path = buffer.data() + 1;
        std::copy_n(row.given, qstrlen(row.given) + 1, path);
        dialog().setsavepath(path);
        EXPECT_STREQ(path, row.kept);
        EXPECT_EQ(dialog().save_path, QString::fromUtf8(row.kept));
        // Nothing in front of the text, and nothing behind its new end.
        EXPECT_EQ(buffer[0], '#');
        EXPECT_EQ(buffer[1 + qstrlen(row.kept) + 1], '#') << row.given;
    }
}
