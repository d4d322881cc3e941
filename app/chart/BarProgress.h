#pragma once

#include "app/bars/BarReader.h"

class QWidget;

/// Reads bars as readBars() does; what takes long shows how far it is, and can be cancelled. `parent` may be null, else
/// it is blocked meanwhile.
BarReadResult readBarsShowingProgress(const QString& path, QWidget* parent);
