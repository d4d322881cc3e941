#include "surface/QZGraphStore.h"

#include "model/QZDrawingTypes.h"
#include "model/QZPaintGraph.h"
#include "model/QZPaintOptions.h"
#include "platform/QZFont.h"

#include <QByteArray>
#include <QFontDatabase>
#include <QFontInfo>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

namespace {

constexpr double fallbackFontSize = 11.0;

constexpr std::string_view columnTypes =
    "(dbVersion TEXT, extension1 TEXT, extension2 TEXT,"
    "\t\t\t\t\t\t\t\t\t\t  graphIndex TEXT, points TEXT, graphType INTEGER,lineType INTEGER, lineWidth INTEGER, "
    "isLocked BIT,"
    "\t\t\t\t\t\t\t\t\t\t  strokeColorR FLOAT, strokeColorG FLOAT, strokeColorB FLOAT, strokeColorA FLOAT,"
    "\t\t\t\t\t\t\t\t\t\t  fillColorR FLOAT, fillColorG FLOAT, fillColorB FLOAT, fillColorA FLOAT, fontName TEXT, "
    "fontSize FLOAT, textValue TEXT)";

const std::string& tableName()
{
    static const std::string name(databaseTableName.data(), static_cast<std::size_t>(databaseTableName.size()));
    return name;
}

QString textOf(const QString& value)
{
    return value.isNull() ? QStringLiteral("(null)") : value;
}

template <typename Number>
void appendInteger(std::string& statement, Number value)
{
    std::array<char, 24> digits{};
    statement.append(digits.data(), std::to_chars(digits.begin(), digits.end(), value).ptr);
}

// The shortest decimal text that reads back to the same value. SQL has no literal for what is not finite.
void appendDouble(std::string& statement, double value)
{
    std::array<char, 32> digits{};
    if (std::isnan(value))
        statement += "NULL";
    else if (std::isinf(value))
        statement += value > 0.0 ? "9e999" : "-9e999";
    else
        statement.append(digits.data(), std::to_chars(digits.begin(), digits.end(), value).ptr);
}

void appendColor(std::string& statement, const QColor& color)
{
    const QColor rgb = color.toRgb();
    for (const float component : {rgb.redF(), rgb.greenF(), rgb.blueF(), rgb.alphaF()}) {
        statement += ',';
        appendDouble(statement, static_cast<double>(component));
    }
}

/// A statement in the making.
struct Statement {
    std::string text;
    QZGraphDatabase::Values values; ///< that stand for its "?"

    void appendText(std::string_view utf8)
    {
        if (QZPaintOptions::current().bindsTexts) {
            text += '?';
            values.emplace_back(utf8);
            return;
        }
        text += '\'';
        text += utf8;
        text += '\'';
    }
    void appendText(const QString& value)
    {
        const QByteArray utf8 = textOf(value).toUtf8();
        appendText(std::string_view(utf8.constData(), static_cast<std::size_t>(utf8.size())));
    }
};

bool isDigit(char letter)
{
    return letter >= '0' && letter <= '9';
}

/// What a number may start at: behind spaces and a plus sign.
std::string_view numberStart(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(" \t\n\v\f\r");
    text.remove_prefix(first == std::string_view::npos ? text.size() : first);
    if (text.starts_with('+') && text.size() > 1 && text[1] != '-')
        text.remove_prefix(1);
    return text;
}

std::int32_t leadingInt(std::string_view text)
{
    using Limits = std::numeric_limits<std::int32_t>;
    const std::string_view number = numberStart(text);
    std::int32_t value = 0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    if (result.ec == std::errc::result_out_of_range)
        return number.starts_with('-') ? Limits::min() : Limits::max();
    return value;
}

// Too large a number is infinite, too small a one is 0; from_chars() does not say which of them it met.
double outOfRange(std::string_view number)
{
    long double wide = 0.0L;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), wide);
    const bool isLarge = result.ec == std::errc() ? std::abs(wide) > 1.0L : number.find("e-") == std::string_view::npos;
    constexpr double infinity = std::numeric_limits<double>::infinity();
    return isLarge ? (number.starts_with('-') ? -infinity : infinity) : 0.0;
}

double leadingDouble(std::string_view text)
{
    const std::string_view number = numberStart(text);
    // Words such as "nan" and "inf" are no numbers here.
    const std::size_t first = number.starts_with('-') ? 1 : 0;
    if (number.size() <= first || !(isDigit(number[first]) || number[first] == '.'))
        return 0.0;
    double value = 0.0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    if (result.ec == std::errc::result_out_of_range)
        return outOfRange(number);
    return value;
}

