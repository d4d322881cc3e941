#include "support/ToolDrawing.h"

using ParallelChannels = ToolDrawing;

TEST_F(ParallelChannels, FiguresAndDistances)
{
    constexpr auto lines = QZSTParallel;
    constexpr auto pair = QZSTParallelSegment;
    owner->layerFrame = {0, 20, 100, 100};
    // Slopes of 3 to 4: what lies 5 px above a line is 4 px away from it.
    expectFigures({
        {"lines", lines, {{0, 30}, {40, 60}, {40, 35}}, "0,30-100,105;0,5-100,80;", {40, 40}, 4},
        {"left", lines, {{40, 60}, {0, 30}, {80, 130}}, "100,105-0,30;100,145-0,70;", {180, 205}, 100},
        {"down", lines, {{50, 60}, {50, 40}, {20, 33}}, "50,120-50,20;20,120-20,20;", {53, 99}, 3},
        {"equal points", lines, {{50, 40}, {50, 40}, {80, 33}}, "", {47, 99}, 3},
        {"pair", pair, {{0, 30}, {40, 60}, {110, 50}}, "0,30-40,60;30,-10-70,20;", {113, 54}, 5},
        {"left", pair, {{40, 60}, {0, 30}, {10, 100}}, "40,60-0,30;10,100--30,70;", {-10, 80}, 4},
        {"upright", pair, {{50, 40}, {50, 60}, {80, 33}}, "50,40-50,60;80,40-80,60;", {53, 50}, 3},
        {"equal points", pair, {{50, 40}, {50, 40}, {80, 33}}, "", {53, 44}, 5},
    });
    EXPECT_EQ(brief(*following(lines, {{0, 30}, {40, 60}})), "0,30-100,105;");
}

TEST_F(ParallelChannels, WideLinesEndRoundOrPlain)
{
    using Row = std::tuple<QZShapeType, const char*, const char*, const char*>;
    for (const auto& [type, placing, finished, dragging] :
         {Row{QZSTParallel, "round plain ", "round round ", "round round plain "},
          Row{QZSTParallelSegment, "plain round ", "plain plain ", "plain plain round "}}) {
        SCOPED_TRACE(strQZShapeType(type).toStdString());
        const auto graph = tool(type, {{0, 30}, {40, 60}}, 5);
        graph->setLineType(2);
        const auto ends = [&] {
            std::string all;
            for (const std::string& line : drawn(*graph))
                all += line.ends_with(" w5 #010203 dash 15,15") ? "plain " : line.substr(line.rfind(' ') + 1) + " ";
            return all;
        };
        EXPECT_EQ(ends(), placing);
        graph->mouseDown({40, 35});
        EXPECT_EQ(ends(), finished);
        graph->setCurrentPoint(2);
        EXPECT_EQ(ends(), dragging);
    }
}
