#include "platform/QZPainterContext.h"
#include "support/RecordingContext.h"
#include "support/Spies.h"
#include "support/widgets/Gesture.h"
#include "support/widgets/Picture.h"
#include "tools/QZPaintRangeStatistics.h"
#include "tools/QZPaintToolTable.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <limits>

namespace {

using Points = std::vector<QZPoint>;

// The tools that do something otherwise than all others, on purpose.
constexpr std::int64_t neverEndsCreation = QZSTToolRule; // a new measurement begins where the last one ended
constexpr std::int64_t isHitByItsBox = QZSTToolText | QZSTToolUp | QZSTToolDown; // taken hold of anywhere around it
constexpr std::int64_t leavesStateSaved = QZSTCycle | QZSTFreeFeis; // a figure without width keeps the saved state
constexpr std::int64_t belongsToHost = QZSTToolRangeStatistics;     // is not picked from the palette, and never hidden

/// What every tool of the table promises, one run per tool.
class ToolContract : public ::testing::TestWithParam<QZPaintToolRow> {
protected:
    ToolContract()
    {
        points.resize(static_cast<std::size_t>(createPaintTool(GetParam().type)->maxPointCount()));
        for (const QZPoint point : points)
            axises.push_back(pane.chart().convertFromPoint(point).value());
    }

    static bool is(std::int64_t exempt) { return (GetParam().type & exempt) != 0; }

    /// As from a file.
    std::shared_ptr<QZPaintGraph> restored(const std::vector<QZPaintLogicAxis>& stored,
                                           std::int64_t type = GetParam().type)
    {
        auto graph = createPaintTool(type);
        graph->initWithLayer(pane.view().paintLayer(), Qt::red, Qt::green, 1, 2, stored, QStringLiteral("note"),
                             QFont(), false, false, false);
        return graph;
    }

    static RecordingContext recorded(QZPaintGraph& graph)
    {
        RecordingContext context;
        graph.drawInContext(context);
        return context;
    }

