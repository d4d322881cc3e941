#pragma once

#include "platform/QZGraphicsContext.h"

#include <optional>
#include <string>
#include <vector>

/// Writes what is drawn as one line each, with at most three decimals, y upwards:
///
///     segment 0,0-100,100 w1 #fe6400 dash 10,5 round
///     path 0,0 10,5 w1 #fe6400           arcs as "arc 5,5 r3 0..1.571 cw", a new start as "M", the end as "Z"
///     rect|ellipse 0,0 10x10 w1 #fe6400
///     fill|clear|image 0,0 10x10         with the colour for a fill; a path as "fillpath 0,0 10,5 #fe6400"
///     text "1.000" 10,20 12px #fe6400
class RecordingContext final : public QZGraphicsContext {
public:
    std::vector<std::string> lines;
    /// The boxes of the texts drawn.
    std::vector<QZRect> textBoxes;
    [[nodiscard]] bool isBalanced() const { return saved_.empty() && !restoredTooOften_; }
    [[nodiscard]] int count(const std::string& operation) const;
    /// As the lines have them, the box with a space before it.
    static std::string at(QZPoint point);
    static std::string box(QZRect rect);

    void saveState() override { saved_.push_back(state_); }
    void restoreState() override;
    void setLineWidth(double width) override { state_.width = width; }
    void setLineCap(QZLineCap cap) override { state_.cap = cap; }
    void setLineJoin(QZLineJoin join) override { state_.join = join; }
    void setLineDash(double phase, std::span<const double> lengths) override;
    void setStrokeColor(const QColor& color) override { state_.stroke = color; }
    void setFillColor(const QColor& color) override { state_.fill = color; }
    void strokeSegment(QZLine l) override { lines.push_back("segment " + at(l.start) + "-" + at(l.end) + pen()); }
    void beginPath() override { path_ = std::string(); }
    void moveTo(QZPoint point) override { path_.value() += (path_->empty() ? " " : " M ") + at(point); }
    void lineTo(QZPoint point) override { path_.value() += " " + at(point); }
    void addArc(QZPoint center, double radius, double startAngle, double endAngle, bool clockwise) override;
    void closePath() override { path_.value() += " Z"; }
    void strokePath() override { endPath("path", pen()); }
    void fillPath() override { endPath("fillpath", name(state_.fill)); }
    void strokeRect(QZRect rect) override { lines.push_back("rect" + box(rect) + pen()); }
    void fillRect(QZRect rect) override { lines.push_back("fill" + box(rect) + name(state_.fill)); }
    void strokeEllipse(QZRect bounds) override { lines.push_back("ellipse" + box(bounds) + pen()); }
    void clearRect(QZRect rect) override { lines.push_back("clear" + box(rect)); }
    void drawImage(const QImage& /*image*/, QZRect rect) override { lines.push_back("image" + box(rect)); }
    void drawText(const QString& text, const QFont& font, const QColor& color, QZRect rect) override;

private:
    struct State {
        double width = 1.0;
        QZLineCap cap = QZLineCap::Butt;
        QZLineJoin join = QZLineJoin::Miter;
        std::string dash;
        QColor stroke = Qt::black;
        QColor fill = Qt::black;
    };

    static std::string name(const QColor& color);
    [[nodiscard]] std::string pen() const;
    void endPath(const std::string& operation, const std::string& style);

    State state_;
    std::vector<State> saved_;
    std::optional<std::string> path_; // between beginPath() and what is done with it
    bool restoredTooOften_ = false;
};
