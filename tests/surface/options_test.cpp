#include "GraphStoreFixture.h"
#include "model/QZPaintDefaults.h"
#include "model/QZPaintOptions.h"
#include "panels/QZPaintControl.h"
#include "panels/QZPaintGraphConfigWC.h"
#include "platform/QZAlert.h"

#include <QFile>
#include <QKeyEvent>

namespace {

class Options : public GraphStore {
protected:
    void TearDown() override
    {
        QZPaintOptions::setCurrent({});
        GraphStore::TearDown();
    }
};

} // namespace

// Both settings of each option, side by side: what hosts know, and what is better.
TEST_F(Options, QuotesInTextsAndKeys)
{
    for (const bool binds : {false, true}) {
        SCOPED_TRACE(binds);
        QZPaintOptions::setCurrent({.bindsTexts = binds});
        TestView view;
        const QString code = QStringLiteral("O'Neil, ''%1'' or 1=1 --").arg(binds);
        view.loadDB(code, day, pane);
        for (const char16_t* text : {u"first", u"it's", u"last"})
            add(view, 1, QZSTToolText).setText(QString::fromUtf16(text));
        view.saveDB(code, day, pane);
        TestView other;
        other.loadDB(code, day, pane);
        ASSERT_EQ(graphs(other).size(), binds ? 3U : 0U);
        EXPECT_TRUE(!binds || graphs(other)[1]->text() == QStringLiteral("it's"));
    }
}

TEST_F(Options, RowsThatThePaneDidNotTake)
{
    for (const bool keeps : {false, true}) {
        SCOPED_TRACE(keeps);
        QZPaintOptions::setCurrent({.keepsForeignRows = keeps});
        run("DELETE FROM GraphTable");
        TestView view;
        store(view, stock, {1, 2, 3, 4});
        run("UPDATE GraphTable SET graphType = 1 << 60 WHERE lineWidth = 2"); // unknown here
        run("UPDATE GraphTable SET graphType = 3 WHERE lineWidth = 3");       // no one type
        run("UPDATE GraphTable SET graphType = " + std::to_string(QZSTArc) + " WHERE lineWidth = 4");
        view.types = QZAllEnabledTypes & ~QZSTArc;
        view.loadDB(stock, day, pane);
        EXPECT_EQ(graphs(view).size(), keeps ? 1U : 2U);
        view.types = QZAllEnabledTypes; // what is accepted by now does not matter
        graphs(view)[0]->setLineWidth(5);
        view.saveDB(stock, day, pane);
        EXPECT_EQ(stored("lineWidth"), keeps ? "2,3,4,5" : "5,3");
    }
}

TEST_F(Options, ALoadThatFailed)
{
    for (const bool bars : {false, true}) {
        SCOPED_TRACE(bars);
        QZPaintOptions::setCurrent({.failedLoadBarsSave = bars});
        TestView view;
        store(view, stock, {1, 2});
        run("ALTER TABLE GraphTable RENAME COLUMN graphIndex TO lost");
        view.loadDB(stock, day, pane);
        run("ALTER TABLE GraphTable RENAME COLUMN lost TO graphIndex");
        view.saveDB(stock, day, pane);
        EXPECT_EQ(stored("lineWidth"), bars ? "1,2" : "");
        view.loadDB(stock, day, pane);
        add(view);
        view.saveDB(stock, day, pane);
        EXPECT_EQ(stored("lineWidth"), bars ? "1,2,1" : "1");

        // A file without a table is empty, not broken.
        run("DROP TABLE GraphTable");
        store(view, stock, {7});
        EXPECT_EQ(stored("lineWidth"), "7");
        run("DROP TABLE GraphTable");
    }
}

TEST_F(Options, AnIndexOfGroups)
{
    for (const bool wants : {false, true}) {
        SCOPED_TRACE(wants);
        QZPaintOptions::setCurrent({.indexesGroups = wants});
        TestView view;
        store(view, stock, {3, 1, 2});
        store(view, stock, {4}); // where one is already
        const auto database = otherConnection();
        auto plan = database->executeQuery("EXPLAIN QUERY PLAN SELECT * FROM GraphTable WHERE graphIndex='x'");
        ASSERT_TRUE(plan && plan->next());
        EXPECT_EQ(plan->stringForColumn("detail").contains(QStringLiteral("INDEX")), wants);
        view.loadDB(stock, day, pane);
        std::string widths;
        for (const auto& graph : graphs(view))
            widths += std::to_string(graph->lineWidth());
        EXPECT_EQ(widths, "3124");
        run("DROP TABLE GraphTable");
    }
}

