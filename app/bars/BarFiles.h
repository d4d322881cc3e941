#pragma once

#include <QStringList>

/// The files that `paths` name, each once, a folder standing for those in it that may be bars, in the order of their
/// names. What does not exist is among them.
QStringList barFiles(const QStringList& paths);

/// What names of bar files look like, as "*.csv".
QStringList barFilePatterns();
