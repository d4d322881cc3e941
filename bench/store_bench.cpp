// Saving and loading a pane against the same statements run through the bare SQLite wrapper, in one process, on files
// in a temporary folder. What counts is the ratio.

#include "Ruler.h"
#include "bench_support.h"
#include "model/QZPaintOptions.h"
#include "platform/QZFrameComFun.h"
#include "platform/QZLog.h"
#include "surface/QZGraphDatabase.h"
#include "surface/QZPaintLayer.h"
#include "tools/QZPaintToolTable.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>

#include <SQLiteCpp/SQLiteCpp.h>
#include <array>
#include <benchmark/benchmark.h>
#include <charconv>
#include <cstdio>
#include <string>
#include <vector>

namespace {

constexpr int figureCount = 300;
const QString stock = QStringLiteral("600000");
const QString pane = QStringLiteral("main");

std::string databasePath()
{
    return QZFrameComFun::getUserAccountFilePath(databaseFileName, true).toStdString();
}

std::string groupKey(const QString& stockCode)
{
    return QZPaintManagerView::constructDBIndex(stockCode, QZPCCandlestickCycleDay, pane).toStdString();
}

void load(BenchView& view)
{
    view.loadDB(stock, QZPCCandlestickCycleDay, pane);
}

void save(BenchView& view)
{
    view.saveDB(stock, QZPCCandlestickCycleDay, pane);
}

/// A fresh file in which the view's group holds 300 segments.
void prepareFile(BenchView& view)
{
    QZPaintManagerView::graphDatabase()->close();
    std::remove(databasePath().c_str());
    load(view);
    Scatter scatter;
    for (int i = 0; i < figureCount; ++i)
        view.paintLayer()->graphs().add(view.finished(createPaintTool(QZSTLineSegment), scatter.points(2)));
    save(view);
}

/// Fills the file up with other groups of 300, which lie around the view's own.
void fillUp(int rowCount)
{
    SQLite::Database database(databasePath(), SQLite::OPEN_READWRITE);
    database.exec("PRAGMA synchronous=OFF");
    const std::string copied =
        "INSERT INTO GraphTable SELECT dbVersion, extension1, extension2, ?, points, graphType, lineType, "
        "lineWidth, isLocked, strokeColorR, strokeColorG, strokeColorB, strokeColorA, fillColorR, "
        "fillColorG, fillColorB, fillColorA, fontName, fontSize, textValue FROM GraphTable "
        "WHERE rowid<=300";
    SQLite::Transaction transaction(database);
    SQLite::Statement insert(database, copied);
    for (int group = 1; group < rowCount / figureCount; ++group) {
        insert.reset();
        insert.bind(1, groupKey(QString::number(group)));
        insert.exec();
    }
    transaction.commit();
}

/// The statements of one save, as texts.
std::vector<std::string> savedStatements()
{
    SQLite::Database database(databasePath());
    std::vector<std::string> statements{"SELECT COUNT(*) FROM sqlite_master WHERE TYPE='table' AND NAME='GraphTable'",
                                        "BEGIN EXCLUSIVE TRANSACTION",
                                        "DELETE FROM GraphTable WHERE graphIndex='" + groupKey(stock) + "'"};
    SQLite::Statement rows(database, "SELECT * FROM GraphTable");
    constexpr int typeColumn = 5;
    constexpr int fontColumn = 17;
    constexpr int textColumn = 19;
    while (rows.executeStep()) {
        std::string insert = "INSERT INTO GraphTable VALUES (";
        for (int column = 0; column < rows.getColumnCount(); ++column) {
            const bool isText = column < typeColumn || column == fontColumn || column == textColumn;
            const std::string value = rows.getColumn(column).getString();
            insert += column == 0 ? "" : ",";
            insert += isText ? "'" + value + "'" : value;
        }
        statements.push_back(insert + ")");
    }
    statements.emplace_back("COMMIT TRANSACTION");
    return statements;
}

/// Everything that a row says, as plain values.
struct BareRow {
    std::vector<QZPaintLogicAxis> points;
    std::int64_t type = 0;
    std::array<int, 3> numbers{};
    std::array<double, 9> reals{};
    QString fontName;
    QString text;
};

std::vector<QZPaintLogicAxis> parsePoints(std::string_view text)
{
    std::vector<QZPaintLogicAxis> points;
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at < end) {
        QZPaintLogicAxis point;
        at = std::from_chars(at, end, point.date).ptr + 1;
        at = std::from_chars(at, end, point.time).ptr + 1;
        at = std::from_chars(at, end, point.price).ptr + 1;
        points.push_back(point);
    }
    return points;
}

