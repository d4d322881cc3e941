#include "support/ToolDrawing.h"

using Levels = ToolDrawing;

namespace {

std::string quoted(const std::string& line)
{
    return line.substr(0, line.rfind('"')).substr(line.find('"') + 1);
}

} // namespace

TEST_F(Levels, LinesCaptionsAndDistances)
{
    // Ratio and price, which is y, in the order of drawing; * for the figure's own dash.
    const std::string space = "0.0%=200.000* 12.5%=187.500 25.0%=175.000 37.5%=162.500 50.0%=150.000* 62.5%=137.500 "
                              "75.0%=125.000 87.5%=112.500 100.0%=100.000* ";
    const std::string percentage = "0.0%=200.000* 100.0%=100.000* 12.5%=187.500 25.0%=175.000 33.3%=166.700 "
                                   "37.5%=162.500 50.0%=150.000* 62.5%=137.500 66.7%=133.300 75.0%=125.000 "
                                   "87.5%=112.500 ";
    const std::string golden = "0.0%=200.000* 23.6%=176.400 38.2%=161.800 50.0%=150.000 61.8%=138.200 80.9%=119.100 "
                               "100.0%=100.000* 138.2%=61.800 161.8%=38.200 200.0%=0.000* 238.2%=-38.200 "
                               "261.8%=-61.800 ";
    const Points down{{100, 200}, {300, 100}};
    const Points mirrored{{300, 200}, {100, 100}};
    struct Row {
        const char* name;
        QZShapeType type;
        Points points;
        std::string levels, line;
        double visibleLeft;
        int captionX;
        QZPoint at;
        double distance;
    };
    const std::vector<Row> rows{
        {"percentage", QZSTPercentage, down, percentage, "100,200-300,200", 100, 100, {200, 189}, 1.5},
        {"mirrored, cut", QZSTPercentage, mirrored, percentage, "300,200-100,200", 120, 120, {200, 260}, 6},
        {"out of sight", QZSTHorizonSpace, down, space, "100,200-300,200", 300, 100, {304, 103}, 5},
        {"golden, cut", QZSTGoldenSection, down, golden, "20,200-380,200", 120, 120, {200, 260}, 60},
        {"golden out of sight", QZSTGoldenSection, mirrored, golden, "20,200-380,200", 350, 350, {30, 3}, 3},
    };
    owner->layerFrame = {20, 0, 360, 300};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        chart.rect.x = row.visibleLeft;
        const auto graph = tool(row.type, row.points, 2);
        graph->setLineType(1);
        const Lines lines = drawn(*graph);
        std::string levels;
        for (std::size_t i = 0; i + 2 < lines.size(); i += 3) {
            const bool isSolid = lines[i].ends_with(" w2 #010203 dash 20,10");
            EXPECT_TRUE(isSolid || lines[i].ends_with(" w2 #010203 dash 10,6")) << lines[i];
            levels += quoted(lines[i + 1]) + "=" + quoted(lines[i + 2]) + (isSolid ? "* " : " ");
        }
        EXPECT_EQ(levels, row.levels);
        EXPECT_EQ(lines.at(0), "segment " + row.line + " w2 #010203 dash 20,10");
        EXPECT_EQ(lines.at(1), "text \"0.0%\" " + std::to_string(row.captionX) + ",200 11px #010203");
        EXPECT_EQ(lines.at(2), "text \"200.000\" " + std::to_string(row.captionX + 50) + ",200 11px #010203");
        EXPECT_DOUBLE_EQ(graph->minDistanceFromPoint(row.at), row.distance);
    }
}

TEST_F(Levels, HalfPlacedAtALargePrice)
{
    chart.fromPoint.answerWith([](QZPoint) { return QZPaintLogicAxis{20240010, 0, 2.5e6}; });
    chart.fromAxis.answerWith([](const QZPaintLogicAxis&) { return QZPoint{100, 200}; });
    const Lines lines = drawn(*tool(QZSTHorizonSpace, {{100, 200}}));
    EXPECT_EQ(lines.size(), 27U);
    EXPECT_EQ(lines.at(24), "segment 100,200-100,200 w1 #010203") << "the second point still lies on the first";
    EXPECT_EQ(lines.at(26), "text \"250.00万\" 150,200 11px #010203");
}
