// The smallest host that works: one pane over a line chart of made-up prices. Press 1 for a segment, 2 for a
// horizontal line, then click; drag what you drew; Delete removes it, Escape cancels it.

#include "surface/QZPaintManagerView.h"
#include "surface/QZPaintSplitView.h"

#include <QApplication>
#include <QPainter>
#include <QShortcut>

#include <algorithm>
#include <cmath>

namespace {

constexpr int barCount = 120;

double closeOf(int bar)
{
    return 100.0 + 8.0 * std::sin(bar / 9.0) + bar * 0.1;
}

/// A pane whose bars are numbered from 0 and stand side by side over its whole width; prices run from 80 to 140.
class Pane : public QZPaintManagerView {
public:
    std::optional<QZPaintLogicAxis> convertFromPoint(QZPoint point) const override
    {
        const auto bar = static_cast<std::int32_t>(std::clamp(std::floor(point.x / barWidth()), -1.0e6, 1.0e6));
        return QZPaintLogicAxis{bar, 0, lowest + point.y / height() * (highest - lowest), point};
    }

    QZPoint convertFromLogicAxis(const QZPaintLogicAxis& axis) const override
    {
        return {(axis.date + 0.5) * barWidth(), (axis.price - lowest) / (highest - lowest) * height()};
    }

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        QZPaintManagerView::resizeEvent(event);
        setValidateRect(layerFrame());
    }

    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPolygonF line;
        for (int bar = 0; bar < barCount; ++bar) {
            const QZPoint point = convertFromLogicAxis({bar, 0, closeOf(bar)});
            line.append({point.x, height() - point.y});
        }
        QPainter painter(this);
        painter.fillRect(rect(), Qt::white);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(Qt::darkGray, 1.5));
        painter.drawPolyline(line);
    }

private:
    static constexpr double lowest = 80.0;
    static constexpr double highest = 140.0;

    double barWidth() const { return static_cast<double>(width()) / barCount; }
};

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QZPaintSplitView split(Qt::Vertical);
    split.addWidget(new Pane);
    split.setSupportPaint(true);
    split.resize(900, 500);

    const auto arm = [&split](Qt::Key key, QZShapeType type) {
        QObject::connect(new QShortcut(key, &split), &QShortcut::activated, &split,
                         [&split, type] { split.changeShapeTo(type, QImage()); });
    };
    arm(Qt::Key_1, QZSTLineSegment);
    arm(Qt::Key_2, QZSTHorizon);

    split.show();
    if (QApplication::arguments().contains(QStringLiteral("--once"))) {
        QApplication::processEvents();
        return 0;
    }
    return QApplication::exec();
}
