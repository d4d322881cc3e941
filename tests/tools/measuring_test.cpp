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
    using Row = std::tuple<const char*, double, float, QString, QString>;
    const QString rise = QStringLiteral(" #d0312d");
    const QString drop = QStringLiteral(" #0b7f4b");
    for (const auto& [name, y, percent, price, color] :
         {Row{"upwards", 90, 2.345F, QStringLiteral("1.50"), rise},
          Row{"downwards", 10, -2.345F, QStringLiteral("-1.50"), drop},
          Row{"level is no rise", 30, 1.0F, QStringLiteral("0"), drop},
          Row{"no change, upwards", 90, 0.0F, QStringLiteral("+0.00元"), {}},
          Row{"no number is no change", 90, 0.0F, QStringLiteral("--"), {}},
          Row{"price alone changed", 90, 0.0F, QStringLiteral("+0.01"), rise}}) {
        SCOPED_TRACE(name);
        answer(7, percent, price);
        const auto graph = tool(QZSTToolRule, {{100, 30}}, 3);
        graph->setLineType(1);
        graph->mouseMoved({200, y});
        const QString caption =
            QStringLiteral("\"距离: 7 幅度: %1% 涨跌: ").arg(static_cast<double>(percent), 0, 'f', 2);
        EXPECT_EQ(brief(*graph), (QStringLiteral("100,30-200,%1;").arg(y) + caption + price +
                                  QStringLiteral("\" 100,30 13px") + color + u';')
                                     .toStdString());
    }
    chart.range.answerWith([](QZPoint, QZPoint, int) { return std::nullopt; });
    EXPECT_EQ(brief(*following(QZSTToolRule, {{100, 30}, {200, 90}})), "100,30-200,90;") << "the host knows nothing";
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
    EXPECT_EQ(brief(*graph), "") << "nothing measured yet";
    EXPECT_EQ(graph->minDistanceFromPoint({208, 90}), 6);
    chart.scroll = 50;
    graph->mouseMoved({100, 30});
    graph->mouseDown({100, 30});
    graph->mouseMoved({160, 40});
    EXPECT_TRUE(brief(*graph).starts_with("100,30-160,40;")) << "does not follow the chart";
}

TEST_F(Measuring, TheRangeRuleTintsItsBand)
{
    answer(-12, 2.5F, QStringLiteral("1.50"));
    const std::string texts = text(QStringLiteral("2.50%"), 152, 90 - textHeight(2) - 2, 12) + "\"1.50\" 152,32 12px;";
    const std::string up = "100,30-200,30 w2;100,90-200,90 w2;fill 100,30 100x60 #33010203;150,30-150,90 w2 dash 10,6;";
    const std::string toTheLowerLeft =
        "200,90-100,90 w2;200,30-100,30 w2;fill 200,90 -100x-60 #33010203;150,90-150,30 w2 dash 10,6;";
    for (const auto& [points, bands] :
         {std::pair{Points{{100, 30}, {200, 90}}, up}, {Points{{200, 90}, {100, 30}}, toTheLowerLeft}}) {
        const auto graph = tool(QZSTRangeRule, points, 2);
        graph->setFillColor(Qt::green);
        EXPECT_EQ(brief(*graph), bands + texts);
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
    for (const Points& points : {Points{{100, 30}, {200, 90}}, Points{{200, 90}, {100, 30}}}) {
        EXPECT_EQ(brief(*tool(QZSTBoxLine, points, 4)),
                  "rect 100,50 100x100 w4 round;fill 100,50 100x100 #33010203;100,120-200,120 w4 dash 20,12 round;" +
                      text(QStringLiteral("K 线数: 9"), 106, 150 - height - 4, 14) +
                      text(QStringLiteral("6.50%"), 206, 150 - height - 4, 14) + "\"-2.00\" 206,56 14px;" +
                      text(QStringLiteral("成本均价: 12.35"), 106, 120 - height - 4, 14) +
                      text(QStringLiteral("振幅:6.50% 差价:-2.00 成本均价: 12.35"), 106, 50 - height - 4, 14));
    }
    const auto graph = tool(QZSTBoxLine, {{100, 30}, {200, 90}}, 3);
    chart.priceCaption.answerWith([](double price) { return QString::number(price, 'f', 4); });
    EXPECT_NE(brief(*graph).find("差价:-2.0000 成本均价: 12.3450"), std::string::npos) << "as the chart writes prices";
    EXPECT_EQ(drawn(*graph).front(), "rect 100,50 100x100 w3 #010203") << "not round yet";
    for (const auto& [at, distance] : std::vector<std::pair<QZPoint, double>>{
             {{150, 53}, 3}, {{150, 117}, 3}, {{203, 70}, 3}, {{150, 80}, 6}, {{92, 26}, 6}, {{200, 92}, 0}})
        EXPECT_EQ(graph->minDistanceFromPoint(at), distance) << at.x << "," << at.y;
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
