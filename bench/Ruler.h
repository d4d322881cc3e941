#pragma once

#include <functional>
#include <optional>
#include <string>

/// One side of a comparison. `before`, if there is one, is not timed.
struct Work {
    std::function<void()> run;
    std::function<void()> before{};
};

/// Compares the processor time of two works in one process. Both take turns in short slices, so that a busy machine or
/// a clock that changes its speed meets them alike; the result is the median of the ratios of neighbouring slices. A
/// comparison goes on until the quartiles lie within 5 % of the median or its time is over.
class Ruler {
public:
    /// Understands "--seconds S", the longest that one comparison goes on, and "--check", which fails when a target is
    /// missed by more than noise. Ends the program on anything else.
    Ruler(int argc, char** argv);

    /// Prints how many times as long `ours` takes as `bare`; `atMost` is the target.
    void compare(const std::string& name, const Work& ours, const Work& bare,
                 std::optional<double> atMost = std::nullopt);
    /// Prints how often a second the work is done.
    void measureRate(const std::string& name, const Work& work) const;
    /// The program's exit status.
    [[nodiscard]] int result() const { return isMissed_ ? 1 : 0; }

private:
    double seconds_ = 5;
    bool checks_ = false;
    bool isMissed_ = false;
};
