#include "tools/QZPaintWaves.h"

#include "tools/QZPaintStrokes.h"

double QZPaintFiveWaves::minDistanceFromPoint(QZPoint point)
{
    return distanceToPolyline(point, points(), maxMinDistance);
}

void QZPaintFiveWaves::drawFigure(QZGraphicsContext& context)
{
    strokePolyline(context, placedPoints());
}
