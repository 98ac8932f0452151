// Every name that the name dialog lets through makes a group and a list entry that survive a
// restart.
#include "settings/settings_file.h"
#include "settings/template_list.h"

#include "settings_folder.h"

#include <QSet>

#include <random>

using namespace kestrel;
using namespace kestrel::test;

namespace {

const QString list = QStringLiteral("UserTemplates/usertemplate");

void addTemplate(QSettings& settings, const QString& name)
{
    settings.beginGroup(groupName(name));
    settings.setValue(QStringLiteral("source"), name);
    settings.endGroup();
    settings.setValue(list, appendTemplate(settings.value(list).toString(), name));
}

/// Saves templates of these names and reads them as the next start does.
void expectSurviving(const QStringList& names)
{
    const SettingsFolder folder;
    {
        const SettingsHandle settings = openSettings(folder.filePath());
        settings->setValue(list, QStringLiteral("自订"));
        for (const QString& name : names) {
            addTemplate(*settings, name);
        }
        EXPECT_TRUE(saveSettings(*settings));
    }
    const QString copy = folder.filePath(QStringLiteral("copy.ini"));
    ASSERT_TRUE(QFile::copy(folder.filePath(), copy));
    const SettingsHandle restarted = openSettings(copy);
    EXPECT_FALSE(QFile::exists(copy + QStringLiteral(".bad-1")));
    const QStringList found = splitTemplateList(restarted->value(list).toString());
    EXPECT_EQ(found, QStringList(QStringLiteral("自订")) + names);
    for (const QString& name : names) {
        restarted->beginGroup(groupName(name));
        EXPECT_EQ(restarted->value(QStringLiteral("source")).toString(), name);
        restarted->endGroup();
    }
}

} // namespace

TEST(TemplateNames, GeneralInEveryLetterCaseIsATemplateLikeAnyOther)
{
    QStringList names;
    for (unsigned letters = 0; letters < 128; ++letters) {
        QString name = QStringLiteral("general");
        for (int i = 0; i < name.size(); ++i) {
            if ((letters & (1U << static_cast<unsigned>(i))) != 0) {
                name[i] = name.at(i).toUpper();
            }
        }
        expectSurviving({name});
        names.append(name);
    }
    expectSurviving(names);
}

TEST(TemplateNames, OddNamesSurvive)
{
    expectSurviving({QStringLiteral("Office"),
                     QStringLiteral("office"),
                     QStringLiteral("OFFICE"),
                     QStringLiteral(" Office"),
                     QStringLiteral("Office "),
                     QStringLiteral(" "),
                     QStringLiteral("办公"),
                     QStringLiteral("😀"),
                     QStringLiteral("😀😀😀😀😀😀😀😀😀😀😀😀😀😀😀"),
                     QStringLiteral("[x]"),
                     QStringLiteral("]"),
                     QStringLiteral("a=b"),
                     QStringLiteral("#"),
                     QStringLiteral("&"),
                     QStringLiteral("'"),
                     QStringLiteral("“”"),
                     QStringLiteral("@"),
                     QStringLiteral("@@"),
                     QStringLiteral("@Variant(x)"),
                     QStringLiteral("a,@Variant(x)"),
                     QStringLiteral("@DateTime("),
                     QStringLiteral(","),
                     QStringLiteral(",,"),
                     QStringLiteral("."),
                     QStringLiteral(".."),
                     QStringLiteral("default"),
                     QStringLiteral("ä1"),
                     QStringLiteral("\u00e4f"),
                     QString(QChar(0xD83D)),
                     QString(QChar(0xDE00)),
                     QString(QChar(0)),
                     QString(QChar(1)),
                     QString(QChar(0xA0)),
                     QString(QChar(0xFEFF)),
                     QString(QChar(0xFFFF)),
                     QString(30, QLatin1Char('x'))});
}

TEST(TemplateNames, NameThatBeginsTheListSurvives)
{
    const SettingsFolder folder;
    {
        const SettingsHandle settings = openSettings(folder.filePath());
        settings->setValue(list, QStringLiteral("@Variant(x);b"));
        EXPECT_TRUE(saveSettings(*settings));
    }
    EXPECT_EQ(openSettings(folder.filePath())->value(list).toString(),
              QStringLiteral("@Variant(x);b"));
    EXPECT_EQ(folder.files().size(), 1);
}

TEST(TemplateNames, RandomNamesSurvive)
{
    std::mt19937 random(20240503); // NOLINT(cert-msc51-cpp)
    const QString forbidden = QStringLiteral("\":;`!%\\/");
    const QString likely = QStringLiteral(" \t@,=#&'[](){}<>%Ua1Fx.-自订办公");
    std::uniform_int_distribution<int> kind(0, 2);
    std::uniform_int_distribution<int> length(1, 30);
    std::uniform_int_distribution<int> ascii(0, 127);
    std::uniform_int_distribution<int> any(0, 0xFFFF);
    std::uniform_int_distribution<int> probable(0, likely.size() - 1);
    for (int round = 0; round < 20; ++round) {
        QSet<QString> names;
        while (names.size() < 100) {
            QString name;
            for (int left = length(random); left > 0; --left) {
                const int chosen = kind(random);
                const QChar character = chosen == 0   ? likely.at(probable(random))
                                        : chosen == 1 ? QChar(static_cast<ushort>(ascii(random)))
                                                      : QChar(static_cast<ushort>(any(random)));
                if (!forbidden.contains(character)) {
                    name += character;
                }
            }
            if (!name.isEmpty() && groupName(name) != QStringLiteral("UserTemplates")) {
                names.insert(name);
            }
        }
        expectSurviving(names.values());
    }
}
