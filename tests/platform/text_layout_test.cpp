#include "platform/QZFont.h"
#include "platform/QZPainterContext.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(Text, IsMeasuredAsItIsDrawn)
{
    const QFont font = systemFont(20);
    const auto widthOf = [&](const QString& text) { return measureText(text, font).width; };
    const double width = widthOf(u"ag"_s);
    const double height = measureText({}, font).height;
    EXPECT_EQ(widthOf({}), 0.0);
    EXPECT_GE(height, 20.0);
    struct Row {
        const char* name;
        QString text;
        double width;
        int lines;
    };
    const double nextTab = 28.0 * std::ceil(width / 28.0);
    for (const Row& row :
         {Row{"line feed", u"ag\nag"_s, width, 2}, Row{"carriage return", u"ag\r\nag\rag"_s, width, 3},
          Row{"separators", u"ag\u2028ag\u2029"_s, width, 3}, Row{"empty lines", u"\n\nag\n"_s, width, 4},
          Row{"tab in front", u"\tag"_s, 28.0 + width, 1}, Row{"tab between", u"ag\tag"_s, nextTab + width, 1},
          Row{"trailing spaces", u"ag  "_s, widthOf(u"ag  ."_s) - widthOf(u"."_s), 1}}) {
        SCOPED_TRACE(row.name);
        const QZTextSize size = measureText(row.text, font);
        EXPECT_NEAR(size.width, row.width, 0.05);
        EXPECT_EQ(size.height, row.lines * height);
    }
}

// Once the measured box is wiped, nothing is left of the text, and the text reaches into its last line and to its right
// edge.
TEST(Text, IsDrawnInTheBoxThatItMeasures)
{
    const QFont font = systemFont(20);
    for (const QString& text :
         {u"gjpq\nÄÅg"_s, u"新建\r\n线新"_s, u"⬆\uFE0E"_s, u"😀"_s, u"a\tg"_s, u"שלום"_s, u"1.00\u2028\t1"_s}) {
        SCOPED_TRACE(text.toStdString());
        const QZTextSize size = measureText(text, font);
        // What is wiped stops short of the box's right and bottom edges.
        const auto isInkLeft = [&](double right, double bottom) {
            QImage image(200, 100, QImage::Format_ARGB32_Premultiplied);
            image.fill(Qt::transparent);
            QPainter painter(&image);
            QZPainterContext context(painter, image.height(), QZPainterContext::Edges::PixelSnapped);
            context.drawText(text, font, Qt::black, {50, 20, size.width, size.height});
            context.clearRect({49, 19 + bottom, size.width + 2 - right, size.height + 2 - bottom});
            QImage blank = image;
            blank.fill(Qt::transparent);
            return image != blank;
        };
        EXPECT_FALSE(isInkLeft(0.0, 0.0));
        EXPECT_TRUE(isInkLeft(9.0, 0.0));
        EXPECT_TRUE(isInkLeft(0.0, 9.0));
    }
}
