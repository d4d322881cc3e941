#include "GraphStoreFixture.h"

#include <QFile>

#include <csignal>
#include <functional>
#include <sqlite3.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace {

bool writeFile(const QString& path, const QByteArray& bytes, qint64 at = 0)
{
    QFile file(path);
    return file.open(QIODevice::ReadWrite) && file.seek(at) && file.write(bytes) == bytes.size();
}

/// A figure that does something of its own once in the middle of a save, when it is asked for its line type.
class HookedGraph : public QZPaintGraph {
public:
    explicit HookedGraph(std::function<std::uint64_t()> hook) : QZPaintGraph(QZSTRay), hook_(std::move(hook)) {}
    std::uint64_t lineType() const override
    {
        return std::exchange(hook_, [] { return 0; })();
    }

private:
    mutable std::function<std::uint64_t()> hook_;
};

/// A chart that fails while figures are being made.
class ThrowingView : public TestView {
public:
    std::int64_t enableTypes() const override { throw std::runtime_error("no chart"); }
};

bool reopenAs(int flags)
{
    QZPaintManagerView::graphDatabase()->close();
    return QZPaintManagerView::graphDatabase()->openWithFlags(flags);
}

int waited = 0; // ms

/// SQLite's way to files, which counts waits for locks instead of waiting.
sqlite3_vfs waitless = [] {
    sqlite3_vfs files = *sqlite3_vfs_find(nullptr);
    files.zName = "waitless";
    files.xSleep = [](sqlite3_vfs*, int microseconds) {
        waited += microseconds / 1000;
        return microseconds;
    };
    return files;
}();

/// A stored figure, what breaks before its group is loaded or saved with two more, and what comes of it.
class GraphStoreFaults : public GraphStore {
protected:
    using Break = std::function<void()>;

    GraphStoreFaults() { sqlite3_vfs_register(&waitless, 1); }
    void TearDown() override
    {
        GraphStore::TearDown();
        sqlite3_vfs_unregister(&waitless);
    }

