#include "surface/QZGraphReader.h"

#include "model/QZPaintNotifications.h"
#include "model/QZPaintOptions.h"
#include "panels/QZPaintControl.h"
#include "platform/QZGlobalEnv.h"
#include "surface/QZPaintLayer.h"
#include "surface/QZPaintManagerView.h"
#include "tools/QZPaintToolTable.h"

#include <algorithm>

QZGraphReader::QZGraphReader(QZGraphStore& store, const QZPaintManagerView& pane)
    : store_(store), pane_(pane), ownTypes_(ownTypes(pane.enableTypes()))
{}

std::optional<QZGraphStore::Types> QZGraphReader::ownTypes(std::int64_t enableTypes)
{
    if (!QZPaintOptions::current().keepsForeignRows)
        return std::nullopt;
    QZGraphStore::Types types;
    for (const QZPaintToolRow& tool : paintToolTable())
        if ((tool.type & enableTypes) != 0)
            types.push_back(tool.type);
    return types;
}

std::shared_ptr<QZPaintGraph> QZGraphReader::graphOf(QZGraphRow row) const
{
    const bool isForeign = ownTypes_ && std::ranges::count(*ownTypes_, row.graphType) == 0;
    if (isForeign || (pane_.enableTypes() & row.graphType) == 0)
        return nullptr;
    auto graph = createPaintTool(row.graphType);
    // Such a figure is one for the whole application: a row must not get hold of it.
    if (!graph->isStored())
        return nullptr;
    row.points.resize(std::min(row.points.size(), graph->points().size()));
    graph->initWithLayer(pane_.paintLayer(), row.strokeColor, row.fillColor, static_cast<std::uint64_t>(row.lineType),
                         row.lineWidth, std::move(row.points), row.textValue, row.font, row.isLocked, false, false);
    const QZPaintControl* palette = QZPaintControl::existing();
    graph->setHidden(palette != nullptr && palette->isHidden());
    return graph;
}

QZGraphSet::Members QZGraphReader::readGraphs(QZGraphResultSet& rows, QZStoredGroup& group)
{
    const QString flag = QZContextIsPaintEditing;
    QZGraphSet::Members graphs;
    while (rows.next()) {
        QZGraphRow row = store_.readRow(rows);
        if (auto graph = graphOf(row)) {
            group.add(std::move(row), graph);
            graphs.push_back(std::move(graph));
        }
        // What comes from a file is not being painted.
        QZGlobalEnv::getShareInstance().setGlobalContext(flag, flag, false);
    }
    return graphs;
}

std::vector<QZStoredGroup::Row> QZGraphReader::readNumberedRows(QZGraphResultSet& rows)
{
    std::vector<QZStoredGroup::Row> read;
    while (rows.next())
        read.push_back({static_cast<std::int64_t>(rows.unsignedLongLongIntForColumn("rowid")), store_.readRow(rows)});
    return read;
}
