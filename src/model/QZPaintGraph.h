#pragma once

#include "model/QZDrawingTypes.h"
#include "model/QZHostRecords.h"
#include "model/QZPaintLogicAxis.h"
#include "platform/QZCursor.h"
#include "platform/QZGeometry.h"
#include "platform/QZGraphicsContext.h"
#include "platform/QZNotificationCenter.h"

#include <QColor>
#include <QFont>
#include <QImage>
#include <QString>

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

class QZPaintChart;
class QZPaintGraphOwner;

/// One drawn figure on one chart pane, and the base of every tool: key points in layer coordinates (px, y upwards) and
/// in chart coordinates, style, the frame of drawing, and editing with the mouse.
///
/// A tool says how many key points it has, draws its figure from them (drawFigure) and measures the distance to it
/// (minDistanceFromPoint); the rest is here. The layer owns its figures; a figure knows its layer weakly. A figure that
/// finds a point the chart cannot place takes itself out of its layer, so whoever draws or converts it must own it too.
class QZPaintGraph : public QZNotificationObject {
public:
    /// A figure in creation, with all points at the origin and the style that the user last chose. A tool hands its
    /// constants down; both stay for life.
    explicit QZPaintGraph(std::int64_t type = QZShapeTypeNone, int maxPointCount = 2);
    QZPaintGraph(const QZPaintGraph&) = delete;
    QZPaintGraph& operator=(const QZPaintGraph&) = delete;

    /// Sets the stored state of a figure read from a file. The screen points follow with the next drawing.
    void initWithLayer(const std::shared_ptr<QZPaintGraphOwner>& layer, const QColor& strokeColor,
                       const QColor& fillColor, std::uint64_t lineType, std::int32_t lineWidth,
                       std::vector<QZPaintLogicAxis> logicAxises, const QString& text, const QFont& textFont,
                       bool isLocked, bool isEditing, bool isSelected);

    [[nodiscard]] virtual std::int64_t type() const { return type_; }
    [[nodiscard]] virtual int maxPointCount() const { return static_cast<int>(points_.size()); }
    /// Which controls the configuration strip offers: bits of QZGraphConfig.
    [[nodiscard]] virtual unsigned editingConfigs() const { return QZGraphConfig::line; }
    /// Whether saving a pane writes the figure.
    [[nodiscard]] virtual bool isStored() const { return true; }
    /// Whether the configuration strip shows while this is the current figure.
    [[nodiscard]] virtual bool showsConfigStrip() const { return true; }
    /// Whether the figure belongs to the host, which is told that its user wants it gone instead of losing it.
    [[nodiscard]] virtual bool isClosedByHost() const { return false; }

    // Drawing, see QZPaintGraphDrawing.cpp.

    /// Draws the figure and its handles: nothing when hidden; only handles while the first point is being placed;
    /// nothing at all when a point is invalid.
    virtual void drawInContext(QZGraphicsContext& context);
    /// Recomputes the screen points from the chart points, except during a drag of the whole figure.
    void reloadKeyPoints();
    void setDefaultConfig(QZGraphicsContext& context) const;
    /// Dash of the line type, in multiples of the line width; an unknown type leaves the context's dash alone.
    void setLineDash(QZGraphicsContext& context) const;
    /// Draws one string in the stroke colour; `point` is the lower left corner of its box.
    void drawTextInContext(QZGraphicsContext& context, const QString& text, const QFont& font, QZPoint point) const;
    /// The same in the font of captions; a null string draws nothing.
    void drawTextInContext(QZGraphicsContext& context, const QString& stringText, QZPoint point) const;
    void drawKeyPoint(QZPoint point, QZGraphicsContext& context) const;
    static void drawThumbnail(const QImage& image, QZPoint location, QZGraphicsContext& context);
    /// Takes the handles' colour from the theme.
    void reloadFontAndColor();

    // Hit tests (px). What is near is strictly closer than maxMinDistance.

    /// Distance to the figure; maxMinDistance or more means not near.
    [[nodiscard]] virtual double minDistanceFromPoint(QZPoint point);
    /// Whether the figure is under `point`; if so, sets the open-hand cursor.
    bool isNearSelectionLine(QZPoint point);
    /// Whether a handle is under `point`; if so, sets the cursor.
    virtual bool isNearKeyPoint(QZPoint point);

