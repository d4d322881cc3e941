#include "platform/QZFont.h"
#include "support/ToolDrawing.h"
#include "tools/QZPaintMeasuring.h"

namespace {

class Measuring : public ToolDrawing {
protected:
    void answer(int count, float varyScope, const QString& varyPrice)
    {
        chart.range.answerWith([=](QZPoint, QZPoint, int) {
            return QZPaintRetangleModel{count, varyScope, varyPrice, QStringLiteral("bars")};
        });
    }
};

double textHeight(double lineWidth)
{
    return measureText(QStringLiteral("aaa"), systemFont(lineWidth + 10)).height;
}

} // namespace

TEST_F(Measuring, TheRulerWritesInTheColourOfTheChange)
{
    struct Row {
        const char* name = nullptr;
        QZPoint to;
        float percent = 0.0F;
        const char16_t* price = nullptr;
        const char* color = nullptr;
    };
    for (const Row& row : {Row{"upwards", {200, 90}, 2.345F, u"1.50", " #d0312d"},
                           Row{"downwards", {200, 10}, -2.345F, u"-1.50", " #0b7f4b"},
                           Row{"level is no rise", {200, 30}, 1.0F, u"0", " #0b7f4b"},
                           Row{"no change, upwards", {200, 90}, 0.0F, u"+0.00元", " #010203"},
                           Row{"no number is no change", {200, 90}, 0.0F, u"--", " #010203"},
                           Row{"price alone changed", {200, 90}, 0.0F, u"0.01", " #d0312d"}}) {
        SCOPED_TRACE(row.name);
        answer(7, row.percent, QString::fromUtf16(row.price));
        const auto graph = tool(QZSTToolRule, {{100, 30}}, 3);
        graph->setLineType(1);
        graph->mouseMoved(row.to);
        const std::string line = "segment 100,30-200," + std::to_string(static_cast<int>(row.to.y)) + " w1 #010203";
        const std::string percent = QString::number(static_cast<double>(row.percent), 'f', 2).toStdString();
        EXPECT_EQ(drawn(*graph), (Lines{line, "text \"距离: 7 幅度: " + percent +
                                                  "% 涨跌: " + QString::fromUtf16(row.price).toStdString() +
                                                  "\" 100,30 13px" + row.color}));
    }
    chart.range.answerWith([](QZPoint, QZPoint, int) { return std::nullopt; });
    const auto graph = tool(QZSTToolRule, {{100, 30}});
    graph->mouseMoved({200, 90});
    EXPECT_EQ(drawn(*graph), (Lines{"segment 100,30-200,90 w1 #010203"})) << "the host knows nothing";
}

TEST_F(Measuring, TheRulerBeginsAnewWhereItEnded)
{
    const auto graph = tool(QZSTToolRule, {{103, 30}});
    EXPECT_EQ(graph->points(), (Points{{103, 30}, {103, 30}})) << "as clicked, on no bar";
    EXPECT_EQ(graph->currentPoint(), 1);
    const int displays = owner->displays;
    graph->mouseDown({208, 90});
    EXPECT_EQ(owner->displays, displays + 1);
    EXPECT_EQ(graph->points(), (Points{{208, 90}, {208, 90}}));
    EXPECT_EQ(graph->currentPoint(), 0);
    EXPECT_TRUE(graph->isEditing());
    EXPECT_EQ(graph->logicAxises().size(), 1U);
    EXPECT_EQ(drawn(*graph), Lines{}) << "nothing measured yet";
    EXPECT_EQ(graph->minDistanceFromPoint({208, 90}), 6);
    chart.scroll = 50;
    graph->mouseMoved({100, 30});
    graph->mouseDown({100, 30});
    graph->mouseMoved({160, 40});
    EXPECT_EQ(drawn(*graph).front(), "segment 100,30-160,40 w1 #010203") << "does not follow the chart";
}

