#include "GraphStoreFixture.h"

#include <algorithm>

namespace {

/// Two windows, as of two running programs, on one group. Figures are told apart by their line width.
class Merge : public GraphStore {
protected:
    void SetUp() override
    {
        GraphStore::SetUp();
        TestView first;
        store(first, stock, {1, 2, 3});
        for (TestView* view : {&ours, &theirs})
            view->loadDB(stock, day, pane);
    }

    static std::string shown(const TestView& view)
    {
        QStringList widths;
        for (const auto& graph : graphs(view))
            widths.append(QString::number(graph->lineWidth()));
        std::ranges::sort(widths);
        return widths.join(u',').toStdString();
    }
    static std::shared_ptr<QZPaintGraph> withWidth(const TestView& view, std::uint64_t width)
    {
        const auto all = graphs(view);
        return *std::ranges::find(all, width, [](const auto& graph) { return graph->lineWidth(); });
    }
    static void erase(TestView& view, std::uint64_t width)
    {
        view.paintLayer()->graphs().remove(withWidth(view, width).get());
    }

    TestView ours;
    TestView theirs;
};

} // namespace

TEST_F(Merge, TheirsAndOursMinusWhatEitherDeleted)
{
    struct Row {
        const char* name = nullptr;
        std::function<void(TestView&)> ours;
        std::function<void(TestView&)> theirs;
        const char* stored = nullptr; ///< in the order of rows
    };
    const auto nothing = [](TestView&) {};
    for (const Row& row : std::initializer_list<Row>{
             {"nothing", nothing, nothing, "1,2,3"},
             {"they add", nothing, [](TestView& v) { add(v, 5); }, "1,2,3,5"},
             {"both add", [](TestView& v) { add(v, 4); }, [](TestView& v) { add(v, 5); }, "1,2,3,5,4"},
             {"both add alike", [](TestView& v) { add(v, 4); }, [](TestView& v) { add(v, 4); }, "1,2,3,4,4"},
             {"each deletes", [](TestView& v) { erase(v, 1); }, [](TestView& v) { erase(v, 3); }, "2"},
             {"both delete", [](TestView& v) { erase(v, 2); }, [](TestView& v) { erase(v, 2); }, "1,3"},
             {"each changes", [](TestView& v) { withWidth(v, 1)->setLineWidth(6); },
              [](TestView& v) { withWidth(v, 2)->setLineWidth(7); }, "3,7,6"},
             {"we change what they delete", [](TestView& v) { withWidth(v, 1)->setLineWidth(6); },
              [](TestView& v) { erase(v, 1); }, "2,3,6"},
             {"we delete what they change", [](TestView& v) { erase(v, 1); },
              [](TestView& v) { withWidth(v, 1)->setLineWidth(6); }, "2,3,6"}}) {
        SCOPED_TRACE(row.name);
        {
            TestView clean;
            run("DELETE FROM GraphTable");
            store(clean, stock, {1, 2, 3});
        }
        ours.loadDB(stock, day, pane);
        theirs.loadDB(stock, day, pane);
        row.theirs(theirs);
        EXPECT_TRUE(theirs.storeDB());
        row.ours(ours);
        EXPECT_TRUE(ours.storeDB());
        EXPECT_EQ(stored("lineWidth"), row.stored);
        QStringList sorted = QString::fromUtf8(row.stored).split(u',');
        std::ranges::sort(sorted);
        EXPECT_EQ(shown(ours), sorted.join(u',').toStdString());
    }
}

TEST_F(Merge, ChangesGoToAndFro)
{
    const auto kept = withWidth(ours, 2);
    // What another process writes is another connection's doing.
    run("DELETE FROM GraphTable WHERE lineWidth = 1");
    run("UPDATE GraphTable SET graphType = 1 << 60 WHERE lineWidth = 3"); // a row that this pane cannot show
    ours.paintLayer()->setCurrentGraph(withWidth(ours, 1));
    EXPECT_TRUE(ours.storeDB());
    EXPECT_EQ(shown(ours), "2");
    EXPECT_FALSE(ours.paintLayer()->currentGraph()) << "deleted elsewhere";
    EXPECT_EQ(graphs(ours)[0], kept) << "a figure that stays is the same figure";
    EXPECT_EQ(stored("lineWidth"), "2,3");

    // Again and again, each time only what is new.
    for (const std::uint64_t width : {4U, 5U}) {
        kept->setLineWidth(width);
        EXPECT_TRUE(ours.storeDB());
        EXPECT_EQ(stored("lineWidth"), "3," + std::to_string(width));
        EXPECT_TRUE(ours.storeDB());
        EXPECT_EQ(stored("lineWidth"), "3," + std::to_string(width));
    }
    add(ours, 1, QZSTToolText).setText(QStringLiteral("a note"));
    EXPECT_TRUE(ours.storeDB());
    graphs(ours).back()->setText(QStringLiteral("another"));
    graphs(ours).back()->setStrokeColor(Qt::red);
    EXPECT_TRUE(ours.storeDB());
    EXPECT_EQ(stored("textValue", "graphType = " + std::to_string(QZSTToolText)), "another");
    ours.displayRangeStatisticsGraphFromDate(TestChart::firstDate, 0, TestChart::firstDate + 3, 0);
    EXPECT_TRUE(ours.storeDB()) << "the band is nobody's row";
    EXPECT_EQ(stored("lineWidth"), "3,5,1");
    ours.removeRangeStatisticsGraph();

    // The letter's save ends the pane's right, to store as well.
    ours.saveDB(stock, day, pane);
    EXPECT_FALSE(ours.storeDB());
    EXPECT_FALSE(TestView().storeDB());
}

TEST_F(Merge, AFileThatCannotBeWrittenChangesNothing)
{
    withWidth(ours, 1)->setLineWidth(9);
    run("CREATE TRIGGER no BEFORE INSERT ON GraphTable BEGIN SELECT RAISE(ABORT, 'no room'); END");
    EXPECT_FALSE(ours.storeDB());
    EXPECT_EQ(stored("lineWidth"), "1,2,3");
    EXPECT_EQ(shown(ours), "2,3,9");
    EXPECT_EQ(log_.lines.back(), QStringLiteral("Write line paint DB error : no room"));
    run("DROP TRIGGER no");
    EXPECT_TRUE(ours.storeDB());
    EXPECT_EQ(stored("lineWidth"), "2,3,9");
}
