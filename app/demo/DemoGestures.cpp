#include "app/demo/DemoGestures.h"

#include "app/bars/Swings.h"
#include "app/chart/ChartSplitView.h"
#include "app/window/ChartWindow.h"
#include "panels/QZPaintControl.h"
#include "panels/QZPaintGraphConfigWC.h"
#include "panels/QZPanelWindow.h"
#include "surface/QZPaintLayer.h"

#include <QDeadlineTimer>
#include <QPainter>
#include <QWindow>

#include <algorithm>
#include <cmath>

namespace {

constexpr Qt::Key segment = Qt::Key_1;
constexpr Qt::Key straightLine = Qt::Key_3;
constexpr Qt::Key ray = Qt::Key_2;
constexpr Qt::Key arrow = Qt::Key_4;
constexpr Qt::Key horizontalLine = Qt::Key_5;
constexpr Qt::Key priceLine = Qt::Key_6;

constexpr int wheelNotch = 120;
/// Farther than this from a key point one takes hold of the figure, not of the point (px).
constexpr double handleReach = 8;
/// Bars in the picture at most.
constexpr double pictureSpan = 130;
constexpr QSize pictureSize(1280, 800);

BarTime momentOf(const QZPaintLogicAxis& axis)
{
    return {axis.date, axis.time};
}

} // namespace

DemoGestures::DemoGestures(ChartWindow& window) : window_(window), pane_(*window.chart().panes().front()), user_(window)
{}

QString DemoGestures::play(const QString& picturePath)
{
    waitUntilShown();
    editFigures();
    cancelAndDelete();
    navigate();
    resizeWindow();
    composePicture();
    if (failure_.isNull() && !picture().save(picturePath, "PNG"))
        failure_ = QStringLiteral("%1: cannot write the picture").arg(picturePath);
    return failure_;
}

// The window as it is on a screen: its panels are windows of their own above it.
QPixmap DemoGestures::picture() const
{
    QPixmap screen = window_.grab();
    QPainter painter(&screen);
    for (QWidget* panel : {static_cast<QWidget*>(&QZPaintControl::sharedManager().window()),
                           static_cast<QWidget*>(&QZPaintGraphConfigWC::sharedWC().window())}) {
        if (!panel->isVisible())
            continue;
        const QRect frame = QRect(window_.mapFromGlobal(panel->pos()), panel->size());
        painter.drawPixmap(frame.topLeft(), panel->grab());
        painter.setPen(QColor(0, 0, 0, 60));
        painter.drawRect(frame.adjusted(-1, -1, 0, 0));
    }
    return screen;
}

void DemoGestures::waitUntilShown()
{
    const QDeadlineTimer limit(5000);
    while (!window_.windowHandle()->isExposed() && !limit.hasExpired())
        UserInput::settle();
    window_.resize(pictureSize);
    UserInput::settle();
    expect(window_.windowHandle()->isExposed(), "showing the window");
}

void DemoGestures::editFigures()
{
    draw(segment, {swing(0.2, false), swing(0.4, true)});
    expectCount(1, "drawing a segment");
    if (!failure_.isNull())
        return;
    expect(QZPaintControl::sharedManager().selectedType() == QZShapeTypeNone, "lifting the button of a finished tool");

    auto before = storedPoints();
    const Place target = apartFrom(swing(0.2, false), swing(0.6, true));
    user_.drag(user_.positionOf(pane_, pane_.convertFromLogicAxis(before[0][1])), positionOf(target));
    auto after = storedPoints();
    expectCount(1, "dragging a handle");
    expect(momentOf(after[0][1]) == pane_.chartData()->calendar.at(target.bar), "moving a point by its handle");
    expect(momentOf(after[0][0]) == momentOf(before[0][0]), "leaving the other point alone");

    const auto figure = pane_.paintLayer()->graphs().snapshot()->front();
    const QPointF grasp = graspOf(*figure);
    user_.drag(grasp, grasp - QPointF(pane_.scale().barWidth() * 3, 30));
    before = after;
    after = storedPoints();
    expect(momentOf(after[0][0]) < momentOf(before[0][0]) && after[0][0].price > before[0][0].price,
           "moving a whole figure");

    user_.key(Qt::Key_Delete);
    expectCount(0, "Delete");
    draw(ray, {swing(0.3, true), swing(0.7, true)});
    expectCount(1, "drawing a ray");
    user_.key(Qt::Key_Backspace);
    expectCount(0, "Backspace");
}

