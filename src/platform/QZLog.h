#pragma once

#include <QString>

#include <functional>

/// Receives each line of the business log. Called on the thread that writes the line.
using QZLogSink = std::function<void(const QString&)>;

/// Writes one entry to the host's business log. A sink gets it as it stands; the default one turns line breaks inside
/// it (a database message, a file name) into spaces, so that one call is always one line.
void writeBusCommonLog(const QString& line);

/// Sends the log to `sink` and returns the sink in use until now, empty for the default one. An empty sink restores
/// the default: a warning in the logging category "qz.linepaint".
QZLogSink setBusCommonLogSink(QZLogSink sink);