    // Editing, see QZPaintGraphEditing.cpp. Points are layer coordinates.

    /// Places the next key point of a figure in creation.
    virtual void mouseDown(QZPoint point);
    void mouseMoved(QZPoint point);
    void mouseDragged(QZPoint point);
    void mouseUp(QZPoint point);
    /// Takes hold of the handle under `point`. True when a key point is, or stays, under control of the mouse.
    virtual bool selectKeyPointNearPoint(QZPoint point);

    // Chart coordinates.

    /// The placed points in chart coordinates, one entry each; all zero where the chart has none.
    [[nodiscard]] std::vector<QZPaintLogicAxis> convertToLogicAxises() const;
    void convertToKeyPoint();
    /// Any point that the chart could not place or that lies too far off to draw. The former also removes the figure
    /// from its layer.
    bool isContainsInvalidPoint();
    bool isContainsInvalidLogicPoint();
    [[nodiscard]] bool isContainsInvalidScreenPoint() const;

    // State.

    [[nodiscard]] const std::vector<QZPoint>& points() const { return points_; }
    /// Index of the key point being placed or dragged.
    [[nodiscard]] std::optional<int> currentPoint() const { return currentPoint_; }
    void setCurrentPoint(std::optional<int> index)
    {
        Q_ASSERT(!index || (*index >= 0 && *index < maxPointCount()));
        currentPoint_ = index;
    }

    [[nodiscard]] const std::vector<QZPaintLogicAxis>& logicAxises() const { return logicAxises_; }
    void setLogicAxises(std::vector<QZPaintLogicAxis> axises);

    /// Bars between the first two key points, as the chart last answered.
    [[nodiscard]] std::int32_t deltaCount() const { return deltaCount_; }

    [[nodiscard]] bool isEditing() const { return editing_; }
    void setEditing(bool editing);
    /// Selected, and in the active pane: a figure never shows as selected in another one.
    [[nodiscard]] bool isSelected() const;
    void setSelected(bool selected);
    [[nodiscard]] bool isDragging() const { return isGraphDragging_ || isKeyPointDragging_; }
    [[nodiscard]] bool isLocked() const { return locked_; }
    void setLocked(bool locked) { locked_ = locked; }
    /// Whether the lock holds: QZPaintOptions::lockedFiguresStay is on as well.
    [[nodiscard]] bool isFixed() const;
    [[nodiscard]] virtual bool isHidden() const { return hidden_; }
    void setHidden(bool hidden);
    /// Whether the figure takes part in mouse handling: while it is created or selected.
    [[nodiscard]] bool needsDisplay() const { return needsDisplay_; }
    void setNeedsDisplay(bool needsDisplay) { needsDisplay_ = needsDisplay; }

    /// Dash style, 0 (solid) to 4.
    [[nodiscard]] virtual std::uint64_t lineType() const { return lineType_; }
    void setLineType(std::uint64_t lineType);
    /// px.
    [[nodiscard]] std::uint64_t lineWidth() const { return lineWidth_; }
    void setLineWidth(std::uint64_t lineWidth);
    [[nodiscard]] QColor strokeColor() const { return strokeColor_; }
    void setStrokeColor(const QColor& color);
    [[nodiscard]] QColor fillColor() const { return fillColor_; }
    void setFillColor(const QColor& color);
    [[nodiscard]] QColor keyPointColor() const { return keyPointColor_; }
    [[nodiscard]] QString text() const { return text_; }
    void setText(const QString& text);
    [[nodiscard]] QFont font() const { return font_; }
    void setFont(const QFont& font);
    /// The tool's picture, shown beside the first point while it is being placed.
    [[nodiscard]] QImage thumbnail() const { return thumbnail_; }
    void setThumbnail(const QImage& thumbnail) { thumbnail_ = thumbnail; }

