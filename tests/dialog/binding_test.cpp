// What a binding takes from the host and in which order it works.
#include "dialog_fixture.h"
#include "support/messages.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QPointer>
#include <QSettings>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>

using namespace kestrel::test;

namespace {

class Binding : public DialogTest
{
protected:
    void bindRecord(FakeScanner& scanner, ScannerIdentity& record)
    {
        EXPECT_TRUE(dialog().set_device(scanner.handle(), &record, dir().path()));
        keepSettings();
    }
};

} // namespace

TEST_F(Binding, TheRecordIsTakenOver)
{
    FakeScanner scanner = fullScanner();
    ScannerIdentity record = identity("ScannerA", "avision_adv", 0x0638, 0xc141);
    EXPECT_TRUE(dialog().set_device(scanner.handle(), &record, dir().path()));
    keepSettings();
    EXPECT_EQ(dialog().device_name, QStringLiteral("ScannerA"));
    EXPECT_EQ(dialog().backend_name, QStringLiteral("avision_adv"));
    EXPECT_EQ(dialog().vid, 0x0638U);
    EXPECT_EQ(dialog().pid, 0xc141U);
    EXPECT_EQ(dialog().sane_handle, scanner.handle());
}

TEST_F(Binding, TheRecordIsNotNeededAfterwards)
{
    FakeScanner scanner = fullScanner();
    {
        ScannerIdentity record = identity("ScannerA");
        dialog().set_device(scanner.handle(), &record, dir().path());
        std::memset(&record, 'x', sizeof record);
    }
    EXPECT_EQ(dialog().device_name, QStringLiteral("ScannerA"));
    EXPECT_EQ(dialog().backend_name, QStringLiteral("kestrel_adv"));
}

TEST_F(Binding, NamesAreUtf8)
{
    FakeScanner scanner = fullScanner();
    bind(scanner, "扫描仪甲");
    EXPECT_EQ(dialog().device_name, QStringLiteral("扫描仪甲"));
    EXPECT_TRUE(dialog().config_path.endsWith(QStringLiteral("/扫描仪甲.ini")));
}

TEST_F(Binding, TheSettingsFileIsNamedAfterTheDevice)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    EXPECT_EQ(dialog().config_path, dir().file(QStringLiteral("ScannerA.ini")));
    ASSERT_NE(dialog().settings, nullptr);
    EXPECT_EQ(dialog().settings->fileName(), dialog().config_path);
    EXPECT_EQ(dialog().settings->format(), QSettings::IniFormat);
    EXPECT_EQ(dialog().settings->parent(), nullptr);
}

TEST_F(Binding, ASlashInTheNameLeadsIntoASubfolder)
{
    FakeScanner scanner = fullScanner();
    bind(scanner, "sub/ScannerA");
    EXPECT_EQ(dialog().config_path, dir().file(QStringLiteral("sub/ScannerA.ini")));
}

TEST_F(Binding, ASlashAtTheEndOfTheFolderIsKept)
{
    FakeScanner scanner = fullScanner();
    ScannerIdentity record = identity();
    const QByteArray folder = QByteArray(dir().path()) + '/';
    initKestrelSetUI(dialog().host(), scanner.handle(), &record, folder.constData());
    EXPECT_EQ(dialog().config_path, QString::fromUtf8(folder) + QStringLiteral("/ScannerA.ini"));
}

TEST_F(Binding, PlaceholdersInNamesStayAsTheyAre)
{
    FakeScanner scanner = fullScanner();
    bind(scanner, "a%1b%2");
    EXPECT_EQ(dialog().config_path, dir().file(QStringLiteral("a%1b%2.ini")));
}

TEST_F(Binding, TheVendorLibraryIsNamedAfterTheDevice)
{
    FakeScanner scanner = fullScanner();
    bind(scanner, "Q1410A");
    EXPECT_EQ(dialog().vendor_lib_path, QStringLiteral("/usr/local/lib64/sane/Q1410A_x64.so.1.0"));
}

TEST_F(Binding, WithoutAVendorLibraryThereAreNoVendorFunctions)
{
    FakeScanner scanner = fullScanner();
    bind(scanner, "NoSuchScanner");
    EXPECT_FALSE(dialog().vendor_driver.hasDriver());
    EXPECT_FALSE(dialog().vendor_driver.hasLegacyReader());
}

