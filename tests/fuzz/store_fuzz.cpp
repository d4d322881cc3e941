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
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>

namespace {

constexpr int rowsPerRound = 20;
const QString stock = QStringLiteral("fuzz");
const QString pane = QStringLiteral("main");

bool check(bool holds, const char* rule)
{
    if (!holds)
        std::fprintf(stderr, "broken: %s\n", rule);
    return holds;
}

class Mutator {
public:
    explicit Mutator(unsigned seed) : random_(seed) {}

    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }

    std::string pointText()
    {
        std::string text = "20240001,93000,50.250000;20240010,0,-1e-5;20240020,1,99999999;";
        static constexpr std::string_view pieces[] = {
            ",",        ";", "nan",        "-inf",        "1e999", "-",      "+",  ".",  "0x1f",
            "\xff\xfe", "e", "2147483648", "-2147483649", "\n",    "1e-999", ";;", ",,", "340282346638528859"};
        for (int i = below(8); i > 0; --i) {
            const auto at = static_cast<std::size_t>(below(static_cast<int>(text.size()) + 1));
            switch (below(3)) {
            case 0:
                text.insert(at, pieces[static_cast<std::size_t>(below(std::size(pieces)))]);
                break;
            case 1:
                text.erase(at, static_cast<std::size_t>(below(6)));
                break;
            default:
                text.insert(at, 1, static_cast<char>(below(256)));
                break;
            }
        }
        return text;
    }

    std::int64_t type()
    {
        const auto table = paintToolTable();
        switch (below(8)) {
        case 0:
            return std::int64_t{1} << below(63);
        case 1:
            return integer();
        default:
            return table[static_cast<std::size_t>(below(static_cast<int>(table.size())))].type;
        }
    }

    void bindAnything(SQLite::Statement& statement, int column)
    {
        static constexpr double numbers[] = {0.0, -0.0, 0.5, 1.0, 1.5, -1.0, 1e308, -1e308, 5e-324, 12.0, HUGE_VAL};
        switch (below(6)) {
        case 0:
            statement.bind(column);
            break;
        case 1:
            statement.bind(column, integer());
            break;
        case 2:
            statement.bind(column, pointText());
            break;
        case 3:
            statement.bind(column, "\xff\x00\x80'", 4);
            break;
        default:
            statement.bind(column, numbers[static_cast<std::size_t>(below(std::size(numbers)))]);
            break;
        }
    }

private:
    std::int64_t integer()
    {
        static constexpr std::int64_t integers[] = {
            0, 1, -1, 4, 300, 2147483647, -2147483648LL, 4294967297LL, INT64_MAX, INT64_MIN};
        return integers[static_cast<std::size_t>(below(std::size(integers)))];
    }

    std::mt19937 random_;
};

bool decodes(const std::string& text)
{
    const auto axises =
        QZPaintManagerView::decodeGraphKeyPoints(QString::fromLatin1(text.data(), static_cast<int>(text.size())));
    const QString encoded = QZPaintManagerView::encodeGraphKeyPoints(axises);
    const auto again = QZPaintManagerView::decodeGraphKeyPoints(encoded);
    return check(again.size() == axises.size(), "what was decoded can be written and read again");
}

void writeRows(Mutator& mutator, const QString& path)
{
    SQLite::Database database(path.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
    database.exec("PRAGMA synchronous=OFF");
    database.exec("DELETE FROM GraphTable");
    database.exec("BEGIN");
    SQLite::Statement insert(database, "INSERT INTO GraphTable VALUES (?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)");
    constexpr int keyColumn = 4;
    constexpr int pointsColumn = 5;
    constexpr int typeColumn = 6;
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
        holds =
            check(graph->logicAxises().size() <= graph->points().size(), "no more points than the tool has") && holds;
        holds = check(graph->font().pixelSize() > 0, "a font that can be used") && holds;
        holds = check(graph->layer() == view.paintLayer(), "tied to the layer") && holds;
        graph->setSelected(true);
    }
    view.paintLayer()->contents(view.size(), 1.0);
    view.paintLayer()->getClosedGraph({50.0, 50.0});
    return holds;
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
    view.testChart.fromAxis.answerWith([](const QZPaintLogicAxis& axis) {
        return QZPoint{(axis.date - 20240000.0) * 10.0, axis.price};
    });
    for (int i = 0; i < iterations; ++i) {
        Mutator mutator(seed + static_cast<unsigned>(i));
        if (!runRound(mutator, view)) {
            std::fprintf(stderr, "run with: 1 %u\n", seed + static_cast<unsigned>(i));
            return 1;
        }
    }
    return 0;
}
