// Feeds the store what no version of it ever wrote: torn point texts, rows of any type and files with flipped bits,
// then draws whatever came of them. Usage: store_fuzz [iterations] [seed]. A fault shows as a crash, a sanitizer's
// report, a time-out or an exit status of 1.

#include "platform/QZFrameComFun.h"
#include "platform/QZLog.h"
#include "support/widgets/TestPane.h"
#include "surface/QZGraphDatabase.h"
#include "tools/QZPaintToolTable.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>

#include <SQLiteCpp/SQLiteCpp.h>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>

namespace {

constexpr int rowsPerRound = 20;
const QString stock = QStringLiteral("fuzz");
const QString pane = QStringLiteral("main");

class Mutator {
public:
    explicit Mutator(unsigned seed) : random_(seed) {}

    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }

    std::string pointText()
    {
        std::string text = "20240001,93000,50.250000;20240010,0,-1e-5;20240020,1,99999999;";
        static constexpr const char* pieces[] = {",",           ";",  "nan",    "-inf", "1e999",
                                                 "-",           ".",  "\xff",   "e",    "2147483648",
                                                 "-2147483649", "\n", "1e-999", ";;",   "340282346638528859"};
        for (int i = below(8); i > 0; --i) {
            const auto at = static_cast<std::size_t>(below(static_cast<int>(text.size()) + 1));
            if (below(2) == 0)
                text.insert(at, anyOf(pieces));
            else
                text.replace(at, static_cast<std::size_t>(below(6)), 1, static_cast<char>(below(256)));
        }
        return text;
    }

    std::int64_t type()
    {
        const auto table = paintToolTable();
        return below(4) == 0 ? integer() : table[static_cast<std::size_t>(below(static_cast<int>(table.size())))].type;
    }

    void bindAnything(SQLite::Statement& statement, int column)
    {
        static constexpr double numbers[] = {-0.0, 0.5, 1.5, -1.0, 1e308, -1e308, 5e-324, 12.0, HUGE_VAL};
        const int kind = below(5);
        if (kind == 0)
            statement.bind(column);
        else if (kind == 1)
            statement.bind(column, integer());
        else if (kind == 2)
            statement.bind(column, "\xff\x00\x80'", 4);
        else
            statement.bind(column, anyOf(numbers));
    }

private:
    template <typename Value, std::size_t count>
    Value anyOf(const Value (&values)[count])
    {
        return values[static_cast<std::size_t>(below(static_cast<int>(count)))];
    }
    std::int64_t integer()
    {
        static constexpr std::int64_t integers[] = {
            0, 1, -1, 4, 1LL << 45, 2147483647, -2147483648LL, 4294967297LL, INT64_MAX, INT64_MIN};
        return anyOf(integers);
    }

    std::mt19937 random_;
};

/// What was decoded can be written and read again.
bool decodes(const std::string& text)
{
    const auto axises = QZPaintManagerView::decodeGraphKeyPoints(QString::fromLatin1(QByteArrayView(text)));
    const QString encoded = QZPaintManagerView::encodeGraphKeyPoints(axises);
    return QZPaintManagerView::decodeGraphKeyPoints(encoded).size() == axises.size();
}

void writeRows(Mutator& mutator, const QString& path)
{
    SQLite::Database database(path.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
    database.exec("PRAGMA synchronous=OFF");
    database.exec("DELETE FROM GraphTable");
    database.exec("BEGIN");
    SQLite::Statement insert(database, "INSERT INTO GraphTable VALUES (?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)");
    constexpr int keyColumn = 4, pointsColumn = 5, typeColumn = 6;
    for (int row = 0; row < rowsPerRound; ++row) {
        insert.reset();
        for (int column = 1; column <= insert.getBindParameterCount(); ++column)
            mutator.bindAnything(insert, column);
        insert.bind(keyColumn, QZPaintManagerView::constructDBIndex(stock, 1, pane).toStdString());
        insert.bind(pointsColumn, mutator.pointText());
        insert.bind(typeColumn, mutator.type());
        insert.exec();
    }
    database.exec("COMMIT");
}

void flipBits(Mutator& mutator, const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite))
        return;
    QByteArray bytes = file.readAll();
    for (int i = 1 + mutator.below(8); i > 0 && !bytes.isEmpty(); --i) {
        char& byte = bytes.data()[mutator.below(static_cast<int>(bytes.size()))];
        byte = static_cast<char>(byte ^ (1 << mutator.below(8)));
    }
    file.resize(mutator.below(4) == 0 ? mutator.below(static_cast<int>(bytes.size()) + 1) : bytes.size());
    file.seek(0);
    file.write(bytes.left(file.size()));
}

bool loadAndDraw(TestView& view)
{
    view.loadDB(stock, 1, pane);
    bool holds = true;
    for (const auto& graph : *view.paintLayer()->graphs().snapshot()) {
        holds = holds && graph->logicAxises().size() <= graph->points().size() && graph->font().pixelSize() > 0 &&
                graph->layer() == view.paintLayer();
        graph->setSelected(true);
    }
    view.paintLayer()->contents(view.size(), 1.0);
    const auto nearest = view.paintLayer()->getClosedGraph({50.0, 50.0});
    return holds && (!nearest || view.paintLayer()->graphs().contains(nearest.get()));
}

bool runRound(Mutator& mutator, TestView& view)
{
    const QString path = QZFrameComFun::getUserAccountFilePath(databaseFileName, true);
    QZPaintManagerView::graphDatabase()->close();
    QFile::remove(path);
    view.loadDB(stock, 1, pane);
    view.saveDB(stock, 1, pane);
    QZPaintManagerView::graphDatabase()->close();
    writeRows(mutator, path);
    bool holds = loadAndDraw(view);
    view.saveDB(stock, 1, pane);
    QZPaintManagerView::graphDatabase()->close();
    flipBits(mutator, path);
    holds = loadAndDraw(view) && holds;
    for (int i = 0; i < rowsPerRound; ++i)
        holds = decodes(mutator.pointText()) && holds;
    return holds;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const int iterations = argc > 1 ? std::atoi(argv[1]) : 100;
    const unsigned seed = argc > 2 ? static_cast<unsigned>(std::atoi(argv[2])) : 1;
    const QTemporaryDir folder;
    QZFrameComFun::setRootFolder(folder.path());
    // Every round has something to complain of.
    setBusCommonLogSink([](const QString&) {});
    TestView view;
    view.types = ~std::int64_t{0};
    view.resize(200, 150);
    view.setValidateRect(view.layerFrame());
    for (int i = 0; i < iterations; ++i) {
        Mutator mutator(seed + static_cast<unsigned>(i));
        if (!runRound(mutator, view)) {
            std::fprintf(stderr, "run with: 1 %u\n", seed + static_cast<unsigned>(i));
            return 1;
        }
    }
    return 0;
}