/// Cuts the part before `separator` off `text`; all of it when there is none.
std::string_view cutPart(std::string_view& text, char separator)
{
    const std::size_t end = text.find(separator);
    const std::string_view part = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return part;
}

QColor readColor(const QZGraphResultSet& row, const std::array<std::string_view, 4>& names)
{
    std::array<float, 4> components{};
    // Written so that not-a-number too ends up as 0.
    std::ranges::transform(names, components.begin(), [&row](std::string_view name) {
        const double value = row.doubleForColumn(name);
        return value > 0.0 ? static_cast<float>(std::min(value, 1.0)) : 0.0F;
    });
    return QColor::fromRgbF(components[0], components[1], components[2], components[3]);
}

} // namespace

QString QZGraphStore::key(const QString& stockCode, std::uint64_t cycle, const QString& viewIdentiry)
{
    return textOf(stockCode) + u'_' + textOf(viewIdentiry) + u'_' + textOf(strQZPaintCycle(cycle));
}

std::string QZGraphStore::encodePoints(std::span<const QZPaintLogicAxis> points)
{
    constexpr int decimals = 6;
    constexpr std::size_t longestPrice = std::numeric_limits<double>::max_exponent10 + decimals + 3;
    std::string text;
    for (const QZPaintLogicAxis& point : points) {
        appendInteger(text, point.date);
        text += ',';
        appendInteger(text, point.time);
        text += ',';
        std::array<char, longestPrice> price{};
        text.append(price.data(),
                    std::to_chars(price.begin(), price.end(), point.price, std::chars_format::fixed, decimals).ptr);
        text += ';';
    }
    return text;
}

std::vector<QZPaintLogicAxis> QZGraphStore::decodePoints(std::string_view text)
{
    std::vector<QZPaintLogicAxis> points;
    points.reserve(static_cast<std::size_t>(std::ranges::count(text, ';')));
    while (!text.empty()) {
        std::string_view piece = cutPart(text, ';');
        if (std::ranges::count(piece, ',') != 2)
            continue;
        QZPaintLogicAxis point;
        point.date = leadingInt(cutPart(piece, ','));
        point.time = leadingInt(cutPart(piece, ','));
        point.price = leadingDouble(piece);
        points.push_back(point);
    }
    return points;
}

std::optional<QString> QZGraphStore::createTableIfMissing()
{
    auto count =
        database_.executeQuery("SELECT COUNT(*) FROM sqlite_master WHERE TYPE='table' AND NAME=?", {tableName()});
    // What keeps the question from being asked keeps the table from being made, and a lock is waited for once.
    if (!count)
        return database_.lastErrorMessage();
    const bool isThere = count->next() && count->intForColumnIndex(0) >= 1;
    if (!count->failure().isNull())
        return count->failure();
    count.reset();
    if (!isThere && !database_.executeUpdate("CREATE TABLE " + tableName() + std::string(columnTypes)))
        return database_.lastErrorMessage();
    if (QZPaintOptions::current().indexesGroups &&
        !database_.executeUpdate("CREATE INDEX IF NOT EXISTS GraphTableGroups ON " + tableName() + "(graphIndex)"))
        return database_.lastErrorMessage();
    return std::nullopt;
}

bool QZGraphStore::isMissingTable(const QString& failure)
{
    return failure == QStringLiteral("no such table: ") + databaseTableName;
}

// A doubled quote is the only one that leaves the text whole.
bool QZGraphStore::isBarred(const QString& key)
{
    return !QZPaintOptions::current().bindsTexts && QString(key).remove(QStringLiteral("''")).contains(u'\'') &&
           !database_.failed("a key with an unpaired quote is barred");
}

std::optional<QZGraphResultSet> QZGraphStore::select(const char* columns, const QString& key)
{
    if (isBarred(key))
        return std::nullopt;
    Statement select{"SELECT " + std::string(columns) + " FROM " + tableName() + " WHERE graphIndex=", {}};
    select.appendText(key);
    return database_.executeQuery(select.text, select.values);
}

std::optional<QZGraphResultSet> QZGraphStore::selectGroup(const QString& key)
{
    return select("*", key);
}

std::optional<QZGraphResultSet> QZGraphStore::selectNumberedGroup(const QString& key)
{
    return select("*, rowid", key);
}