void DemoGestures::cancelAndDelete()
{
    user_.key(arrow);
    expect(QZPaintControl::sharedManager().selectedType() == QZSTArrowSegment, "arming the arrow");
    user_.click(positionOf(swing(0.5, true)));
    user_.key(Qt::Key_Escape);
    expectCount(0, "Escape");
    expect(!pane_.paintLayer()->currentGraph() && QZPaintControl::sharedManager().selectedType() == QZShapeTypeNone,
           "disarming with Escape");
    user_.doubleClick(emptyPosition());
    expectCount(0, "a double click on the chart");
}

void DemoGestures::navigate()
{
    draw(segment, {swing(0.2, false), swing(0.5, true)});
    draw(ray, {swing(0.4, true), swing(0.8, true)});
    draw(priceLine, {swing(0.6, false)});
    draw(segment, {swing(0.7, false), {pane_.chartData()->series.size() + 2, swing(0.8, true).price}});
    expectCount(4, "drawing four figures");
    const StoredPoints before = storedPoints();
    const auto step = [&](const char* what, auto&& gesture) {
        const double first = window_.chart().viewport().first();
        const double span = window_.chart().viewport().span();
        gesture();
        const ChartViewport& viewport = window_.chart().viewport();
        const bool isAtEnd =
            viewport.first() == viewport.firstReachable() || viewport.last() == viewport.lastReachable();
        expect(first != viewport.first() || span != viewport.span() || isAtEnd, what);
        expectAtSamePlaces(before, what);
    };
    const QPointF middle = user_.positionOf(pane_, {pane_.width() / 2.0, pane_.height() / 2.0});
    step("dragging the chart", [&] {
        const QPointF from = emptyPosition();
        user_.drag(from, from + QPointF(160, 0));
    });
    step("the left arrow key", [&] { user_.key(Qt::Key_Left); });
    step("Shift and the left arrow key", [&] { user_.key(Qt::Key_Left, Qt::ShiftModifier); });
    step("the right arrow key", [&] { user_.key(Qt::Key_Right); });
    step("the wheel away", [&] { user_.wheel(middle, {0, 2 * wheelNotch}); });
    step("the wheel near", [&] { user_.wheel(middle, {0, -5 * wheelNotch}); });
    step("Ctrl and the wheel", [&] { user_.wheel(middle, {0, 2 * wheelNotch}, Qt::ControlModifier); });
    step("the + key", [&] { user_.key(Qt::Key_Plus); });
    step("the - key", [&] { user_.key(Qt::Key_Minus); });
    step("Home", [&] { user_.key(Qt::Key_Home); });
    step("End", [&] { user_.key(Qt::Key_End); });
}

void DemoGestures::resizeWindow()
{
    const StoredPoints before = storedPoints();
    window_.resize(1000, 640);
    UserInput::settle();
    expectAtSamePlaces(before, "a smaller window");
    window_.resize(pictureSize);
    UserInput::settle();
    expectAtSamePlaces(before, "a larger window");
    deleteAll();
    expectCount(0, "deleting every figure");
}

void DemoGestures::composePicture()
{
    while (window_.chart().viewport().span() > pictureSpan && failure_.isNull())
        user_.key(Qt::Key_Plus);
    user_.key(Qt::Key_End);
    user_.key(Qt::Key_P);
    expect(QZPaintControl::sharedManager().window().isVisible(), "opening the palette");
    const Place support = swing(0.35, false);
    const Place top = swing(0.5, true);
    const Place pullback = swing(0.48, false);
    draw(straightLine, {support, swing(0.75, false)});
    draw(ray, {swing(0.62, true), swing(0.85, true)});
    draw(arrow, {beside(pullback, 9, -22), beside(pullback, 1, -2)});
    draw(horizontalLine, {swing(0.45, true)});
    draw(priceLine, {swing(0.1, false)});
    draw(segment, {support, top});
    expectCount(6, "drawing all six tools");

    user_.moveTo(positionOf(beside(top, 4, 6)));
    UserInput::settle();
    const auto current = pane_.paintLayer()->currentGraph();
    expect(current && current->isSelected() && current->type() == QZSTLineSegment, "selecting the segment");
    expectAtSamePlaces(storedPoints(), "the last figure");
}

void DemoGestures::draw(Qt::Key tool, const std::vector<Place>& places)
{
    user_.key(tool);
    Place last{-1, 0};
    for (Place place : places) {
        place = apartFrom(last, place);
        user_.moveTo(positionOf(place) - QPointF(20, 10));
        user_.click(positionOf(place));
        last = place;
    }
}

void DemoGestures::deleteAll()
{
    for (std::size_t count = pane_.paintLayer()->graphs().count(); count > 0; --count) {
        user_.click(
            findPosition([this](QZPoint point) { return pane_.paintLayer()->getClosedGraph(point) != nullptr; }));
        user_.key(Qt::Key_Delete);
    }
}

