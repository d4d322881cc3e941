// The tools over a QGraphicsView: weekly bars as items of a scene. What is dragged stays where the chart can scroll to.
// The wheel scrolls, T switches the theme. Figures are kept from one run to the next.

#include "model/QZPaintGraph.h"
#include "model/QZPaintOptions.h"
#include "panels/QZPaintControl.h"
#include "platform/QZGlobalEnv.h"
#include "surface/QZPaintLayer.h"
#include "surface/QZPaintManagerView.h"
#include "surface/QZPaintSplitView.h"

#include <QApplication>
#include <QGraphicsRectItem>
#include <QGraphicsView>
#include <QScrollBar>
#include <QShortcut>
#include <QTimer>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

/// In the scene bar n lies between x = n and n + 1, and y is the price, negative as y points down there.
class ScenePane : public QZPaintManagerView {
public:
    ScenePane()
    {
        view_->setAttribute(Qt::WA_TransparentForMouseEvents); // the mouse is the figures'
        view_->setFrameShape(QFrame::NoFrame);
        view_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        view_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view_->setSceneRect(-20.0, -highest, barCount + 60.0, highest - lowest); // leaves room for the future
        view_->setResizeAnchor(QGraphicsView::AnchorViewCenter);
        view_->centerOn(barCount - 40.0, 0.0);
        connect(view_->horizontalScrollBar(), &QScrollBar::valueChanged, this, &ScenePane::displayPaintLayer);
    }

    void followTheme()
    {
        const auto color = [](QLatin1StringView key) {
            const QString name = QStringLiteral("QZLinePaintToolFactory.") + key;
            return QZGlobalEnv::getShareInstance().paletteLoad().getCustomColor(name).value_or(Qt::gray);
        };
        view_->setBackgroundBrush(color(QLatin1StringView("PanelBackgroundColor")));
        scene_.clear();
        for (int n = 0; n < barCount; ++n) {
            const bool falls = closeOf(n) < closeOf(n - 1);
            const QColor fill = color(QLatin1StringView(falls ? "DropColor" : "RiseColor"));
            scene_.addRect(n + 0.15, -highOf(n), 0.7, highOf(n) - lowOf(n), Qt::NoPen, fill);
        }
        paintLayer()->reloadGraphFontAndColor();
    }

    // A date is stored as the Julian day of the bar's Monday. Weeks go on before the first bar and after the last one.
    std::optional<QZPaintLogicAxis> convertFromPoint(QZPoint point) const override
    {
        return QZPaintLogicAxis{firstMonday + 7 * barAt(point.x), 0, priceAt(point.y), point};
    }
    QZPoint convertFromLogicAxis(const QZPaintLogicAxis& axis) const override
    {
        return pointOf(std::floor((static_cast<double>(axis.date) - firstMonday) / 7.0), axis.price);
    }
    QZPoint convertPointForMagnet(QZPoint point, std::uint64_t /*style*/) const override
    {
        const int n = barAt(point.x);
        if (n < 0 || n >= barCount)
            return point;
        const double price = priceAt(point.y);
        const auto isNearer = [price](double a, double b) { return std::abs(a - price) < std::abs(b - price); };
        return pointOf(n, std::min({lowOf(n), highOf(n)}, isNearer));
    }

    // The edge holds a figure where the chart has less than a screen to scroll there; one across it may stay so.
    bool canBeDraggedToLeft(QZPoint point) const override
    {
        const QScrollBar* bar = view_->horizontalScrollBar();
        return bar->value() - bar->minimum() >= width() || point.x > 0.0 || (point.x == 0.0 && isAcross(0.0, -1.0));
    }
    bool canBeDraggedToRight(QZPoint point) const override
    {
        const QScrollBar* bar = view_->horizontalScrollBar();
        const double edge = width();
        return bar->maximum() - bar->value() >= width() || point.x < edge || (point.x == edge && isAcross(edge, 1.0));
    }

