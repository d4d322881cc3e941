#pragma once

#include <QObject>

/// The stretch of the time axis that all panes of a chart show, in bar indices: bar i covers i - 0.5 to i + 0.5. One
/// may scroll past the bars at either end until they fill only a third of the screen.
class ChartViewport : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    [[nodiscard]] int barCount() const { return barCount_; }
    /// Index at the left edge.
    [[nodiscard]] double first() const { return first_; }
    /// Index at the right edge.
    [[nodiscard]] double last() const { return first_ + span_; }
    /// Bars from edge to edge, fractions included; always positive.
    [[nodiscard]] double span() const { return span_; }

    /// The indices that scrolling can bring into view at the present zoom.
    [[nodiscard]] double firstReachable() const;
    [[nodiscard]] double lastReachable() const;
    /// Whether one may scroll on by a whole screen.
    [[nodiscard]] bool hasScreenBefore() const { return first() - span_ >= firstReachable(); }
    [[nodiscard]] bool hasScreenAfter() const { return last() + span_ <= lastReachable(); }

    /// Shows the most recent of `barCount` bars at the usual zoom.
    void reset(int barCount);
    /// Positive `bars` go forward in time. Stops at the ends; not-a-number does nothing.
    void scrollBy(double bars);
    /// Shows `factor` times as many bars and keeps the index `anchor` where it is, as far as the ends allow.
    void zoom(double factor, double anchor);
    /// Shows the bars from one index to another, both whole, as far as the ends allow.
    void show(int first, int last);
    void showFirstBar();
    void showLastBar();

Q_SIGNALS:
    void changed();

private:
    void setRange(double first, double span);

    int barCount_ = 0;
    double first_ = 0;
    double span_ = 100;
};
