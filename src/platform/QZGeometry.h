#pragma once

/// Points and rectangles of the drawing tools: logical pixels, origin at the bottom left, y upwards. Qt's own QPointF
/// and QRectF always mean y downwards; the two meet only where a split view takes an event's position and inside
/// QZPainterContext.
struct QZPoint {
    double x = 0.0;
    double y = 0.0;

    friend constexpr bool operator==(QZPoint, QZPoint) = default;
};

struct QZLine {
    QZPoint start;
    QZPoint end;

    friend constexpr bool operator==(QZLine, QZLine) = default;
};

struct QZRect {
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;

    [[nodiscard]] constexpr double minX() const { return x; }
    [[nodiscard]] constexpr double minY() const { return y; }
    [[nodiscard]] constexpr double maxX() const { return x + width; }
    [[nodiscard]] constexpr double maxY() const { return y + height; }

    /// Half-open: the left and bottom edges are inside, the right and top edges are not.
    [[nodiscard]] constexpr bool contains(QZPoint point) const
    {
        return point.x >= minX() && point.x < maxX() && point.y >= minY() && point.y < maxY();
    }

    friend constexpr bool operator==(QZRect, QZRect) = default;
};

/// The square of side `side` centred on `center`.
constexpr QZRect squareAround(QZPoint center, double side)
{
    return {center.x - side / 2.0, center.y - side / 2.0, side, side};
}
