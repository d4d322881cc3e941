#pragma once

// QCustomPlot's header is written in Qt's keywords, which our own code does without.
#define signals Q_SIGNALS
#define slots Q_SLOTS
#define emit Q_EMIT
#define foreach Q_FOREACH
#include <qcustomplot.h> // IWYU pragma: export
#undef signals
#undef slots
#undef emit
#undef foreach
