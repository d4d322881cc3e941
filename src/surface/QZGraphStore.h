#pragma once

#include "model/QZPaintLogicAxis.h"
#include "surface/QZGraphDatabase.h"

#include <QColor>
#include <QFont>
#include <QString>

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

class QZPaintGraph;

/// One stored figure, whatever a row said: colours lie between 0 and 1, the font can be used, the width (px) is not
/// negative. There may be more or fewer points than a figure of that type has.
struct QZGraphRow {
    std::int64_t graphType = 0;
    std::int32_t lineType = 0;
    std::int32_t lineWidth = 0;
    bool isLocked = false;
    QColor strokeColor;
    QColor fillColor;
    QFont font;
    QString textValue;
    std::vector<QZPaintLogicAxis> points;
};

/// The statements on the table of figures, and how a figure is written as a row: see docs/store-format.md. The figures
/// of one pane for one stock, cycle and view are a group, which shares one key.
///
/// Texts stand between single quotes as they are, unless QZPaintOptions::bindsTexts is on. One with a quote in it makes
/// its statement another one, which as a rule does not run; a key with an unpaired quote is barred: no statement with
/// it runs, for it could reach other groups.
class QZGraphStore {
public:
    static constexpr QLatin1StringView version{"1.0.0"};

    /// `database` is borrowed.
    explicit QZGraphStore(QZGraphDatabase& database) : database_(database) {}

    static QString key(const QString& stockCode, std::uint64_t cycle, const QString& viewIdentiry);
    /// "date,time,price;" for each point, the price with six decimals.
    static std::string encodePoints(std::span<const QZPaintLogicAxis> points);
    /// Leaves out what is not three parts. Parts are read as the number that they start with, else 0.
    static std::vector<QZPaintLogicAxis> decodePoints(std::string_view text);

    /// Makes the table if the file has none, and its index if QZPaintOptions::indexesGroups asks for it. Why one of
    /// them is missing now, or nothing when none is.
    std::optional<QString> createTableIfMissing();
    /// Whether a query failed in this way because nothing was ever saved in the file.
    static bool isMissingTable(const QString& failure);
    std::optional<QZGraphResultSet> selectGroup(const QString& key);
    /// The same with the number that SQLite gave each row, in the column "rowid".
    std::optional<QZGraphResultSet> selectNumberedGroup(const QString& key);
    QZGraphRow readRow(const QZGraphResultSet& row);
    /// A figure as its row has it.
    static QZGraphRow rowOf(const QZPaintGraph& graph);
    using Types = std::vector<std::int64_t>;
    /// With `types` only the rows of these types.
    bool deleteGroup(const QString& key, const std::optional<Types>& types = std::nullopt);
    bool deleteRow(std::int64_t number);
    bool insertGraph(const QString& key, const QZPaintGraph& graph);

private:
    bool isBarred(const QString& key);
    std::optional<QZGraphResultSet> select(const char* columns, const QString& key);
    const QFont& fontOf(std::string_view name, double size);

    QZGraphDatabase& database_;
    // The font that was read last.
    bool hasFont_ = false;
    std::string fontName_;
    double fontSize_ = 0.0;
    QFont font_;
};