QPointF DemoGestures::positionOf(Place place) const
{
    return user_.positionOf(pane_, {pane_.scale().xOf(place.bar), pane_.scale().yOf(place.price)});
}

DemoGestures::Place DemoGestures::swing(double part, bool isHigh) const
{
    const BarSeries& series = pane_.chartData()->series;
    const PaneScale& scale = pane_.scale();
    const int first = std::clamp(static_cast<int>(std::ceil(scale.first)), 0, series.size() - 1);
    const int last = std::clamp(static_cast<int>(std::floor(scale.first + scale.span)), 0, series.size() - 1);
    const double target = first + (last - first) * part;
    // Bars on which nothing turns leave no swing; the smallest reach takes every bar for one.
    for (int reach = 1 + (last - first) / 16;; reach /= 2) {
        auto swings = findSwings(series, first, last, reach);
        std::erase_if(swings, [isHigh](const Swing& each) { return each.isHigh != isHigh; });
        const auto nearest =
            std::ranges::min_element(swings, {}, [target](const Swing& each) { return std::abs(each.bar - target); });
        if (nearest != swings.end())
            return {nearest->bar, nearest->price};
    }
}

DemoGestures::Place DemoGestures::beside(Place place, int bars, double percent) const
{
    const PaneScale& scale = pane_.scale();
    const double percentHeight = (scale.high - scale.low) / 100;
    const int lastBar = static_cast<int>(std::floor(scale.first + scale.span)) - 1;
    return {std::min(place.bar + bars, lastBar),
            std::clamp(place.price + percent * percentHeight, scale.low + 3 * percentHeight,
                       scale.high - 3 * percentHeight)};
}

// In a market without movement two swings may be one.
DemoGestures::Place DemoGestures::apartFrom(Place other, Place place) const
{
    return place == other ? beside(place, 3, 10) : place;
}

QPointF DemoGestures::emptyPosition()
{
    return findPosition([this](QZPoint point) { return pane_.paintLayer()->getClosedGraph(point) == nullptr; });
}

QPointF DemoGestures::graspOf(const QZPaintGraph& figure)
{
    return findPosition([&](QZPoint point) {
        const bool isOnHandle = std::ranges::any_of(figure.points(), [point](QZPoint handle) {
            return std::hypot(handle.x - point.x, handle.y - point.y) < handleReach;
        });
        return !isOnHandle && pane_.paintLayer()->getClosedGraph(point).get() == &figure;
    });
}

QPointF DemoGestures::findPosition(const std::function<bool(QZPoint)>& isWanted)
{
    const QZRect plot = pane_.scale().plot;
    for (int right = 5; right < plot.width; right += 7) {
        for (int up = 5; up < plot.height; up += 3) {
            const QZPoint point{plot.x + right, plot.y + up};
            if (isWanted(point))
                return user_.positionOf(pane_, point);
        }
    }
    expect(false, "finding a place to click");
    return user_.positionOf(pane_, {plot.minX(), plot.minY()});
}

void DemoGestures::expect(bool holds, const char* what)
{
    if (!holds && failure_.isNull())
        failure_ = QStringLiteral("qzchart: the demonstration failed at: %1").arg(QString::fromUtf8(what));
}

void DemoGestures::expectCount(std::size_t count, const char* what)
{
    expect(pane_.paintLayer()->graphs().count() == count, what);
}

DemoGestures::StoredPoints DemoGestures::storedPoints() const
{
    StoredPoints points;
    const auto figures = pane_.paintLayer()->graphs().snapshot();
    for (const auto& figure : *figures)
        points.push_back(figure->logicAxises());
    return points;
}

// The screen points are those of the last redraw: converted back they must be where the figure was put.
void DemoGestures::expectAtSamePlaces(const StoredPoints& before, const char* after)
{
    const auto figures = pane_.paintLayer()->graphs().snapshot();
    expect(figures->size() == before.size(), after);
    for (std::size_t i = 0; i < std::min(figures->size(), before.size()); ++i) {
        const auto& points = (*figures)[i]->points();
        for (std::size_t j = 0; j < std::min(points.size(), before[i].size()); ++j) {
            const auto now = pane_.convertFromPoint(points[j]);
            const QZPaintLogicAxis& then = before[i][j];
            expect(now && momentOf(*now) == momentOf(then) &&
                       std::abs(now->price - then.price) <= 1e-9 * std::abs(then.price) + 1e-9,
                   after);
        }
    }
}
