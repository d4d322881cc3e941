#include "GraphStoreFixture.h"

#include <QFile>
#include <QFileInfo>

#include <csignal>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

namespace {

const QString stock = QStringLiteral("600000");
const QString pane = QStringLiteral("main");

bool writeFile(const QString& path, const QByteArray& bytes, qint64 at = 0)
{
    QFile file(path);
    return file.open(QIODevice::ReadWrite) && file.seek(at) && file.write(bytes) == bytes.size();
}

/// Takes its process down in the middle of a save, when it is asked for its line type.
class FatalGraph : public QZPaintGraph {
public:
    FatalGraph() : QZPaintGraph(QZSTRay) {}
    std::uint64_t lineType() const override
    {
        std::raise(SIGKILL);
        return 0;
    }
};

/// Runs `body` in a process of its own, which has no database open; the status that it ends with.
int inAnotherProcess(const std::function<void()>& body)
{
    QZPaintManagerView::graphDatabase()->close();
    const pid_t child = fork();
    if (child == 0) {
        body();
        _exit(0);
    }
    return child;
}

int statusOf(int child)
{
    int status = -1;
    waitpid(child, &status, 0);
    return status;
}

} // namespace

TEST_F(GraphStore, Faults)
{
    using Break = std::function<void()>;
    std::shared_ptr<QZGraphDatabase> other;
    const auto shared = [](const char* sql) {
        return [=] { QZPaintManagerView::graphDatabase()->executeUpdate(sql); };
    };
    const auto lock = [&](const char* sql) { return [&, sql] { (other = otherConnection())->executeUpdate(sql); }; };
    const auto remake = [](const char* sql) { return [=] { run("DROP TABLE GraphTable"), run(sql); }; };
    const auto put = [](const QByteArray& bytes, int at) { return [=] { writeFile(file(), bytes, at); }; };
    const Break none = [] {};
    const char* const empty = "Empty result set for stockCode 600000";
    struct Row {
        const char* name;
        Break beforeLoad, beforeSave;
        const char *loadLog, *saveLog, *left; // what the log says, and the widths that the file then holds
        bool savesLater;                      // the pane can be saved once the fault is gone
    };
    const std::vector<Row> rows{
        {"nothing is wrong", none, none, "", "", "1,2,3", false},
        {"not a database", put(QByteArray(5000, 'x'), 0), none, empty, "file is not a database", "", true},
        {"file cut off", [] { QFile::resize(file(), 4096); }, none, empty, "database disk image is malformed", "",
         true},
        {"a page overwritten", put(QByteArray(4096, '\xff'), 4096), none,
         "Read line paint DB exception : database disk image is malformed",
         "Write line paint DB error : database disk image is malformed", "", true},
        {"emptied file", [] { QFile::resize(file(), 0); }, none, empty, "", "2,3", false},
        {"locked for reading", none, lock("BEGIN EXCLUSIVE"), "", "database is locked", "1", true},
        {"someone else is saving", none, lock("BEGIN IMMEDIATE"), "", "Write line paint DB error : database is locked",
         "1", true},
        {"file may only be read", none, shared("PRAGMA query_only=1"), "",
         "Write line paint DB error : attempt to write a readonly database", "1", true},
        {"disk full", none, shared("PRAGMA max_page_count=3"), "",
         "Write line paint DB error : database or disk is full", "1", true},
        {"second insert refused", none,
         shared("CREATE TRIGGER refuse BEFORE INSERT ON GraphTable WHEN new.lineWidth=2 BEGIN SELECT RAISE(ABORT, "
                "'no'); END"),
         "", "Write line paint DB error : no", "1", false},
        {"other columns", remake("CREATE TABLE GraphTable(graphIndex, lineWidth)"), none, "",
         "Write line paint DB error : table GraphTable has 2 columns but 20 values were supplied", "", false},
        {"no group column", remake("CREATE TABLE GraphTable(lineWidth)"), none, empty,
         "Write line paint DB error : table GraphTable has 1 columns but 20 values were supplied", "", false},
        {"a view in the table's place", remake("CREATE VIEW GraphTable AS SELECT 9 AS lineWidth, 1 AS graphIndex"),
         none, "", "view GraphTable already exists", "9", true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        QFile::remove(file());
        reopen();
        TestView view;
        store(view, stock, {1});
        view.paintLayer()->graphs().removeAll();
        QZPaintManagerView::graphDatabase()->close();

        log_.lines.clear();
        row.beforeLoad();
        view.loadDB(stock, day, pane);
        EXPECT_EQ(log_.lines.join(u'\n').toStdString(), row.loadLog);

        log_.lines.clear();
        row.beforeSave();
        add(view, figure(view, QZSTRay, 2));
        graphs(view).back()->setText(QString(20'000, u'x'));
        add(view, figure(view, QZSTRay, 3));
        view.saveDB(stock, day, pane);
        EXPECT_EQ(log_.lines.join(u'\n').toStdString(), row.saveLog);
        other.reset();
        QZPaintManagerView::graphDatabase()->close();
        EXPECT_EQ(stored("lineWidth"), row.left);

        QFile::remove(file());
        view.saveDB(stock, day, pane);
        EXPECT_EQ(stored("lineWidth").empty(), !row.savesLater);
    }
}

TEST_F(GraphStore, NoPlaceForTheFile)
{
    const QString folder = QFileInfo(file()).path();
    for (const bool fileForFolder : {true, false}) {
        SCOPED_TRACE(fileForFolder ? "a file in the place of the folder" : "a folder in the place of the file");
        QDir(folder).removeRecursively();
        ASSERT_TRUE(fileForFolder ? writeFile(folder, "x")
                                  : QFile::remove(folder) && QDir().mkpath(folder + u"/LinePaint.db"_qs));
        EXPECT_FALSE(QZPaintManagerView::openDBFile()->goodConnection());
        EXPECT_EQ(log_.lines.last(), u"Open Line paint DB file failed!"_qs);
        QZPaintManagerView::graphDatabase()->close();
        TestView view;
        view.loadDB(stock, day, pane);
        EXPECT_EQ(log_.lines.last(), u"Empty result set for stockCode 600000"_qs);
        add(view, figure(view));
        view.saveDB(stock, day, pane);
        EXPECT_EQ(log_.lines.last(), u"Open line paint DB file failed!"_qs);
        EXPECT_EQ(graphs(view).size(), 1U);
    }
}

TEST_F(GraphStore, KilledInTheMiddleOfASave)
{
    TestView view;
    store(view, stock, {1, 2});
    const int status = statusOf(inAnotherProcess([&] {
        view.loadDB(stock, day, pane);
        add(view, std::make_shared<FatalGraph>());
        view.saveDB(stock, day, pane);
    }));
    ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
    view.loadDB(stock, day, pane);
    ASSERT_EQ(graphs(view).size(), 2U) << "the group as it was before";
    view.saveDB(stock, day, pane);
    EXPECT_EQ(stored("lineWidth"), "1,2");
}

TEST_F(GraphStore, TwoProcessesSaveAtOnce)
{
    constexpr int rounds = 20;
    TestView view;
    store(view, stock, {});
    // A process that waited too long says so and may try again.
    const auto untilItWorks = [this](const std::function<void()>& step) {
        do {
            log_.lines.clear();
            step();
        } while (!log_.lines.isEmpty());
    };
    const auto fill = [&](const QString& name) {
        for (int i = 0; i < rounds; ++i) {
            untilItWorks([&] { view.loadDB(name, day, pane); });
            add(view, figure(view));
            untilItWorks([&] { view.saveDB(name, day, pane); });
        }
    };
    for (const int child : {inAnotherProcess([&] { fill(QStringLiteral("first")); }),
                            inAnotherProcess([&] { fill(QStringLiteral("second")); })})
        EXPECT_EQ(statusOf(child), 0);
    for (const char* name : {"first", "second"})
        EXPECT_EQ(stored("count(*)", "graphIndex LIKE '" + std::string(name) + "%'"), std::to_string(rounds));
}

TEST_F(GraphStore, RowsThatNoOneWrote)
{
    TestPane panes;
    TestView& view = panes.view();
    store(view, stock, {});
    const std::string start = "INSERT INTO GraphTable VALUES ('','','','600000_main_QZPCCandlestickCycleDay',";
    struct Row {
        const char *name = nullptr, *values = nullptr; // from points on
        std::size_t loaded = 0, points = 0;
        std::uint64_t width = 0;
        QColor stroke;
        int fontSize = 0;
    };
    const QColor black(0, 0, 0, 0);
    for (const Row& row :
         {Row{"nothing at all", "NULL,2,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL", 1, 0, 0,
              black, 11},
          Row{"unknown type", "'1,2,3;',9223372036854775807,0,1,0,0,0,0,0,0,0,0,0,'',0,''", 1, 1, 1, black, 11},
          Row{"type outside the pane's", "'1,2,3;',4398046511104,0,1,0,0,0,0,0,0,0,0,0,'',0,''", 0, 0, 0, {}, 0},
          Row{"type is a word", "'1,2,3;','ray',0,1,0,0,0,0,0,0,0,0,0,'',0,''", 0, 0, 0, {}, 0},
          Row{"too many points", "'1,2,3;1,2,3;1,2,3;1,2,3;',2,0,1,0,0,0,0,0,0,0,0,0,'',0,''", 1, 2, 1, black, 11},
          Row{"too few points", "'20240003,2,3;',2,0,1,0,0,0,0,0,0,0,0,0,'',0,''", 1, 1, 1, black, 11},
          Row{"no numbers", "'20240003,0,inf;20240004,0,nan;',2,'a','b','c','d','e','f','g',0,0,0,0,'','h',0", 1, 2, 0,
              black, 11},
          Row{"leading numbers", "x'312c322c333b',2,'1x','3 px',0,'0.5.5',0,'1e0',1,0,0,0,0,'DejaVu Sans','20px',0", 1,
              1, 3, QColor::fromRgbF(0.5F, 0.0F, 1.0F, 1.0F), 20},
          Row{"monsters",
              "'2147483647,2147483647,1e308;20240001,0,-1e308;',2,-1,-1,7,-9e999,9e999,1.5,9e999,0,0,0,0,'DejaVu "
              "Sans',9e999,0",
              1, 2, 0, QColor(0, 255, 255, 255), 2000},
          Row{"huge width, dashed", "'20240001,0,5;20240030,0,90;',2,4,2147483647,0,1,1,1,1,0,0,0,0,'',-5,''", 1, 2,
              2147483647, Qt::white, 11}}) {
        SCOPED_TRACE(row.name);
        ASSERT_TRUE(run("DELETE FROM GraphTable"));
        ASSERT_TRUE(run(start + row.values + ")"));
        view.loadDB(stock, day, pane);
        ASSERT_EQ(graphs(view).size(), row.loaded);
        if (row.loaded == 0)
            continue;
        const auto graph = graphs(view)[0];
        EXPECT_EQ(graph->logicAxises().size(), row.points);
        EXPECT_EQ(graph->points().size(), 2U);
        EXPECT_EQ(graph->lineWidth(), row.width);
        EXPECT_EQ(graph->strokeColor(), row.stroke);
        EXPECT_EQ(graph->font().pixelSize(), row.fontSize);
        EXPECT_FALSE(graph->text().isNull());
        panes.paint();
    }
}
