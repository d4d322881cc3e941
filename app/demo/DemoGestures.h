#pragma once

#include "app/demo/UserInput.h"
#include "model/QZPaintLogicAxis.h"

#include <QPixmap>
#include <QString>

#include <functional>
#include <vector>

class ChartWindow;
class QZPaintGraph;

/// Plays a user who draws every tool on the visible swings, edits and deletes, scrolls, zooms and resizes, and checks
/// that every step did what it should and that figures stay at their dates and prices.
class DemoGestures {
public:
    /// `window` is borrowed; its bars are shown.
    explicit DemoGestures(ChartWindow& window);

    /// Plays everything and writes the window's picture at the end. Returns what went wrong, null if nothing did.
    QString play(const QString& picturePath);

private:
    struct Place {
        int bar = 0;
        double price = 0;

        friend bool operator==(const Place&, const Place&) = default;
    };
    using StoredPoints = std::vector<std::vector<QZPaintLogicAxis>>;

    [[nodiscard]] QPixmap picture() const;
    void waitUntilShown();
    void editFigures();
    void cancelAndDelete();
    void navigate();
    void resizeWindow();
    void composePicture();

    /// Arms a tool by its digit and clicks its points.
    void draw(Qt::Key tool, const std::vector<Place>& places);
    void deleteAll();
    [[nodiscard]] QPointF positionOf(Place place) const;
    /// The swing nearest to a part of the screen's width (0 left, 1 right).
    [[nodiscard]] Place swing(double part, bool isHigh) const;
    /// `bars` to the right of a place and `percent` of the visible prices above it, but on the plot.
    [[nodiscard]] Place beside(Place place, int bars, double percent) const;
    /// `place`, moved if it is the same as `other`.
    [[nodiscard]] Place apartFrom(Place other, Place place) const;
    /// Where no figure is near.
    [[nodiscard]] QPointF emptyPosition();
    /// Where a press takes hold of this figure as a whole.
    [[nodiscard]] QPointF graspOf(const QZPaintGraph& figure);
    /// A position on the plot whose point (px of the pane) is as wanted; that there is none fails the demonstration.
    [[nodiscard]] QPointF findPosition(const std::function<bool(QZPoint)>& isWanted);

    void expect(bool holds, const char* what);
    void expectCount(std::size_t count, const char* what);
    [[nodiscard]] StoredPoints storedPoints() const;
    void expectAtSamePlaces(const StoredPoints& before, const char* after);

    ChartWindow& window_;
    ChartPane& pane_;
    UserInput user_;
    QString failure_;
};
