// The tools over Qt Charts: hourly candlesticks on a time axis. With the hooks that count bars nearly every tool works.
// The wheel scrolls, T switches the theme. Figures are kept from one run to the next.

#include "model/QZPaintOptions.h"
#include "model/QZPlaneGeometry.h"
#include "panels/QZPaintControl.h"
#include "platform/QZGlobalEnv.h"
#include "surface/QZPaintLayer.h"
#include "surface/QZPaintManagerView.h"
#include "surface/QZPaintSplitView.h"

#include <QApplication>
#include <QCandlestickSeries>
#include <QCandlestickSet>
#include <QChartView>
#include <QDateTimeAxis>
#include <QGraphicsLayout>
#include <QShortcut>
#include <QTimer>
#include <QVBoxLayout>
#include <QValueAxis>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

class ChartPane : public QZPaintManagerView {
public:
    ChartPane()
    {
        auto* view = new QChartView(chart_, this);            // owns the chart, which owns series and axes
        view->setAttribute(Qt::WA_TransparentForMouseEvents); // the mouse is the figures'
        (new QVBoxLayout(this))->addWidget(view);
        layout()->setContentsMargins({});
        for (int bar = 0; bar < barCount; ++bar) {
            const auto [low, high] = std::minmax({closeOf(bar - 1), closeOf(bar)});
            candles_->append(new QCandlestickSet(closeOf(bar - 1), high + 1.0, low - 1.0, closeOf(bar), msecsOf(bar)));
        }
        chart_->addSeries(candles_);
        chart_->legend()->hide();
        chart_->layout()->setContentsMargins(0.0, 0.0, 0.0, 0.0);
        auto* times = new QDateTimeAxis;
        times->setFormat(QStringLiteral("dd.MM. hh:mm"));
        times->setRange(momentOf(-2), momentOf(barCount + 14)); // leaves room for the future
        auto* prices = new QValueAxis;
        prices->setRange(80.0, 128.0);
        chart_->addAxis(times, Qt::AlignBottom);
        chart_->addAxis(prices, Qt::AlignRight);
        candles_->attachAxis(times);
        candles_->attachAxis(prices);
        // Whatever moves the chart takes the figures along.
        connect(chart_, &QChart::plotAreaChanged, this, &ChartPane::followPlot);
        connect(times, &QDateTimeAxis::rangeChanged, this, &ChartPane::displayPaintLayer);
        connect(prices, &QValueAxis::rangeChanged, this, &ChartPane::displayPaintLayer);
    }

    void followTheme()
    {
        const bool isDark = QZGlobalEnv::getShareInstance().themeName() == u"dark";
        chart_->setTheme(isDark ? QChart::ChartThemeDark : QChart::ChartThemeLight);
        candles_->setIncreasingColor(QColor(0xd0312d));
        candles_->setDecreasingColor(QColor(0x0b7f4b));
        paintLayer()->reloadGraphFontAndColor();
    }

    // A date is stored as yyyymmdd, a time as hhmmss, both UTC. There is an hour for every place of the time axis.
    std::optional<QZPaintLogicAxis> convertFromPoint(QZPoint point) const override
    {
        const QDateTime moment = momentOf(barAt(point.x));
        return QZPaintLogicAxis{moment.toString(u"yyyyMMdd").toInt(), moment.toString(u"hhmmss").toInt(),
                                valueAt(point).y(), point};
    }
    QZPoint convertFromLogicAxis(const QZPaintLogicAxis& axis) const override
    {
        const QDate date(axis.date / 10000, axis.date / 100 % 100, axis.date % 100);
        const QTime time(axis.time / 10000, axis.time / 100 % 100, axis.time % 100);
        const QDateTime moment(date, time, Qt::UTC);
        return moment.isValid() ? pointOf(static_cast<double>(moment.toMSecsSinceEpoch()), axis.price)
                                : unplaceablePoint;
    }
    QZPoint convertPointForMagnet(QZPoint point, std::uint64_t /*style*/) const override
    {
        const int bar = barAt(point.x);
        if (bar < 0 || bar >= barCount)
            return {xOf(bar), point.y};
        const QCandlestickSet& candle = *candles_->sets().at(bar);
        const double price = valueAt(point).y();
        const double nearest =
            std::min({candle.open(), candle.high(), candle.low(), candle.close()},
                     [price](double a, double b) { return std::abs(a - price) < std::abs(b - price); });
        return pointOf(msecsOf(bar), nearest);
    }

