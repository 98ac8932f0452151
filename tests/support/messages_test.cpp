#include "support/messages.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <QDebug>

using kestrel::test::DebugLines;
using kestrel::test::ExpectedWarnings;
using kestrel::test::expectWarning;

TEST(Messages, AnUnannouncedWarningFailsTheTest)
{
    EXPECT_NONFATAL_FAILURE(qWarning("something odd"), "something odd");
    EXPECT_NONFATAL_FAILURE(qCritical("something bad"), "something bad");
}

TEST(Messages, AnAnnouncedWarningDoesNot)
{
    const ExpectedWarnings warnings(QStringLiteral("^odd \\d+$"));
    qWarning("odd 17");
    qCritical("odd 18");
    EXPECT_EQ(warnings.count(), 2);
}

TEST(Messages, AnAnnouncedWarningThatDoesNotComeFailsTheTest)
{
    EXPECT_NONFATAL_FAILURE({ const ExpectedWarnings never(QStringLiteral("never")); }, "never");
}

TEST(Messages, AnotherWarningThanTheAnnouncedOneFailsTheTest)
{
    const ExpectedWarnings warnings(QStringLiteral("this"));
    EXPECT_NONFATAL_FAILURE(qWarning("that"), "that");
    qWarning("this");
}

TEST(Messages, AnAnnouncementHoldsUntilTheTestEnds)
{
    expectWarning(QStringLiteral("late"));
    qWarning("rather late");
}

TEST(Messages, DebugLinesCarryTextAndPlace)
{
    const DebugLines debug;
    qDebug() << "one" << 2;
    ASSERT_EQ(debug.lines().size(), 1U);
    EXPECT_EQ(debug.lines()[0].text, QStringLiteral("one 2"));
    EXPECT_TRUE(debug.lines()[0].file.endsWith("messages_test.cpp"));
    EXPECT_EQ(debug.from("TestBody").size(), 1U);
    EXPECT_TRUE(debug.from("elsewhere").empty());
}
