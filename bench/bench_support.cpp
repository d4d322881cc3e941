#include "bench_support.h"

#include "surface/QZPaintLayer.h"

#include <algorithm>
#include <cstdio>
#include <map>

namespace {

constexpr int repetitions = 9;

/// Collects the time of one run of each benchmark's body.
class TimeCollector : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Iteration && !run.error_occurred)
                times_[run.run_name.function_name].push_back(run.GetAdjustedCPUTime());
    }

    double median(const std::string& name)
    {
        std::vector<double>& all = times_[name];
        if (all.empty())
            return 0.0;
        std::ranges::sort(all);
        return all[all.size() / 2];
    }

private:
    std::map<std::string, std::vector<double>> times_;
};

void registerBody(const std::string& name, const RatioReporter::Body& body)
{
    benchmark::RegisterBenchmark(name.c_str(), body)->Repetitions(repetitions)->Unit(benchmark::kMicrosecond);
}

} // namespace

std::shared_ptr<QZPaintGraph> BenchView::finished(std::shared_ptr<QZPaintGraph> graph,
                                                  const std::vector<QZPoint>& points)
{
    graph->setLayer(paintLayer());
    for (const QZPoint point : points)
        graph->mouseDown(point);
    return graph;
}

std::vector<QZPoint> Scatter::points(int count)
{
    std::vector<QZPoint> points;
    std::uniform_int_distribution<int> bar(0, paneSize.width() / 4 - 1);
    std::uniform_int_distribution<int> tick(1, paneSize.height() * 5 - 1);
    for (int i = 0; i < count; ++i) {
        const double x = bar(random_) * 4.0;
        points.push_back({x, tick(random_) / 5.0});
    }
    return points;
}

void RatioReporter::add(const std::string& name, Body ours, Body bare)
{
    names_.push_back(name);
    registerBody(name + "/ours", ours);
    registerBody(name + "/bare", bare);
}

int RatioReporter::run(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    TimeCollector collector;
    benchmark::RunSpecifiedBenchmarks(&collector);
    for (const std::string& name : names_)
        std::printf("%s: %.2f x the bare run\n", name.c_str(),
                    collector.median(name + "/ours") / collector.median(name + "/bare"));
    return 0;
}
