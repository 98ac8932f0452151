#include "support/messages.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <mutex>
#include <utility>

namespace kestrel::test {

namespace {

// Messages come from any thread.
std::recursive_mutex mutex;
std::vector<ExpectedWarnings*> expected;
std::vector<DebugLines*> collectors;
std::vector<std::unique_ptr<ExpectedWarnings>> untilTestEnd;
QtMessageHandler previousHandler = nullptr;

bool isComplaint(QtMsgType type)
{
    return type == QtWarningMsg || type == QtCriticalMsg;
}

// The offscreen platform says so of itself whenever a window is shown; it says nothing about the
// code.
bool isPlatformRemark(const QString& text)
{
    return text.startsWith(QLatin1String("This plugin does not support "));
}

} // namespace

bool takeExpected(const QString& text)
{
    for (ExpectedWarnings* warnings : expected) {
        if (warnings->m_pattern.match(text).hasMatch()) {
            ++warnings->m_count;
            return true;
        }
    }
    return false;
}

bool takeDebugLine(const DebugLine& line)
{
    if (collectors.empty()) {
        return false;
    }
    collectors.back()->m_lines.push_back(line);
    return true;
}

namespace {

void handleMessage(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    const std::lock_guard<std::recursive_mutex> lock(mutex);
    if (isComplaint(type)) {
        if (!isPlatformRemark(text) && !takeExpected(text)) {
            ADD_FAILURE() << "unexpected Qt message: " << text.toStdString() << " ("
                          << (context.category != nullptr ? context.category : "default") << ", "
                          << (context.function != nullptr ? context.function : "unknown place")
                          << ")";
        }
        return;
    }
    if (type != QtFatalMsg && takeDebugLine({text, QByteArray(context.file),
                                             QByteArray(context.function), context.line})) {
        return;
    }
    if (type == QtFatalMsg || qEnvironmentVariableIsSet("KESTREL_TEST_VERBOSE")) {
        previousHandler(type, context, text);
    }
}

class EndOfTest : public testing::EmptyTestEventListener
{
    void OnTestEnd(const testing::TestInfo& /*info*/) override
    {
        const std::lock_guard<std::recursive_mutex> lock(mutex);
        untilTestEnd.clear();
    }
};

} // namespace

void installMessageHandler()
{
    previousHandler = qInstallMessageHandler(handleMessage);
    // First in the list: its verdict has to be in before the printer reports the test.
    auto& listeners = testing::UnitTest::GetInstance()->listeners();
    std::unique_ptr<testing::TestEventListener> printer(
        listeners.Release(listeners.default_result_printer()));
    listeners.Append(std::make_unique<EndOfTest>().release());
    if (printer) {
        listeners.Append(printer.release());
    }
}

ExpectedWarnings::ExpectedWarnings(const QString& pattern) : m_pattern(pattern)
{
    EXPECT_TRUE(m_pattern.isValid()) << pattern.toStdString();
    const std::lock_guard<std::recursive_mutex> lock(mutex);
    expected.push_back(this);
}

ExpectedWarnings::~ExpectedWarnings()
{
    const std::lock_guard<std::recursive_mutex> lock(mutex);
    expected.erase(std::remove(expected.begin(), expected.end(), this), expected.end());
    EXPECT_GT(m_count, 0) << "no warning matched " << m_pattern.pattern().toStdString();
}

int ExpectedWarnings::count() const
{
    const std::lock_guard<std::recursive_mutex> lock(mutex);
    return m_count;
}

void expectWarning(const QString& pattern)
{
    const std::lock_guard<std::recursive_mutex> lock(mutex);
    untilTestEnd.push_back(std::make_unique<ExpectedWarnings>(pattern));
}

DebugLines::DebugLines()
{
    const std::lock_guard<std::recursive_mutex> lock(mutex);
    collectors.push_back(this);
}

DebugLines::~DebugLines()
{
    const std::lock_guard<std::recursive_mutex> lock(mutex);
    collectors.erase(std::remove(collectors.begin(), collectors.end(), this), collectors.end());
}

std::vector<DebugLine> DebugLines::lines() const
{
    const std::lock_guard<std::recursive_mutex> lock(mutex);
    return m_lines;
}

std::vector<DebugLine> DebugLines::from(const QByteArray& function) const
{
    std::vector<DebugLine> found;
    for (const DebugLine& line : lines()) {
        if (line.function.contains(function)) {
            found.push_back(line);
        }
    }
    return found;
}

} // namespace kestrel::test
