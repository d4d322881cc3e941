#pragma once

#include "app/picture/RenderOptions.h"

#include <QString>

#include <functional>

/// Writes pictures of stored figures for the command line. The stored figures are only read.
class Renderer {
public:
    /// Exit statuses of the program.
    static constexpr int done = 0;
    static constexpr int failed = 1;   ///< a picture is missing
    static constexpr int unusable = 2; ///< what was asked for makes no sense
    /// Takes one line of text.
    using Print = std::function<void(const QString& line)>;

    /// `progress` is told of each picture, `complaint` of what went wrong.
    Renderer(Print progress, Print complaint) : progress_(std::move(progress)), complaint_(std::move(complaint)) {}

    /// Writes what was asked for and returns the exit status. Of many pictures those that can be had are written.
    int run(const RenderRequest& request);

private:
    int complain(int status, const QString& line) const;
    [[nodiscard]] int renderOne(const RenderRequest& request) const;
    [[nodiscard]] int renderAll(const RenderRequest& request) const;

    Print progress_;
    Print complaint_;
};