    [[nodiscard]] std::shared_ptr<QZPaintGraphOwner> layer() const { return layer_.lock(); }
    void setLayer(const std::shared_ptr<QZPaintGraphOwner>& layer) { layer_ = layer; }
    /// Where the current step of a drag of the whole figure began.
    [[nodiscard]] QZPoint dragStartPoint() const { return dragStartPoint_; }
    void setDragStartPoint(QZPoint point) { dragStartPoint_ = point; }

protected:
    /// Strokes the figure alone, in a saved state with the figure's style set.
    virtual void drawFigure(QZGraphicsContext& context);
    /// Sets the style that drawFigure() begins with.
    virtual void applyStyle(QZGraphicsContext& context) const { setDefaultConfig(context); }
    /// Stores the stroke colour at an opacity of 0.2 as the fill colour, for tools that tint what they span.
    void tintFillColor();
    /// Handles and the placing picture: what every drawing ends with.
    void drawKeyPoints(QZGraphicsContext& context) const;

    /// After a step of a key point's drag; `index` is the point's.
    virtual void partDragged(int index);
    /// After a step of a drag of the whole figure, by `shift` px in x.
    virtual void generalDragged(double shift);

    /// Makes key point `handle` the one that follows the mouse. True when a key point is, or stays, under control of
    /// the mouse: always in creation; a drag under way keeps the point that it holds.
    bool takeHoldOf(std::optional<int> handle);

    /// Whether the magnet moves this figure's points.
    [[nodiscard]] virtual bool snapsToMagnet() const { return true; }
    /// Whether the screen points follow the chart points on every redraw.
    [[nodiscard]] virtual bool followsChart() const { return true; }

    void setPoint(int index, QZPoint point) { points_[static_cast<std::size_t>(index)] = point; }
    /// Whether only the first point is being placed, so that there is no figure yet.
    [[nodiscard]] bool isPlacingFirstPoint() const { return editing_ && currentPoint_ == 0; }
    /// Entries of `points` that hold placed points, the one under the mouse included.
    [[nodiscard]] int placedPointCount() const;
    [[nodiscard]] std::span<const QZPoint> placedPoints() const;
    /// Whether the last point is being placed or all are: what hangs on it can be drawn.
    [[nodiscard]] bool hasLastPoint() const { return !editing_ || currentPoint_ == maxPointCount() - 1; }
    /// The chart under the layer, null when the figure has no layer or the layer no chart. For use at once.
    [[nodiscard]] const QZPaintChart* chart() const;
    /// Price at the height of `point`, 0 where the chart has none.
    [[nodiscard]] double priceAt(QZPoint point) const;
    /// What the chart says of the bars between the first two key points.
    [[nodiscard]] std::optional<QZPaintRetangleModel> rangeOfPoints() const;
    /// Font of most captions: the system's, 10 px larger than the line is wide.
    [[nodiscard]] QFont captionFont() const;
    /// The layer's rectangle (px), all zero without a layer.
    [[nodiscard]] QZRect frame() const;
    /// The chart's rectangle for figures (px), all zero without a chart.
    [[nodiscard]] QZRect validateRect() const;
    void requestDisplay() const;
    void setLayerCursor(QZCursor cursor) const;

private:
    /// Tells the layer of a change that shows whenever something else asks for a redraw.
    void tellOfChange() const;
    [[nodiscard]] QZPoint magnetized(QZPoint point) const;
    void dragKeyPoint(QZPoint point);
    void dragGraph(QZPoint point);

    std::int64_t type_;
    std::vector<QZPoint> points_;
    std::optional<int> currentPoint_ = 0;
    std::vector<QZPaintLogicAxis> logicAxises_;
    std::weak_ptr<QZPaintGraphOwner> layer_;
    QZPoint dragStartPoint_;
    std::int32_t deltaCount_ = 0;
    bool editing_ = true;
    bool needsDisplay_ = true;
    bool selected_ = false;
    bool isGraphDragging_ = false;
    bool isKeyPointDragging_ = false;
    bool locked_ = false;
    bool hidden_ = false;
    std::uint64_t lineType_;
    std::uint64_t lineWidth_;
    QColor strokeColor_;
    QColor fillColor_;
    QColor keyPointColor_;
    QString text_;
    QFont font_;
    QImage thumbnail_;
};