    /// A painter that scales by anything but the ratio, however little, gets nothing that was prepared for its pixels.
    static QImage painted(QZPaintGraph& graph, double ratio = 1.0, double scale = 1.0)
    {
        QImage image(QSizeF(400 * ratio, 300 * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.scale(scale, scale);
        QZPainterContext context(painter, 300, QZPainterContext::Edges::PixelSnapped);
        graph.drawInContext(context);
        return image;
    }

    void addOther(std::int64_t type)
    {
        auto graph = restored(
            {pane.chart().convertFromPoint({70, 60}).value(), pane.chart().convertFromPoint({320, 230}).value()}, type);
        graph->setStrokeColor(QColor(0, 90, 200, 120));
        graph->setLineWidth(3);
        pane.layer().graphs().add(std::move(graph));
    }

    /// A gesture whose last step is drawn between pictures of the other figures.
    void expectSteps(const char* name, const std::function<void(QZPoint)>& moveTo, QZPoint to)
    {
        SCOPED_TRACE(name);
        const auto frame = [this] { return pane.layer().contents({400, 300}, 1.25); };
        for (const double way : {40.0, 20.0}) {
            moveTo({to.x - way, to.y - 5});
            frame();
        }
        moveTo(to);
        const int calls = pane.chart().fromAxis.calls();
        const QImage step = frame();
        EXPECT_LE(pane.chart().fromAxis.calls() - calls, static_cast<int>(points.size())) << "no other figure is drawn";
        pane.view().displayPaintLayer();
        EXPECT_LE(Picture::farthest(step, frame()), 2);
    }

    TestPane pane;
    Points points{{100, 100}, {220, 180}, {300, 90},  {160, 220}, {60, 240},
                  {340, 200}, {200, 60},  {260, 260}, {40, 30}}; ///< as many as the tool has
    std::vector<QZPaintLogicAxis> axises;                        ///< of these points
};

} // namespace

TEST_P(ToolContract, IsFinishedByAsManyClicksAsItHasPointsAndThenDragged)
{
    if (is(belongsToHost))
        return;
    const auto graph = pane.draw(GetParam().type, {});
    ASSERT_NE(graph, nullptr);
    for (const QZPoint click : points) {
        EXPECT_TRUE(graph->isEditing());
        EXPECT_EQ(pane.layer().graphs().count(), 0U);
        painted(*graph);
        EXPECT_TRUE(recorded(*graph).isBalanced() || is(leavesStateSaved));
        pane.click(click);
    }
    EXPECT_EQ(graph->isEditing(), is(neverEndsCreation));
    if (is(neverEndsCreation))
        return;
    EXPECT_TRUE(pane.layer().graphs().contains(graph.get()));
    EXPECT_TRUE(graph->isSelected());
    EXPECT_EQ(graph->points(), points);

    // Straight to the layer: where a figure can be taken hold of is its own business.
    graph->setCurrentPoint(std::nullopt);
    graph->setDragStartPoint({10, 10});
    pane.layer().mouseDragged({30, 15});
    pane.layer().mouseUp({30, 15});
    for (std::size_t i = 0; i < points.size(); ++i) {
        points[i] = {points[i].x + 20, points[i].y + 5};
        EXPECT_EQ(graph->logicAxises().at(i).price, points[i].y) << i;
    }
    EXPECT_EQ(graph->points(), points);
    graph->setSelected(false);
    recorded(*graph);
    EXPECT_EQ(graph->points(), points) << "to the chart and back";
}

TEST_P(ToolContract, LooksInTheHandAsInAFullRedraw)
{
    pane.split().setUpdatesEnabled(false); // the test paints
    pane.click({1, 1});
    addOther(QZSTRectangle);
    addOther(QZSTPipeRegression); // leaves its width and dash to what is drawn next
    const auto follow = [this](QZPoint to) { pane.layer().mouseMoved(to); };
    const auto drag = [this](QZPoint to) { pane.layer().mouseDragged(to); };
    if (is(belongsToHost)) {
        pane.view().displayRangeStatisticsGraphFromDate(20240010, 0, 20240020, 0);
        pane.layer().setCurrentGraph(QZPaintRangeStatistics::sharedGraph());
        pane.current()->setSelected(true);
    } else {
        pane.draw(GetParam().type, {});
        for (const QZPoint point : points) {
            expectSteps("placing", follow, point);
            pane.click(point);
        }
    }
    if (is(neverEndsCreation))
        return;
    addOther(QZSTGoldenSection);
    addOther(QZSTRectangle);
    pane.current()->setCurrentPoint(0);
    expectSteps("by a handle", drag, {150, 70});
    pane.layer().mouseUp({});
    pane.current()->setDragStartPoint({});
    expectSteps("as a whole", drag, {30, 15});
    pane.view().removeRangeStatisticsGraph();
}

TEST_P(ToolContract, EscapeLeavesNothingOfAFigureInCreation)
{
    points.resize(is(belongsToHost) ? 0 : points.size() - (is(neverEndsCreation) ? 0 : 1));
    pane.draw(GetParam().type, points);
    Gesture(pane).key(Qt::Key_Escape);
    EXPECT_FALSE(pane.current() || pane.layer().graphs().count() > 0 || pane.graphAt({100, 100}));
}

TEST_P(ToolContract, DrawsNothingWhenHiddenAndSurvivesAMissingChartAndAMissingLayer)
{
    const auto graph = restored(axises);
    graph->setHidden(true);
    EXPECT_EQ(recorded(*graph).lines.empty(), !is(belongsToHost));
    graph->setHidden(false);
    EXPECT_FALSE(recorded(*graph).lines.empty());

    pane.layer().setManagerView(nullptr);
    for (const char* missing : {"chart", "layer"}) {
        SCOPED_TRACE(missing);
        painted(*graph);
        EXPECT_TRUE(recorded(*graph).isBalanced());
        EXPECT_FALSE(std::isnan(graph->minDistanceFromPoint({100, 100})));
        graph->isNearKeyPoint({100, 100});
        graph->mouseDown({100, 100});
        graph->mouseDragged({120, 100});
        graph->mouseUp({120, 100});
        graph->setLayer(nullptr);
    }
    pane.layer().setManagerView(&pane.view());
}

TEST_P(ToolContract, LooksTheSameFromPreparedCaptionsAndDashes)
{
    const auto graph = restored(axises);
    for (const double ratio : {1.0, 1.5, 2.0}) {
        const QImage plain = painted(*graph, ratio, 1.0 + 1e-14);
        painted(*graph, ratio);
        const QImage prepared = painted(*graph, ratio);
        int worst = 0;
        for (int i = 0; i < plain.width() * plain.height(); ++i) {
            const QPoint at(i % plain.width(), i / plain.width());
            worst = std::max(worst, std::abs(qAlpha(plain.pixel(at)) - qAlpha(prepared.pixel(at))));
        }
        EXPECT_LE(worst, 256 / 4) << "a quarter of a pixel, at ratio " << ratio;
    }
}

TEST_P(ToolContract, IsHitWhereItIsDrawn)
{
    const auto graph = restored(axises);
    const auto captions = recorded(*graph).textBoxes;
    const QImage image = painted(*graph);
    std::size_t drawn = 0;
    Points missed;
    for (int row = 0; row < image.height(); ++row) {
        for (int column = 0; column < image.width(); ++column) {
            const QZPoint point{column + 0.5, image.height() - row - 0.5};
            const bool inCaption = std::ranges::any_of(captions, [point](QZRect box) {
                return QZRect{box.x - 2, box.y - 2, box.width + 4, box.height + 4}.contains(point);
            });
            if (image.pixelColor(column, row).alpha() < 128 || inCaption)
                continue;
            ++drawn;
            if (!(graph->minDistanceFromPoint(point) < maxMinDistance))
                missed.push_back(point);
        }
    }
    if (is(isHitByItsBox)) {
        ASSERT_FALSE(captions.empty());
        const QZRect box = captions.front();
        EXPECT_LT(graph->minDistanceFromPoint({box.x + box.width / 2, box.y + box.height / 2}), maxMinDistance);
        return;
    }
    if (is(neverEndsCreation))
        return; // there is no finished figure to take hold of
    EXPECT_GT(drawn, 0U);
    EXPECT_TRUE(missed.empty()) << missed.size() << " of " << drawn << " missed, from "
                                << ::testing::PrintToString(missed.front()) << " to "
                                << ::testing::PrintToString(missed.back());
}

TEST_P(ToolContract, SurvivesAnyPoints)
{
    constexpr double inf = std::numeric_limits<double>::infinity();
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    struct Row {
        const char* name;
        std::array<QZPoint, 3> points; ///< taken in turns
    };
    const std::vector<Row> rows{{"coincident", {{{100, 100}, {100, 100}, {100, 100}}}},
                                {"vertical", {{{100, 100}, {100, 200}, {100, 50}}}},
                                {"all but vertical", {{{100, 0}, {100.00005, 90}, {100, 9}}}},
                                {"far off", {{{1e9, -1e9}, {-1e9, 1e9}, {100, 1e9}}}},
                                {"NaN", {{{nan, 100}, {100, nan}, {200, 100}}}},
                                {"infinite", {{{inf, 100}, {100, -inf}, {-inf, inf}}}},
                                {"missing", {{missingPoint, {100, 100}, unplaceablePoint}}}};
    const LogSpy log;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        pane.chart().fromAxis.answerWith(
            [&row](const QZPaintLogicAxis& axis) { return row.points.at(static_cast<std::size_t>(axis.date) % 3); });
        for (std::size_t i = 0; i < axises.size(); ++i)
            axises[i].date = static_cast<std::int32_t>(i);
        const auto graph = restored(axises);
        painted(*graph);
        EXPECT_TRUE(recorded(*graph).isBalanced() || is(leavesStateSaved));
        graph->setLineWidth(static_cast<std::uint64_t>(-1)); // what a negative one in a file becomes
        painted(*graph);
        for (const QZPoint at : {QZPoint{100, 100}, row.points[0], QZPoint{nan, inf}}) {
            const bool near = graph->minDistanceFromPoint(at) < maxMinDistance;
            EXPECT_EQ(graph->isNearSelectionLine(at), near);
            graph->isNearKeyPoint(at);
        }
    }
}

TEST_P(ToolContract, RestoresFromTooFewAndTooManyPoints)
{
    const auto drawing = recorded(*restored(axises)).lines;
    for (std::size_t count = 0; count < 2 * axises.size() + 2; ++count) {
        auto stored = axises;
        stored.resize(count, axises.front());
        const auto graph = restored(stored);
        painted(*graph);
        EXPECT_TRUE(count < axises.size() || recorded(*graph).lines == drawing) << count;
        EXPECT_EQ(graph->points().size(), points.size());
        EXPECT_FALSE(std::isnan(graph->minDistanceFromPoint({390, 290})));
        EXPECT_EQ(graph->convertToLogicAxises().size(), points.size());
    }
}

TEST(ToolTable, StandsInTheOrderOfTheTypes)
{
    EXPECT_TRUE(std::ranges::is_sorted(paintToolTable(), std::ranges::less{}, &QZPaintToolRow::type));
}

INSTANTIATE_TEST_SUITE_P(EveryRow, ToolContract, ::testing::ValuesIn(paintToolTable().begin(), paintToolTable().end()),
                         [](const auto& tool) { return strQZShapeType(tool.param.type).toStdString(); });
