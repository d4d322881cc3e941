#pragma once

#include "model/QZPaintGraph.h"
#include "surface/QZPaintManagerView.h"

#include <QSize>

#include <memory>
#include <random>
#include <vector>

inline constexpr QSize paneSize(1200, 800);

/// A pane on a linear chart whose hooks do what a host's do: look a bar up and scale. One bar is 4 px wide.
class BenchView : public QZPaintManagerView {
public:
    BenchView()
    {
        resize(paneSize);
        setValidateRect(layerFrame());
    }

    std::optional<QZPaintLogicAxis> convertFromPoint(QZPoint point) const override
    {
        return QZPaintLogicAxis{static_cast<std::int32_t>(point.x / barWidth), 0, point.y / pricePixels, point};
    }

    QZPoint convertFromLogicAxis(const QZPaintLogicAxis& axis) const override
    {
        return {axis.date * barWidth, axis.price * pricePixels};
    }

    std::optional<QZPaintRetangleModel> infomationForRetangle(QZPoint start, QZPoint endPoint,
                                                              int /*deltaCount*/) const override
    {
        const double before = start.y / pricePixels;
        const double after = endPoint.y / pricePixels;
        return QZPaintRetangleModel{static_cast<std::int32_t>((endPoint.x - start.x) / barWidth),
                                    static_cast<float>((after - before) / before * 100.0),
                                    QString::number(after - before, 'f', 2), QStringLiteral("bars")};
    }

    /// `graph` as it stands after its last click.
    std::shared_ptr<QZPaintGraph> finished(std::shared_ptr<QZPaintGraph> graph, const std::vector<QZPoint>& points);

private:
    static constexpr double barWidth = 4.0;
    static constexpr double pricePixels = 20.0;
};

/// Points all over the pane, the same ones in every run.
class Scatter {
public:
    std::vector<QZPoint> points(int count);

private:
    std::mt19937 random_{20240102};
};
