// A frame of the reference host's chart with a million bars, all of them visible and the usual few, against a bare
// painter that fills as many columns.

#include "Ruler.h"
#include "app/bars/CivilDate.h"
#include "app/chart/ChartSplitView.h"
#include "bench_support.h"

#include <QApplication>
#include <QPainter>

#include <benchmark/benchmark.h>
#include <cmath>
#include <memory>
#include <vector>

namespace {

constexpr int barCount = 1'000'000;

/// Minute bars, day and night, of a price that runs up and down.
std::shared_ptr<const ChartData> millionBars()
{
    std::vector<Bar> bars;
    bars.reserve(barCount);
    for (int i = 0; i < barCount; ++i) {
        const int minute = i % 1440;
        const double close = 100 + 10 * std::sin(i / 9000.0) + std::sin(i / 7.0);
        const std::int32_t date = dateOfDay(dayNumber(20100101) + i / 1440);
        bars.push_back({date, minute / 60 * 10000 + minute % 60 * 100, close - 0.1, close + 0.3, close - 0.4, close,
                        1000.0 + i % 977});
    }
    return std::make_shared<const ChartData>(BarSeries(QStringLiteral("bench"), std::move(bars)));
}

// Two rectangles a candle and one a volume.
void fillColumns(QImage& image, int columns)
{
    const QSize size = image.size();
    const int width = std::max(1, size.width() / columns - 1);
    image.fill(Qt::white);
    QPainter painter(&image);
    for (int i = 0; i < columns; ++i) {
        const int x = i * size.width() / columns;
        painter.fillRect(x, 100 + i % 200, 1, 150, Qt::darkGreen);
        painter.fillRect(x, 150 + i % 200, width, 50, Qt::darkGreen);
        painter.fillRect(x, size.height() - 100, width, 100, Qt::gray);
    }
    painter.end();
    benchmark::DoNotOptimize(image.constBits());
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    Ruler ruler(argc, argv);
    ChartSplitView chart;
    chart.resize(paneSize);
    chart.setChartData(millionBars());
    chart.show();
    QCoreApplication::processEvents();
    ChartViewport& viewport = chart.viewport();
    double direction = -1;
    // Scrolls by a pixel and paints what is to be painted then, into the shown window's memory.
    const auto frame = [&] {
        viewport.scrollBy(direction * viewport.span() / chart.width());
        direction = -direction;
        QCoreApplication::processEvents();
    };
    QImage image(paneSize, QImage::Format_ARGB32_Premultiplied);
    const auto compare = [&](const char* name, double barsVisible, int columns) {
        viewport.zoom(barsVisible / viewport.span(), viewport.last());
        ruler.compare(name, {frame}, {[&image, columns] { fillColumns(image, columns); }});
    };
    compare("1,000,000 bars in sight", barCount, paneSize.width());
    compare("120 of 1,000,000 bars in sight", 120, 120);
    return ruler.result();
}
