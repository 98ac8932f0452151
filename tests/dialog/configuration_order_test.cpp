// The order in which keys are written and read. The toolkit sorts them in the file, so its entry
// points are watched: this program's own definitions come before the library's.
#include "config_bench.h"

#include <QRegularExpression>

#include <dlfcn.h>

using namespace kestrel;
using namespace kestrel::test;

namespace {

bool watching = false;
QStringList written;
QStringList keysRead;

template <typename Function>
Function toolkits(const char* symbol)
{
    void* const address = dlsym(RTLD_NEXT, symbol);
    EXPECT_NE(address, nullptr) << symbol;
    return reinterpret_cast<Function>(address);
}

QString place(const QSettings& settings, const QString& key)
{
    return settings.group() + QLatin1Char('/') + key;
}

} // namespace

void QSettings::setValue(const QString& key, const QVariant& value)
{
    static const auto original = toolkits<void (*)(QSettings*, const QString&, const QVariant&)>(
        "_ZN9QSettings8setValueERK7QStringRK8QVariant");
    if (watching) {
        written << place(*this, key) + QLatin1Char('=') + value.toString() + QLatin1Char(' ') +
                       QLatin1String(value.typeName());
    }
    original(this, key, value);
}

QVariant QSettings::value(const QString& key, const QVariant& defaultValue) const
{
    using Value = QVariant (*)(const QSettings*, const QString&, const QVariant&);
    static const auto original = toolkits<Value>("_ZNK9QSettings5valueERK7QStringRK8QVariant");
    if (watching) {
        keysRead << place(*this, key);
    }
    return original(this, key, defaultValue);
}

namespace {

class ConfigOrder : public SettingsBench
{
protected:
    ConfigOrder() : m_scanner(fullScanner()) {}
    ~ConfigOrder() override { watching = false; }
    Q_DISABLE_COPY_MOVE(ConfigOrder)

    static void watch()
    {
        written.clear();
        keysRead.clear();
        watching = true;
    }

    /// Keys of a kind of group in the order in which the settings are listed.
    static QStringList keys(const QString& group, bool defaults)
    {
        QStringList expected;
        for (const Setting& setting : settingsTable()) {
            if (defaults ? setting.inDefaultGroup() : setting.inWorkingGroup()) {
                expected << group + QLatin1Char('/') + QLatin1String(setting.key);
            }
        }
        return expected;
    }

    static QStringList keysOf(const QStringList& writes)
    {
        QStringList only;
        for (const QString& write : writes) {
            only << write.section(QLatin1Char('='), 0, 0);
        }
        return only;
    }

    /// Only what belongs to a group.
    static QStringList of(const QString& group, const QStringList& places)
    {
        return places.filter(QRegularExpression(QLatin1Char('^') + group + QLatin1Char('/')));
    }

    FakeScanner m_scanner;
};

} // namespace

TEST_F(ConfigOrder, AFirstBindingWritesVersionThenDefaultsThenWorkingGroupThenPresets)
{
    watch();
    bind(m_scanner);
    watching = false;
    const QStringList expected =
        QStringList(QStringLiteral("ScannerAconfig_version/config_version")) +
        keys(QStringLiteral("ScannerAdefault"), true) + keys(QStringLiteral("ScannerA"), false) +
        QStringList(QStringLiteral("UserTemplates/preset_template_num"));
    EXPECT_EQ(keysOf(written), expected);
}

TEST_F(ConfigOrder, EveryValueIsATextButTheIndexOfTheTemplate)
{
    watch();
    bind(m_scanner);
    press(get<QAbstractButton>("sure"));
    watching = false;
    const QString index = QStringLiteral("UserTemplates/usertemplate_index=0 int");
    EXPECT_TRUE(written.removeOne(index));
    for (const QString& write : written) {
        EXPECT_TRUE(write.endsWith(QStringLiteral(" QString"))) << write.toStdString();
    }
    EXPECT_GE(written.size(), 2 + 3 * 63);
}

TEST_F(ConfigOrder, OkWritesTheGroupAndThenTheIndex)
{
    bind(m_scanner);
    watch();
    press(get<QAbstractButton>("sure"));
    watching = false;
    EXPECT_EQ(keysOf(written), keys(QStringLiteral("ScannerA"), false) +
                                   QStringList(QStringLiteral("UserTemplates/usertemplate_index")));
}

TEST_F(ConfigOrder, ATemplateIsWrittenInTheSameOrder)
{
    bind(m_scanner);
    watch();
    dialog().addUserTemplateConfig(QStringLiteral("Office"));
    watching = false;
    EXPECT_EQ(keysOf(written), keys(QStringLiteral("Office"), false));
}

TEST_F(ConfigOrder, ReadingDiffersFromWritingInThreePairs)
{
    bind(m_scanner);
    watch();
    dialog().loadConfig(QStringLiteral("Office"));
    watching = false;
    QStringList expected = keys(QStringLiteral("Office"), false);
    for (const auto& [first, second] : {std::pair("custom_resolution", "resolution"),
                                        std::pair("acd_sensitivity_front", "acd_mode_front"),
                                        std::pair("acd_sensitivity_back", "acd_mode_back")}) {
        const int at = expected.indexOf(QStringLiteral("Office/") + QLatin1String(second));
        ASSERT_EQ(expected.at(at + 1), QStringLiteral("Office/") + QLatin1String(first));
        expected.swapItemsAt(at, at + 1);
    }
    EXPECT_EQ(keysRead, expected);
    EXPECT_TRUE(written.isEmpty());
}

TEST_F(ConfigOrder, GrayValueIsNeverRead)
{
    watch();
    bind(m_scanner);
    press(get<QAbstractButton>("default_setting"));
    press(get<QAbstractButton>("sure"));
    press(get<QAbstractButton>("cancel"));
    watching = false;
    EXPECT_FALSE(keysRead.contains(QStringLiteral("ScannerAdefault/gray_value")));
    EXPECT_EQ(of(QStringLiteral("ScannerAdefault"), keysRead).size(), 63);
}

TEST_F(ConfigOrder, AStartWithoutTemplatesLoadsTheWorkingGroupOnceAndWritesNothing)
{
    bind(m_scanner);
    restart(m_scanner);
    watch();
    bind(m_scanner);
    watching = false;
    EXPECT_EQ(of(QStringLiteral("ScannerA"), keysRead).size(), 63);
    EXPECT_TRUE(written.isEmpty()) << written.join(QLatin1Char('\n')).toStdString();
}
