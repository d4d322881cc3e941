#pragma once

#include "surface/QZGraphSet.h"
#include "surface/QZGraphStore.h"

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

/// What a pane last read or wrote of its group: the rows, and the figures that stand for them. Compared with the
/// figures that are there now and the rows that are stored by then, it tells what the pane's user did and what others
/// did.
class QZStoredGroup {
public:
    struct Row {
        std::int64_t number = 0;
        QZGraphRow values;
    };
    /// What there is to do so that both sides hold theirs and ours, minus what either deleted.
    struct Merge {
        std::vector<std::int64_t> erased; ///< numbers of rows whose figure was changed or deleted here
        QZGraphSet::Members inserted;     ///< figures that are new or changed here
        QZGraphSet::Members gone;         ///< figures whose row was deleted elsewhere
        std::vector<Row> newcomers;       ///< rows written elsewhere
        /// The figures of the rows that stay, by number. The caller adds those that it makes of newcomers.
        std::unordered_map<std::int64_t, std::shared_ptr<QZPaintGraph>> figures;
    };

    QZGraphDatabase::Version version; ///< of the file when the rows were read or written

    void clear() { entries_.clear(); }
    /// `graph` stands for a row that says `stored`.
    void add(QZGraphRow stored, std::shared_ptr<QZPaintGraph> graph);
    /// Whether a figure was added, changed or deleted here since. Figures that are never stored do not count.
    [[nodiscard]] bool differsFrom(const QZGraphSet::Members& graphs) const;
    [[nodiscard]] Merge mergeWith(const QZGraphSet::Members& graphs, std::vector<Row> stored) const;
    /// The merge was carried out and `stored` is what the group holds now, with what was inserted at the end.
    void follow(const Merge& merge, const std::vector<Row>& stored);

private:
    struct Entry {
        QZGraphRow stored;
        std::shared_ptr<QZPaintGraph> graph;
        QZGraphRow values; ///< of the figure when it was read or written: a row holds them rounded
    };

    /// The entries whose figures are among `graphs` as they were, in the order of the entries; null for others.
    [[nodiscard]] std::vector<const QZPaintGraph*> unchangedOf(const QZGraphSet::Members& graphs) const;

    std::vector<Entry> entries_;
};
