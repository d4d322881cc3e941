#pragma once

#include "model/QZPaintGraph.h"

#include <cstddef>
#include <memory>
#include <mutex>
#include <vector>

/// The finished figures of one layer, each at most once, in the order in which they came. The set is its own re-entrant
/// lock (std::lock_guard works on it): whoever enumerates or changes it holds it, and a figure may take itself out
/// while the set is being drawn.
class QZGraphSet {
public:
    using Members = std::vector<std::shared_ptr<QZPaintGraph>>;

    void lock() { mutex_.lock(); }
    bool try_lock() { return mutex_.try_lock(); } // NOLINT(readability-identifier-naming): a standard Lockable's name
    void unlock() { mutex_.unlock(); }

    /// The members as they are now; later changes do not touch what was handed out, as long as the caller keeps it.
    /// Costs nothing until then.
    [[nodiscard]] std::shared_ptr<const Members> snapshot() const { return members_; }
    [[nodiscard]] std::size_t count() const { return members_->size(); }
    [[nodiscard]] bool contains(const QZPaintGraph* graph) const;

    void add(std::shared_ptr<QZPaintGraph> graph);
    /// Adds new figures, none of which is in the set, in their order.
    void addAll(const Members& graphs);
    /// Does nothing for a figure that is not in the set.
    void remove(const QZPaintGraph* graph);
    void removeAll();
    /// Leaves those whose lock holds.
    void removeAllButFixed();

private:
    Members& writable();

    std::recursive_mutex mutex_;
    std::shared_ptr<Members> members_ = std::make_shared<Members>();
};
