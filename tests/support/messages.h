/// @file
/// Qt's messages in tests: a warning that nobody announced fails the running test, debug lines can
/// be looked at with their context.
#pragma once

#include <QByteArray>
#include <QRegularExpression>
#include <QString>
#include <QtGlobal>

#include <vector>

namespace kestrel::test {

/// Puts the message handler in place for the rest of the program; both mains call it. Debug lines
/// are printed when KESTREL_TEST_VERBOSE is set in the environment.
void installMessageHandler();

/// Takes the warnings and critical messages that match a pattern; they then do not fail the test.
/// The test fails when none came while the object lived.
class ExpectedWarnings
{
public:
    /// @param pattern regular expression, searched for anywhere in the message
    explicit ExpectedWarnings(const QString& pattern);
    ~ExpectedWarnings();
    Q_DISABLE_COPY_MOVE(ExpectedWarnings)

    /// @return how many messages matched so far
    int count() const;

private:
    friend bool takeExpected(const QString& text);
    QRegularExpression m_pattern;
    int m_count = 0;
};

/// Announces that warnings which match @p pattern come before the running test ends; the test fails
/// when none does.
void expectWarning(const QString& pattern);

/// One line of qDebug() or qInfo() with the place it comes from.
struct DebugLine
{
    QString text;
    QByteArray file;
    QByteArray function;
    int line;
};

/// Collects debug lines while it lives; they are not printed meanwhile. The innermost object gets
/// them.
class DebugLines
{
public:
    DebugLines();
    ~DebugLines();
    Q_DISABLE_COPY_MOVE(DebugLines)

    /// @return the lines so far, oldest first
    std::vector<DebugLine> lines() const;
    /// @return the lines so far whose function contains @p function
    std::vector<DebugLine> from(const QByteArray& function) const;

private:
    friend bool takeDebugLine(const DebugLine& line);
    std::vector<DebugLine> m_lines;
};

} // namespace kestrel::test
