// The words about the computer, from files made for the purpose.
#include "system/system_info.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class SystemInfo : public testing::Test
{
protected:
    /// @return the path of a file with these bytes
    const char* file(const QByteArray& bytes)
    {
        QFile file(m_dir.filePath(QStringLiteral("proc")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(bytes), bytes.size());
        m_path = QFile::encodeName(file.fileName());
        return m_path.constData();
    }
    const char* missing()
    {
        m_path = QFile::encodeName(m_dir.filePath(QStringLiteral("missing")));
        return m_path.constData();
    }

private:
    QTemporaryDir m_dir;
    QByteArray m_path;
};

} // namespace

TEST_F(SystemInfo, TheKernelLineKeepsItsNewlineAndGetsAnother)
{
    EXPECT_EQ(kestrel::osInfoText(file("Linux version 6.1 (gcc)\n")),
              QStringLiteral("系统信息：Linux version 6.1 (gcc)\n\n"));
}

TEST_F(SystemInfo, TheKernelMayHaveSeveralLinesOrNoneAtAll)
{
    EXPECT_EQ(kestrel::osInfoText(file("a\nb")), QStringLiteral("系统信息：a\nb\n"));
    EXPECT_EQ(kestrel::osInfoText(file("")), QStringLiteral("系统信息：\n"));
}

TEST_F(SystemInfo, LongKernelLinesAreReadWhole)
{
    const QByteArray line(2500, 'x');
    EXPECT_EQ(kestrel::osInfoText(file(line + '\n')),
              QStringLiteral("系统信息：") + QString::fromLatin1(line) + QStringLiteral("\n\n"));
}

TEST_F(SystemInfo, AKernelLineEndsAtItsZeroByte)
{
    EXPECT_EQ(kestrel::osInfoText(file(QByteArray("ab\0cd\nef\n", 9))),
              QStringLiteral("系统信息：abef\n\n"));
}

TEST_F(SystemInfo, AMissingKernelFileIsToldOnStandardOutput)
{
    testing::internal::CaptureStdout();
    EXPECT_EQ(kestrel::osInfoText(missing()), QStringLiteral("系统信息：\n"));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "failed to open version\n");
}

TEST_F(SystemInfo, AReadableKernelFileIsNotTold)
{
    testing::internal::CaptureStdout();
    kestrel::osInfoText(file("x\n"));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST_F(SystemInfo, TheProcessorKeepsTabAndColon)
{
    EXPECT_EQ(kestrel::cpuInfoText(file("processor\t: 0\nmodel name\t: Kestrel CPU @ 2 GHz\n")),
              QStringLiteral("CPU信息：\t: Kestrel CPU @ 2 GHz\n"));
}

TEST_F(SystemInfo, OnlyTheFirstProcessorCounts)
{
    EXPECT_EQ(kestrel::cpuInfoText(file("model name\t: one\nmodel name\t: two\n")),
              QStringLiteral("CPU信息：\t: one\n"));
}

TEST_F(SystemInfo, TheProcessorsKeyIsComparedWithCase)
{
    EXPECT_EQ(kestrel::cpuInfoText(file("Model Name\t: no\nMODEL NAME: no\nmodel name: yes\n")),
              QStringLiteral("CPU信息：: yes\n"));
}

TEST_F(SystemInfo, TheProcessorsKeyMayStandAnywhereInItsLine)
{
    EXPECT_EQ(kestrel::cpuInfoText(file("the model name is x\n")),
              QStringLiteral("CPU信息： is x\n"));
}

TEST_F(SystemInfo, WithoutAModelTheProcessorHeadingStandsAloneOnItsLine)
{
    EXPECT_EQ(kestrel::cpuInfoText(file("processor\t: 0\n")), QStringLiteral("CPU信息：\n"));
    EXPECT_EQ(kestrel::cpuInfoText(file("")), QStringLiteral("CPU信息：\n"));
}

TEST_F(SystemInfo, AMissingProcessorFileLeavesTheHeadingWithoutNewline)
{
    EXPECT_EQ(kestrel::cpuInfoText(missing()), QStringLiteral("CPU信息："));
}

TEST_F(SystemInfo, MemoryStandsAsTheFileHasIt)
{
    EXPECT_EQ(kestrel::memoryInfoText(file(
                  "MemTotal:       16314680 kB\nMemFree:          123456 kB\nBuffers: 1 kB\n")),
              QStringLiteral("内存容量：       16314680 kB\n剩余内存：          123456 kB\n"));
}

TEST_F(SystemInfo, MemoryLinesStandInTheOrderOfTheFile)
{
    EXPECT_EQ(kestrel::memoryInfoText(file("MemFree: 2 kB\nMemTotal: 1 kB\n")),
              QStringLiteral("剩余内存： 2 kB\n内存容量： 1 kB\n"));
}

TEST_F(SystemInfo, EveryMemoryLineOfTheNameCounts)
{
    EXPECT_EQ(kestrel::memoryInfoText(file("HugeMemFree: 2 kB\nMemFree: 1 kB\nmemfree: 3\n")),
              QStringLiteral("剩余内存： 2 kB\n剩余内存： 1 kB\n"));
}

TEST_F(SystemInfo, AMissingMemoryFileGivesNothing)
{
    EXPECT_EQ(kestrel::memoryInfoText(missing()), QString());
    EXPECT_EQ(kestrel::memoryInfoText(file("")), QString());
}

TEST_F(SystemInfo, OddBytesDoNoHarm)
{
    const QByteArray odd("\xff\xfeMemTotal:\x80 5 kB\0x\nmodel name\xc3: y\n", 35);
    EXPECT_TRUE(kestrel::memoryInfoText(file(odd)).startsWith(QStringLiteral("内存容量：")));
    EXPECT_TRUE(kestrel::cpuInfoText(file(odd)).startsWith(QStringLiteral("CPU信息：")));
    EXPECT_TRUE(kestrel::osInfoText(file(odd)).startsWith(QStringLiteral("系统信息：")));
}

TEST_F(SystemInfo, ThisComputerIsDescribed)
{
    EXPECT_TRUE(kestrel::osInfoText().contains(QStringLiteral("Linux version")));
    EXPECT_TRUE(kestrel::memoryInfoText().contains(QStringLiteral(" kB\n")));
    EXPECT_TRUE(kestrel::cpuInfoText().endsWith(QLatin1Char('\n')));
}
