#include "platform/QZPainterContext.h"
#include "support/RecordingContext.h"
#include "support/Spies.h"
#include "support/widgets/Gesture.h"
#include "tools/QZPaintToolTable.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

using Points = std::vector<QZPoint>;

/// What a tool may do otherwise than all others, on purpose.
enum Exemption : unsigned {
    NeverEndsCreation = 1, ///< a new measurement begins where the last one ended
    IsHitByItsBox = 2,     ///< a glyph or a text, taken hold of anywhere around it
    LeavesStateSaved = 4,  ///< a figure without width keeps the context's saved state
    IsNeverHidden = 8,     ///< belongs to the host
};

struct ExemptTool {
    QZShapeType type;
    unsigned exemptions;
};

constexpr std::array exemptTools{
    ExemptTool{QZSTCycle, LeavesStateSaved},
    ExemptTool{QZSTFreeFeis, LeavesStateSaved},
    ExemptTool{QZSTToolText, IsHitByItsBox},
    ExemptTool{QZSTToolUp, IsHitByItsBox},
    ExemptTool{QZSTToolDown, IsHitByItsBox},
    ExemptTool{QZSTToolRule, NeverEndsCreation},
    ExemptTool{QZSTToolRangeStatistics, IsNeverHidden},
};

/// What every tool of the table promises, one run per tool.
class ToolContract : public ::testing::TestWithParam<std::int64_t> {
protected:
    static bool is(Exemption exemption)
    {
        return std::ranges::any_of(exemptTools, [exemption](const ExemptTool& tool) {
            return tool.type == GetParam() && (tool.exemptions & exemption) != 0;
        });
    }

    Points somePoints() const
    {
        const Points all{{100, 100}, {220, 180}, {300, 90},  {160, 220}, {60, 240},
                         {340, 200}, {200, 60},  {260, 260}, {40, 30}};
        const auto count = static_cast<std::size_t>(createPaintTool(GetParam())->maxPointCount());
        EXPECT_LE(count, all.size());
        return {all.begin(), all.begin() + static_cast<std::ptrdiff_t>(std::min(count, all.size()))};
    }

    /// Restored from a file with `axises`, the way a store does it.
    std::shared_ptr<QZPaintGraph> restored(std::vector<QZPaintLogicAxis> axises)
    {
        auto graph = createPaintTool(GetParam());
        graph->initWithLayer(pane.view().paintLayer(), Qt::red, Qt::green, 1, 2, std::move(axises),
                             QStringLiteral("note"), QFont(), false, false, false);
        return graph;
    }

    std::vector<QZPaintLogicAxis> axisesOf(const Points& points)
    {
        std::vector<QZPaintLogicAxis> axises;
        for (const QZPoint point : points)
            axises.push_back(pane.chart().convertFromPoint(point).value_or(QZPaintLogicAxis{}));
        return axises;
    }

    static RecordingContext recorded(QZPaintGraph& graph)
    {
        RecordingContext context;
        graph.drawInContext(context);
        return context;
    }

    QImage painted(QZPaintGraph& graph) const
    {
        QImage image(400, 300, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        QZPainterContext context(painter, image.height(), QZPainterContext::Edges::PixelSnapped);
        graph.drawInContext(context);
        return image;
    }

    TestPane pane;
};

/// What a tool that the user picks from the palette promises besides.
class PickedToolContract : public ToolContract {};

std::vector<std::int64_t> typesIn(std::int64_t mask)
{
    std::vector<std::int64_t> types;
    for (const QZPaintToolRow& row : paintToolTable())
        if ((row.type & mask) != 0)
            types.push_back(row.type);
    return types;
}

} // namespace

TEST_P(PickedToolContract, IsFinishedByAsManyClicksAsItHasPoints)
{
    const Points clicks = somePoints();
    const auto graph = pane.draw(GetParam(), {});
    ASSERT_NE(graph, nullptr);
    for (const QZPoint click : clicks) {
        EXPECT_TRUE(graph->isEditing());
        EXPECT_EQ(pane.layer().graphs().count(), 0U);
        EXPECT_FALSE(painted(*graph).isNull());
        EXPECT_TRUE(recorded(*graph).isBalanced() || is(LeavesStateSaved));
        pane.click(click);
    }
    EXPECT_EQ(graph->isEditing(), is(NeverEndsCreation));
    if (is(NeverEndsCreation))
        return;
    EXPECT_TRUE(pane.layer().graphs().contains(graph.get()));
    EXPECT_EQ(graph->points(), clicks);

    graph->setSelected(false);
    recorded(*graph);
    EXPECT_EQ(graph->points(), clicks) << "to the chart and back";
}