TEST_F(Binding, TheBackendIsLoggedBeforeTheScannerIsAsked)
{
    FakeScanner scanner = fullScanner();
    DebugLines debug;
    std::size_t linesAtFirstCall = 0;
    bool asked = false;
    scanner.before(CallKind::Describe, [&](FakeScanner&) {
        if (!asked) {
            asked = true;
            linesAtFirstCall = debug.lines().size();
        }
    });
    bind(scanner);
    ASSERT_TRUE(asked);
    ASSERT_EQ(linesAtFirstCall, 1U);
    const DebugLine line = debug.lines()[0];
    EXPECT_TRUE(line.text.contains(QStringLiteral("kestrel_adv"))) << line.text.toStdString();
    const QByteArray baseName = line.file.mid(line.file.lastIndexOf('/') + 1);
    EXPECT_TRUE(baseName.startsWith("kestrelsetting")) << line.file.constData();
    EXPECT_TRUE(
        line.function.contains("KestrelSettingUI::lockFunctionByVid(unsigned int, const char*)"))
        << line.function.constData();
}

TEST_F(Binding, ABackendOfAnotherNameHidesLongPaper)
{
    FakeScanner scanner = fullScanner();
    bind(scanner, "ScannerA", "avision_adv");
    EXPECT_TRUE(widget("long_paper_scan").isHidden());
}

TEST_F(Binding, TheOwnBackendInAnyLetterCaseKeepsLongPaper)
{
    for (const char* backend : {"kestrel_adv", "KESTREL_ADV", "Kestrel_Adv"}) {
        FakeScanner scanner = fullScanner();
        bind(scanner, "ScannerA", backend);
        EXPECT_FALSE(widget("long_paper_scan").isHidden()) << backend;
    }
}

TEST_F(Binding, ALongerBackendNameIsAnotherOne)
{
    FakeScanner scanner = fullScanner();
    bind(scanner, "ScannerA", "kestrel_adv2");
    EXPECT_TRUE(widget("long_paper_scan").isHidden());
}

TEST_F(Binding, PowerSettingsAreSentOnceAtTheEnd)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    const Strings sets = scanner.journal().sets();
    ASSERT_GE(sets.size(), 4U);
    EXPECT_EQ(Strings(sets.end() - 4, sets.end()),
              (Strings{"powersaving=Enable", "powersaving-time=15", "poweroff=Enable",
                       "poweroff-time=120"}));
    for (const char* name : {"powersaving", "powersaving-time", "poweroff", "poweroff-time"}) {
        EXPECT_EQ(scanner.journal().setsOf(name).size(), 1U) << name;
    }
}

TEST_F(Binding, PowerTimesAreSentForSwitchesThatAreOn)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    scanner.clearJournal();
    button("powersaving").setChecked(false);
    dialog().setPowerManager();
    EXPECT_EQ(scanner.journal().sets(),
              (Strings{"powersaving=Disable", "poweroff=Enable", "poweroff-time=120"}));
    scanner.clearJournal();
    button("poweroff").setChecked(false);
    dialog().setPowerManager();
    EXPECT_EQ(scanner.journal().sets(), (Strings{"powersaving=Disable", "poweroff=Disable"}));
}

TEST_F(Binding, BindingAgainOpensAnotherSettingsObjectAndKeepsTheFirst)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    const QPointer<QSettings> first(dialog().settings);
    bind(scanner);
    EXPECT_NE(dialog().settings, first.data());
    EXPECT_FALSE(first.isNull());
}

TEST_F(Binding, BindingAgainReadsEveryOptionAnew)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    const int gets = scanner.journal().count(CallKind::Get);
    scanner.clearJournal();
    bind(scanner);
    EXPECT_EQ(scanner.journal().count(CallKind::Get), gets);
    EXPECT_GT(gets, 30);
}