    // The tools that ask for neither a count of bars nor a calculation over them.
    std::int64_t enableTypes() const override
    {
        return QZSTLineSegment | QZSTRay | QZSTHorizon | QZSTStraight | QZSTArrowSegment | QZSTParallel |
               QZSTGoldenSection | QZSTPercentage | QZSTGannFan | QZSTSpeedResistance | QZST3Waves | QZST5Waves |
               QZSTTriangle | QZSTToolText | QZSTToolUp | QZSTToolDown | QZSTToolDelete | QZSTToolMagnet | QZSTToolEye;
    }

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        QZPaintManagerView::resizeEvent(event);
        view_->resize(size());
        view_->setTransform(QTransform::fromScale(barWidth, height() / (highest - lowest)));
        setValidateRect(layerFrame());
        displayPaintLayer();
    }
    void wheelEvent(QWheelEvent* event) override
    {
        QScrollBar* bar = view_->horizontalScrollBar();
        bar->setValue(bar->value() - event->angleDelta().y() / 4);
    }

private:
    static constexpr int barCount = 100;
    static constexpr int firstMonday = 2460311; // date of bar 0
    static constexpr double lowest = 80.0;
    static constexpr double highest = 128.0;
    static constexpr double barWidth = 8.0; // px

    static double closeOf(int n) { return 104.0 + 14.0 * std::sin(n / 14.0) + 2.5 * std::sin(n * 1.3); }
    static double highOf(int n) { return std::max(closeOf(n - 1), closeOf(n)) + 0.8; }
    static double lowOf(int n) { return std::min(closeOf(n - 1), closeOf(n)) - 0.6; }

    // The view's own mapFromScene() rounds to whole pixels. Qt's y points down, that of a figure's point up.
    QZPoint pointOf(double bar, double price) const
    {
        const QPointF place = view_->viewportTransform().map(QPointF(bar + 0.5, -price));
        return {place.x(), height() - place.y()};
    }
    QPointF sceneAt(QZPoint point) const
    {
        return view_->viewportTransform().inverted().map(QPointF(point.x, height() - point.y));
    }
    double priceAt(double y) const { return -sceneAt({0.0, y}).y(); }
    int barAt(double x) const { return static_cast<int>(std::clamp(std::floor(sceneAt({x, 0.0}).x()), -1e6, 1e6)); }
    /// Whether the figure that is dragged lies beyond an edge of the plot: to the right for direction 1, left for -1.
    bool isAcross(double edge, double direction) const
    {
        const auto isBeyond = [=](QZPoint point) { return (point.x - edge) * direction > 0.0; };
        const auto& figure = paintLayer()->currentGraph();
        return figure && std::ranges::any_of(figure->points(), isBeyond);
    }

    QGraphicsScene scene_;
    QGraphicsView* view_ = new QGraphicsView(&scene_, this);
};

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("graphicsview_host"));      // the figures' folder is named after it
    QZPaintOptions::setCurrent({.bindsTexts = true, .keepsForeignRows = true}); // with storeDB()
    QZPaintSplitView split(Qt::Vertical);
    auto* pane = new ScenePane;
    split.addWidget(pane);
    split.setEnablePaintControl(true);
    split.setSupportPaint(true);
    split.resize(900, 500);
    split.show();
    QZGlobalEnv& environment = QZGlobalEnv::getShareInstance();
    environment.setMainWindow(split.windowHandle());
    QZPaintControl& palette = QZPaintControl::sharedManager();
    palette.setEnableTypes(static_cast<std::uint64_t>(pane->enableTypes()));
    palette.window().addToWindowOf(split);
    QObject::connect(new QShortcut(Qt::Key_T, &split), &QShortcut::activated, pane, [&environment] {
        environment.setTheme(environment.themeName() == u"dark" ? QStringLiteral("light") : QStringLiteral("dark"));
    });
    const QZObservation restyled = QZNotificationCenter::defaultCenter().observe(
        QZUIOverallStyleDidChangeNotification, [pane](const QZNotification& /*unused*/) { pane->followTheme(); });
    pane->followTheme();

    pane->loadDB(QStringLiteral("DEMO"), QZPCCandlestickCycleWeek, QStringLiteral("price"));
    QTimer storing;
    QObject::connect(&storing, &QTimer::timeout, pane, &QZPaintManagerView::storeDB);
    storing.start(500); // ms
    QObject::connect(&application, &QApplication::aboutToQuit, pane, &QZPaintManagerView::storeDB);
    return QApplication::exec();
}
