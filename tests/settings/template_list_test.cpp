#include "settings/template_list.h"

#include <gtest/gtest.h>

using namespace kestrel;

TEST(TemplateList, EmptyPartsAreNoNames)
{
    const QStringList expected{QStringLiteral("自订"), QStringLiteral("Office"),
                               QStringLiteral(" ")};
    EXPECT_EQ(splitTemplateList(QStringLiteral("自订;Office; ")), expected);
    EXPECT_EQ(splitTemplateList(QStringLiteral(";自订;;Office; ;")), expected);
    EXPECT_TRUE(splitTemplateList(QString()).isEmpty());
    EXPECT_TRUE(splitTemplateList(QStringLiteral(";;")).isEmpty());
}

TEST(TemplateList, JoinedWithoutSeparatorsAtTheEnds)
{
    EXPECT_EQ(joinTemplateList({QStringLiteral("自订")}), QStringLiteral("自订"));
    EXPECT_EQ(joinTemplateList({QStringLiteral("自订"), QStringLiteral("A"), QStringLiteral("B")}),
              QStringLiteral("自订;A;B"));
    EXPECT_EQ(joinTemplateList({}), QString());
}

TEST(TemplateList, AppendingLeavesTheStoredTextAlone)
{
    EXPECT_EQ(appendTemplate(QStringLiteral("自订;;A"), QStringLiteral("B")),
              QStringLiteral("自订;;A;B"));
}

TEST(TemplateGroups, AreNamedAsTheTemplateButForSpellingsOfGeneral)
{
    for (const char* const name : {"Office", "General", "Generals", " general", "自订", "%x", ""}) {
        EXPECT_EQ(groupName(QString::fromUtf8(name)), QString::fromUtf8(name));
    }
    EXPECT_EQ(groupName(QStringLiteral("general")), QStringLiteral("%general"));
    EXPECT_EQ(groupName(QStringLiteral("GENERAL")), QStringLiteral("%GENERAL"));
    EXPECT_EQ(groupName(QStringLiteral("gEnErAl")), QStringLiteral("%gEnErAl"));
}