TEST_F(Measuring, TheRangeRuleTintsItsBand)
{
    const double height = textHeight(2);
    struct Row {
        const char* name;
        Points points;
        const char* bounds[2];
        const char* band;
        const char* middle;
    };
    const std::vector<Row> rows{
        {"upwards", {{100, 30}, {200, 90}}, {"100,30-200,30", "100,90-200,90"}, "100,30 100x60", "150,30-150,90"},
        {"downwards to the left",
         {{200, 90}, {100, 30}},
         {"200,90-100,90", "200,30-100,30"},
         "200,90 -100x-60",
         "150,90-150,30"},
    };
    answer(-12, 2.5F, QStringLiteral("1.50"));
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto graph = tool(QZSTRangeRule, row.points, 2);
        graph->setFillColor(Qt::green);
        const std::string pen = " w2 #010203";
        const double upper = 90 - height - 2;
        EXPECT_EQ(drawn(*graph),
                  (Lines{"segment " + std::string(row.bounds[0]) + pen, "segment " + std::string(row.bounds[1]) + pen,
                         "fill " + std::string(row.band) + " #33010203",
                         "segment " + std::string(row.middle) + pen + " dash 10,6",
                         "text \"2.50%\" 152," + RecordingContext::number(upper) + " 12px #010203",
                         "text \"1.50\" 152,32 12px #010203"}));
        EXPECT_EQ(graph->fillColor(), QColor(1, 2, 3, 51));
        EXPECT_EQ(graph->minDistanceFromPoint({120, 33}), 3);
        EXPECT_EQ(graph->minDistanceFromPoint({146, 60}), 4);
        EXPECT_EQ(graph->minDistanceFromPoint({120, 60}), 30) << "the band is no part of it";
    }
    answer(1, 1.0F, QString());
    EXPECT_EQ(drawn(*tool(QZSTRangeRule, {{100, 30}, {200, 90}})).size(), 5U) << "no price, no caption";
}

TEST_F(Measuring, TheBoxAroundTheCandles)
{
    chart.boxLine.answerWith([](QZBoxLineCalcData& data) {
        data = {data.x1, data.x2, 50, 150, 120, 9, 12.345F, 6.5F, -2.0F};
        return true;
    });
    const double height = textHeight(4);
    const auto at = [](const char* text, double x, double y) {
        return "text \"" + std::string(text) + "\" " + RecordingContext::number(x) + "," + RecordingContext::number(y) +
               " 14px #010203";
    };
    for (const Points& points : {Points{{100, 30}, {200, 90}}, Points{{200, 90}, {100, 30}}}) {
        const auto graph = tool(QZSTBoxLine, points, 4);
        EXPECT_EQ(drawn(*graph), (Lines{"rect 100,50 100x100 w4 #010203 round", "fill 100,50 100x100 #33010203",
                                        "segment 100,120-200,120 w4 #010203 dash 20,12 round",
                                        at("K 线数: 9", 106, 150 - height - 4), at("6.50%", 206, 150 - height - 4),
                                        at("-2.00", 206, 56), at("成本均价: 12.35", 106, 120 - height - 4),
                                        at("振幅:6.50% 差价:-2.00 成本均价: 12.35", 106, 50 - height - 4)}));
    }
    const auto graph = tool(QZSTBoxLine, {{100, 30}, {200, 90}}, 3);
    EXPECT_EQ(drawn(*graph).front(), "rect 100,50 100x100 w3 #010203") << "not round yet";
    const std::vector<std::pair<QZPoint, double>> distances{{{150, 53}, 3}, {{150, 117}, 3}, {{203, 70}, 3},
                                                            {{150, 80}, 6}, {{92, 26}, 6},   {{200, 92}, 0}};
    for (const auto& [point, distance] : distances)
        EXPECT_EQ(graph->minDistanceFromPoint(point), distance) << point.x << "," << point.y;
    EXPECT_TRUE(graph->selectKeyPointNearPoint({195, 999}));
    EXPECT_EQ(graph->currentPoint(), 1);
    chart.boxLine.answerWith([](QZBoxLineCalcData& data) { return data.x1 += 50, true; });
    EXPECT_EQ(graph->minDistanceFromPoint({97, 30}), 3) << "a key point beside the box";

    chart.boxLine.answerWith([](QZBoxLineCalcData&) { return false; });
    graph->setSelected(true);
    RecordingContext context;
    graph->drawInContext(context);
    EXPECT_EQ(context.lines, Lines{}) << "not even handles";
    EXPECT_EQ(graph->minDistanceFromPoint({100, 30}), 6);
}
