#include "platform/QZLog.h"

#include <QLoggingCategory>

#include <utility>

namespace {

Q_LOGGING_CATEGORY(linePaintLog, "qz.linepaint", QtInfoMsg)

QZLogSink& currentSink()
{
    static QZLogSink sink;
    return sink;
}

QString onOneLine(QString line)
{
    for (QChar& character : line) {
        if (character == u'\n' || character == u'\r' || character == QChar::LineSeparator ||
            character == QChar::ParagraphSeparator) {
            character = u' ';
        }
    }
    return line;
}

} // namespace

void writeBusCommonLog(const QString& line)
{
    // A copy: the sink may replace itself while it runs.
    const QZLogSink sink = currentSink();
    if (sink) {
        sink(line);
    } else {
        qCWarning(linePaintLog).noquote() << onOneLine(line);
    }
}

QZLogSink setBusCommonLogSink(QZLogSink sink)
{
    return std::exchange(currentSink(), std::move(sink));
}
