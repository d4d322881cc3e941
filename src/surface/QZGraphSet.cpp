#include "surface/QZGraphSet.h"

#include <algorithm>

// A snapshot shares the members; the first change after one makes a copy.
QZGraphSet::Members& QZGraphSet::writable()
{
    if (members_.use_count() > 1)
        members_ = std::make_shared<Members>(*members_);
    return *members_;
}

bool QZGraphSet::contains(const QZPaintGraph* graph) const
{
    return std::ranges::any_of(*members_, [graph](const auto& member) { return member.get() == graph; });
}

void QZGraphSet::add(std::shared_ptr<QZPaintGraph> graph)
{
    if (!contains(graph.get()))
        writable().push_back(std::move(graph));
}

void QZGraphSet::addAll(const Members& graphs)
{
    Members& members = writable();
    members.insert(members.end(), graphs.begin(), graphs.end());
}

void QZGraphSet::remove(const QZPaintGraph* graph)
{
    if (contains(graph))
        std::erase_if(writable(), [graph](const auto& member) { return member.get() == graph; });
}

void QZGraphSet::removeAll()
{
    members_ = std::make_shared<Members>();
}

void QZGraphSet::removeAllButFixed()
{
    std::erase_if(writable(), [](const auto& member) { return !member->isFixed(); });
}