TEST_F(Options, HiddenFiguresAndTheMouse)
{
    for (const bool ignores : {false, true}) {
        SCOPED_TRACE(ignores);
        QZPaintOptions::setCurrent({.hiddenFiguresIgnoreMouse = ignores});
        TestPane chart;
        const auto line = chart.draw(QZSTLineSegment, {{100, 100}, {200, 200}});
        line->setHidden(true);
        EXPECT_EQ(chart.graphAt({150, 150}) == nullptr, ignores);
        line->setHidden(false);
        EXPECT_EQ(chart.graphAt({150, 150}), line);
    }
}

TEST_F(Options, TheLockOfAFigure)
{
    struct Row {
        const char* name;
        void (*erase)(TestPane& chart);
    };
    const auto before = QZAlert::setRunner([](const QZAlertRequest&) { return QZAlert::firstButton + 1; });
    for (const bool stays : {false, true}) {
        for (const Row& row :
             {Row{"key",
                  [](TestPane& chart) {
                      chart.layer().keyDown({QEvent::KeyPress, Qt::Key_Delete, {}});
                  }},
              Row{"strip",
                  [](TestPane& chart) { chart.split().paintGraphConfigDidDelete(QZPaintGraphConfigWC::sharedWC()); }},
              Row{"all", [](TestPane& chart) { chart.split().removeAllGraphs(QZPaintControl::sharedManager()); }}}) {
            SCOPED_TRACE(row.name + std::to_string(static_cast<int>(stays)));
            QZPaintOptions::setCurrent({.lockedFiguresStay = stays});
            TestPane chart;
            const auto line = chart.draw(QZSTLineSegment, {{100, 100}, {200, 200}});
            line->setLocked(true);
            QZPaintLayer& layer = chart.layer();
            for (const QZPoint grip : {QZPoint{150, 150}, QZPoint{200, 200}}) {
                layer.mouseMoved(grip);
                EXPECT_EQ(chart.view().cursor().shape() == Qt::ArrowCursor, stays);
                layer.mouseDown(grip);
                EXPECT_TRUE(line->isSelected());
                layer.mouseDragged({grip.x + 3, grip.y + 3}); // along the line, which stays under the grips
                layer.mouseUp(grip);
                EXPECT_EQ(line->points()[1] == (QZPoint{200, 200}), stays);
            }
            row.erase(chart);
            EXPECT_EQ(layer.graphs().count(), stays ? 1U : 0U);
        }
    }
    QZAlert::setRunner(before);
}

TEST_F(Options, TheLineOfANewFigure)
{
    for (const bool chosen : {false, true}) {
        SCOPED_TRACE(chosen);
        QZPaintOptions::setCurrent({.newFiguresTakeChosenLine = chosen});
        auto& strip = QZPaintGraphConfigWC::sharedWC();
        TestPane chart;
        strip.setStrokeColor(QColor(1, 2, 3));
        strip.setLineType(2);
        strip.setLineWidth(3);
        strip.selectedStrokeColor();
        strip.selectedLineType();
        strip.selectedLineWidth();
        const auto other = chart.draw(QZSTHorizon, {{100, 100}});
        other->setStrokeColor(Qt::red);
        other->setLineType(4);
        other->setLineWidth(9);
        chart.click({300, 250}); // away from it
        chart.click({100, 100});
        ASSERT_EQ(chart.current(), other);
        const auto line = chart.draw(QZSTLineSegment, {{200, 100}, {300, 200}});
        EXPECT_EQ(line->strokeColor(), chosen ? QColor(1, 2, 3) : QColor(Qt::red));
        EXPECT_EQ(line->lineType(), chosen ? 2U : 4U);
        EXPECT_EQ(line->lineWidth(), chosen ? 3U : 9U);
    }
}

TEST_F(Options, TheMagnetsButtonAfterTheEye)
{
    auto& palette = QZPaintControl::sharedManager();
    auto& magnet = *palette.window().findChild<QZPaintControlButton*>(strQZShapeType(QZSTToolMagnet));
    auto& eye = *palette.window().findChild<QZPaintControlButton*>(strQZShapeType(QZSTToolEye));
    for (const bool tells : {false, true}) {
        SCOPED_TRACE(tells);
        QZPaintOptions::setCurrent({.magnetButtonTellsTruth = tells});
        const TestPane chart; // whose figures ask what the panels say
        std::string shown;
        for (QZPaintControlButton* button : {&magnet, &eye, &eye, &magnet, &magnet}) {
            button->click();
            EXPECT_EQ(QZPaintDefaults::current().isMagnet(), palette.isMagnet());
            shown += magnet.isSelected() == palette.isMagnet() ? 'y' : 'n';
        }
        EXPECT_EQ(shown, tells ? "yyyyy" : "ynnnn");
        palette.setMagnet(false);
        magnet.setSelected(false);
    }
}
