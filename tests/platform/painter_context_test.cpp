#include "platform/QZFont.h"
#include "platform/QZPainterContext.h"

#include <QBuffer>
#include <QSvgGenerator>
#include <QtMath>

#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <tuple>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr double unplaced = -3.4028234663852886e38;

using Draw = std::function<void(QZGraphicsContext&)>;
using Points = std::vector<QZPoint>;

/// `draw` on a square pane with `side` px, whose origin is `shift` px from the bottom left.
QImage painted(const Draw& draw, int side, double ratio = 1.0, double shift = 0.0)
{
    QImage image(QSizeF(side * ratio, side * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.translate(shift, -shift);
    QZPainterContext context(painter, side, QZPainterContext::Edges::PixelSnapped);
    draw(context);
    return image;
}

const auto segment = [](QZPoint a, QZPoint b) { return [=](QZGraphicsContext& c) { c.strokeSegment({a, b}); }; };
const auto rect = [](QZRect box) { return [=](QZGraphicsContext& c) { c.strokeRect(box); }; };
const auto ellipse = [](QZRect box) { return [=](QZGraphicsContext& c) { c.strokeEllipse(box); }; };

enum class Path { Open, Closed, Filled };

Draw path(const std::vector<Points>& parts, Path kind = Path::Open)
{
    return [=](QZGraphicsContext& context) {
        context.beginPath();
        for (const Points& part : parts) {
            for (const QZPoint& point : part) {
                // The first one begins with its lineTo().
                &point == &part[0] && &part != &parts[0] ? context.moveTo(point) : context.lineTo(point);
            }
        }
        if (kind == Path::Closed)
            context.closePath();
        kind == Path::Filled ? context.fillPath() : context.strokePath();
    };
}

Draw arc(QZPoint center, double radius, double start, double end, bool isClockwise)
{
    return [=](QZGraphicsContext& context) {
        context.beginPath();
        context.addArc(center, radius, start, end, isClockwise);
        context.strokePath();
    };
}

const auto image = [](QZRect box) {
    const QImage halves = painted([](auto& context) { context.fillRect({0, 0, 1, 2}); }, 2);
    return [=](QZGraphicsContext& context) { context.drawImage(halves, box); };
};

struct Pen {
    double width = 1.0;
    std::vector<double> dash = {};
    double phase = 0.0;
    QZLineCap cap = QZLineCap::Butt;
    QZLineJoin join = QZLineJoin::Miter;
    QColor color = Qt::black;
};

Draw with(const Pen& pen, const Draw& draw)
{
    return [=](QZGraphicsContext& context) {
        context.setLineWidth(pen.width);
        context.setLineDash(pen.phase, pen.dash);
        context.setLineCap(pen.cap);
        context.setLineJoin(pen.join);
        context.setStrokeColor(pen.color);
        draw(context);
    };
}

struct Row {
    const char* name = nullptr;
    Pen pen;
    Draw draw;
    const char* ink = nullptr; // "#" is ink, "." is none, "+" is an edge between
    QPoint from{0, 10};        // device pixels, from the top left
    QPoint step{1, 0};
    double ratio = 1.0;
};

} // namespace

// On a pane of 20 x 20 px.
TEST(PainterContext, PutsInkWhereTheFigureIs)
{
    const Pen four{.dash = {4, 3}};
    const Pen slanted{.dash = {4 * std::sqrt(2.0), 3 * std::sqrt(2.0)}};
    const Pen w2{.width = 2};
    const Pen w4{.width = 4};
    const Draw level = segment({0, 10}, {20, 10});
    const Draw row10 = segment({0, 9.5}, {20, 9.5});
    const Draw tick = segment({8, 10}, {12, 10});
    const auto spike = [](double rise) { return path({{{0, 10 + rise}, {10, 10}, {0, 10 - rise}}}); };
    const auto turn = [](double start, double end, bool clockwise) { return arc({10, 10}, 6, start, end, clockwise); };
    const Pen half{.width = 2, .dash = {6 * M_PI, 99}}; // of the ellipse's outline
    const std::vector<Points> twice{{{2, 2}, {18, 2}, {10, 40}}, {{6, 6}, {14, 6}, {10, 14}}};
    const Points branch{{10, 0}, {10.0005, 10}, {2, 9}};
    const QPoint down{0, 1};
    const Draw box = [](QZGraphicsContext& context) { context.fillRect({15.3, 15.3, -10, -10}); };
    const Draw handle = [](QZGraphicsContext& context) {
        context.fillRect({0, 0, 20, 20});
        context.clearRect({12, 12, -4, -4});
    };
    for (const Row& row :
         {Row{"width 1, ratio 1", {}, level, "..#..", {5, 8}, down},
          Row{"width 2, ratio 1", w2, level, ".##..", {5, 8}, down},
          Row{"width 1, ratio 1.5", {}, level, "..##..", {5, 12}, down, 1.5},
          Row{"width 1, ratio 2", {}, level, "..##..", {5, 17}, down, 2},
          Row{"width 3, ratio 1.5", {.width = 3}, level, "...#####...", {5, 10}, down, 1.5},
          Row{"upright", {}, segment({10.3, 0}, {10.3, 20}), "..#..", {8, 5}},
          Row{"slanted is not snapped", {}, segment({10, 0}, {10.001, 20}), ".++..", {8, 5}},
          Row{"branches along a stem", {}, path({{{10, 0}, {10.001, 20}}, branch, branch}), ".++..", {8, 18}},
          Row{"parts in line", {}, path({{{0, 9.5}, {4, 9.5}}, {{6, 9.5}, {20, 9.5}}}), "####..##############"},
          Row{"legs in line", {}, path({{{0, 10.3}, {5, 10.3}, {18, 10.3}, {20, 0}}}), "..#..", {12, 7}, down},
          Row{"the closing leg", {}, path({{{5.3, 2}, {15, 10}, {5.3, 18}}}, Path::Closed), "..#..", {3, 10}},
          Row{"a rectangle's side", {}, rect({15, 15, -10, -10}), "..##..", {7, 20}, {1, 0}, 2},
          Row{"a rectangle's corners", {}, rect({5.3, 5.3, 10, 10}), "..###########..", {3, 14}},
          Row{"a filled rectangle", {}, box, "..####################..", {9, 20}, {1, 0}, 2},
          Row{"round is not snapped", {}, arc({10, 10.25}, 6, 0, M_PI, false), "..++...", {10, 1}, down},
          Row{"dash, ratio 1.5", {.dash = {3, 2}}, level, "..##..", {2, 12}, down, 1.5},
          Row{"dash phase", {.dash = {3, 2}, .phase = 1}, row10, "##..###..###..###..#"},
          Row{"dash phase below 0", {.dash = {3, 2}, .phase = -1}, row10, ".###..###..###..###."},
          Row{"odd dash", {.dash = {3, 1, 2}}, row10, "###.##...#..###.##.."},
          Row{"dash without gap", {.dash = {3, 0}}, row10, "####################"},
          Row{"dash too fine to see", {.dash = {1e-9, 1e-9}}, row10, "####################"},
          Row{"dash below 0", {.dash = {-1, 3}}, row10, "####################"},
          Row{"dash that is none", {.dash = {3, qQNaN()}}, row10, "####################"},
          Row{"phase that is none", {.dash = {3, 2}, .phase = qQNaN()}, row10, "###..###..###..###.."},
          // 100000 = 14285 * 7 + 5
          Row{"far dash", four, segment({-100000, 9.5}, {20, 9.5}), "..####...####...####"},
          // 39999.5 + 30.5 = 5718 * 7 + 4
          Row{"dash to the left", four, segment({20, 9.5}, {0, 9.5}), "..####...####...####"},
          Row{"dash upwards", four, segment({9.5, 0}, {9.5, 20}), "..####...####...####", {9, 0}, down},
          Row{"dash from within a pixel", four, segment({2.5, 9.5}, {19.5, 9.5}), "..+###+..+###+..+##+"},
          Row{"dash to the left, ratio 1.5",
              {.dash = {3, 2}},
              segment({20, 10}, {13, 10}),
              "+##+..+####",
              {19, 15},
              {1, 0},
              1.5},
          Row{"bent dash", four, path({{{-30.5, 40009}, {-30.5, 9.5}, {20, 9.5}}}), "...####...####...###"},
          Row{"slanted dash", slanted, segment({0, 20}, {20, 0}), "####...####...####..", {0, 0}, {1, 1}},
          Row{"butt", w4, tick, "....####....", {4, 10}},
          Row{"square", {.width = 4, .cap = QZLineCap::Square}, tick, "..########..", {4, 8}},
          Row{"round, outside", {.width = 4, .cap = QZLineCap::Round}, tick, "..+######+..", {4, 8}},
          Row{"bevel", {.width = 4, .join = QZLineJoin::Bevel}, spike(4), "####+.........", {6, 10}},
          Row{"round join", {.width = 4, .join = QZLineJoin::Round}, spike(4), "######........", {6, 10}},
          Row{"miter", w4, spike(4), "#######++.....", {6, 10}},
          // The tip is 1 / sin(atan(rise / 10)) widths long: 9.6 and 10.2.
          Row{"miter in its limit", w2, spike(1.05), "####++++++..", {8, 10}},
          Row{"miter beyond it", w2, spike(0.99), "##..........", {8, 10}},
          Row{"half circle above", w2, turn(0, M_PI, false), ".##.............", {10, 2}, down},
          Row{"half circle below", w2, turn(0, M_PI, true), ".............##.", {10, 2}, down},
          Row{"whole circle", w2, turn(1, 8, false), ".##..........##.", {10, 2}, down},
          Row{"a little to the right", w2, turn(-0.4, 0.4, false), ".............##.", {2, 10}},
          Row{"the rest to the left", w2, turn(-0.4, 0.4, true), ".##.............", {2, 10}},
          Row{"half an ellipse", half, ellipse({4, 4, 12, 12}), ".##.............", {10, 2}, down},
          Row{"far half circle", {}, arc({10.5, 9.5 - 1e5}, 1e5, 0, M_PI, false), "..#..", {10, 8}, down},
          Row{"punched handle", {}, handle, "###....###", {5, 10}},
          Row{"far polygon", {}, path({{{10, -1e5}, {1e5, 0}, {10, 1e5}}}, Path::Filled), ".....##########", {5, 10}},
          Row{"windings add up", {}, path(twice, Path::Filled), "######", {7, 10}},
          Row{"to a point off all charts", {}, segment({5, 9.5}, {unplaced, 9.5}), "#####....."},
          Row{"image", {}, image({16, 16, -12, -12}), ".####++++........", {3, 10}}}) {
        SCOPED_TRACE(row.name);
        const QImage pane = painted(with(row.pen, row.draw), 20, row.ratio);
        std::string ink;
        for (QPoint at = row.from; ink.size() < std::string_view(row.ink).size(); at += row.step) {
            const int alpha = qAlpha(pane.pixel(at));
            ink += alpha > 210 ? '#' : (alpha < 45 ? '.' : '+');
        }
        EXPECT_EQ(ink, row.ink);
    }
}

// What a pane of 100 px shows of a figure that leaves it is what a pane of 700 px, which holds the whole of it, shows
// in the middle.
TEST(PainterContext, AFigureCutAtThePaneLooksLikeTheWholeOne)
{
    const Points wave{{-200, 20}, {30, 90}, {40, -120}, {70, 300}, {90, 30}, {250, 60}};
    const Points triangle{{50, 50}, {-150, 20}, {120, -90}};
    const Points arrow{{-200, -200}, {300, 50}, {-200, 300}, {20, 50}};
    const Pen round{.width = 4, .dash = {30, 10}, .cap = QZLineCap::Round, .join = QZLineJoin::Round};
    const Pen translucent{.width = 8, .color = QColor(0, 0, 0, 100)};
    for (const Row& row :
         {Row{"thin", {}, path({wave})}, Row{"wide", {.width = 5}, path({wave})},
          Row{"wide, bevelled", {.width = 9, .cap = QZLineCap::Square, .join = QZLineJoin::Bevel}, path({wave})},
          Row{"a corner's tip from outside", {.width = 10}, path({{{-130, 61}, {-30, 50}, {-130, 39}}})},
          Row{"a square cap's corner", {.width = 100, .cap = QZLineCap::Square}, segment({-160, -50}, {-60, 50})},
          Row{"a wide line along the edge", {.width = 20}, segment({-200, -8}, {300, -5})},
          Row{"closed", {.width = 6}, path({triangle}, Path::Closed)},
          Row{"closed, dashed", {.width = 3, .dash = {14, 5, 6}, .phase = 2}, path({triangle}, Path::Closed)},
          Row{"dashed, thin", {.dash = {9, 4}, .phase = 3}, path({wave})}, Row{"dashed, wide", round, path({wave})},
          Row{"translucent, crossing itself", translucent, path({{{-90, 20}, {150, 30}, {50, 150}, {40, -90}}})},
          Row{"rectangle", {.width = 3}, rect({60.3, 40.6, -200, 200})},
          Row{"arc, dashed", {.dash = {10, 5}}, arc({50, -150}, 240, 0, M_PI, false)},
          Row{"ellipse", {}, ellipse({-100, 20, 180, 50})},
          Row{"fill with a hole", {}, path({arrow, {{-90, 40}, {-90, 60}, {60, 60}, {60, 40}}}, Path::Filled)},
          Row{"image", {}, image({-50, -20, 120, 200})}}) {
        SCOPED_TRACE(row.name);
        const Draw draw = with(row.pen, row.draw);
        const QImage cut = painted(draw, 100);
        const QImage whole = painted(draw, 700, 1.0, 300.0).copy(300, 300, 100, 100);
        int different = 0;
        for (int i = 0; i < 100 * 100; ++i) {
            const QPoint at(i % 100, i / 100);
            different += std::abs(qAlpha(cut.pixel(at)) - qAlpha(whole.pixel(at))) > 70 ? 1 : 0;
        }
        EXPECT_NE(cut, painted([](auto&) {}, 100));
        EXPECT_LE(different, 2);
    }
}

TEST(PainterContext, WhatCannotBeDrawnDrawsNothing)
{
    const auto everythingWith = [](double bad) {
        return [=](QZGraphicsContext& context) {
            for (const QZRect box : {QZRect{bad, 2, 5, 5}, {2, bad, 5, 5}, {2, 2, bad, 5}, {2, 2, 5, bad}}) {
                for (const Draw& draw : std::initializer_list<Draw>{ellipse(box), rect(box), image(box)})
                    draw(context);
                context.fillRect(box);
                context.drawText(u"x"_s, systemFont(12), Qt::black, box);
                context.clearRect(box);
            }
            for (const Draw& draw : std::vector<Draw>{
                     arc({10, 10}, bad, 0, 1, false), arc({bad, 10}, 5, 0, 1, false), arc({10, 10}, 5, bad, 1, false),
                     arc({10, 10}, 5, 0, -bad, true), segment({0, 10}, {bad, 10}), segment({bad, 10}, {0, 10}),
                     path({{{0, 10}, {20, 10}, {10, bad}}}), path({{{0, 0}, {20, 0}, {20, bad}}}, Path::Filled)})
                draw(context);
        };
    };
    const QImage blank = painted([](auto&) {}, 20);
    for (const double bad : {qQNaN(), qInf(), -qInf()})
        EXPECT_EQ(painted(everythingWith(bad), 20), blank) << bad;
    for (const double far : {unplaced, -unplaced, 1e30, -1e30})
        EXPECT_NE(painted(everythingWith(far), 20), blank) << far << ": a number, of which only what shows is drawn";
}

TEST(PainterContext, StateComesBackWidthsHaveBoundsAndAnOpaqueImageKeepsItsColour)
{
    const Draw level = path({{{0, 10}, {20, 10}}});
    const QImage plain = painted(level, 20);
    const Pen other{7, {2, 2}, 1, QZLineCap::Round, QZLineJoin::Round, Qt::red};
    const auto nested = [&](QZGraphicsContext& context) {
        context.saveState();
        with(other, level)(context);
        context.clearRect({0, 0, 20, 20});
        context.restoreState();
        context.restoreState();
        path({{{0, 0}, {20, qInf()}}})(context);
        level(context);
    };
    EXPECT_EQ(painted(nested, 20), plain);
    for (const double width : {0.0, -5.0, qQNaN(), qInf()})
        EXPECT_EQ(painted(with({.width = width}, level), 20), plain) << width;
    EXPECT_EQ(painted(with({.width = 1e300}, level), 20).pixelColor(0, 0), QColor(Qt::black));

    QImage white(8, 8, QImage::Format_RGB32);
    white.fill(Qt::white);
    QPainter painter(&white);
    QZPainterContext(painter, 8, QZPainterContext::Edges::PixelSnapped).clearRect({0, 0, 8, 8});
    EXPECT_EQ(white.pixelColor(4, 4), QColor(Qt::white)) << "under a punched handle";
}

TEST(PainterContext, AVectorFileGetsWholeLinesDashesAndText)
{
    QBuffer svg;
    QSvgGenerator generator;
    generator.setOutputDevice(&svg);
    generator.setSize({100, 100});
    QPainter painter(&generator);
    {
        QZPainterContext context(painter, 100, QZPainterContext::Edges::Exact);
        with({.width = 2, .dash = {10, 5, 2}, .phase = 4}, path({{{-90000, 49.75}, {50, 49.75}, {60, 20}}}))(context);
        segment({0, 10}, {100, 10})(context);
        context.clearRect({0, 0, 100, 100});
        context.drawText(u"12.50"_s, systemFont(12), Qt::black, {5, 5, 40, 15});
    }
    painter.end();
    const QByteArray text = svg.data();
    SCOPED_TRACE(text.toStdString());
    EXPECT_TRUE(text.contains(R"(stroke-dasharray="10,5,2,10,5,2" stroke-dashoffset="4")"));
    EXPECT_TRUE(text.contains("M-90000,50.25 L50,50.25 L60,80") && text.contains(">12.50</text>"));
    EXPECT_EQ(text.count("<poly") + text.count("<path"), 2);
    EXPECT_FALSE(text.contains("<image"));
}

TEST(Text, IsDrawnInTheBoxThatItMeasures)
{
    const QFont font = systemFont(20);
    const auto widthOf = [&](const QString& text) { return measureText(text, font).width; };
    const double width = widthOf(u"ag"_s);
    const double nextTab = 28.0 * std::ceil(width / 28.0);
    const double height = measureText({}, font).height;
    EXPECT_EQ(widthOf({}), 0.0);
    EXPECT_GE(height, 20.0);
    using Measured = std::tuple<QString, double, int>; // with its width and its lines
    for (const auto& [text, wanted, lines] :
         {Measured{u"ag\nag"_s, width, 2}, Measured{u"ag\r\nag\rag"_s, width, 3},
          Measured{u"ag\u2028ag\u2029"_s, width, 3}, Measured{u"\n\nag\n"_s, width, 4},
          Measured{u"\tag"_s, 28.0 + width, 1}, Measured{u"ag\tag"_s, nextTab + width, 1},
          Measured{u"ag  "_s, widthOf(u"ag  ."_s) - widthOf(u"."_s), 1}}) {
        SCOPED_TRACE(text.toStdString());
        EXPECT_NEAR(widthOf(text), wanted, 0.05);
        EXPECT_EQ(measureText(text, font).height, lines * height);
    }
    // Once the measured box is wiped, nothing is left of the text, which reaches into its last line and to its right
    // edge.
    for (const QString& text :
         {u"gjpq\nÄÅg"_s, u"新建\r\n线新"_s, u"⬆\uFE0E"_s, u"😀"_s, u"a\tg"_s, u"שלום"_s, u"1.00\u2028\t1"_s}) {
        SCOPED_TRACE(text.toStdString());
        const auto box = measureText(text, font);
        // What is wiped stops short of the box's right and bottom edges.
        const auto isInkLeft = [&](double right, double bottom) {
            const Draw draw = [&](QZGraphicsContext& context) {
                context.drawText(text, font, Qt::black, {50, 50, box.width, box.height});
                context.clearRect({49, 49 + bottom, box.width + 2 - right, box.height + 2 - bottom});
            };
            return painted(draw, 200) != painted([](auto&) {}, 200);
        };
        EXPECT_FALSE(isInkLeft(0.0, 0.0));
        EXPECT_TRUE(isInkLeft(9.0, 0.0));
        EXPECT_TRUE(isInkLeft(0.0, 9.0));
    }
}
