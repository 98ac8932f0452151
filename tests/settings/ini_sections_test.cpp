// Where the sections of a file begin and end.
#include "settings/ini_sections.h"

#include <gtest/gtest.h>

#include <QStringList>

using namespace kestrel;

namespace {

QStringList sectionsOf(const QByteArray& content)
{
    QStringList found;
    SectionReader reader(content);
    Section section{};
    while (reader.next(section)) {
        found.append(section.prefix() + QLatin1Char('|') +
                     QString::fromUtf8(section.text.begin,
                                       static_cast<int>(section.text.end - section.text.begin)));
    }
    return found;
}

} // namespace

TEST(IniSections, EmptyFileHasNone)
{
    EXPECT_EQ(sectionsOf(""), QStringList());
}

TEST(IniSections, EachRunsToTheNextWithoutTheLineEndsBehindIt)
{
    EXPECT_EQ(sectionsOf("[A]\nk=1\n\n[B%20c]\nk=[2]\nl=3\n\n"),
              QStringList({"A/|[A]\nk=1", "B c/|[B%20c]\nk=[2]\nl=3"}));
}

TEST(IniSections, WhatStandsBeforeTheFirstHasNoName)
{
    EXPECT_EQ(sectionsOf("k=1\n[A]"), QStringList({"|k=1", "A/|[A]"}));
    EXPECT_EQ(sectionsOf("\n\n[General]\nk=1"), QStringList({"|", "|[General]\nk=1"}));
}

TEST(IniSections, NamesAreThoseThatTheToolkitReads)
{
    EXPECT_EQ(sectionsOf("[%General]\nk=1"), QStringList({"General/|[%General]\nk=1"}));
    EXPECT_EQ(sectionsOf("[unclosed"), QStringList({"unclosed/|[unclosed"}));
}
