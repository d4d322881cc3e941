#include "platform/QZCursor.h"

Qt::CursorShape qtCursorShape(QZCursor cursor)
{
    switch (cursor) {
    case QZCursor::Arrow:
        return Qt::ArrowCursor;
    case QZCursor::Crosshair:
        return Qt::CrossCursor;
    case QZCursor::OpenHand:
        return Qt::OpenHandCursor;
    case QZCursor::ClosedHand:
        return Qt::ClosedHandCursor;
    case QZCursor::ResizeLeft: // Qt has no arrow to one side only
        return Qt::SizeHorCursor;
    case QZCursor::ResizeLeftRight:
        return Qt::SplitHCursor;
    }
    return Qt::ArrowCursor;
}