    // For the tools that count bars.
    double convertXForMagnet(double x, bool canOverflow) const override
    {
        return xOf(canOverflow ? barAt(x) : std::clamp(barAt(x), 0, barCount - 1));
    }
    double getXPointWithLocation(float location, int gapCount) const override
    {
        return xOf(static_cast<double>(barAt(static_cast<double>(location))) + gapCount);
    }
    std::optional<QZPaintRetangleModel> infomationForRetangle(QZPoint start, QZPoint endPoint,
                                                              int /*deltaCount*/) const override
    {
        const int bars = barAt(endPoint.x) - barAt(start.x);
        const double from = valueAt(start).y();
        const double change = valueAt(endPoint).y() - from;
        return QZPaintRetangleModel{.count = bars < 0 ? bars - 1 : bars + 1,
                                    .varyScope = static_cast<float>(from > 0.0 ? 100.0 * change / from : 0.0),
                                    .varyPrice = QString::number(change, 'f', 2),
                                    .identify = QStringLiteral("Bars")};
    }

    std::int64_t enableTypes() const override
    {
        // These ask for calcRegressionData() and calcBoxLineData().
        return QZAllEnabledTypes & ~(QZSTLineRegression | QZSTRegionRegression | QZSTPipeRegression | QZSTBoxLine);
    }

protected:
    void wheelEvent(QWheelEvent* event) override { chart_->scroll(-event->angleDelta().y() / 4.0, 0.0); }
    void resizeEvent(QResizeEvent* event) override
    {
        QZPaintManagerView::resizeEvent(event);
        followPlot();
    }

private:
    static constexpr int barCount = 72;
    static constexpr double hour = 3'600'000.0; // ms, as the time axis counts
    static constexpr double firstHour = 473'400.0 * hour;

    static double closeOf(int bar) { return 104.0 + 14.0 * std::sin(bar / 9.0) + 2.5 * std::sin(bar * 1.3); }
    static double msecsOf(double bar) { return firstHour + bar * hour; }
    static QDateTime momentOf(double bar) { return QDateTime::fromMSecsSinceEpoch(qRound64(msecsOf(bar)), Qt::UTC); }

    // The chart's y points down, that of a figure's point up.
    QPointF valueAt(QZPoint point) const { return chart_->mapToValue({point.x, height() - point.y}, candles_); }
    QZPoint pointOf(double msecs, double price) const
    {
        const QPointF position = chart_->mapToPosition({msecs, price}, candles_);
        return {position.x(), height() - position.y()};
    }
    int barAt(double x) const
    {
        const double bar = std::round((valueAt({x, 0.0}).x() - firstHour) / hour);
        return static_cast<int>(std::clamp(bar, -1e6, 1e6));
    }
    double xOf(double bar) const { return pointOf(msecsOf(bar), 0.0).x; }
    void followPlot()
    {
        const QRectF plot = chart_->plotArea();
        setValidateRect({plot.x(), height() - plot.bottom(), plot.width(), plot.height()});
        displayPaintLayer();
    }

    QChart* chart_ = new QChart;
    QCandlestickSeries* candles_ = new QCandlestickSeries;
};

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("qtcharts_host"));          // the figures' folder is named after it
    QZPaintOptions::setCurrent({.bindsTexts = true, .keepsForeignRows = true}); // with storeDB()
    QZPaintSplitView split(Qt::Vertical);
    auto* pane = new ChartPane;
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

    pane->loadDB(QStringLiteral("DEMO"), QZPCCandlestickCycleMin60, QStringLiteral("price"));
    QTimer storing;
    QObject::connect(&storing, &QTimer::timeout, pane, &QZPaintManagerView::storeDB);
    storing.start(500); // ms
    QObject::connect(&application, &QApplication::aboutToQuit, pane, &QZPaintManagerView::storeDB);
    return QApplication::exec();
}
