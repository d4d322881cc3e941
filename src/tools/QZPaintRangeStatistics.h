#pragma once

#include "model/QZPaintGraph.h"

/// The band over a range of bars whose statistics the host shows. There is one in the process; the host shows it in a
/// pane, it reports every change of its edges, and the host answers by placing it anew on its bars.
///
/// Reports are the notification QZRangeStatisticsTimeChangedNotification with the band as its object: a drag of an edge
/// or of the whole band, or a click on the close button; closing is then the host's to do.
class QZPaintRangeStatistics : public QZPaintGraph {
public:
    /// The one band, created on first use and never released.
    static const std::shared_ptr<QZPaintRangeStatistics>& sharedGraph();

    [[nodiscard]] unsigned editingConfigs() const override { return 0; }
    [[nodiscard]] bool isStored() const override { return false; }
    [[nodiscard]] bool showsConfigStrip() const override { return false; }
    [[nodiscard]] bool isClosedByHost() const override { return true; }
    /// Hiding all figures does not hide the band.
    [[nodiscard]] bool isHidden() const override { return false; }

    void drawInContext(QZGraphicsContext& context) override;
    void drawLinesInContext(QZGraphicsContext& context, QZRect bandFrame) const;
    void drawKnobInContext(QZGraphicsContext& context, QZRect bandFrame) const;
    void drawCloseButtonInContext(QZGraphicsContext& context, QZRect buttonFrame) const;

    /// 0 inside the band and on the close button; negative next to the right edge, which is a hit as well.
    double minDistanceFromPoint(QZPoint point) override;
    /// Edges are taken hold of by x alone.
    bool selectKeyPointNearPoint(QZPoint point) override;
    bool isNearKeyPoint(QZPoint point) override;
    void mouseDown(QZPoint point) override;

    /// Puts the edges on two bars of its layer's chart, wherever they were, off the chart included.
    void place(const QZPaintLogicAxis& start, const QZPaintLogicAxis& end);
    /// The band over the full height of the chart's rectangle (px).
    [[nodiscard]] QZRect bounds() const;
    [[nodiscard]] QZRect closeButtonRect() const;
    [[nodiscard]] QZPoint getLeftPoint() const;
    [[nodiscard]] QZPoint getRightPoint() const;

    /// Takes the band's colours from the theme.
    void handleQZUIOverallStyleDidChangeNotification();

protected:
    void partDragged(int index) override;
    void generalDragged(double shift) override;

private:
    QZPaintRangeStatistics();

    void postDragged(unsigned dragType);

    QZObservation styleObservation_;
};
