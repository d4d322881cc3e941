#include "GraphStoreFixture.h"
#include "model/QZPaintNotifications.h"
#include "panels/QZPaintControl.h"
#include "platform/QZFont.h"
#include "support/RecordingContext.h"
#include "surface/QZGraphStore.h"
#include "tools/QZPaintRangeStatistics.h"

#include <QRegularExpression>

#include <sqlite3.h>

TEST_F(GraphStore, KeyPointText)
{
    EXPECT_EQ(QZPaintManagerView::encodeGraphKeyPoints({{1, 2, 10.5}, {3, 4, 11.25}}), u"1,2,10.500000;3,4,11.250000;");
    const QString largest = QZPaintManagerView::encodeGraphKeyPoints({{-2147483647 - 1, 0, -1.7976931348623157e308}});
    EXPECT_EQ(QZPaintManagerView::decodeGraphKeyPoints(largest).at(0).price, -1.7976931348623157e308);
    const auto read = [](const std::string& text) {
        const auto axises = QZPaintManagerView::decodeGraphKeyPoints(QString::fromStdString(text));
        return QZPaintManagerView::encodeGraphKeyPoints(axises).toStdString();
    };
    EXPECT_EQ(read("1,2,3.5;x;4,5;6,7,8;"), "1,2,3.500000;6,7,8.000000;");
    EXPECT_EQ(read(""), "");
    EXPECT_EQ(read(";;,;1,2,3,4;"), "");
    EXPECT_EQ(read("1,2,3"), "1,2,3.000000;");
    EXPECT_EQ(read(" 7x,+8,-.5y;"), "7,8,-0.500000;");
    EXPECT_EQ(read(",,;a,b,c;"), "0,0,0.000000;0,0,0.000000;");
    EXPECT_EQ(read("99999999999,-99999999999,1e999;1,2,-1e999"), "2147483647,-2147483648,inf;1,2,-inf;");
    EXPECT_EQ(read("3.9,1e3,-1e-999;0,0,nan;0,0,inf;0,0,0x10;"), "3,1,0.000000;" + read("0,0,0;0,0,0;0,0,0"));
    EXPECT_EQ(read("0,0,0." + std::string(400, '0') + '1'), "0,0,0.000000;");
}

