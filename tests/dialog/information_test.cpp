// The information tab: the computer, the serial number and the counters.
#include "dialog_fixture.h"

#include <QFile>
#include <QTextEdit>

#include <gtest/gtest.h>

using namespace kestrel::test;

namespace {

class Information : public DialogTest
{
protected:
    static QString readAll(const char* path)
    {
        QFile file(QString::fromLatin1(path));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return QString::fromUtf8(file.readAll());
    }
    static QString after(const QString& text, const QString& key)
    {
        const int at = text.indexOf(key);
        const int end = text.indexOf(QLatin1Char('\n'), at);
        return at < 0 ? QString() : text.mid(at + key.size(), end - at - key.size());
    }
    QString host() { return dialog().system_text; }
};

} // namespace

TEST_F(Information, StartsWithTheKernel)
{
    const QString expected =
        QStringLiteral("系统信息：") + readAll("/proc/version") + QLatin1Char('\n');
    EXPECT_TRUE(host().startsWith(expected)) << host().toStdString();
}

TEST_F(Information, GoesOnWithTheFirstProcessor)
{
    const QString cpu = after(readAll("/proc/cpuinfo"), QStringLiteral("model name"));
    const QString expected = QStringLiteral("CPU信息：") + cpu + QLatin1Char('\n');
    EXPECT_TRUE(host().contains(expected)) << host().toStdString();
    EXPECT_EQ(host().count(QStringLiteral("CPU信息：")), 1);
    EXPECT_GT(host().indexOf(QStringLiteral("CPU信息：")),
              host().indexOf(QStringLiteral("系统信息：")));
}

TEST_F(Information, EndsWithTheMemory)
{
    const QString total = QStringLiteral("内存容量：") +
                          after(readAll("/proc/meminfo"), QStringLiteral("MemTotal:")) +
                          QLatin1Char('\n');
    const int at = host().indexOf(total);
    ASSERT_GE(at, 0) << host().toStdString();
    EXPECT_GT(at, host().indexOf(QStringLiteral("CPU信息：")));
    const QString rest = host().mid(at + total.size());
    EXPECT_TRUE(rest.startsWith(QStringLiteral("剩余内存："))) << rest.toStdString();
    EXPECT_TRUE(rest.endsWith(QStringLiteral(" kB\n"))) << rest.toStdString();
    EXPECT_EQ(rest.count(QLatin1Char('\n')), 1);
}

TEST_F(Information, EachReaderAppends)
{
    dialog().system_text = QStringLiteral("before\n");
    dialog().getOsInfo();
    EXPECT_TRUE(host().startsWith(QStringLiteral("before\n系统信息：")));
    dialog().system_text = QStringLiteral("before\n");
    dialog().getCpuInfo();
    EXPECT_TRUE(host().startsWith(QStringLiteral("before\nCPU信息：")));
    dialog().system_text = QStringLiteral("before\n");
    dialog().getMemoryInfo();
    EXPECT_TRUE(host().startsWith(QStringLiteral("before\n内存容量：")));
}

TEST_F(Information, AnUnboundDialogShowsTheComputer)
{
    EXPECT_EQ(information(), dialog().system_text);
    EXPECT_TRUE(child<QTextEdit>(dialog(), "scanner_info").isReadOnly());
}

TEST_F(Information, ABoundDialogShowsComputerSerialAndCounters)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    EXPECT_EQ(dialog().serial_text, QStringLiteral("序列号:  KS-2024-0042\n"));
    EXPECT_EQ(dialog().counter_text, QStringLiteral("VID/PID   :    0x638/0x2b1f\n"
                                                    "自动分纸滚轮/垫片次数：1234\n"
                                                    "自动进纸滚轮次数：5678\n"));
    EXPECT_EQ(information(), dialog().system_text + dialog().serial_text + dialog().counter_text);
}

TEST_F(Information, TheVendorAndTheProductStandFirstWhateverFollows)
{
    FakeScanner scanner = fullScanner();
    for (const char* const text : {"638:2b1f:7", "638:2b1f:", "638:2b1f:::x"}) {
        scanner.option("device-info").string(text);
        bind(scanner);
        EXPECT_TRUE(
            dialog().counter_text.startsWith(QStringLiteral("VID/PID   :    0x638/0x2b1f\n")))
            << text;
    }
    for (const char* const text : {"638", ""}) {
        scanner.option("device-info").string(text);
        bind(scanner);
        EXPECT_FALSE(dialog().counter_text.contains(QStringLiteral("VID"))) << text;
    }
}

TEST_F(Information, ASecondBindingDoesNotRepeatTheComputer)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    const QString once = information();
    bind(scanner);
    EXPECT_EQ(information(), once);
}

// A toolkit that is left to guess takes a text for markup by its first line.
TEST_F(Information, WhatLooksLikeMarkupIsShownAsItIs)
{
    FakeScanner scanner = flatbedScanner();
    dialog().system_text.clear();
    for (const char* const serial : {"<b>42</b>", "<img src=x>", "<table><tr><td>", "&amp;%1%2"}) {
        scanner.option("serial-number").string(serial);
        bind(scanner);
        const QString line =
            QStringLiteral("序列号:  ") + QString::fromUtf8(serial) + QLatin1Char('\n');
        EXPECT_TRUE(information().startsWith(line)) << information().toStdString();
        dialog().setScannerInfo();
        EXPECT_EQ(information(), line + QStringLiteral("平台扫描次数：0\n"));
    }
}

TEST_F(Information, CountersAreShownByTheKindOfScanner)
{
    dialog().counters.separation_roller_count = 11;
    dialog().counters.feed_roller_count = 22;
    dialog().counters.flatbed_scan_count = 33;
    dialog().serial_text = QStringLiteral("序列号:  S\n");
    const QString rollers = QStringLiteral("自动分纸滚轮/垫片次数：11\n自动进纸滚轮次数：22\n");
    const QString flatbed = QStringLiteral("平台扫描次数：33\n");
    const std::vector<std::pair<int, QString>> rows{
        {0, flatbed}, {1, rollers}, {2, rollers + flatbed}, {-1, QString()}, {3, QString()}};
    for (const auto& [kind, lines] : rows) {
        dialog().device_kind = kind;
        dialog().setScannerInfo();
        EXPECT_EQ(dialog().counter_text, lines) << kind;
        EXPECT_EQ(information(), dialog().system_text + QStringLiteral("序列号:  S\n") + lines);
    }
}

TEST_F(Information, LargeCountersAreUnsigned)
{
    dialog().counters = {4294967295U, 2147483648U, 4294967294U};
    dialog().device_kind = 2;
    dialog().setScannerInfo();
    EXPECT_EQ(dialog().counter_text, QStringLiteral("自动分纸滚轮/垫片次数：4294967295\n"
                                                    "自动进纸滚轮次数：2147483648\n"
                                                    "平台扫描次数：4294967294\n"));
}

TEST_F(Information, WithoutAVendorLibraryTheCountersKeepTheirValues)
{
    FakeScanner scanner = feederScanner();
    bind(scanner);
    dialog().getScannerRollerCount();
    EXPECT_EQ(dialog().counters.separation_roller_count, 1234U);
    EXPECT_EQ(dialog().counters.feed_roller_count, 5678U);
    EXPECT_EQ(dialog().counters.flatbed_scan_count, 0U);
}
