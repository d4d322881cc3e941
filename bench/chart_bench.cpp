// A frame of the reference host's chart with a million bars, all of them visible and the usual few, against a bare
// painter that fills as many columns.

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

/// Scrolls by a pixel and paints what is to be painted then, into the shown window's memory.
void drawFrame(benchmark::State& state, ChartSplitView& chart, double barsVisible)
{
    ChartViewport& viewport = chart.viewport();
    viewport.zoom(barsVisible / viewport.span(), viewport.last());
    double direction = -1;
    for ([[maybe_unused]] auto _ : state) {
        viewport.scrollBy(direction * viewport.span() / chart.width());
        direction = -direction;
        QCoreApplication::processEvents();
    }
}

// Two rectangles a candle and one a volume.
void fillColumns(benchmark::State& state, QSize size, int columns)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    const int width = std::max(1, size.width() / columns - 1);
    for ([[maybe_unused]] auto _ : state) {
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
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    ChartSplitView chart;
    chart.resize(paneSize);
    chart.setChartData(millionBars());
    chart.show();
    QCoreApplication::processEvents();
    RatioReporter reporter;
    const auto add = [&](const char* name, double barsVisible, int columns) {
        reporter.add(
            name, [&chart, barsVisible](benchmark::State& state) { drawFrame(state, chart, barsVisible); },
            [columns](benchmark::State& state) { fillColumns(state, paneSize, columns); });
    };
    add("1,000,000 bars in sight", barCount, paneSize.width());
    add("120 of 1,000,000 bars in sight", 120, 120);
    return reporter.run(argc, argv);
}