TEST_P(PickedToolContract, EscapeLeavesNothingOfAFigureInCreation)
{
    Points clicks = somePoints();
    if (!is(NeverEndsCreation))
        clicks.pop_back();
    pane.draw(GetParam(), clicks);
    Gesture(pane).key(Qt::Key_Escape);
    EXPECT_EQ(pane.current(), nullptr);
    EXPECT_EQ(pane.layer().graphs().count(), 0U);
    EXPECT_EQ(pane.graphAt(clicks.empty() ? QZPoint{100, 100} : clicks.front()), nullptr);
}

TEST_P(ToolContract, HiddenItDrawsNothing)
{
    const auto graph = restored(axisesOf(somePoints()));
    graph->setHidden(true);
    EXPECT_EQ(recorded(*graph).lines.empty(), !is(IsNeverHidden));
    graph->setHidden(false);
    EXPECT_FALSE(recorded(*graph).lines.empty());
}

TEST_P(ToolContract, SurvivesAMissingChartAndAMissingLayer)
{
    const auto graph = restored(axisesOf(somePoints()));
    recorded(*graph);
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

TEST_P(ToolContract, IsHitWhereItIsDrawn)
{
    const auto graph = restored(axisesOf(somePoints()));
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
    if (is(IsHitByItsBox)) {
        ASSERT_FALSE(captions.empty());
        const QZRect box = captions.front();
        EXPECT_LT(graph->minDistanceFromPoint({box.x + box.width / 2, box.y + box.height / 2}), maxMinDistance);
        return;
    }
    if (is(NeverEndsCreation))
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
        std::vector<QZPaintLogicAxis> axises(somePoints().size());
        for (std::size_t i = 0; i < axises.size(); ++i)
            axises[i].date = static_cast<std::int32_t>(i);
        const auto graph = restored(axises);
        EXPECT_FALSE(painted(*graph).isNull());
        EXPECT_TRUE(recorded(*graph).isBalanced() || is(LeavesStateSaved));
        graph->setLineWidth(static_cast<std::uint64_t>(-1)); // what a negative one in a file becomes
        EXPECT_FALSE(painted(*graph).isNull());
        for (const QZPoint at : {QZPoint{100, 100}, row.points[0], QZPoint{nan, inf}}) {
            const bool near = graph->minDistanceFromPoint(at) < maxMinDistance;
            EXPECT_EQ(graph->isNearSelectionLine(at), near);
            graph->isNearKeyPoint(at);
        }
    }
}

TEST_P(ToolContract, RestoresFromTooFewAndTooManyPoints)
{
    const auto whole = axisesOf(somePoints());
    auto many = whole;
    many.insert(many.end(), 5, whole.front());
    const auto graph = restored(many);
    EXPECT_EQ(recorded(*graph).lines, recorded(*restored(whole)).lines);
    EXPECT_EQ(graph->points().size(), whole.size());

    for (std::size_t count = 0; count < whole.size(); ++count) {
        const auto few = restored({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(count)});
        EXPECT_FALSE(painted(*few).isNull());
        EXPECT_EQ(few->points().size(), whole.size());
        EXPECT_FALSE(std::isnan(few->minDistanceFromPoint({390, 290})));
        EXPECT_EQ(few->convertToLogicAxises().size(), whole.size());
    }
}

TEST_P(PickedToolContract, ADragMovesAllPoints)
{
    if (is(NeverEndsCreation))
        return;
    const Points before = somePoints();
    const auto graph = pane.draw(GetParam(), before);
    ASSERT_TRUE(graph->isSelected());
    // Straight to the layer: where a figure can be taken hold of is its own business.
    graph->setCurrentPoint(std::nullopt);
    graph->setDragStartPoint({10, 10});
    pane.layer().mouseDragged({30, 15});
    pane.layer().mouseUp({30, 15});
    for (std::size_t i = 0; i < before.size(); ++i) {
        EXPECT_EQ(graph->points().at(i), (QZPoint{before[i].x + 20, before[i].y + 5})) << i;
        EXPECT_EQ(graph->logicAxises().at(i).price, before[i].y + 5) << i;
    }
}

TEST(ToolTable, StandsInTheOrderOfTheTypes)
{
    EXPECT_TRUE(std::ranges::is_sorted(paintToolTable(), std::ranges::less{}, &QZPaintToolRow::type));
}

const auto nameOf = [](const auto& tool) { return strQZShapeType(tool.param).toStdString(); };
INSTANTIATE_TEST_SUITE_P(EveryRow, ToolContract, ::testing::ValuesIn(typesIn(-1)), nameOf);
INSTANTIATE_TEST_SUITE_P(EveryRow, PickedToolContract, ::testing::ValuesIn(typesIn(QZAllEnabledTypes)), nameOf);