    void clear() const
    {
        QFile::remove(folder);
        QDir(folder).removeRecursively();
        EXPECT_TRUE(QDir().mkpath(folder));
    }
    /// What the log says to loading and to saving, the widths that the file then holds, how long was waited for a lock,
    /// and whether the pane can be saved once the fault is gone.
    std::string after(const Break& beforeLoad, const Break& beforeSave)
    {
        clear();
        reopen();
        TestView view;
        QZPaintActiveManager::sharedManager().setCurrentActiveLayer(view.paintLayer());
        store(view, stock, {1});
        QZPaintManagerView::graphDatabase()->close();
        log();
        waited = 0;
        beforeLoad();
        view.loadDB(stock, day, pane);
        std::string outcome = log() + "; ";
        beforeSave();
        add(view, 2).setText(QString(20'000, u'x'));
        add(view, 3);
        view.saveDB(stock, day, pane);
        outcome += log() + "; ";
        const bool isKept = !graphs(view).empty();
        other.reset();
        outcome += stored("lineWidth") + (waited == 0 ? "" : "; " + std::to_string(waited) + " ms");
        clear();
        view.saveDB(stock, day, pane);
        EXPECT_EQ(stored("lineWidth").empty(), !isKept);
        return outcome + (isKept ? "; later" : "");
    }

    const QString folder = root_.filePath(QStringLiteral("accounts/ann"));
    std::shared_ptr<QZGraphDatabase> other;
};

} // namespace

TEST_F(GraphStoreFaults, LoseNothingThatWasStored)
{
    const auto shared = [](const char* sql) {
        return [=] { QZPaintManagerView::graphDatabase()->executeUpdate(sql); };
    };
    const auto lock = [&](const char* sql) { return [&, sql] { (other = otherConnection())->executeUpdate(sql); }; };
    const auto remake = [](const char* sql) { return [=] { run("DROP TABLE GraphTable"), run(sql); }; };
    const auto put = [](const QByteArray& bytes, int at) { return [=] { writeFile(file(), bytes, at); }; };
    const auto cut = [](int size) { return [=] { QFile::resize(file(), size); }; };
    const auto hook = [](const std::function<std::uint64_t()>& act) {
        const auto graph = std::make_shared<HookedGraph>(act);
        return [=] { QZPaintActiveManager::sharedManager().currentActiveLayer()->graphs().add(graph); };
    };
    const Break takeFolder = [&] { QDir(folder).removeRecursively(), writeFile(folder, "x"); };
    const Break takeFile = [&] { clear(), QDir().mkpath(file()); };
    const Break isNotOpened = [] { EXPECT_FALSE(QZPaintManagerView::openDBFile()->goodConnection()); };
    const Break none = [] {};
    const std::string empty = "Empty result set for stockCode 600000; ";
    const std::string malformed = "database disk image is malformed";
    const std::string notOpened = "Open Line paint DB file failed!\nOpen line paint DB file failed!; ; later";
    const std::string read = "Read line paint DB exception : ";
    const std::string write = "Write line paint DB error : ";
    EXPECT_EQ(after(none, none), "; ; 1,2,3");
    EXPECT_EQ(after(put(QByteArray(5000, 'x'), 0), none), empty + "file is not a database; ; later");
    EXPECT_EQ(after(put(QByteArray(4096, '\xff'), 4096), none),
              read + malformed + "; " + write + malformed + "; ; later");
    EXPECT_EQ(after(cut(4096), none), empty + malformed + "; ; later");
    EXPECT_EQ(after(cut(0), none), empty + "; 2,3");
    EXPECT_EQ(after(none, lock("BEGIN EXCLUSIVE")), "; database is locked; 1; 2000 ms; later");
    EXPECT_EQ(after(lock("BEGIN EXCLUSIVE"), none), empty + "database is locked; 1; 4000 ms; later");
    EXPECT_EQ(after(none, lock("BEGIN IMMEDIATE")), "; " + write + "database is locked; 1; 2000 ms; later");
    EXPECT_EQ(after(none, [] { reopenAs(SQLITE_OPEN_READONLY); }),
              "; " + write + "attempt to write a readonly database; 1; later");
    EXPECT_EQ(after(none, shared("PRAGMA max_page_count=3")), "; " + write + "database or disk is full; 1; later");
    EXPECT_EQ(after(none, shared("CREATE TRIGGER full BEFORE DELETE ON GraphTable "
                                 "BEGIN SELECT RAISE(ROLLBACK, 'full'); END")),
              "; " + write + "full; 1; later");
    EXPECT_EQ(after(none, shared("CREATE TRIGGER refuse BEFORE INSERT ON GraphTable WHEN new.lineWidth=2 "
                                 "BEGIN SELECT RAISE(ABORT, 'no'); END")),
              "; " + write + "no; 1");
    EXPECT_EQ(after(none, hook([]() -> std::uint64_t { throw std::runtime_error("no type"); })),
              "; Write line paint DB exception : no type; 1; later");
    EXPECT_EQ(after(none, hook([] { return reopenAs(SQLITE_OPEN_READWRITE); })),
              "; " + write + "no transaction is active; 1; later");
    EXPECT_EQ(after(remake("CREATE TABLE GraphTable(lineWidth)"), none),
              empty + write + "no such column: graphIndex; ; later");
    EXPECT_EQ(after(remake("CREATE VIEW GraphTable AS SELECT 9 AS lineWidth, 1 AS graphIndex"), none),
              "; view GraphTable already exists; 9; later");
    EXPECT_EQ(after(takeFile, isNotOpened), empty + notOpened);
    EXPECT_EQ(after(takeFolder, isNotOpened),
              empty + "Create folder failed! " + folder.toStdString() + '\n' + notOpened);
    EXPECT_EQ(after(none, takeFolder), "; " + write + "attempt to write a readonly database; ; later");
}

TEST_F(GraphStore, KilledInTheMiddleOfASaveAndThrownOutOfALoad)
{
    TestView view;
    store(view, stock, {1});
    view.loadDB(stock, day, pane);
    view.paintLayer()->graphs().add(std::make_shared<HookedGraph>([] { return std::raise(SIGKILL); }));
    QZPaintManagerView::graphDatabase()->close();
    EXPECT_EXIT(view.saveDB(stock, day, pane), testing::KilledBySignal(SIGKILL), "");
    log();
    ThrowingView().loadDB(stock, day, pane);
    EXPECT_EQ(log(), "Read line paint DB exception : no chart");
    view.loadDB(stock, day, pane);
    EXPECT_EQ(graphs(view).size(), 1U) << "the group as it was before";
    view.paintLayer()->graphs().removeAll();
    view.saveDB(stock, day, pane);
    EXPECT_EQ(stored("lineWidth"), "") << "nothing is locked for good";
}

TEST_F(GraphStore, TwoProcessesSaveAtOnce)
{
    constexpr int rounds = 20;
    TestView view;
    store(view, stock, {});
    log();
    QZPaintManagerView::graphDatabase()->close();
    const pid_t child = fork();
    const QString name = child == 0 ? QStringLiteral("first") : QStringLiteral("second");
    for (int saved = 0; saved < rounds; saved += log().empty()) { // one that waited too long says so and tries again
        view.loadDB(name, day, pane);
        if (log_.lines.isEmpty()) {
            add(view);
            view.saveDB(name, day, pane);
        }
    }
    if (child == 0)
        _exit(0);
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    for (const char* each : {"first", "second"})
        EXPECT_EQ(stored("count(*)", "graphIndex LIKE '" + std::string(each) + "%'"), std::to_string(rounds));
}

TEST_F(GraphStore, RowsOfOtherWriters)
{
    TestPane panes;
    // Version 1.0.0 made the table so.
    ASSERT_TRUE(
        run("CREATE TABLE GraphTable(dbVersion TEXT, extension1 TEXT, extension2 TEXT, graphIndex TEXT, points TEXT, "
            "graphType INTEGER,lineType INTEGER, lineWidth INTEGER, isLocked BIT, strokeColorR FLOAT, "
            "strokeColorG FLOAT, strokeColorB FLOAT, strokeColorA FLOAT, fillColorR FLOAT, fillColorG FLOAT, "
            "fillColorB FLOAT, fillColorA FLOAT, fontName TEXT, fontSize FLOAT, textValue TEXT)"));
    const auto read = [&panes](const std::string& values) { // from the points on
        run("DELETE FROM GraphTable");
        EXPECT_TRUE(
            run("INSERT INTO GraphTable VALUES ('','','','600000_main_QZPCCandlestickCycleDay'," + values + ")"));
        panes.view().loadDB(stock, day, pane);
        QString text;
        for (const auto& graph : graphs(panes.view())) {
            EXPECT_TRUE(!graph->text().isNull() && graph->points().size() == 2);
            text += QStringLiteral("%1 points %2 px ").arg(graph->logicAxises().size()).arg(graph->lineWidth());
            text +=
                QStringLiteral("%1 %2").arg(graph->strokeColor().name(QColor::HexArgb)).arg(graph->font().pixelSize());
        }
        panes.paint();
        return text.toStdString();
    };
    EXPECT_EQ(
        read("'20231229,0,50.250000;20240102,0,60.000000;',1,2,3,1,0.9960784313725490,0.392156862745098,0,1,1,1,1,1,"
             "'.AppleSystemUIFont',13,'新建'"),
        "2 points 3 px #fffe6400 11");
    const std::string zeros = "0,0,0,0,0,0,0,0,0,0,'',0,''";
    EXPECT_EQ(read("NULL,2,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL"),
              "0 points 0 px #00000000 11");
    EXPECT_EQ(read("'1,2,3;',9223372036854775807,0," + zeros), "1 points 0 px #00000000 11") << "unknown type";
    EXPECT_EQ(read("'1,2,3;',4398046511104,0," + zeros), "") << "type outside the pane's";
    EXPECT_EQ(read("'1,2,3;','ray',0," + zeros), "");
    EXPECT_EQ(read("'1,2,3;1,2,3;1,2,3;1,2,3;',2,0," + zeros), "2 points 0 px #00000000 11");
    EXPECT_EQ(read("'20240003,2,3;',2,0," + zeros), "1 points 0 px #00000000 11");
    EXPECT_EQ(read("'20240003,0,inf;20240004,0,nan;',2,'a','b','c','d','e','f','g',0,0,0,0,'','h',0"),
              "2 points 0 px #00000000 11");
    EXPECT_EQ(read("x'312c322c333b',2,'1x','3 px',0,'0.5.5',0,'1e0',1,0,0,0,0,'DejaVu Sans','20px',0"),
              "1 points 3 px #ff8000ff 20");
    EXPECT_EQ(read("'20240001,0,5;20240030,0,90;',2,4,2147483647,0,1,1,1,1,0,0,0,0,'',-5,''"),
              "2 points 2147483647 px #ffffffff 11");
}
