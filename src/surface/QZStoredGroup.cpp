#include "surface/QZStoredGroup.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <unordered_set>

namespace {

bool isSamePoint(const QZPaintLogicAxis& a, const QZPaintLogicAxis& b)
{
    const bool isSamePrice = a.price == b.price || (std::isnan(a.price) && std::isnan(b.price));
    return a.date == b.date && a.time == b.time && isSamePrice;
}

bool isSame(const QZGraphRow& a, const QZGraphRow& b)
{
    return a.graphType == b.graphType && a.lineType == b.lineType && a.lineWidth == b.lineWidth &&
           a.isLocked == b.isLocked && a.strokeColor == b.strokeColor && a.fillColor == b.fillColor &&
           a.font == b.font && a.textValue == b.textValue && std::ranges::equal(a.points, b.points, isSamePoint);
}

/// The same for rows that are the same, and mostly another one for others.
std::size_t hashOf(const QZGraphRow& row)
{
    std::size_t hash = std::hash<std::int64_t>()(row.graphType);
    for (const QZPaintLogicAxis& point : row.points)
        hash = hash * 31 + static_cast<std::size_t>(point.date) * 31 + static_cast<std::size_t>(point.time);
    return row.points.empty() ? hash : hash * 31 + std::hash<double>()(row.points.front().price);
}

} // namespace

void QZStoredGroup::add(QZGraphRow stored, std::shared_ptr<QZPaintGraph> graph)
{
    QZGraphRow values = QZGraphStore::rowOf(*graph);
    entries_.push_back({std::move(stored), std::move(graph), std::move(values)});
}

std::vector<const QZPaintGraph*> QZStoredGroup::unchangedOf(const QZGraphSet::Members& graphs) const
{
    std::unordered_set<const QZPaintGraph*> present;
    for (const auto& graph : graphs)
        present.insert(graph.get());
    std::vector<const QZPaintGraph*> unchanged;
    unchanged.reserve(entries_.size());
    for (const Entry& entry : entries_) {
        const bool isUnchanged =
            present.contains(entry.graph.get()) && isSame(entry.values, QZGraphStore::rowOf(*entry.graph));
        unchanged.push_back(isUnchanged ? entry.graph.get() : nullptr);
    }
    return unchanged;
}

bool QZStoredGroup::differsFrom(const QZGraphSet::Members& graphs) const
{
    const auto count = std::ranges::count_if(graphs, [](const auto& graph) { return graph->isStored(); });
    return static_cast<std::size_t>(count) != entries_.size() || std::ranges::count(unchangedOf(graphs), nullptr) > 0;
}

QZStoredGroup::Merge QZStoredGroup::mergeWith(const QZGraphSet::Members& graphs, std::vector<Row> stored) const
{
    Merge merge;
    const auto unchanged = unchangedOf(graphs);
    // Rows may be alike: each stands for one entry.
    std::unordered_multimap<std::size_t, std::size_t> waiting;
    for (std::size_t i = entries_.size(); i-- > 0;)
        waiting.emplace(hashOf(entries_[i].stored), i);
    for (Row& row : stored) {
        const auto [first, last] = waiting.equal_range(hashOf(row.values));
        const auto found = std::find_if(
            first, last, [&](const auto& each) { return isSame(entries_[each.second].stored, row.values); });
        if (found == last) {
            merge.newcomers.push_back(std::move(row));
            continue;
        }
        if (unchanged[found->second] == nullptr)
            merge.erased.push_back(row.number);
        else
            merge.figures.emplace(row.number, entries_[found->second].graph);
        waiting.erase(found);
    }
    std::unordered_set<std::size_t> missing;
    for (const auto& [hash, index] : waiting)
        missing.insert(index);
    std::unordered_set<const QZPaintGraph*> asStored;
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        asStored.insert(unchanged[i]);
        if (unchanged[i] != nullptr && missing.contains(i))
            merge.gone.push_back(entries_[i].graph);
    }
    std::ranges::copy_if(graphs, std::back_inserter(merge.inserted), [&asStored](const auto& graph) {
        return graph->isStored() && !asStored.contains(graph.get());
    });
    return merge;
}

void QZStoredGroup::follow(const Merge& merge, const std::vector<Row>& stored)
{
    entries_.clear();
    const std::size_t firstInserted = stored.size() - merge.inserted.size();
    for (std::size_t i = 0; i < stored.size(); ++i) {
        if (i >= firstInserted)
            add(stored[i].values, merge.inserted[i - firstInserted]);
        else if (const auto figure = merge.figures.find(stored[i].number); figure != merge.figures.end())
            add(stored[i].values, figure->second);
    }
}
