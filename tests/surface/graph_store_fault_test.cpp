#include "GraphStoreFixture.h"

#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

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

/// A figure that does something of its own in the middle of a save, when it is asked for its line type.
class HookedGraph : public QZPaintGraph {
public:
    explicit HookedGraph(std::function<std::uint64_t()> hook) : QZPaintGraph(QZSTRay), hook_(std::move(hook)) {}
    std::uint64_t lineType() const override { return hook_(); }

private:
    std::function<std::uint64_t()> hook_;
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

} // namespace

TEST_F(GraphStore, Faults)
{
    using Break = std::function<void()>;
    const QString folder = QFileInfo(file()).path();
    std::shared_ptr<QZGraphDatabase> other;
    const auto shared = [](const char* sql) {
        return [=] { QZPaintManagerView::graphDatabase()->executeUpdate(sql); };
    };
    const auto lock = [&](const char* sql) { return [&, sql] { (other = otherConnection())->executeUpdate(sql); }; };
    const auto remake = [](const char* sql) { return [=] { run("DROP TABLE GraphTable"), run(sql); }; };
    const auto put = [](const QByteArray& bytes, int at) { return [=] { writeFile(file(), bytes, at); }; };
    const auto clear = [folder] {
        QFile::remove(folder);
        QDir(folder).removeRecursively();
        EXPECT_TRUE(QDir().mkpath(folder));
    };
    const Break takeFolder = [folder] { QDir(folder).removeRecursively(), writeFile(folder, "x"); };
    const Break isNotOpened = [] { EXPECT_FALSE(QZPaintManagerView::openDBFile()->goodConnection()); };
    const Break none = [] {};
    sqlite3_vfs_register(&waitless, 1);
    const auto restored = qScopeGuard([] { sqlite3_vfs_unregister(&waitless); });
    const std::string empty = "Empty result set for stockCode 600000";
    const std::string notOpened = "Open Line paint DB file failed!\nOpen line paint DB file failed!";
    const std::string read = "Read line paint DB exception : ";
    const std::string write = "Write line paint DB error : ";
    struct Row {
        const char* name;
        Break beforeLoad, beforeSave;
        std::string loadLog, saveLog, left; // what the log says, and the widths that the file then holds
        bool savesLater;                    // the pane can be saved once the fault is gone
        int waits = 0;                      // ms
    };
    const std::vector<Row> rows{
        {"nothing is wrong", none, none, "", "", "1,2,3", false},
        {"not a database", put(QByteArray(5000, 'x'), 0), none, empty, "file is not a database", "", true},
        {"file cut off", [] { QFile::resize(file(), 4096); }, none, empty, "database disk image is malformed", "",
         true},
        {"a page overwritten", put(QByteArray(4096, '\xff'), 4096), none, read + "database disk image is malformed",
         write + "database disk image is malformed", "", true},
        {"emptied file", [] { QFile::resize(file(), 0); }, none, empty, "", "2,3", false},
        {"locked for reading", none, lock("BEGIN EXCLUSIVE"), "", "database is locked", "1", true, 2000},
        {"locked all along", lock("BEGIN EXCLUSIVE"), none, empty, "database is locked", "1", true, 4000},
        {"someone else is saving", none, lock("BEGIN IMMEDIATE"), "", write + "database is locked", "1", true, 2000},
        {"file may only be read", none, [] { reopenAs(SQLITE_OPEN_READONLY); }, "",
         write + "attempt to write a readonly database", "1", true},
        {"disk full", none, shared("PRAGMA max_page_count=3"), "", write + "database or disk is full", "1", true},
        {"disk full at the removal of the old rows", none,
         shared("CREATE TRIGGER full BEFORE DELETE ON GraphTable BEGIN SELECT RAISE(ROLLBACK, 'full'); END"), "",
         write + "full", "1", true},
        {"second insert refused", none,
         shared("CREATE TRIGGER refuse BEFORE INSERT ON GraphTable WHEN new.lineWidth=2 BEGIN SELECT RAISE(ABORT, "
                "'no'); END"),
         "", write + "no", "1", false},
        {"no group column", remake("CREATE TABLE GraphTable(lineWidth)"), none, empty,
         write + "no such column: graphIndex", "", true},
        {"a view in the table's place", remake("CREATE VIEW GraphTable AS SELECT 9 AS lineWidth, 1 AS graphIndex"),
         none, "", "view GraphTable already exists", "9", true},
        {"a folder in the place of the file", [&] { clear(), QDir().mkpath(file()); }, isNotOpened, empty, notOpened,
         "", true},
        {"a file in the place of the folder", takeFolder, isNotOpened, empty,
         "Create folder failed! " + folder.toStdString() + '\n' + notOpened, "", true},
        {"the same while it is open", none, takeFolder, "", write + "attempt to write a readonly database", "", true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        clear();
        reopen();
        TestView view;
        QZPaintActiveManager::sharedManager().setCurrentActiveLayer(view.paintLayer());
        store(view, stock, {1});
        QZPaintManagerView::graphDatabase()->close();
        log();
        waited = 0;
        row.beforeLoad();
        view.loadDB(stock, day, pane);
        EXPECT_EQ(log(), row.loadLog);

        row.beforeSave();
        add(view, 2).setText(QString(20'000, u'x'));
        add(view, 3);
        view.saveDB(stock, day, pane);
        EXPECT_EQ(log(), row.saveLog);
        EXPECT_EQ(waited, row.waits);
        EXPECT_NE(graphs(view).empty(), row.savesLater);
        other.reset();
        EXPECT_EQ(stored("lineWidth"), row.left);
        clear();
        view.saveDB(stock, day, pane);
        EXPECT_EQ(stored("lineWidth").empty(), !row.savesLater);
    }
}

TEST_F(GraphStore, BrokenOffInTheMiddle)
{
    struct Row {
        std::function<std::uint64_t()> hook;
        std::string log;
    };
    TestView view;
    store(view, stock, {1});
    log();
    ThrowingView().loadDB(stock, day, pane);
    EXPECT_EQ(log(), "Read line paint DB exception : no chart");
    for (const Row& row : {Row{[] { return std::raise(SIGKILL); }, ""},
                           Row{[]() -> std::uint64_t { throw std::runtime_error("no type"); },
                               "Write line paint DB exception : no type"},
                           Row{[] { return reopenAs(SQLITE_OPEN_READWRITE); },
                               "Write line paint DB error : no transaction is active"}}) {
        view.loadDB(stock, day, pane);
        ASSERT_EQ(graphs(view).size(), 1U) << "the group as it was before";
        view.paintLayer()->graphs().add(std::make_shared<HookedGraph>(row.hook));
        QZPaintManagerView::graphDatabase()->close();
        if (row.log.empty())
            EXPECT_EXIT(view.saveDB(stock, day, pane), testing::KilledBySignal(SIGKILL), "");
        else
            view.saveDB(stock, day, pane);
        EXPECT_EQ(log(), row.log);
    }
    EXPECT_EQ(stored("lineWidth"), "1");
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
    const std::string start = "INSERT INTO GraphTable VALUES ('','','','600000_main_QZPCCandlestickCycleDay',";
    struct Row {
        const char *name, *values,
            *read; // values from points on; of 2 points how many, the width, colour and font size
    };
    for (const Row& row :
         {Row{"version 1.0.0",
              "'20231229,0,50.250000;20240102,0,60.000000;',1,2,3,1,0.9960784313725490,0.392156862745098,0,1,1,1,1,1,"
              "'.AppleSystemUIFont',13,'新建'",
              "2 of 2, 3 #fffe6400 11"},
          Row{"nothing at all", "NULL,2,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL",
              "0 of 2, 0 #00000000 11"},
          Row{"unknown type", "'1,2,3;',9223372036854775807,0,1,0,0,0,0,0,0,0,0,0,'',0,''", "1 of 2, 1 #00000000 11"},
          Row{"type outside the pane's", "'1,2,3;',4398046511104,0,1,0,0,0,0,0,0,0,0,0,'',0,''", ""},
          Row{"type is a word", "'1,2,3;','ray',0,1,0,0,0,0,0,0,0,0,0,'',0,''", ""},
          Row{"too many points", "'1,2,3;1,2,3;1,2,3;1,2,3;',2,0,1,0,0,0,0,0,0,0,0,0,'',0,''",
              "2 of 2, 1 #00000000 11"},
          Row{"too few points", "'20240003,2,3;',2,0,1,0,0,0,0,0,0,0,0,0,'',0,''", "1 of 2, 1 #00000000 11"},
          Row{"no numbers", "'20240003,0,inf;20240004,0,nan;',2,'a','b','c','d','e','f','g',0,0,0,0,'','h',0",
              "2 of 2, 0 #00000000 11"},
          Row{"leading numbers", "x'312c322c333b',2,'1x','3 px',0,'0.5.5',0,'1e0',1,0,0,0,0,'DejaVu Sans','20px',0",
              "1 of 2, 3 #ff8000ff 20"},
          Row{"monsters", "'20240001,0,5;20240030,0,90;',2,4,2147483647,0,1,1,1,1,0,0,0,0,'',-5,''",
              "2 of 2, 2147483647 #ffffffff 11"}}) {
        SCOPED_TRACE(row.name);
        ASSERT_TRUE(run("DELETE FROM GraphTable") && run(start + row.values + ")"));
        panes.view().loadDB(stock, day, pane);
        QStringList read;
        for (const auto& graph : graphs(panes.view())) {
            EXPECT_FALSE(graph->text().isNull());
            read.append(QStringLiteral("%1 of %2, %3 %4 %5")
                            .arg(graph->logicAxises().size())
                            .arg(graph->points().size())
                            .arg(graph->lineWidth())
                            .arg(graph->strokeColor().name(QColor::HexArgb))
                            .arg(graph->font().pixelSize()));
        }
        EXPECT_EQ(read.join(u',').toStdString(), row.read);
        panes.paint();
    }
}
