#include <device_list.h>
#include <page_list.h>

#include <gtest/gtest.h>

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

using kestrel::DeviceList;
using kestrel::Page;
using kestrel::PageList;
using kestrel::ScannerInfo;

TEST(DeviceList, ShowsMakerAndModelAndTheNameOnlyWhereNeeded)
{
    DeviceList list;
    list.setDevices({{"a:1", "Kestrel", "Q1", ""},
                     {"a:2", "Kestrel", "Q2", ""},
                     {"b:2", "Kestrel", "Q2", ""},
                     {"c:3", "", "", ""}});
    const auto shown = [&](int row) { return list.index(row).data().toString(); };
    ASSERT_EQ(list.rowCount(), 4);
    EXPECT_EQ(shown(0), "Kestrel Q1");
    EXPECT_EQ(shown(1), "Kestrel Q2 (a:2)");
    EXPECT_EQ(shown(2), "Kestrel Q2 (b:2)");
    EXPECT_EQ(shown(3), "c:3");
    EXPECT_EQ(list.index(1).data(Qt::ToolTipRole).toString(), "a:2");
    EXPECT_EQ(list.rowOf("b:2"), 2);
    EXPECT_EQ(list.rowOf("z"), -1);
    EXPECT_EQ(list.at(4), nullptr);
    EXPECT_EQ(list.at(-1), nullptr);
    EXPECT_EQ(list.at(3)->name, "c:3");
}

TEST(PageList, RemovingPagesRemovesTheirFilesAndNumbersAnew)
{
    const QTemporaryDir dir;
    PageList list;
    for (int i = 0; i < 4; ++i) {
        Page page;
        page.file = dir.filePath(QString::number(i));
        page.pixels = {100 + i, 200};
        page.dpi = 100;
        page.thumbnail = QImage(10, 20, QImage::Format_RGB32);
        QFile file(page.file);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        list.append(page);
    }
    QSignalSpy changed(&list, &PageList::dataChanged);
    list.remove({3, 1, 3, 9, -1});
    ASSERT_EQ(list.rowCount(), 2);
    EXPECT_EQ(list.pages()[0].pixels.width(), 100);
    EXPECT_EQ(list.pages()[1].pixels.width(), 102);
    EXPECT_FALSE(QFile::exists(dir.filePath("1")));
    EXPECT_FALSE(QFile::exists(dir.filePath("3")));
    EXPECT_TRUE(QFile::exists(dir.filePath("2")));
    EXPECT_EQ(list.index(1).data().toString(), QStringLiteral("第 2 页"));
    EXPECT_EQ(changed.count(), 1);
    EXPECT_TRUE(list.index(1)
                    .data(Qt::ToolTipRole)
                    .toString()
                    .contains(QStringLiteral("102 × 200 像素，100 dpi，25.9 × 50.8 毫米")));
    list.remove({0, 1});
    EXPECT_TRUE(list.isEmpty());
    EXPECT_FALSE(list.index(0).isValid());
}
