// The version of the settings file, and what a start takes from an older one.
#include "config_bench.h"
#include "config_first_file.h"

using namespace kestrel;
using namespace kestrel::test;

namespace {

class ConfigVersion : public SettingsBench
{
protected:
    const QString version = QStringLiteral("ScannerAconfig_version/config_version");
    const QString working = QStringLiteral("ScannerA/brightness");
    const QString defaults = QStringLiteral("ScannerAdefault/brightness");

    /// A file of this version, with brightness 21 wherever it has one.
    StoredList fileOf(const QString& text)
    {
        return {{version, text},
                {working, QStringLiteral("21")},
                {defaults, QStringLiteral("21")},
                {QStringLiteral("Office/brightness"), QStringLiteral("22")},
                {QStringLiteral("UserTemplates/preset_template_num"), QStringLiteral("1")},
                {QStringLiteral("UserTemplates/usertemplate"), QStringLiteral("自订;Office")}};
    }
};

} // namespace

TEST_F(ConfigVersion, TheCurrentVersionIsLeftAlone)
{
    FakeScanner scanner = fullScanner();
    // Numbers are read as the toolkit reads them: zeros, a sign and spaces in front change nothing.
    for (const char* const text : {"102", "0102", "+102", " 102", "102 "}) {
        prepare(fileOf(QString::fromUtf8(text)));
        const QByteArray before = bytes();
        restart(scanner);
        EXPECT_EQ(bytes(), before) << '"' << text << '"';
        EXPECT_EQ(brightness(), 21) << '"' << text << '"';
    }
}

TEST_F(ConfigVersion, AnyOtherVersionIsRewrittenFromTheDevice)
{
    FakeScanner scanner = fullScanner();
    for (const char* const text : {"101", "103", "", "102x", "x102", "102.0", "0x66", "-102",
                                   "1 02", "1020", "4294967398", "一百零二"}) {
        prepare(fileOf(QString::fromUtf8(text)));
        restart(scanner);
        EXPECT_EQ(onDisk(version), QStringLiteral("102")) << '"' << text << '"';
        EXPECT_EQ(onDisk(working), QStringLiteral("0")) << '"' << text << '"';
        EXPECT_EQ(onDisk(defaults), QStringLiteral("0")) << '"' << text << '"';
        EXPECT_EQ(brightness(), 0) << '"' << text << '"';
    }
}

TEST_F(ConfigVersion, AMissingVersionIsAnotherOne)
{
    FakeScanner scanner = fullScanner();
    StoredList values = fileOf(QString());
    values.erase(values.begin());
    prepare(values);
    bind(scanner);
    EXPECT_EQ(onDisk(version), QStringLiteral("102"));
    EXPECT_EQ(onDisk(working), QStringLiteral("0"));
}

TEST_F(ConfigVersion, AnotherDevicesVersionDoesNotCount)
{
    FakeScanner scanner = fullScanner();
    prepare({{QStringLiteral("ScannerBconfig_version/config_version"), QStringLiteral("102")},
             {working, QStringLiteral("21")}});
    bind(scanner);
    EXPECT_EQ(onDisk(working), QStringLiteral("0"));
}

TEST_F(ConfigVersion, TemplatesAndTheirListSurviveARewrite)
{
    FakeScanner scanner = fullScanner();
    StoredList values = fileOf(QStringLiteral("101"));
    values.emplace_back(QStringLiteral("UserTemplates/usertemplate_index"), QStringLiteral("1"));
    prepare(values);
    bind(scanner);
    EXPECT_EQ(onDisk(QStringLiteral("Office/brightness")), QStringLiteral("22"));
    EXPECT_EQ(onDisk(QStringLiteral("UserTemplates/usertemplate")), QStringLiteral("自订;Office"));
    EXPECT_EQ(onDisk(QStringLiteral("UserTemplates/usertemplate_index")), QStringLiteral("1"));
    // The template was confirmed, so it is what the dialog opens with.
    EXPECT_EQ(templates().currentIndex(), 1);
    EXPECT_EQ(brightness(), 22);
}

TEST_F(ConfigVersion, ARewriteDeletesNoKey)
{
    FakeScanner scanner = fullScanner();
    StoredList values = fileOf(QStringLiteral("101"));
    const StoredList foreign{
        {QStringLiteral("ScannerA/of_a_later_version"), QStringLiteral("keep, me")},
        {QStringLiteral("ScannerAdefault/invert"), QStringLiteral("1")},
        {QStringLiteral("ScannerAconfig_version/note"), QStringLiteral("备注")},
        {QStringLiteral("Elsewhere/a/b"), QStringLiteral("c")},
        {QStringLiteral("loose"), QStringLiteral("key")}};
    values.insert(values.end(), foreign.begin(), foreign.end());
    prepare(values);
    bind(scanner);
    for (const auto& [key, text] : foreign) {
        EXPECT_EQ(onDisk(key), text) << key.toStdString();
    }
}

TEST_F(ConfigVersion, ARewriteOfAnEmptyFileMakesTheWholeFile)
{
    FakeScanner scanner = fullScanner();
    folder().write(QStringLiteral("ScannerA.ini"), QByteArray());
    bind(scanner);
    EXPECT_EQ(bytes(), firstFile());
}

TEST_F(ConfigVersion, AMissingOrEmptyPresetNumberBecomesOne)
{
    FakeScanner scanner = fullScanner();
    const QString key = QStringLiteral("UserTemplates/preset_template_num");
    for (const auto& [text, expected] :
         {std::pair("", "1"), std::pair("1", "1"), std::pair("3", "3"), std::pair("x", "x")}) {
        prepare({{version, QStringLiteral("102")}, {key, QString::fromUtf8(text)}});
        restart(scanner);
        EXPECT_EQ(onDisk(key), QString::fromUtf8(expected)) << '"' << text << '"';
    }
    prepare({{version, QStringLiteral("102")}});
    restart(scanner);
    EXPECT_EQ(onDisk(key), QStringLiteral("1"));
}

TEST_F(ConfigVersion, ACurrentFileWithoutAWorkingGroupLeavesTheDevicesState)
{
    FakeScanner scanner = fullScanner();
    scanner.option("brightness").word(33);
    prepare({{version, QStringLiteral("102")}});
    bind(scanner);
    EXPECT_EQ(brightness(), 33);
    EXPECT_EQ(onDisk(working), QStringLiteral("(none)"));
    press(get<QAbstractButton>("default_setting"));
    EXPECT_EQ(brightness(), 33);
}
