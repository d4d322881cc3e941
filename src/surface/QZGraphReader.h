#pragma once

#include "surface/QZGraphSet.h"
#include "surface/QZGraphStore.h"
#include "surface/QZStoredGroup.h"

#include <memory>
#include <optional>
#include <vector>

class QZPaintManagerView;

/// Makes figures of stored rows for a pane.
class QZGraphReader {
public:
    /// Both are borrowed.
    QZGraphReader(QZGraphStore& store, const QZPaintManagerView& pane);

    /// The figures of the rows, which are rows of the whole table; `group` learns what stands for what.
    QZGraphSet::Members readGraphs(QZGraphResultSet& rows, QZStoredGroup& group);
    /// The rows with their numbers, of which there are to be figures only where needed.
    std::vector<QZStoredGroup::Row> readNumberedRows(QZGraphResultSet& rows);
    /// The finished figure that `row` holds, tied to the pane's layer; null for a row that the pane does not take.
    [[nodiscard]] std::shared_ptr<QZPaintGraph> graphOf(QZGraphRow row) const;

    /// The types of rows that a pane which accepts `enableTypes` reads and replaces, where it keeps others
    /// (QZPaintOptions::keepsForeignRows); else nothing.
    static std::optional<QZGraphStore::Types> ownTypes(std::int64_t enableTypes);

private:
    QZGraphStore& store_;
    const QZPaintManagerView& pane_;
    std::optional<QZGraphStore::Types> ownTypes_;
};
