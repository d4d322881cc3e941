#pragma once

#include "app/bars/Bars.h"
#include "model/QZDrawingTypes.h"

#include <QCommandLineParser>
#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>

/// What the command line asks for in pictures of stored figures.
struct RenderRequest {
    bool isAll = false;                ///< one picture for each stock and period that has figures
    QString target;                    ///< the picture, or the folder of all of them
    QStringList stocks;                ///< files of bars; among them folders of such files if all are wanted
    std::optional<QZPaintCycle> cycle; ///< that of the bars if none
    std::optional<QString> user;
    QSize size;
    std::optional<BarTime> from;
    std::optional<BarTime> to;
};

/// The options of the command line that ask for pictures.
class RenderOptions {
public:
    /// Adds them to `parser`, which is borrowed.
    explicit RenderOptions(QCommandLineParser& parser);

    /// Whether an argument of the program asks for pictures: no display is needed then.
    static bool isAsked(const char* argument);

    /// Whether pictures are asked for, after the parser has processed the arguments.
    [[nodiscard]] bool isChosen() const;
    /// What they are. Where the options make no sense `error` says why, and there is nothing.
    [[nodiscard]] std::optional<RenderRequest> request(QString& error) const;

private:
    [[nodiscard]] std::optional<BarTime> moment(const QString& option, QString& error) const;

    QCommandLineParser& parser_;
};

/// The name of a period on the command line and in names of pictures: "day", "15m".
QString periodName(QZPaintCycle cycle);
