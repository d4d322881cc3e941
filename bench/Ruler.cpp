#include "Ruler.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <span>
#include <string_view>
#include <vector>

namespace {

constexpr double sliceSeconds = 0.002;
constexpr std::size_t leastPairs = 15;
constexpr double tolerance = 0.05; ///< of the quartiles, as part of the median

double processorSeconds()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

/// Runs the work `count` times and returns the processor's seconds.
double timed(const Work& work, int count)
{
    if (!work.before) {
        const double start = processorSeconds();
        for (int i = 0; i < count; ++i)
            work.run();
        return processorSeconds() - start;
    }
    double sum = 0;
    for (int i = 0; i < count; ++i) {
        work.before();
        const double start = processorSeconds();
        work.run();
        sum += processorSeconds() - start;
    }
    return sum;
}

/// How often the work fits into a slice, at least once. Warms its caches too.
int countPerSlice(const Work& work)
{
    int count = 1;
    while (timed(work, count) < sliceSeconds)
        count *= 2;
    return count;
}

struct Quartiles {
    double low = 0;
    double median = 0;
    double high = 0;

    [[nodiscard]] bool areClose() const
    {
        return high - median <= tolerance * median && median - low <= tolerance * median;
    }
};

Quartiles quartilesOf(std::vector<double> values)
{
    std::ranges::sort(values);
    const std::size_t size = values.size();
    return {values[size / 4], values[size / 2], values[size * 3 / 4]};
}

} // namespace

Ruler::Ruler(int argc, char** argv)
{
    const std::span arguments(argv, static_cast<std::size_t>(argc));
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        const std::string_view argument = arguments[i];
        if (argument == "--check") {
            checks_ = true;
        } else if (argument == "--seconds" && i + 1 < arguments.size()) {
            seconds_ = std::atof(arguments[++i]);
        } else {
            std::fprintf(stderr, "usage: %s [--seconds S] [--check]\n", arguments[0]);
            std::exit(2);
        }
    }
}

void Ruler::compare(const std::string& name, const Work& ours, const Work& bare, std::optional<double> atMost)
{
    const int oursCount = countPerSlice(ours);
    const int bareCount = countPerSlice(bare);
    std::vector<double> ratios;
    Quartiles quartiles;
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds_);
    do {
        // Whichever goes first finds the caches as the other one left them.
        const bool isOursFirst = ratios.size() % 2 == 0;
        const double first = isOursFirst ? timed(ours, oursCount) : timed(bare, bareCount);
        const double second = isOursFirst ? timed(bare, bareCount) : timed(ours, oursCount);
        const double each = isOursFirst ? first / second : second / first;
        ratios.push_back(each * bareCount / oursCount);
        quartiles = quartilesOf(ratios);
    } while (std::chrono::steady_clock::now() < end && (ratios.size() < leastPairs || !quartiles.areClose()));

    std::printf("%-52s %6.2f x (%.2f to %.2f, %zu pairs%s)", name.c_str(), quartiles.median, quartiles.low,
                quartiles.high, ratios.size(), quartiles.areClose() ? "" : ", noisy");
    if (atMost) {
        const bool isMissed = quartiles.low > *atMost;
        std::printf("  at most %.2f: %s", *atMost,
                    isMissed                      ? "missed"
                    : quartiles.median <= *atMost ? "met"
                                                  : "missed by noise");
        isMissed_ = isMissed_ || (checks_ && isMissed);
    }
    std::printf("\n");
    std::fflush(stdout);
}

void Ruler::measureRate(const std::string& name, const Work& work) const
{
    const int count = countPerSlice(work);
    std::vector<double> rates;
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds_);
    do {
        rates.push_back(count / timed(work, count));
    } while (std::chrono::steady_clock::now() < end && rates.size() < leastPairs);
    const Quartiles quartiles = quartilesOf(rates);
    std::printf("%-52s %6.1f a second (%.1f to %.1f)\n", name.c_str(), quartiles.median, quartiles.low, quartiles.high);
    std::fflush(stdout);
}
