#pragma once

#include <qnamespace.h>

/// The mouse cursors that a drawing asks for.
enum class QZCursor { Arrow, Crosshair, OpenHand, ClosedHand, ResizeLeft, ResizeLeftRight };

Qt::CursorShape qtCursorShape(QZCursor cursor);
