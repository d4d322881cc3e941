// The smallest host: one pane that paints its own bars, one for each day. Choose a tool in the palette and click its
// points; the wheel scrolls, T switches the theme. Figures are kept from one run to the next.

#include "model/QZPaintOptions.h"
#include "panels/QZPaintControl.h"
#include "platform/QZGlobalEnv.h"
#include "surface/QZPaintLayer.h"
#include "surface/QZPaintManagerView.h"
#include "surface/QZPaintSplitView.h"

#include <QApplication>
#include <QDate>
#include <QPainter>
#include <QShortcut>
#include <QTimer>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

class Pane : public QZPaintManagerView {
public:
    std::optional<QZPaintLogicAxis> convertFromPoint(QZPoint point) const override
    {
        return QZPaintLogicAxis{firstDay + barAt(point.x), 0, priceAt(point.y), point};
    }
    QZPoint convertFromLogicAxis(const QZPaintLogicAxis& axis) const override
    {
        return {xOf(static_cast<double>(axis.date) - firstDay), yOf(axis.price)};
    }
    QZPoint convertPointForMagnet(QZPoint point, std::uint64_t /*style*/) const override
    {
        const int bar = barAt(point.x);
        if (bar < 0 || bar >= barCount)
            return point;
        return {xOf(bar), yOf(closeOf(bar) + (point.y > yOf(closeOf(bar)) ? reach : -reach))}; // its high or low
    }
    std::int64_t enableTypes() const override // those that can do without the other hooks
    {
        return QZSTLineSegment | QZSTRay | QZSTHorizon | QZSTStraight | QZSTParallel | QZSTGoldenSection |
               QZSTToolText | QZSTToolUp | QZSTToolDown | QZSTToolDelete | QZSTToolMagnet | QZSTToolEye;
    }

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        QZPaintManagerView::resizeEvent(event);
        setValidateRect({0.0, 24.0, width() - 40.0, height() - 24.0}); // the axes are below and to the right
    }
    void wheelEvent(QWheelEvent* event) override
    {
        firstBar_ = std::clamp(firstBar_ - event->angleDelta().y() / 40, -50, barCount);
        update();
        displayPaintLayer(); // the figures go along
    }
    void paintEvent(QPaintEvent* /*event*/) override
    {
        const QZPaletteLoad& theme = QZGlobalEnv::getShareInstance().paletteLoad();
        const auto paper = theme.getCustomColor(QStringLiteral("QZLinePaintToolFactory.PanelBackgroundColor"));
        const auto ink = theme.getCustomColor(QStringLiteral("QZLinePaintToolFactory.IconNormalColor"));
        QPainter painter(this);
        painter.fillRect(rect(), paper.value_or(Qt::white));
        painter.setPen(ink.value_or(Qt::black));
        for (int price = 80; price < 128; price += 8)
            painter.drawText(QPointF(width() - 36.0, height() - yOf(price)), QString::number(price));
        for (int bar = -40; bar <= barCount; bar += 20)
            painter.drawText(qRound(xOf(bar)), height() - 6,
                             QDate::fromJulianDay(firstDay + bar).toString(Qt::ISODate));
        painter.setClipRect(flippedValidateRect());
        for (int bar = 0; bar < barCount; ++bar) {
            const double high = height() - yOf(closeOf(bar) + reach); // Qt's y points down
            painter.drawLine(QLineF(xOf(bar), high, xOf(bar), height() - yOf(closeOf(bar) - reach)));
        }
    }

private:
    static constexpr int barCount = 120;
    static constexpr int firstDay = 2460311; // date of bar 0; a date is a Julian day, and there is one for every bar
    static constexpr double reach = 1.5;     // from a bar's close to its high and low
    static constexpr double barWidth = 6.0;  // px

    static double closeOf(int bar) { return 104.0 + 14.0 * std::sin(bar / 14.0) + 2.5 * std::sin(bar * 1.3); }
    // Any number there is: figures may lie before the first bar and after the last one.
    int barAt(double x) const { return firstBar_ + static_cast<int>(std::clamp(std::floor(x / barWidth), -1e6, 1e6)); }
    double xOf(double bar) const { return (bar - firstBar_ + 0.5) * barWidth; }
    double yOf(double price) const { return validateRect().y + (price - 80.0) / 48.0 * validateRect().height; }
    double priceAt(double y) const { return 80.0 + (y - validateRect().y) / validateRect().height * 48.0; }
    int firstBar_ = 0; // at the left edge
};

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("minimal_host"));           // the figures' folder is named after it
    QZPaintOptions::setCurrent({.bindsTexts = true, .keepsForeignRows = true}); // with storeDB()
    QZPaintSplitView split(Qt::Vertical);
    auto* pane = new Pane;
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
    QObject::connect(new QShortcut(Qt::Key_T, &split), &QShortcut::activated, pane, [pane, &environment] {
        environment.setTheme(environment.themeName() == u"dark" ? QStringLiteral("light") : QStringLiteral("dark"));
        pane->update();
        pane->paintLayer()->reloadGraphFontAndColor();
    });
    pane->loadDB(QStringLiteral("DEMO"), QZPCCandlestickCycleDay, QStringLiteral("price"));
    QTimer storing;
    QObject::connect(&storing, &QTimer::timeout, pane, &QZPaintManagerView::storeDB);
    storing.start(500); // ms
    QObject::connect(&application, &QApplication::aboutToQuit, pane, &QZPaintManagerView::storeDB);
    return QApplication::exec();
}