bool QZGraphStore::deleteRow(std::int64_t number)
{
    std::string statement = "DELETE FROM " + tableName() + " WHERE rowid=";
    appendInteger(statement, number);
    return database_.executeUpdate(statement);
}

bool QZGraphStore::deleteGroup(const QString& key, const std::optional<Types>& types)
{
    if (isBarred(key))
        return false;
    Statement erase{"DELETE FROM " + tableName() + " WHERE graphIndex=", {}};
    erase.appendText(key);
    if (types) {
        erase.text += " AND graphType IN (";
        const char* before = "";
        for (const std::int64_t type : *types) {
            erase.text += std::exchange(before, ",");
            appendInteger(erase.text, type);
        }
        erase.text += ')';
    }
    return database_.executeUpdate(erase.text, erase.values);
}

bool QZGraphStore::insertGraph(const QString& key, const QZPaintGraph& graph)
{
    if (isBarred(key))
        return false;
    Statement insert{"INSERT INTO " + tableName() + " VALUES (", {}};
    insert.appendText(std::string_view(version.data(), static_cast<std::size_t>(version.size())));
    insert.text += ",'','',";
    insert.appendText(key);
    insert.text += ',';
    insert.appendText(encodePoints(graph.logicAxises()));
    insert.text += ',';
    appendInteger(insert.text, graph.type());
    insert.text += ',';
    appendInteger(insert.text, graph.lineType());
    insert.text += ',';
    appendInteger(insert.text, graph.lineWidth());
    insert.text += graph.isLocked() ? ",1" : ",0";
    appendColor(insert.text, graph.strokeColor());
    appendColor(insert.text, graph.fillColor());
    const QFont font = graph.font();
    insert.text += ',';
    insert.appendText(font.family());
    insert.text += ',';
    appendInteger(insert.text, font.pixelSize() > 0 ? font.pixelSize() : QFontInfo(font).pixelSize());
    insert.text += ',';
    insert.appendText(graph.text());
    insert.text += ')';
    return database_.executeInsert(insert.text, insert.values);
}

QZGraphRow QZGraphStore::rowOf(const QZPaintGraph& graph)
{
    return {.graphType = graph.type(),
            .lineType = static_cast<std::int32_t>(graph.lineType()),
            .lineWidth = static_cast<std::int32_t>(graph.lineWidth()),
            .isLocked = graph.isLocked(),
            .strokeColor = graph.strokeColor(),
            .fillColor = graph.fillColor(),
            .font = graph.font(),
            .textValue = graph.text(),
            .points = graph.logicAxises()};
}

QZGraphRow QZGraphStore::readRow(const QZGraphResultSet& row)
{
    QZGraphRow graph;
    graph.points = decodePoints(row.utf8ForColumn("points"));
    graph.graphType = static_cast<std::int64_t>(row.unsignedLongLongIntForColumn("graphType"));
    graph.lineType = row.intForColumn("lineType");
    graph.lineWidth = std::max(row.intForColumn("lineWidth"), 0);
    graph.isLocked = row.boolForColumn("isLocked");
    graph.strokeColor = readColor(row, {"strokeColorR", "strokeColorG", "strokeColorB", "strokeColorA"});
    graph.fillColor = readColor(row, {"fillColorR", "fillColorG", "fillColorB", "fillColorA"});
    const std::string_view fontName = row.utf8ForColumn("fontName");
    graph.font = fontOf(fontName, row.doubleForColumn("fontSize"));
    graph.textValue = row.stringForColumn("textValue");
    if (graph.textValue.isNull())
        graph.textValue = QLatin1String("");
    return graph;
}

// Finding out whether a font exists is dear, and most rows of a group share one.
const QFont& QZGraphStore::fontOf(std::string_view name, double size)
{
    const double usableSize = std::isnan(size) ? 0.0 : size;
    if (hasFont_ && fontSize_ == usableSize && fontName_ == name)
        return font_;
    hasFont_ = true;
    fontSize_ = usableSize;
    fontName_ = name;
    font_ = systemFont(usableSize);
    const QString family = QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
    // The system font is known by its first family, which need not be the one that this desktop shows it in.
    if (family == font_.family())
        return font_;
    if (QFontDatabase::hasFamily(family))
        font_.setFamilies(QStringList(family) + font_.families());
    else
        font_ = systemFont(fallbackFontSize);
    return font_;
}