TEST_F(Binding, BindingAnotherScannerStartsAfresh)
{
    FakeScanner first = fullScanner();
    bind(first, "First");
    FakeScanner second = flatbedScanner();
    second.remove("serial-number").remove("device-info").remove("padscan-count");
    second.remove("roller-count").remove("long-paper-scan");
    bind(second, "Second");
    EXPECT_EQ(itemsOf("source"), (QStringList{QStringLiteral("平板")}));
    EXPECT_EQ(dialog().device_kind, 0);
    EXPECT_EQ(dialog().has_both_paths, 0);
    EXPECT_TRUE(dialog().serial_text.isEmpty());
    EXPECT_TRUE(dialog().counter_text.isEmpty());
    EXPECT_EQ(dialog().counters.separation_roller_count, 0U);
    EXPECT_EQ(dialog().counters.feed_roller_count, 0U);
    EXPECT_EQ(dialog().counters.flatbed_scan_count, 0U);
    EXPECT_FALSE(dialog().long_paper_available);
    EXPECT_EQ(dialog().device_name, QStringLiteral("Second"));
    EXPECT_EQ(dialog().sane_handle, second.handle());
}

TEST_F(Binding, PaperListsDoNotGrowWithEveryBinding)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    const QStringList papers = itemsOf("scanrange_setting");
    bind(scanner);
    EXPECT_EQ(itemsOf("scanrange_setting"), papers);
    EXPECT_EQ(itemsOf("preview_scanrange"), papers);
    EXPECT_EQ(itemsOf("source").size(), 3);
}

TEST_F(Binding, TheMultiCropFlagOutlivesTheBinding)
{
    FakeScanner first = fullScanner();
    bind(first, "First");
    EXPECT_TRUE(dialog().flatbed_multi_crop);
    FakeScanner second = feederScanner();
    second.remove("flatbed-multi-crop");
    bind(second, "Second");
    EXPECT_TRUE(dialog().flatbed_multi_crop);
}

TEST_F(Binding, AFullNameFieldWithoutTerminatorIsReadToItsEnd)
{
    FakeScanner scanner = fullScanner();
    ScannerIdentity record = identity();
    std::memset(record.name, 'n', sizeof record.name);
    std::strcpy(record.backend, "kestrel_adv");
    bindRecord(scanner, record);
    EXPECT_EQ(dialog().device_name, QString(128, QLatin1Char('n')));
    EXPECT_EQ(dialog().backend_name, QStringLiteral("kestrel_adv"));
}

TEST_F(Binding, AFullBackendFieldWithoutTerminatorIsReadToItsEnd)
{
    FakeScanner scanner = fullScanner();
    ScannerIdentity record = identity();
    std::memset(record.backend, 'b', sizeof record.backend);
    bindRecord(scanner, record);
    EXPECT_EQ(dialog().backend_name, QString(128, QLatin1Char('b')));
}

TEST_F(Binding, ARecordThatEndsWithItsBackendNameIsReadNoFurther)
{
    FakeScanner scanner = fullScanner();
    const ScannerIdentity whole = identity("ScannerA", "kestrel_adv");
    // Exactly as long as its last text: reading on would leave the block.
    std::vector<char> record(offsetof(ScannerIdentity, backend) + sizeof "kestrel_adv");
    std::memcpy(record.data(), &whole, record.size());
    EXPECT_TRUE(dialog().set_device(scanner.handle(), record.data(), dir().path()));
    keepSettings();
    EXPECT_EQ(dialog().device_name, QStringLiteral("ScannerA"));
    EXPECT_EQ(dialog().backend_name, QStringLiteral("kestrel_adv"));
}

TEST_F(Binding, EmptyAndMalformedNamesDoNoHarm)
{
    FakeScanner scanner = fullScanner();
    ScannerIdentity record = identity("", "");
    bindRecord(scanner, record);
    EXPECT_TRUE(dialog().device_name.isEmpty());
    EXPECT_EQ(itemsOf("source").size(), 3);
    record = identity("\xff\xfe\x80", "\xc3(");
    bindRecord(scanner, record);
    EXPECT_EQ(itemsOf("source").size(), 3);
}

TEST_F(Binding, ANullRecordOrFolderStillBindsTheScanner)
{
    FakeScanner scanner = fullScanner();
    ScannerIdentity record = identity();
    EXPECT_TRUE(dialog().set_device(scanner.handle(), nullptr, dir().path()));
    keepSettings();
    EXPECT_EQ(itemsOf("source").size(), 3);
    EXPECT_TRUE(dialog().set_device(scanner.handle(), &record, nullptr));
    keepSettings();
    EXPECT_EQ(itemsOf("source").size(), 3);
    EXPECT_EQ(dialog().sane_handle, scanner.handle());
}
