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
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>

namespace {

constexpr int rowsPerRound = 20;
const QString stock = QStringLiteral("fuzz");
const QString pane = QStringLiteral("main");

/// What one seed makes of the user's file and of texts of points.
class Round {
public:
    Round(unsigned seed, TestView& view) : random_(seed), view_(view) {}

    /// Whether what came of it holds together.
    bool run()
    {
        QZPaintManagerView::graphDatabase()->close();
        QFile::remove(path_);
        view_.loadDB(stock, 1, pane);
        saveAndClose();
        writeRows();
        bool holds = loadAndDraw();
        saveAndClose();
        holds = flipBits() && loadAndDraw() && holds;
        for (int i = 0; i < rowsPerRound; ++i) {
            // What was decoded can be written and read again.
            const auto axises = TestView::decodeGraphKeyPoints(QString::fromLatin1(QByteArrayView(pointText())));
            const QString text = TestView::encodeGraphKeyPoints(axises);
            holds = TestView::decodeGraphKeyPoints(text).size() == axises.size() && holds;
        }
        saveAndClose();
        return holds;
    }

private:
    std::size_t below(std::size_t limit) { return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_); }

    template <typename Value>
    Value anyOf(std::initializer_list<Value> values)
    {
        return values.begin()[below(values.size())];
    }

    std::string pointText()
    {
        std::string text = "20240001,93000,50.250000;20240010,0,-1e-5;20240020,1,99999999;";
        for (std::size_t i = below(8); i > 0; --i) {
            const std::string piece = below(2) == 0
                                          ? std::string(1, static_cast<char>(below(256)))
                                          : anyOf({",", ";", ";;", "-", ".", "e", "\n", "\xff", "nan", "-inf", "1e999",
                                                   "1e-999", "2147483648", "-2147483649", "340282346638528859"});
            text.replace(below(text.size() + 1), below(6), piece);
        }
        return text;
    }

    void writeRows()
    {
        SQLite::Database database(path_.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        database.exec("PRAGMA synchronous=OFF; DELETE FROM GraphTable; BEGIN");
        SQLite::Statement insert(database, "INSERT INTO GraphTable VALUES (?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)");
        constexpr int keyColumn = 4, pointsColumn = 5, typeColumn = 6;
        const auto integer = [this] {
            return anyOf<std::int64_t>({0, 1, -1, 4, 1LL << 45, INT_MAX, INT_MIN, 4294967297LL, INT64_MAX, INT64_MIN});
        };
        for (int row = 0; row < rowsPerRound; ++row) {
            insert.reset();
            insert.clearBindings();
            for (int column = 1; column <= insert.getBindParameterCount(); ++column) {
                if (const std::size_t kind = below(5); kind == 1)
                    insert.bind(column, integer());
                else if (kind == 2)
                    insert.bind(column, "\xff\x00\x80'", 4);
                else if (kind > 2)
                    insert.bind(column, anyOf({-0.0, 0.5, 1.5, -1.0, 1e308, -1e308, 5e-324, 12.0, HUGE_VAL}));
            }
            insert.bind(keyColumn, QZPaintManagerView::constructDBIndex(stock, 1, pane).toStdString());
            insert.bind(pointsColumn, pointText());
            insert.bind(typeColumn, below(4) == 0 ? integer() : paintToolTable()[below(paintToolTable().size())].type);
            insert.exec();
        }
        database.exec("COMMIT");
    }

    bool flipBits()
    {
        QFile file(path_);
        QByteArray bytes = file.open(QIODevice::ReadWrite) ? file.readAll() : QByteArray();
        const auto size = static_cast<std::size_t>(bytes.size());
        for (std::size_t i = 1 + below(8); i > 0 && size > 0; --i) {
            char& byte = bytes.data()[below(size)];
            byte = static_cast<char>(byte ^ (1 << below(8)));
        }
        bytes.truncate(static_cast<qsizetype>(below(4) == 0 ? below(size + 1) : size));
        return size > 0 && file.resize(bytes.size()) && file.seek(0) && file.write(bytes) == bytes.size();
    }

    bool loadAndDraw()
    {
        view_.loadDB(stock, 1, pane);
        QZPaintLayer& layer = *view_.paintLayer();
        bool holds = true;
        for (const auto& graph : *layer.graphs().snapshot()) {
            holds = holds && graph->logicAxises().size() <= graph->points().size() && graph->font().pixelSize() > 0 &&
                    graph->layer() == view_.paintLayer();
            graph->setSelected(true);
        }
        layer.contents(view_.size(), 1.0);
        const auto nearest = layer.getClosedGraph({50.0, 50.0});
        return holds && (!nearest || layer.graphs().contains(nearest.get()));
    }

    void saveAndClose()
    {
        view_.saveDB(stock, 1, pane);
        QZPaintManagerView::graphDatabase()->close();
    }

    std::mt19937 random_;
    TestView& view_;
    const QString path_ = QZFrameComFun::getUserAccountFilePath(databaseFileName, true);
};

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const QTemporaryDir folder;
    QZFrameComFun::setRootFolder(folder.path());
    // Every round has something to complain of.
    setBusCommonLogSink([](const QString&) {});
    TestPane window({.frame = {0.0, 0.0, 200.0, 150.0}});
    window.view().types = ~std::int64_t{0};
    auto seed = static_cast<unsigned>(argc > 2 ? std::atoi(argv[2]) : 1);
    for (int left = argc > 1 ? std::atoi(argv[1]) : 100; left > 0; --left, ++seed) {
        if (!Round(seed, window.view()).run()) {
            std::fprintf(stderr, "run with: 1 %u\n", seed);
            return 1;
        }
    }
    return 0;
}
