#include "app/bars/BarReader.h"

#include "app/bars/BarRowParser.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QStringDecoder>

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t maxLineBytes = 1U << 20U;
constexpr int maxSkipReasons = 5;
constexpr qint64 linesPerReport = 4096;

/// Lines of an open file without their ends, in a buffer that is reused for each.
class LineSource {
public:
    enum class Status { Line, TooLong, Binary, End, Failed };

    LineSource() : buffer_(maxLineBytes + 2) {}

    /// `source` is open, and borrowed.
    void readFrom(QIODevice& source) { source_ = &source; }

    Status next()
    {
        ++number_;
        std::string_view chunk;
        if (!readChunk(chunk))
            return source_->atEnd() ? Status::End : Status::Failed;
        if (chunk.find('\0') != std::string_view::npos)
            return Status::Binary;
        if (isWholeLine(chunk)) {
            const std::size_t end = chunk.find_last_not_of("\r\n");
            line_ = chunk.substr(0, end == std::string_view::npos ? 0 : end + 1);
            return Status::Line;
        }
        while (!isWholeLine(chunk) && readChunk(chunk)) {
            if (chunk.find('\0') != std::string_view::npos)
                return Status::Binary;
        }
        return Status::TooLong;
    }

    std::string_view line() const { return line_; }
    qint64 number() const { return number_; }
    /// Of the source that was read, 0 to 1.
    double part() const { return static_cast<double>(source_->pos()) / static_cast<double>(source_->size()); }

private:
    bool readChunk(std::string_view& chunk)
    {
        const qint64 length = source_->readLine(buffer_.data(), static_cast<qint64>(buffer_.size()));
        chunk = {buffer_.data(), static_cast<std::size_t>(std::max<qint64>(length, 0))};
        return length > 0;
    }

    bool isWholeLine(std::string_view chunk) const
    {
        return chunk.empty() || chunk.back() == '\n' || chunk.size() + 1 < buffer_.size();
    }

    QIODevice* source_ = nullptr;
    std::vector<char> buffer_;
    std::string_view line_;
    qint64 number_ = 0;
};

/// One reading of one file.
class Reading {
public:
    Reading(const QString& path, const BarReadProgress& progress) : file_(path), progress_(progress)
    {
        result_.path = path;
    }

    BarReadResult run()
    {
        if (open() && readHeader() && readRows())
            finish();
        return std::move(result_);
    }

private:
    bool open()
    {
        if (result_.path.isEmpty())
            return fail(QStringLiteral("no file is named"));
        const QFileInfo info(result_.path);
        if (!info.exists())
            return fail(QStringLiteral("%1: no such file").arg(result_.path));
        if (info.isDir())
            return fail(QStringLiteral("%1: is a directory").arg(result_.path));
        // Pipes and devices could block or never end.
        if (!info.isFile())
            return fail(QStringLiteral("%1: is not a regular file").arg(result_.path));
        if (!file_.open(QIODevice::ReadOnly))
            return fail(QStringLiteral("%1: cannot be opened: %2").arg(result_.path, file_.errorString()));
        return decode();
    }

    bool decode()
    {
        const QByteArray mark = file_.peek(2);
        if (mark != QByteArray("\xFF\xFE") && mark != QByteArray("\xFE\xFF")) {
            lines_.readFrom(file_);
            return true;
        }
        QStringDecoder utf16(QStringConverter::Utf16);
        decoded_.setData(QString(utf16(file_.readAll())).toUtf8());
        if (file_.error() != QFileDevice::NoError)
            return fail(QStringLiteral("%1: cannot be read: %2").arg(result_.path, file_.errorString()));
        if (utf16.hasError())
            return fail(QStringLiteral("%1: is not valid UTF-16 text").arg(result_.path));
        decoded_.open(QIODevice::ReadOnly);
        lines_.readFrom(decoded_);
        return true;
    }

