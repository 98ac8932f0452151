// The framed panel, the two experimental controls and the icons.
#include "widgets/cmypushbutton.h"

#include "support/messages.h"

#include <QFile>
#include <QImage>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

using kestrel::test::DebugLines;

namespace {

/// @return the widget painted over white, one pixel of the picture for one of the widget
QImage paint(QWidget& widget)
{
    QImage image(widget.size(), QImage::Format_RGB32);
    image.fill(Qt::white);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

/// @return how many pixels are not white
int painted(const QImage& image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += image.pixel(x, y) != qRgb(255, 255, 255) ? 1 : 0;
        }
    }
    return count;
}

struct Icon
{
    const char* path;
    qint64 bytes;
    QSize pixels;
};

const Icon icons[] = {
    {":/new/prefix1/picture/scroll_right.png", 929, QSize(40, 40)},
    {":/new/prefix1/picture/scroll_left.png", 1047, QSize(40, 40)},
    {":/new/prefix1/picture/down_arrow.png", 227, QSize(16, 16)},
    {":/new/prefix1/picture/circle.png", 254, QSize(16, 16)},
};

} // namespace

TEST(MyWidget, FrameFollowsTheOuterEdgeAtEverySize)
{
    MyWidget panel;
    for (const QSize size : {QSize(200, 100), QSize(120, 300), QSize(200, 100)}) {
        panel.resize(size);
        const QImage image = paint(panel);
        const QColor grey(216, 216, 216);
        for (const QPoint edge :
             {QPoint(0, size.height() / 2), QPoint(size.width() - 1, size.height() / 2),
              QPoint(size.width() / 2, 0), QPoint(size.width() / 2, size.height() - 1)}) {
            EXPECT_EQ(image.pixelColor(edge), grey) << edge.x() << "," << edge.y();
        }
        EXPECT_EQ(painted(image.copy(2, 2, size.width() - 4, size.height() - 4)), 0);
    }
}

TEST(MyWidget, ChildrenDrawThemselves)
{
    MyWidget panel;
    panel.resize(100, 60);
    QWidget child(&panel);
    child.setGeometry(20, 20, 10, 10);
    child.setAutoFillBackground(true);
    child.setPalette(QPalette(Qt::red, Qt::red));
    EXPECT_EQ(paint(panel).pixelColor(25, 25), QColor(Qt::red));
}

TEST(MyLabel, ShowsNoText)
{
    MyLabel label;
    label.setText(QStringLiteral("text"));
    label.resize(100, 40);
    EXPECT_EQ(painted(paint(label)), 0);
}

TEST(CMyPushButton, DrawsOneRectangleInPlaceOfFaceAndText)
{
    CMyPushButton button;
    button.setText(QStringLiteral("text"));
    button.resize(200, 200);
    const QImage image = paint(button);
    EXPECT_EQ(painted(image.copy(32, 32, 96, 96)), 0) << "inside";
    EXPECT_EQ(painted(image.copy(0, 0, 200, 29)), 0) << "above";
    EXPECT_EQ(painted(image.copy(131, 0, 69, 200)), 0) << "right of it";
    for (const QRect side :
         {QRect(29, 80, 2, 1), QRect(128, 80, 3, 1), QRect(80, 29, 1, 2), QRect(80, 128, 1, 3)}) {
        EXPECT_GT(painted(image.copy(side)), 0) << side.x() << "," << side.y();
    }
}

TEST(CMyPushButton, LeftPressIsLoggedAndNeverBecomesAClick)
{
    CMyPushButton button;
    button.resize(200, 200);
    QSignalSpy clicked(&button, &QPushButton::clicked);
    QSignalSpy pressed(&button, &QPushButton::pressed);
    DebugLines debug;
    QTest::mouseClick(&button, Qt::LeftButton);
    ASSERT_EQ(debug.lines().size(), 1U);
    EXPECT_EQ(debug.lines()[0].text, QStringLiteral("leftbutton clicked"));
    EXPECT_FALSE(button.isDown());
    EXPECT_EQ(clicked.count(), 0);
    EXPECT_EQ(pressed.count(), 0);
}

TEST(CMyPushButton, OtherButtonsAreSilent)
{
    CMyPushButton button;
    button.resize(200, 200);
    DebugLines debug;
    QTest::mouseClick(&button, Qt::RightButton);
    QTest::mouseClick(&button, Qt::MiddleButton);
    EXPECT_TRUE(debug.lines().empty());
}

TEST(SmallWidgets, AreMetaObjectClassesOwnedByTheirParent)
{
    QWidget parent;
    auto* const panel = new MyWidget(&parent);
    auto* const label = new MyLabel(&parent);
    auto* const button = new CMyPushButton(&parent);
    EXPECT_EQ(parent.children().size(), 3);
    EXPECT_STREQ(panel->metaObject()->className(), "MyWidget");
    EXPECT_STREQ(label->metaObject()->className(), "MyLabel");
    EXPECT_STREQ(button->metaObject()->className(), "CMyPushButton");
}

TEST(Icons, HaveTheirSizesInBytesAndPixels)
{
    for (const Icon& icon : icons) {
        SCOPED_TRACE(icon.path);
        QFile file(QString::fromUtf8(icon.path));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << "resolvable without any dialog";
        EXPECT_EQ(file.readAll().size(), icon.bytes);
        const QImage image(QString::fromUtf8(icon.path));
        ASSERT_FALSE(image.isNull());
        EXPECT_EQ(image.size(), icon.pixels);
    }
}

TEST(Icons, StandOnATransparentGround)
{
    for (const Icon& icon : icons) {
        SCOPED_TRACE(icon.path);
        const QImage image =
            QImage(QString::fromUtf8(icon.path)).convertToFormat(QImage::Format_ARGB32);
        EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0);
        int opaque = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                opaque += qAlpha(image.pixel(x, y)) > 200 ? 1 : 0;
            }
        }
        EXPECT_GT(opaque, 5);
        EXPECT_LT(opaque, image.width() * image.height() / 2);
    }
}

TEST(Icons, LeftAndRightArrowMirrorEachOther)
{
    const QImage left(QString::fromUtf8(icons[1].path));
    const QImage right(QString::fromUtf8(icons[0].path));
    EXPECT_EQ(left.convertToFormat(QImage::Format_ARGB32),
              right.mirrored(true, false).convertToFormat(QImage::Format_ARGB32));
}
