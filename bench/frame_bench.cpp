// A frame of a gesture, one figure in the hand among many golden sections, against what cannot be left out of it: the
// pictures of the others and that one figure. And how figures follow a scroll, against the host's conversions.

#include "Ruler.h"
#include "bench_support.h"
#include "platform/QZPainterContext.h"
#include "surface/QZPaintLayer.h"
#include "surface/QZPaintSplitView.h"
#include "tools/QZPaintLevels.h"

#include <QApplication>
#include <QPainter>

#include <benchmark/benchmark.h>
#include <cstring>
#include <functional>
#include <memory>
#include <string>

namespace {

constexpr double target = 1.5;

std::shared_ptr<QZPaintGraph> goldenSection(BenchView& view, Scatter& scatter)
{
    return view.finished(std::make_shared<QZPaintGoldenSelection>(), scatter.points(2));
}

/// The active pane of a split view, as only there a figure counts as selected, with finished golden sections.
class Bench {
public:
    explicit Bench(int figureCount) : figureCount_(figureCount)
    {
        split_.addWidget(&view_);
        split_.setActiveView(&view_);
        view_.resize(paneSize); // the split view is never laid out
        view_.setValidateRect(view_.layerFrame());
        for (int i = 0; i < figureCount; ++i)
            layer_.graphs().add(goldenSection(view_, scatter_));
    }
    Bench(const Bench&) = delete;
    Bench& operator=(const Bench&) = delete;
    ~Bench() = default;

    void compareDrag(Ruler& ruler)
    {
        const auto graph = layer_.graphs().snapshot()->at(static_cast<std::size_t>(figureCount_ / 2));
        take(graph);
        graph->setDragStartPoint({});
        compare(ruler, "drag", *graph, true, [this](QZPoint to) {
            layer_.mouseDragged(to);
            layer_.mouseMoved(to); // as every drag does, for the cursor
        });
        layer_.mouseUp({});
    }

    void comparePlacing(Ruler& ruler)
    {
        const auto graph = layer_.allocGraphWithType(QZSTGoldenSection);
        take(graph);
        graph->mouseDown({400.0, 300.0});
        compare(ruler, "placing", *graph, false, [this](QZPoint to) { layer_.mouseMoved(to); });
        layer_.cancelCurrentGraph();
    }

    /// What the layer does to follow the chart, against the host's own answers.
    void compareScroll(Ruler& ruler)
    {
        const auto graphs = layer_.graphs().snapshot();
        const auto reload = [&graphs] {
            for (const auto& graph : *graphs)
                graph->reloadKeyPoints();
        };
        const QZPaintChart* chart = &view_;
        benchmark::DoNotOptimize(chart); // hooks are virtual; known to be this view's they would be built in
        const auto bare = [chart, &graphs] {
            for (const auto& graph : *graphs) {
                const QZPoint start = chart->convertFromLogicAxis(graph->logicAxises()[0]);
                const QZPoint end = chart->convertFromLogicAxis(graph->logicAxises()[1]);
                benchmark::DoNotOptimize(chart->infomationForRetangle(start, end, 0));
            }
        };
        ruler.compare("points of " + std::to_string(figureCount_) + " figures after a scroll", {reload}, {bare}, 1.2);
    }

private:
    void take(const std::shared_ptr<QZPaintGraph>& graph)
    {
        layer_.setActive(true);
        layer_.setCurrentGraph(graph);
        graph->setSelected(true);
        graph->setCurrentPoint(graph->isEditing() ? graph->currentPoint() : std::nullopt);
    }

    void compare(Ruler& ruler, const std::string& name, QZPaintGraph& graph, bool hasOver,
                 const std::function<void(QZPoint)>& moveTo)
    {
        const auto frame = [&] {
            step_ = 5.0 - step_;
            moveTo({600.0 + step_, 400.0 + step_});
            benchmark::DoNotOptimize(layer_.contents(paneSize, 1.0).constBits());
        };
        frame();
        frame();
        const auto half = hasOver ? figureCount_ / 2 : figureCount_;
        const QImage under = picture(0, half);
        const QImage over = picture(half + 1, figureCount_);
        QImage image = under.copy();
        const auto bare = [&] {
            std::memcpy(image.bits(), under.constBits(), static_cast<std::size_t>(under.sizeInBytes()));
            QPainter painter(&image);
            painter.setClipRect(image.rect());
            {
                QZPainterContext context(painter, paneSize.height(), QZPainterContext::Edges::PixelSnapped);
                graph.drawInContext(context);
            }
            if (hasOver)
                painter.drawImage(0, 0, over);
            painter.end();
            benchmark::DoNotOptimize(image.constBits());
        };
        ruler.compare(name + " among " + std::to_string(figureCount_) + " golden sections", {frame}, {bare}, target);
    }

    /// Of the finished figures `first` to `end` - 1.
    QImage picture(int first, int end)
    {
        QImage image(paneSize, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        QZPainterContext context(painter, paneSize.height(), QZPainterContext::Edges::PixelSnapped);
        for (int i = first; i < end; ++i)
            layer_.graphs().snapshot()->at(static_cast<std::size_t>(i))->drawInContext(context);
        return image;
    }

    int figureCount_;
    QZPaintSplitView split_{Qt::Vertical};
    BenchView view_;
    QZPaintLayer& layer_ = *view_.paintLayer();
    Scatter scatter_;
    double step_ = 0.0;
};

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    Ruler ruler(argc, argv);
    for (const int figureCount : {30, 300}) {
        Bench bench(figureCount);
        bench.compareDrag(ruler);
        bench.comparePlacing(ruler);
        if (figureCount == 300)
            bench.compareScroll(ruler);
    }
    return ruler.result();
}