    bool readHeader()
    {
        for (;;) {
            const LineSource::Status status = lines_.next();
            if (status == LineSource::Status::End)
                return fail(QStringLiteral("%1:1: the file is empty").arg(result_.path));
            if (status == LineSource::Status::TooLong)
                return failAtLine(QStringLiteral("the line is longer than 1 MB"));
            if (status != LineSource::Status::Line)
                return failAtLine(unusable(status));
            std::string_view header = lines_.line();
            constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
            if (lines_.number() == 1 && header.substr(0, byteOrderMark.size()) == byteOrderMark)
                header.remove_prefix(byteOrderMark.size());
            if (isBlank(header))
                continue;
            const QString problem = parser_.readHeader(header);
            return problem.isNull() || failAtLine(problem);
        }
    }

    bool readRows()
    {
        for (;;) {
            const LineSource::Status status = lines_.next();
            if (status == LineSource::Status::End)
                break;
            if (status == LineSource::Status::TooLong) {
                skip("the line is longer than 1 MB");
                continue;
            }
            if (status != LineSource::Status::Line)
                return failAtLine(unusable(status));
            if (lines_.number() % linesPerReport == 0 && !mayGoOn())
                return false;
            if (isBlank(lines_.line()))
                continue;
            const BarRow row = parser_.parse(lines_.line());
            if (row.problem != nullptr) {
                skip(row.problem);
                continue;
            }
            if (row.isOrderOpen)
                openDates_.push_back(bars_.size());
            bars_.push_back(row.bar);
        }
        if (!bars_.empty())
            return true;
        if (result_.skippedRows == 0)
            return fail(QStringLiteral("%1:%2: no row after the header").arg(result_.path).arg(lines_.number() - 1));
        return fail(QStringLiteral("%1 (no usable row in the file)").arg(result_.skipReasons.first()));
    }

    bool mayGoOn()
    {
        if (!progress_ || progress_(lines_.part()))
            return true;
        result_.isCancelled = true;
        return fail(QStringLiteral("%1: the reading was cancelled").arg(result_.path));
    }

    /// Puts right the dates that were read before their order was known.
    void settleDates()
    {
        if (openDates_.empty())
            return;
        DateOrder order = parser_.dateOrder();
        if (order == DateOrder::Unknown) {
            const bool monthFirst = isInOrder(&dateAsRead);
            const bool dayFirst = isInOrder(&dateWithDayFirst);
            order = monthFirst == dayFirst ? parser_.usualDateOrder()
                    : dayFirst             ? DateOrder::DayFirst
                                           : DateOrder::MonthFirst;
            result_.dateOrder =
                order == DateOrder::DayFirst ? QStringLiteral("day/month/year") : QStringLiteral("month/day/year");
        }
        if (order != DateOrder::DayFirst)
            return;
        for (const std::size_t each : openDates_)
            bars_[each].date = dateWithDayFirst(bars_[each].date);
    }

    static std::int32_t dateAsRead(std::int32_t date) { return date; }

    /// What was taken for the month is the day, and the other way round; neither is above 12.
    static std::int32_t dateWithDayFirst(std::int32_t date)
    {
        return date / 10000 * 10000 + date % 100 * 100 + date / 100 % 100;
    }

    /// Whether the open dates only rise or only fall.
    bool isInOrder(std::int32_t (*dateOf)(std::int32_t)) const
    {
        const auto precedes = [&](std::size_t left, std::size_t right) {
            return dateOf(bars_[left].date) < dateOf(bars_[right].date);
        };
        return std::is_sorted(openDates_.begin(), openDates_.end(), precedes) ||
               std::is_sorted(openDates_.rbegin(), openDates_.rend(), precedes);
    }

