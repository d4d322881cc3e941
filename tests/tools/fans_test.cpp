#include "support/ToolDrawing.h"

namespace {

class Fans : public ToolDrawing {
protected:
    Fans()
    {
        chart.fromPoint.answerWith([](QZPoint p) { return QZPaintLogicAxis{static_cast<int>(p.x) + 1, 0, p.y}; });
        chart.fromAxis.answerWith([](const QZPaintLogicAxis& axis) { return QZPoint{axis.date - 1.0, axis.price}; });
    }
};

} // namespace

TEST_F(Fans, RaysCaptionsAndDistances)
{
    const std::string fan = "0,100-400,-300;\"1\" 72,15;0,100-400,-700;\"1/2\" 32,15;0,100-400,-1130.769;\"1/3\" 18,15;"
                            "0,100-400,-1500;\"1/4\" 12,15;0,100-400,-3100;\"1/8\" 2,15;0,100-400,-100;\"1/2\" 72,55;"
                            "0,100-400,-30;\"1/3\" 72,69;0,100-400,0;\"1/4\" 72,75;0,100-400,50;\"1/8\" 72,85;";
    // Parts of 7 px, cut off: 3, 2, 1 and 0, which makes a vertical ray.
    const std::string small = "9,100-0,109;\"1\" -6,102;9,100-0,121;\"1/2\" -2,102;9,100-0,131.5;\"1/3\" -1,102;"
                              "9,100-0,163;\"1/4\" 0,102;9,100-2,107;9,100-9,300;\"1/8\" 1,102;"
                              "9,100-0,103.857;\"1/2\" -6,98;9,100-0,102.571;\"1/3\" -6,97;"
                              "9,100-0,101.286;\"1/4\" -6,96;9,100-0,100;\"1/8\" -6,95;";
    const std::string right = "0,100-400,-300;0,100-400,-168 dash 5,3;0,100-400,-32 dash 5,3;";
    const std::string left = "100,100-0,0;100,100-0,33 dash 5,3;100,100-0,67 dash 5,3;";
    const std::string vertical = R"(50,100-50,60;50,100-50,0;"1" 42,55;50,100-50,60;50,100-50,0;"1/2" 42,55;...)";
    expectFigures({
        {"fan", QZSTGannFan, {{0, 100}, {80, 20}}, fan, {-3, 104}, 5},
        {"small, to the upper left", QZSTGannFan, {{9, 100}, {2, 107}}, small, {5, 96}, 4},
        {"vertical fan", QZSTGannFan, {{50, 100}, {50, 60}}, vertical, {47, 96}, 5},
        {"half-placed fan", QZSTGannFan, {{50, 100}}, R"(50,100-50,100;"1" 34028...)", {53, 104}, 5},
        {"speed lines", QZSTSpeedResistance, {{0, 100}, {100, 0}}, right, {-3, 104}, 5},
        {"speed lines to the left", QZSTSpeedResistance, {{100, 100}, {50, 50}}, left, {0, 67}, 0},
        {"vertical speed line", QZSTSpeedResistance, {{50, 100}, {50, 60}}, "50,100-50,0;", {53, 250}, 3},
        {"upwards", QZSTSpeedResistance, {{50, 100}, {50, 101}}, "50,100-50,300;", {53, 250}, 3},
    });
}
