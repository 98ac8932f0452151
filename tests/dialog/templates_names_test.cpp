// Templates of every name and in every number, from the manager through a restart.
#include "config_manager.h"

#include <random>

using namespace kestrel;
using namespace kestrel::test;

namespace {

class TemplateNames : public TemplatesBench
{
protected:
    /// Adds a template for each name in the manager, each of its own brightness, and checks all of
    /// them after a restart.
    void expectToSurvive(const QStringList& names)
    {
        start({});
        int value = -100;
        for (const QString& name : names) {
            setBrightness(++value);
            openManager([this, &name] { add(name); });
        }
        restart(m_scanner);
        ASSERT_EQ(items(templates()), withWorking(names));
        value = -100;
        for (int index = 1; index <= names.size(); ++index) {
            templates().setCurrentIndex(index);
            EXPECT_EQ(brightness(), ++value) << names.at(index - 1).toStdString();
        }
        templates().setCurrentIndex(0);
        EXPECT_EQ(brightness(), 50);
    }
};

} // namespace

TEST_F(TemplateNames, GeneralInEveryLetterCase)
{
    expectToSurvive({QStringLiteral("General"), QStringLiteral("general"),
                     QStringLiteral("GENERAL"), QStringLiteral("gEnErAl")});
}

TEST_F(TemplateNames, GeneralIsConfirmedRenamedAndRemovedLikeAnyOther)
{
    for (const char* const name : {"General", "general", "GENERAL"}) {
        const QString general = QString::fromUtf8(name);
        start({general});
        templates().setCurrentIndex(1);
        setBrightness(23);
        ok();
        restart(m_scanner);
        EXPECT_EQ(templates().currentIndex(), 1) << name;
        EXPECT_EQ(brightness(), 23) << name;
        openManager([this] { rename(1, QStringLiteral("B")); });
        EXPECT_EQ(onDisk(QStringLiteral("B/brightness")), QStringLiteral("23")) << name;
        openManager([this, &general] { rename(1, general); });
        restart(m_scanner);
        templates().setCurrentIndex(0);
        templates().setCurrentIndex(1);
        EXPECT_EQ(brightness(), 23) << name;
        openManager([this] { remove(1); });
        for (const QString& group : groupsOnDisk()) {
            EXPECT_FALSE(group.contains(QStringLiteral("general"), Qt::CaseInsensitive))
                << group.toStdString();
        }
        EXPECT_EQ(onDisk(QStringLiteral("brightness")), QStringLiteral("(none)")) << name;
    }
}

TEST_F(TemplateNames, OddOnes)
{
    expectToSurvive({QStringLiteral("办公室"),
                     QStringLiteral("😀 scan 🖨"),
                     QStringLiteral(" leading"),
                     QStringLiteral("trailing "),
                     QStringLiteral("   "),
                     QStringLiteral("[group]"),
                     QStringLiteral("a=b"),
                     QStringLiteral("#comment"),
                     QStringLiteral("a&b, c"),
                     QStringLiteral("'quoted'"),
                     QStringLiteral("@Variant(x)"),
                     QStringLiteral("@@"),
                     QStringLiteral("a.b*c?d<e>f|g"),
                     QStringLiteral("É́"),
                     QString(30, QLatin1Char('W')),
                     QString(30, QChar(0x6f22)),
                     QStringLiteral("config_version"),
                     QStringLiteral("default"),
                     QStringLiteral("ScannerB"),
                     QStringLiteral("brightness"),
                     QStringLiteral("\t tab")});
}

TEST_F(TemplateNames, OnesThatShareTheListsGroup)
{
    // Nothing forbids it, and its keys are other ones.
    expectToSurvive({QStringLiteral("UserTemplates")});
}

TEST_F(TemplateNames, RandomOnes)
{
    std::mt19937 random(20260);
    const QString forbidden = QStringLiteral("\":;`!%\\/");
    std::uniform_int_distribution<int> length(1, 30);
    std::uniform_int_distribution<int> kind(0, 3);
    QStringList names;
    while (names.size() < 40) {
        QString name;
        const int size = length(random);
        while (name.size() < size) {
            const char32_t point = [&]() -> char32_t {
                switch (kind(random)) {
                case 0:
                    return std::uniform_int_distribution<char32_t>(0x20, 0x7e)(random);
                case 1:
                    return std::uniform_int_distribution<char32_t>(0xa0, 0x2ff)(random);
                case 2:
                    return std::uniform_int_distribution<char32_t>(0x4e00, 0x9fff)(random);
                default:
                    return std::uniform_int_distribution<char32_t>(0x1f300, 0x1f5ff)(random);
                }
            }();
            const QString character = QString::fromUcs4(&point, 1);
            if (!forbidden.contains(character) && name.size() + character.size() <= size) {
                name += character;
            } else if (size - name.size() == 1) {
                name += QLatin1Char('x');
            }
        }
        if (!names.contains(name)) {
            names << name;
        }
    }
    expectToSurvive(names);
}

TEST_F(TemplateNames, AThousandOfThem)
{
    QStringList names;
    for (int i = 1; i <= 1000; ++i) {
        names << QStringLiteral("模板 %1").arg(i);
    }
    StoredList values{
        {QStringLiteral("ScannerAconfig_version/config_version"), QStringLiteral("102")},
        {list, withWorking(names).join(QLatin1Char(';'))},
        {storedIndex, QStringLiteral("1000")}};
    for (int i = 0; i < names.size(); ++i) {
        for (const Setting& setting : settingsTable()) {
            if (setting.inWorkingGroup()) {
                values.emplace_back(names.at(i) + QLatin1Char('/') + QLatin1String(setting.key),
                                    setting.encoding == Encoding::EnableWord
                                        ? QStringLiteral("Enable")
                                        : QString::number(i % 100));
            }
        }
    }
    prepare(values);
    bind(m_scanner);
    EXPECT_EQ(templates().count(), 1001);
    EXPECT_EQ(templates().currentIndex(), 1000);
    EXPECT_EQ(brightness(), 99);
    templates().setCurrentIndex(501);
    EXPECT_EQ(brightness(), 0);
    setBrightness(-1);
    ok();
    openManager([this] {
        EXPECT_EQ(managed().count(), 1001);
        remove(500);
        rename(1, QStringLiteral("First"));
        add(QStringLiteral("Last"));
    });
    EXPECT_EQ(templates().count(), 1001);
    restart(m_scanner);
    EXPECT_EQ(templates().count(), 1001);
    EXPECT_EQ(templates().itemText(1), QStringLiteral("First"));
    EXPECT_EQ(templates().itemText(1000), QStringLiteral("Last"));
    templates().setCurrentIndex(500);
    EXPECT_EQ(templates().currentText(), QStringLiteral("模板 501"));
    EXPECT_EQ(brightness(), -1);
    EXPECT_EQ(onDisk(QStringLiteral("模板 500/brightness")), QStringLiteral("(none)"));
    EXPECT_EQ(onDisk(QStringLiteral("模板 999/brightness")), QStringLiteral("98"));
}