std::vector<BareRow> bareRows(SQLite::Database& database)
{
    std::vector<BareRow> read;
    SQLite::Statement rows(database, "SELECT * FROM GraphTable WHERE graphIndex='" + groupKey(stock) + "'");
    while (rows.executeStep()) {
        BareRow row;
        row.points = parsePoints(rows.getColumn("points").getText());
        row.type = rows.getColumn("graphType").getInt64();
        row.numbers = {rows.getColumn("lineType").getInt(), rows.getColumn("lineWidth").getInt(),
                       rows.getColumn("isLocked").getInt()};
        row.reals = {rows.getColumn("strokeColorR").getDouble(), rows.getColumn("strokeColorG").getDouble(),
                     rows.getColumn("strokeColorB").getDouble(), rows.getColumn("strokeColorA").getDouble(),
                     rows.getColumn("fillColorR").getDouble(),   rows.getColumn("fillColorG").getDouble(),
                     rows.getColumn("fillColorB").getDouble(),   rows.getColumn("fillColorA").getDouble(),
                     rows.getColumn("fontSize").getDouble()};
        row.fontName = QString::fromUtf8(rows.getColumn("fontName").getText());
        row.text = QString::fromUtf8(rows.getColumn("textValue").getText());
        read.push_back(std::move(row));
    }
    return read;
}

void compareSaving(Ruler& ruler)
{
    BenchView view;
    prepareFile(view);
    const std::vector<std::string> statements = savedStatements();
    SQLite::Database database(databasePath(), SQLite::OPEN_READWRITE);
    const auto runStatements = [&] {
        for (const std::string& text : statements) {
            SQLite::Statement statement(database, text);
            while (statement.executeStep()) {
            }
        }
    };
    const auto loadIt = [&view] { load(view); };
    ruler.compare("save of 300 figures", {[&view] { save(view); }, loadIt}, {runStatements, loadIt});
}

/// With an index of groups, a full file should cost what one with nothing else in it does.
void compareIndexedLoading(Ruler& ruler, int rowCount)
{
    QZPaintOptions options = QZPaintOptions::current();
    options.indexesGroups = true;
    QZPaintOptions::setCurrent(options);
    BenchView view;
    prepareFile(view);
    const QString small = QString::fromStdString(databasePath()) + QStringLiteral(".small");
    QFile::copy(QString::fromStdString(databasePath()), small);
    fillUp(rowCount);
    SQLite::Database database(small.toStdString());
    const auto readRows = [&database] { benchmark::DoNotOptimize(bareRows(database).size()); };
    ruler.compare("load of 300 figures of " + std::to_string(rowCount) + " rows with an index, against 300 bare rows",
                  {[&view] { load(view); }}, {readRows}, 1.5);
}

void compareLoading(Ruler& ruler, int rowCount)
{
    BenchView view;
    prepareFile(view);
    fillUp(rowCount);
    SQLite::Database database(databasePath());
    const auto readRows = [&database] { benchmark::DoNotOptimize(bareRows(database).size()); };
    ruler.compare("load of 300 figures of " + std::to_string(rowCount) + " rows", {[&view] { load(view); }}, {readRows},
                  1.2);
    if (view.paintLayer()->graphs().count() != figureCount)
        std::fprintf(stderr, "not all figures came back\n");
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    Ruler ruler(argc, argv);
    const QTemporaryDir folder;
    QZFrameComFun::setRootFolder(folder.path());
    // A file without its table yet is worth a line in the log, which is of no interest here.
    setBusCommonLogSink([](const QString&) {});
    compareSaving(ruler);
    for (const int rowCount : {figureCount, 30'000, 1'000'000})
        compareLoading(ruler, rowCount);
    compareIndexedLoading(ruler, 1'000'000);
    return ruler.result();
}
