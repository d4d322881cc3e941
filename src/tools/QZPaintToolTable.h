#pragma once

#include "model/QZPaintGraph.h"

#include <cstdint>
#include <memory>
#include <span>

/// One tool: its type and how a figure of it comes to be.
struct QZPaintToolRow {
    QZShapeType type;
    std::shared_ptr<QZPaintGraph> (*create)();
};

/// Every type that has a class of its own, in the order of the types' values.
std::span<const QZPaintToolRow> paintToolTable();

/// A new figure of `type`, or the one shared figure of a type that has only one. A type without a class, known or not,
/// gives a plain QZPaintGraph.
std::shared_ptr<QZPaintGraph> createPaintTool(std::int64_t type);
