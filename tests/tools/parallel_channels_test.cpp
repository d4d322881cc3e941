#include "support/ToolDrawing.h"

class ParallelChannels : public ToolDrawing {};

TEST_F(ParallelChannels, FiguresAndDistances)
{
    struct Row {
        const char* name;
        QZShapeType type;
        Points points;
        Lines segments;
        QZPoint at;
        double distance;
    };
    owner->layerFrame = {0, 20, 100, 100};
    // Slopes of 3 to 4: what lies 5 px above a line is 4 px away from it.
    constexpr auto line = QZSTParallel;
    constexpr auto segment = QZSTParallelSegment;
    for (const Row& row : {
             Row{"lines", line, {{0, 30}, {40, 60}, {40, 35}}, {"0,30-100,105", "0,5-100,80"}, {40, 40}, 4},
             {"left", line, {{40, 60}, {0, 30}, {80, 130}}, {"100,105-0,30", "100,145-0,70"}, {180, 165}, 82.462},
             {"down", line, {{50, 60}, {50, 40}, {20, 33}}, {"50,120-50,20", "20,120-20,20"}, {53, 99}, 3},
             {"second point", line, {{0, 30}, {40, 60}}, {"0,30-100,105"}, {0, 30}, 0},
             {"equal points", line, {{50, 40}, {50, 40}, {80, 33}}, {}, {47, 99}, 3},
             {"segments", segment, {{0, 30}, {40, 60}, {110, 50}}, {"0,30-40,60", "30,-10-70,20"}, {113, 54}, 5},
             {"left", segment, {{40, 60}, {0, 30}, {10, 100}}, {"40,60-0,30", "10,100--30,70"}, {-10, 80}, 4},
             {"vertical", segment, {{50, 40}, {50, 60}, {80, 33}}, {"50,40-50,60", "80,40-80,60"}, {53, 50}, 3},
             {"equal points", segment, {{50, 40}, {50, 40}, {80, 33}}, {}, {53, 44}, 5},
         }) {
        SCOPED_TRACE(row.name);
        const auto graph = tool(row.type, row.points);
        if (row.points.size() == 2)
            graph->setCurrentPoint(1); // still follows the mouse
        Lines expected;
        for (const std::string& each : row.segments)
            expected.push_back("segment " + each + " w1 #010203");
        EXPECT_EQ(drawn(*graph), expected);
        EXPECT_NEAR(graph->minDistanceFromPoint(row.at), row.distance, 0.001);
    }
}

TEST_F(ParallelChannels, WideLinesEndRoundOrPlain)
{
    struct Row {
        QZShapeType type;
        const char *placing, *finished, *dragging;
    };
    for (const Row& row : {Row{QZSTParallel, "round plain ", "round round ", "round round plain "},
                           Row{QZSTParallelSegment, "plain round ", "plain plain ", "plain plain round "}}) {
        SCOPED_TRACE(strQZShapeType(row.type).toStdString());
        const auto graph = tool(row.type, {{0, 30}, {40, 60}}, 5);
        graph->setLineType(2);
        const auto ends = [&] {
            std::string all;
            for (const std::string& line : drawn(*graph))
                all += line.ends_with(" w5 #010203 dash 15,15") ? "plain " : line.substr(line.rfind(' ') + 1) + " ";
            return all;
        };
        EXPECT_EQ(ends(), row.placing);
        graph->mouseDown({40, 35});
        EXPECT_EQ(ends(), row.finished);
        graph->setCurrentPoint(2);
        EXPECT_EQ(ends(), row.dragging);
    }
}
