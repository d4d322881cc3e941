#include "platform/QZFont.h"
#include "platform/QZPainterContext.h"

#include <QBuffer>
#include <QSvgGenerator>

#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>
#include <vector>

namespace {

constexpr double pi = std::numbers::pi;
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
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

Draw polyline(const Points& points, bool isClosed = false)
{
    return [=](QZGraphicsContext& context) {
        context.beginPath();
        for (const QZPoint point : points)
            context.lineTo(point);
        if (isClosed)
            context.closePath();
        context.strokePath();
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

Draw filled(const std::vector<Points>& polygons)
{
    return [=](QZGraphicsContext& context) {
        context.beginPath();
        for (const Points& polygon : polygons)
            for (std::size_t i = 0; i < polygon.size(); ++i)
                i == 0 ? context.moveTo(polygon[i]) : context.lineTo(polygon[i]);
        context.fillPath();
    };
}

Draw image(QZRect box)
{
    QImage halves(2, 1, QImage::Format_ARGB32_Premultiplied);
    halves.fill(Qt::transparent);
    halves.setPixelColor(0, 0, Qt::black);
    return [=](QZGraphicsContext& context) { context.drawImage(halves, box); };
}

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

/// Device pixels, counted from the top left.
struct Probe {
    QPoint from;
    QPoint step;
};
Probe across(int y, int x = 0)
{
    return {{x, y}, {1, 0}};
}
Probe down(int x, int y)
{
    return {{x, y}, {0, 1}};
}

} // namespace

// Each row reads device pixels of a pane of 20 x 20 px: "#" is ink, "." is none, "+" is an edge between.
TEST(PainterContext, PutsInkWhereTheFigureIs)
{
    struct Row {
        const char* name;
        Pen pen;
        Draw draw;
        Probe probe;
        const char* ink;
        double ratio = 1.0;
    };
    const Pen four{.dash = {4, 3}};
    const Pen slanted{.dash = {4 * std::sqrt(2.0), 3 * std::sqrt(2.0)}};
    const Pen w2{.width = 2};
    const Pen w4{.width = 4};
    const Pen dash{.dash = {3, 2}};
    const Draw level = segment({0, 10}, {20, 10});
    const Draw row10 = segment({0, 9.5}, {20, 9.5});
    const Draw tick = segment({8, 10}, {12, 10});
    const auto spike = [](double rise) { return polyline({{0, 10 + rise}, {10, 10}, {0, 10 - rise}}); };
    const auto turn = [](double start, double end, bool isClockwise) {
        return arc({10, 10}, 6, start, end, isClockwise);
    };
    const Draw bent = spike(4);
    const Draw handle = [](QZGraphicsContext& context) {
        context.fillRect({0, 0, 20, 20});
        context.clearRect({12, 12, -4, -4});
    };
    for (const Row& row : std::vector<Row>{
             {"y runs upwards", {}, segment({0, 16.5}, {20, 16.5}), down(5, 0), "...#......"},
             {"width 1, ratio 1", {}, level, down(5, 8), "..#.."},
             {"width 2, ratio 1", w2, level, down(5, 8), ".##.."},
             {"width 1, ratio 1.5", {}, level, down(5, 12), "..##..", 1.5},
             {"width 1, ratio 2", {}, level, down(5, 17), "..##..", 2},
             {"width 3, ratio 1.5", {.width = 3}, level, down(5, 10), "...#####...", 1.5},
             {"upright", {}, segment({10.3, 0}, {10.3, 20}), across(5, 8), "..#.."},
             {"slanted is not snapped", {}, segment({10, 0}, {10.001, 20}), across(5, 8), ".++.."},
             {"legs in line", {}, polyline({{0, 10.3}, {5, 10.3}, {18, 10.3}, {20, 0}}), down(12, 7), "..#.."},
             {"the closing leg", {}, polyline({{5.3, 2}, {15, 10}, {5.3, 18}}, true), across(10, 3), "..#.."},
             {"a rectangle's side", {}, rect({15, 15, -10, -10}), across(20, 7), "..##..", 2},
             {"round is not snapped", {}, arc({10, 10.25}, 6, 0, pi, false), down(10, 1), "..++..."},
             {"dash", dash, row10, across(10), "###..###..###..###.."},
             {"dash, ratio 1.5", dash, level, down(2, 12), "..##..", 1.5},
             {"dash phase", {.dash = {3, 2}, .phase = 1}, row10, across(10), "##..###..###..###..#"},
             {"dash phase below 0", {.dash = {3, 2}, .phase = -1}, row10, across(10), ".###..###..###..###."},
             {"odd dash", {.dash = {3, 1, 2}}, row10, across(10), "###.##...#..###.##.."},
             {"dash without gap", {.dash = {3, 0}}, row10, across(10), "####################"},
             {"dash too fine to see", {.dash = {1e-9, 1e-9}}, row10, across(10), "####################"},
             {"dash that is none", {.dash = {3, notANumber}}, row10, across(10), "####################"},
             {"phase that is none", {.dash = {3, 2}, .phase = notANumber}, row10, across(10), "###..###..###..###.."},
             // 100000 = 14285 * 7 + 5
             {"far dash", four, segment({-100000, 9.5}, {20, 9.5}), across(10), "..####...####...####"},
             // 39999.5 + 30.5 = 5718 * 7 + 4
             {"bent dash", four, polyline({{-30.5, 40009}, {-30.5, 9.5}, {20, 9.5}}), across(10),
              "...####...####...###"},
             {"slanted dash", slanted, segment({0, 20}, {20, 0}), {{0, 0}, {1, 1}}, "####...####...####.."},
             {"butt", w4, tick, across(10, 4), "....####...."},
             {"square", {.width = 4, .cap = QZLineCap::Square}, tick, across(8, 4), "..########.."},
             {"round, outside", {.width = 4, .cap = QZLineCap::Round}, tick, across(8, 4), "..+######+.."},
             {"round, middle", {.width = 4, .cap = QZLineCap::Round}, tick, across(10, 4), "..########.."},
             {"bevel", {.width = 4, .join = QZLineJoin::Bevel}, bent, across(10, 6), "####+........."},
             {"round join", {.width = 4, .join = QZLineJoin::Round}, bent, across(10, 6), "######........"},
             {"miter", w4, bent, across(10, 6), "#######++....."},
             // The tip is 1 / sin(atan(rise / 10)) widths long: 9.6 and 10.2.
             {"miter in its limit", w2, spike(1.05), across(10, 8), "####++++++.."},
             {"miter beyond it", w2, spike(0.99), across(10, 8), "##.........."},
             {"half circle above", w2, turn(0, pi, false), down(10, 2), ".##............."},
             {"half circle below", w2, turn(0, pi, true), down(10, 2), ".............##."},
             {"whole circle", w2, turn(1, 8, false), down(10, 2), ".##..........##."},
             {"a little to the right", w2, turn(-0.4, 0.4, false), across(10, 2), ".............##."},
             {"the rest to the left", w2, turn(-0.4, 0.4, true), across(10, 2), ".##............."},
             {"half an ellipse",
              {.width = 2, .dash = {6 * pi, 99}},
              ellipse({4, 4, 12, 12}),
              down(10, 2),
              ".##............."},
             {"far half circle", {}, arc({10.5, 9.5 - 1e5}, 1e5, 0, pi, false), down(10, 8), "..#.."},
             {"punched handle", {}, handle, across(10, 5), "###....###"},
             {"far polygon", {}, filled({{{10, -1e5}, {1e5, 0}, {10, 1e5}}}), across(10, 5), ".....##########"},
             {"windings add up",
              {},
              filled({{{2, 2}, {18, 2}, {10, 40}}, {{6, 6}, {14, 6}, {10, 14}}}),
              across(10, 7),
              "######"},
             {"to a point off all charts", {}, segment({5, 9.5}, {unplaced, 9.5}), across(10), "#####....."},
             {"image", {}, image({16, 16, -12, -12}), across(10, 3), ".####++++........"},
         }) {
        SCOPED_TRACE(row.name);
        const QImage pane = painted(with(row.pen, row.draw), 20, row.ratio);
        std::string ink;
        for (QPoint at = row.probe.from; pane.valid(at) && ink.size() < std::string_view(row.ink).size();
             at += row.probe.step) {
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
    struct Row {
        const char* name;
        Pen pen;
        Draw draw;
    };
    const Points wave{{-200, 20}, {30, 90}, {40, -120}, {70, 300}, {90, 30}, {250, 60}};
    const Points triangle{{50, 50}, {-150, 20}, {120, -90}};
    const Points arrow{{-200, -200}, {300, 50}, {-200, 300}, {20, 50}};
    for (const Row& row : std::vector<Row>{
             {"thin", {}, polyline(wave)},
             {"wide", {.width = 5}, polyline(wave)},
             {"wide, bevelled", {.width = 9, .cap = QZLineCap::Square, .join = QZLineJoin::Bevel}, polyline(wave)},
             {"a corner's tip from outside", {.width = 10}, polyline({{-100, 80}, {-8, 50}, {-100, 20}})},
             {"a square cap's corner", {.width = 100, .cap = QZLineCap::Square}, segment({-160, -50}, {-60, 50})},
             {"a wide line along the edge", {.width = 20}, segment({-200, -8}, {300, -5})},
             {"closed", {.width = 6}, polyline(triangle, true)},
             {"closed, dashed", {.width = 3, .dash = {14, 5, 6}, .phase = 2}, polyline(triangle, true)},
             {"dashed, thin", {.dash = {9, 4}, .phase = 3}, polyline(wave)},
             {"dashed, wide",
              {.width = 4, .dash = {30, 10}, .cap = QZLineCap::Round, .join = QZLineJoin::Round},
              polyline(wave)},
             {"translucent, crossing itself",
              {.width = 8, .color = QColor(0, 0, 0, 100)},
              polyline({{-90, 20}, {150, 30}, {50, 150}, {40, -90}})},
             {"rectangle", {.width = 3}, rect({60.3, 40.6, -200, 200})},
             {"rectangle, dashed", {.dash = {7, 3}}, rect({-100, 30, 150, 20})},
             {"arc", {.width = 3}, arc({50, -150}, 240, 0, pi, false)},
             {"arc, dashed", {.dash = {10, 5}}, arc({50, -150}, 240, 0, pi, false)},
             {"ellipse", {}, ellipse({-100, 20, 180, 50})},
             {"fill", {}, filled({arrow})},
             {"fill with a hole", {}, filled({arrow, {{-90, 40}, {-90, 60}, {60, 60}, {60, 40}}})},
             {"image", {}, image({-50, -20, 120, 200})},
         }) {
        SCOPED_TRACE(row.name);
        const Draw draw = with(row.pen, row.draw);
        const QImage cut = painted(draw, 100);
        const QImage whole = painted(draw, 700, 1.0, 300.0).copy(300, 300, 100, 100);
        int inked = 0;
        int different = 0;
        for (int y = 0; y < 100; ++y) {
            for (int x = 0; x < 100; ++x) {
                inked += qAlpha(cut.pixel(x, y)) > 0 ? 1 : 0;
                different += std::abs(qAlpha(cut.pixel(x, y)) - qAlpha(whole.pixel(x, y))) > 70 ? 1 : 0;
            }
        }
        EXPECT_GT(inked, 30);
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
                context.drawText(QStringLiteral("x"), systemFont(12), Qt::black, box);
                context.clearRect(box);
            }
            for (const Draw& draw : {arc({10, 10}, bad, 0, 1, false), arc({bad, 10}, 5, 0, 1, false),
                                     arc({10, 10}, 5, bad, 1, false), arc({10, 10}, 5, 0, -bad, true)})
                draw(context);
            segment({0, 10}, {bad, 10})(context);
            segment({bad, 10}, {0, 10})(context);
            polyline({{0, 10}, {20, 10}, {10, bad}})(context);
            filled({{{0, 0}, {20, 0}, {20, bad}}})(context);
        };
    };
    const QImage blank = painted([](auto&) {}, 20);
    for (const double bad : {notANumber, infinity, -infinity})
        EXPECT_EQ(painted(everythingWith(bad), 20), blank) << bad;
    // These are numbers, of which only what shows is drawn.
    for (const double far : {unplaced, -unplaced, 1e30, -1e30})
        EXPECT_NE(painted(everythingWith(far), 20), blank) << far;
}

TEST(PainterContext, StateComesBackAndWidthsHaveBounds)
{
    const Draw level = polyline({{0, 10}, {20, 10}});
    const QImage plain = painted(level, 20);
    const Pen other{7, {2, 2}, 1, QZLineCap::Round, QZLineJoin::Round, Qt::red};
    const auto nested = [&](QZGraphicsContext& context) {
        context.saveState();
        with(other, level)(context);
        context.clearRect({0, 0, 20, 20});
        context.restoreState();
        context.restoreState();
        polyline({{0, 0}, {20, infinity}})(context);
        level(context);
    };
    EXPECT_EQ(painted(nested, 20), plain);
    for (const double width : {0.0, -5.0, notANumber, infinity})
        EXPECT_EQ(painted(with({.width = width}, level), 20), plain) << width;
    EXPECT_EQ(painted(with({.width = 1e300}, level), 20).pixelColor(0, 0), QColor(Qt::black));
}

TEST(PainterContext, AnOpaqueImageKeepsItsColourUnderAHandle)
{
    QImage white(8, 8, QImage::Format_RGB32);
    white.fill(Qt::white);
    QPainter painter(&white);
    QZPainterContext(painter, 8, QZPainterContext::Edges::PixelSnapped).clearRect({0, 0, 8, 8});
    EXPECT_EQ(white.pixelColor(4, 4), QColor(Qt::white));
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
        with({.width = 2, .dash = {10, 5, 2}, .phase = 4}, polyline({{-90000, 49.75}, {50, 49.75}, {60, 20}}))(context);
        context.clearRect({0, 0, 100, 100});
        context.drawText(QStringLiteral("12.50"), systemFont(12), Qt::black, {5, 5, 40, 15});
    }
    painter.end();
    const QByteArray text = svg.data();
    for (const char* part : {R"(stroke-dasharray="10,5,2,10,5,2" stroke-dashoffset="4")",
                             "M-90000,50.25 L50,50.25 L60,80", ">12.50</text>"})
        EXPECT_TRUE(text.contains(part)) << part << " in\n" << text.toStdString();
    EXPECT_EQ(text.count("<poly") + text.count("<path"), 1) << text.toStdString();
}