    void finish()
    {
        settleDates();
        const auto read = static_cast<int>(bars_.size());
        const QString name = QFileInfo(result_.path).completeBaseName();
        result_.series = BarSeries(name, std::move(bars_));
        result_.duplicateRows = read - result_.series.size();
        if (!result_.series.isIntraday())
            return;
        const std::vector<Bar>& timed = result_.series.bars();
        const auto sameDay = [](const Bar& left, const Bar& right) { return left.date == right.date; };
        if (std::adjacent_find(timed.begin(), timed.end(), sameDay) != timed.end())
            return;
        std::vector<Bar> bars = timed;
        for (Bar& bar : bars)
            bar.time = 0;
        result_.series = BarSeries(name, std::move(bars));
    }

    QString unusable(LineSource::Status status) const
    {
        if (status == LineSource::Status::Binary)
            return QStringLiteral("the file is not text (it holds a NUL byte)");
        return QStringLiteral("cannot be read: %1").arg(file_.errorString());
    }

    static bool isBlank(std::string_view line) { return line.find_first_not_of(" \t") == std::string_view::npos; }

    QString atLine(const QString& text) const
    {
        return QStringLiteral("%1:%2: %3").arg(result_.path, QString::number(lines_.number()), text);
    }

    void skip(const char* problem)
    {
        ++result_.skippedRows;
        if (result_.skipReasons.size() < maxSkipReasons)
            result_.skipReasons += atLine(QLatin1String(problem));
    }

    bool failAtLine(const QString& reason) { return fail(atLine(reason)); }

    bool fail(const QString& message)
    {
        result_.error = message;
        return false;
    }

    BarReadResult result_;
    QFile file_;
    QBuffer decoded_; ///< what a file of UTF-16 says, in UTF-8
    LineSource lines_;
    const BarReadProgress& progress_;
    BarRowParser parser_;
    std::vector<Bar> bars_;
    std::vector<std::size_t> openDates_; ///< the bars whose day and month may stand in either order
};

QString momentText(const Bar& bar, bool withTime)
{
    QString date = QStringLiteral("%1-%2-%3")
                       .arg(bar.date / 10000, 4, 10, QLatin1Char('0'))
                       .arg(bar.date / 100 % 100, 2, 10, QLatin1Char('0'))
                       .arg(bar.date % 100, 2, 10, QLatin1Char('0'));
    if (!withTime)
        return date;
    return QStringLiteral("%1 %2:%3")
        .arg(date)
        .arg(bar.time / 10000, 2, 10, QLatin1Char('0'))
        .arg(bar.time / 100 % 100, 2, 10, QLatin1Char('0'));
}

QString counted(int count, const QString& singular)
{
    const QString number = QLocale(QLocale::English, QLocale::UnitedStates).toString(count);
    return count == 1 ? QStringLiteral("%1 %2").arg(number, singular) : QStringLiteral("%1 %2s").arg(number, singular);
}

} // namespace

QString BarReadResult::summary() const
{
    if (!isOk() || series.isEmpty())
        return error;
    const bool intraday = series.isIntraday();
    const QString last = momentText(series.bars().back(), intraday);
    QString text = QFileInfo(path).fileName() + QStringLiteral(": ") + counted(series.size(), QStringLiteral("bar")) +
                   QStringLiteral(", ") + momentText(series.at(0), intraday) + QStringLiteral(" to ") + last;
    if (skippedRows > 0) {
        const QString reason = skipReasons.first().mid(path.size() + 1);
        text += QStringLiteral(", ") + counted(skippedRows, QStringLiteral("row")) +
                QStringLiteral(" skipped (first: line ") + reason + QLatin1Char(')');
    }
    if (!dateOrder.isNull())
        text += QStringLiteral(", dates taken for ") + dateOrder;
    if (duplicateRows > 0) {
        text +=
            QStringLiteral(", ") + counted(duplicateRows, QStringLiteral("duplicate")) + QStringLiteral(" replaced");
    }
    return text;
}

BarReadResult readBars(const QString& path, const BarReadProgress& progress)
{
    return Reading(path, progress).run();
}