TEST_F(GraphStore, EveryToolComesBackAsItWas)
{
    TestPane drawn;
    TestView& view = drawn.view();
    const std::vector<QFont> fonts{labelFont(12), labelFont(31), labelFont(2000)};
    const std::vector<QColor> colors{QColor::fromRgbF(0.1F, 0.2F, 0.3F, 0.4F), Qt::black, QColor(254, 100, 0, 1)};
    const std::vector<QString> texts{QStringLiteral("新建 📈 100%1 %s"), QLatin1String(""),
                                     QStringLiteral("--;\n\t\"two\" lines"), QString(100'000, u'长')};
    const auto all = [](QZPaintGraph& graph) { // once drawn: some tools have a line type of their own, some tint
        RecordingContext context;
        graph.drawInContext(context);
        return std::tuple(context.lines, graph.type(), graph.lineType(), graph.lineWidth(), graph.strokeColor(),
                          graph.fillColor(), graph.font(), graph.text(), graph.isLocked(), graph.isEditing());
    };
    for (const auto& tool : paintToolTable()) {
        SCOPED_TRACE(strQZShapeType(tool.type).toStdString());
        if (tool.type == QZSTToolRangeStatistics)
            continue;
        std::vector<decltype(all(*createPaintTool(tool.type)))> before;
        view.loadDB(stock, day, strQZShapeType(tool.type));
        for (std::uint64_t i = 0; i < 12; ++i) {
            QZPaintGraph& graph = add(view, i, tool.type);
            graph.setLineType(i % 6);
            graph.setStrokeColor(colors[i % 3]);
            graph.setFillColor(colors[(i + 1) % 3]);
            graph.setFont(fonts[i % 3]);
            graph.setText(texts[i % 4]);
            graph.setLocked(i % 2 == 0);
            before.push_back(all(graph));
        }
        view.saveDB(stock, day, strQZShapeType(tool.type));
        reopen();
        view.loadDB(stock, day, strQZShapeType(tool.type));
        ASSERT_EQ(graphs(view).size(), before.size());
        for (std::size_t i = 0; i < before.size(); ++i)
            EXPECT_TRUE(all(*graphs(view)[i]) == before[i]) << i;
    }
    EXPECT_EQ(log_.lines, QStringList());
}

TEST_F(GraphStore, RowsAsTheyAreWritten)
{
    TestView view;
    view.loadDB(stock, day, pane);
    EXPECT_EQ(log_.lines, QStringList(QStringLiteral("Empty result set for stockCode 600000"))) << "no table yet";
    QZPaintGraph& graph = add(view, 3, QZSTRay);
    graph.setText({});
    graph.setStrokeColor(QColor::fromHsv(0, 255, 255));
    graph.setLocked(true);
    view.saveDB(stock, day, pane);
    const auto database = otherConnection();
    auto row = database->executeQuery("SELECT * FROM GraphTable");
    ASSERT_TRUE(row && row->next());
    QStringList values;
    for (const char* column : {"dbVersion", "extension1", "graphIndex", "POINTS", "graphType", "lineType", "lineWidth",
                               "isLocked", "strokeColorR", "strokeColorG", "fontName", "fontSize", "textValue", "none"})
        values.append(row->stringForColumn(column));
    EXPECT_EQ(values.join(u'|').toStdString(),
              "1.0.0||600000_main_QZPCCandlestickCycleDay|20240005,93000,50.250000;20240008,93001,70.750000;|"
              "2|0|3|1|1.0|0.0|DejaVu Sans|12.0|(null)|");
    EXPECT_TRUE(row->doubleForColumn("none") == 0.0 && !row->next());
    EXPECT_EQ(QZPaintManagerView::constructDBIndex({}, 99, {}), u"(null)_(null)_(null)");
}

TEST_F(GraphStore, OneSaveForEachLoad)
{
    TestView view;
    view.types = QZAllEnabledTypes | QZSTToolRangeStatistics;
    store(view, stock, {1, 2});
    ASSERT_EQ(stored("lineWidth"), "1,2");
    EXPECT_EQ(graphs(view).size(), 2U) << "only the active pane is emptied";
    view.paintLayer()->graphs().removeAll();
    view.saveDB(stock, day, pane);
    TestView().saveDB(stock, day, pane);
    EXPECT_EQ(stored("lineWidth"), "1,2") << "loaded once or never";

    QZPaintActiveManager::sharedManager().setCurrentActiveLayer(view.paintLayer());
    view.loadDB(stock, day, pane);
    view.paintLayer()->setCurrentGraph(graphs(view).at(0));
    const auto band = QZPaintRangeStatistics::sharedGraph();
    view.paintLayer()->graphs().add(band);
    view.saveDB(stock, day, pane);
    EXPECT_EQ(stored("lineWidth"), "1,2") << "the band is never stored";
    EXPECT_TRUE(graphs(view).empty() && !view.paintLayer()->currentGraph() && view.paintLayer()->isActive());

    ASSERT_TRUE(run("INSERT INTO GraphTable(graphIndex, graphType) VALUES "
                    "('600000_main_QZPCCandlestickCycleDay', 281474976710656)"));
    TestView().removeFromSuperview();
    EXPECT_FALSE(QZPaintManagerView::graphDatabase()->goodConnection()) << "closed by a view that goes";
    view.loadDB(stock, day, pane);
    EXPECT_EQ(graphs(view).size(), 2U);
    EXPECT_EQ(band->layer(), nullptr) << "nor taken from a file";
    add(view, 3);
    view.saveDB(stock, day, pane);
    EXPECT_EQ(stored("lineWidth"), "1,2,3");
}

TEST_F(GraphStore, GroupsAreKeptApart)
{
    TestView view;
    const std::vector<std::tuple<QString, std::uint64_t, QString>> groups{{stock, day, pane},
                                                                          {stock, day, QStringLiteral("副图/1")},
                                                                          {stock, QZPCRealTimeCycleDay, pane},
                                                                          {QStringLiteral("平安银行 100%1"), day, pane},
                                                                          {QStringLiteral("O''Neil''"), day, pane}};
    for (std::uint64_t i = 0; i < groups.size(); ++i) {
        const auto& [name, cycle, where] = groups[i];
        view.loadDB(name, cycle, where);
        EXPECT_TRUE(graphs(view).empty());
        add(view, i);
        view.saveDB(name, cycle, where);
    }
    log();
    for (const QString& hostile :
         {QStringLiteral("x' OR '1'='1"), QStringLiteral("'; DROP TABLE GraphTable; --"),
          QStringLiteral("600000_main_QZPCCandlestickCycleDay','1,2,3;',1,0,9,0,0,0,0,1,0,0,0,1,'',12,'') --")}) {
        SCOPED_TRACE(hostile.toStdString());
        view.loadDB(hostile, day, pane);
        EXPECT_TRUE(graphs(view).empty());
        EXPECT_EQ(log(), "Empty result set for stockCode " + hostile.toStdString());
        add(view);
        view.saveDB(hostile, day, hostile);
        EXPECT_EQ(log(), "Write line paint DB error : a key with an unpaired quote is barred");
        EXPECT_EQ(graphs(view).size(), 1U);
        const auto database = QZPaintManagerView::graphDatabase();
        EXPECT_TRUE(database->openWithFlags(SQLITE_OPEN_READWRITE) && database->beginTransaction());
        EXPECT_FALSE(QZGraphStore(*database).insertGraph(hostile, *graphs(view)[0]));
        EXPECT_TRUE(database->commit());
        EXPECT_EQ(stored("lineWidth"), "0,1,2,3,4");
    }
    for (std::uint64_t i = 0; i < groups.size(); ++i) {
        std::apply([&](const auto&... group) { view.loadDB(group...); }, groups[i]);
        ASSERT_EQ(graphs(view).size(), 1U);
        EXPECT_EQ(graphs(view)[0]->lineWidth(), i);
    }
}

TEST_F(GraphStore, AQuoteInATextLosesTheFiguresFromThere)
{
    TestView view;
    view.loadDB(stock, day, pane);
    for (const char16_t* text : {u"first", u"second", u"it's", u"last"})
        add(view).setText(QString::fromUtf16(text));
    log();
    view.saveDB(stock, day, pane);
    EXPECT_EQ(stored("textValue"), "first,second");
    EXPECT_EQ(log(), "Write line paint DB error : near \"s\": syntax error");

    view.loadDB(stock, day, pane);
    graphs(view).at(1)->setText(
        QStringLiteral("'||(WITH RECURSIVE n(i) AS (VALUES(1) UNION ALL SELECT i+1 FROM n) SELECT max(i) FROM n)||'"));
    add(view);
    view.saveDB(stock, day, pane);
    EXPECT_EQ(stored("textValue"), "first") << "a query without end is one more statement that fails";
    EXPECT_EQ(log(), "Write line paint DB error : interrupted");

    view.loadDB(stock, day, pane);
    graphs(view).at(0)->setText(QStringLiteral("a'); DROP TABLE GraphTable; --"));
    view.saveDB(stock, day, pane);
    EXPECT_EQ(stored("textValue"), "a") << "the second statement does not run";
}

TEST_F(GraphStore, WhatALoadLeavesInThePane)
{
    TestPane panes({.panes = 2});
    store(panes.view(1), stock, {1});
    QZPaintControl::sharedManager().setHidden(true);
    panes.arm(QZSTRay);
    panes.layer(1).setCurrentGraph(nullptr);
    panes.view(1).loadDB(stock, day, pane);
    QZPaintControl::sharedManager().setHidden(false);
    EXPECT_EQ(panes.state(), "Ray placing | LineSegment 0,0 0,0 hidden Ray placing | strip 26 painting")
        << "armed in the first pane, armed here";

    panes.layer(0).cancelCurrentGraph();
    panes.layer(1).cancelCurrentGraph();
    const QString flag = QZContextIsPaintEditing;
    QZGlobalEnv::getShareInstance().setGlobalContext(flag, flag, true);
    panes.view(1).loadDB(QStringLiteral("nothing"), day, pane);
    EXPECT_TRUE(TestPane::isPaintEditing());
    panes.paint();
    panes.view(1).loadDB(stock, day, pane);
    EXPECT_TRUE(panes.layer(1).needsDisplay());
    EXPECT_FALSE(TestPane::isPaintEditing()) << "a loaded figure is not being painted";
    EXPECT_EQ(panes.current(1), nullptr);
}

TEST_F(GraphStore, AnotherUserLogsIn)
{
    TestPane panes({.panes = 2});
    panes.view(0).loadDB(stock, day, pane);
    panes.view(1).loadDB(stock, day, QStringLiteral("volume"));
    panes.draw(QZSTHorizon, {{100, 100}}, 0);
    panes.draw(QZSTHorizon, {{100, 50}}, 1);
    QZPanelWindow& palette = QZPaintControl::sharedManager().window();
    palette.addToWindowOf(panes.split());
    log();
    const QString annsFile = file();
    const auto annsDatabase = QZPaintManagerView::graphDatabase();
    QZGlobalEnv::getShareInstance().setLoginUser(QStringLiteral("bob"));
    EXPECT_FALSE(annsDatabase->goodConnection() || palette.isVisible() || palette.chartWindow() != nullptr);
    const QString said = QString::fromStdString(log()).replace(annsFile, u"ann's"_qs).replace(file(), u"bob's"_qs);
    EXPECT_EQ(QString(said).remove(QRegularExpression(QStringLiteral("0x\\w+"))).toStdString(),
              "Login user changed saveDB <QZPaintManagerView: > graphs {(QZSTHorizon)}\nPath:ann's\nLogin user changed "
              "saveDB <QZPaintManagerView: > graphs {()}\nPath:ann's\nClosed database Path:ann's\nOpened new database "
              "Path:bob's\nEmpty result set for stockCode 600000\nEmpty result set for stockCode 600000")
        << "the active pane is emptied";

    for (const QString& name : {QStringLiteral("../../out"), QStringLiteral("ann")}) {
        SCOPED_TRACE(name.toStdString());
        QZGlobalEnv::getShareInstance().setLoginUser(name);
        EXPECT_EQ(QZPaintManagerView::graphDatabase()->databasePath(), file());
        for (int i = 0; i < 2; ++i)
            EXPECT_EQ(graphs(panes.view(i)).size(), name == u"ann" ? 1U : 0U);
    }
}
