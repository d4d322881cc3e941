#include "model/QZPaintNotifications.h"
#include "model/QZPaintOptions.h"
#include "panels/QZPaintControl.h"
#include "platform/QZFrameComFun.h"
#include "platform/QZGlobalEnv.h"
#include "platform/QZLog.h"
#include "surface/QZGraphReader.h"
#include "surface/QZPaintActiveManager.h"
#include "surface/QZPaintLayer.h"
#include "surface/QZPaintManagerView.h"
#include "surface/QZPaintSplitView.h"
#include "tools/QZPaintToolTable.h"

#include <QDebug>
#include <QStringList>

#include <algorithm>
#include <exception>
#include <mutex>
#include <span>

namespace {

constexpr int readWriteCreate = 6;

/// What all manager views of the process share.
struct SharedStore {
    std::shared_ptr<QZGraphDatabase> database;
    bool isUserChanged = false;
};

SharedStore& sharedStore()
{
    static SharedStore store;
    return store;
}

QString databasePathOfUser()
{
    return QZFrameComFun::getUserAccountFilePath(databaseFileName, true);
}

/// Runs `body`; what it throws, host hooks included, becomes a line in the log.
template <typename Body>
bool caught(const QString& prefix, const Body& body)
{
    try {
        body();
        return true;
    } catch (const std::exception& error) {
        writeBusCommonLog(prefix + QString::fromUtf8(error.what()));
    } catch (...) {
        writeBusCommonLog(prefix + QStringLiteral("unknown"));
    }
    return false;
}

/// Arms in `layer` the tool that is armed in the first pane around it.
void takeOverArmedTool(const QZPaintSplitView* split, QZPaintLayer& layer)
{
    const auto* first = split == nullptr ? nullptr : dynamic_cast<const QZPaintManagerView*>(split->widget(0));
    const auto armed = first == nullptr ? nullptr : first->paintLayer()->currentGraph();
    if (!armed || !armed->isEditing())
        return;
    const auto graph = layer.allocGraphWithType(armed->type());
    layer.setCurrentGraph(graph);
    if (graph)
        graph->setThumbnail(armed->thumbnail());
}

bool logWriteError(const QZGraphDatabase& database)
{
    writeBusCommonLog(QStringLiteral("Write line paint DB error : ") + database.lastErrorMessage());
    return false;
}

/// Replaces those rows of the group of `key` that are of `types`, all without any, by `graphs`, up to the first that
/// cannot be written. False when the stored group must stay as it was: the caller then closes the file, which takes
/// back what was not committed.
bool replaceGroup(QZGraphDatabase& database, const QString& key, const std::optional<QZGraphStore::Types>& types,
                  std::span<const std::shared_ptr<QZPaintGraph>> graphs)
{
    QZGraphStore store(database);
    if (!database.beginTransaction() || !store.deleteGroup(key, types))
        return logWriteError(database);
    const auto refused = std::ranges::find_if_not(graphs, [&](const std::shared_ptr<QZPaintGraph>& graph) {
        return !graph->isStored() || store.insertGraph(key, *graph);
    });
    if (refused != graphs.end()) {
        logWriteError(database);
        // The transaction may be gone. A statement that had to be stopped is no worse than another one that fails: what
        // came before it is written once more. Any other reason, such as a full disk, would only come back.
        if (!database.isInTransaction())
            return database.wasStopped() &&
                   replaceGroup(database, key, types, graphs.first(static_cast<std::size_t>(refused - graphs.begin())));
    }
    return database.commit() || logWriteError(database);
}

/// Shows what others did to the group.
void takeOver(const QZStoredGroup::Merge& merge, QZPaintLayer& layer)
{
    for (const auto& graph : merge.gone) {
        if (layer.currentGraph() == graph)
            layer.cancelCurrentGraph();
        layer.graphs().remove(graph.get());
    }
    for (const QZStoredGroup::Row& row : merge.newcomers)
        if (const auto figure = merge.figures.find(row.number); figure != merge.figures.end())
            layer.graphs().add(figure->second);
    if (!merge.gone.empty() || !merge.newcomers.empty())
        layer.setNeedsDisplay();
}

/// What is saved leaves the active pane; the other panes keep their figures.
void emptyIfActive(QZPaintLayer& layer)
{
    if (QZPaintActiveManager::sharedManager().currentActiveLayer().get() != &layer)
        return;
    const bool wasActive = layer.isActive();
    layer.setActive(true);
    layer.setCurrentGraph(nullptr);
    layer.setActive(wasActive);
    layer.graphs().removeAll();
}

} // namespace

void QZPaintManagerView::openGraphDatabaseIfAbsent()
{
    // The user may have changed while there was no view to hear of it.
    if (!sharedStore().database || sharedStore().database->databasePath() != databasePathOfUser())
        sharedStore().database = openDBFile();
}

void QZPaintManagerView::closeGraphDatabase()
{
    if (sharedStore().database)
        sharedStore().database->close();
}

std::shared_ptr<QZGraphDatabase> QZPaintManagerView::graphDatabase()
{
    return sharedStore().database;
}

std::shared_ptr<QZGraphDatabase> QZPaintManagerView::openDBFile()
{
    auto database = QZGraphDatabase::databaseWithPath(databasePathOfUser());
    if (!database->openWithFlags(readWriteCreate))
        writeBusCommonLog(QStringLiteral("Open Line paint DB file failed!"));
    return database;
}

QString QZPaintManagerView::constructDBIndex(const QString& stockCode, std::uint64_t cycle, const QString& viewIdentiry)
{
    return QZGraphStore::key(stockCode, cycle, viewIdentiry);
}

QString QZPaintManagerView::encodeGraphKeyPoints(const std::vector<QZPaintLogicAxis>& axises)
{
    return QString::fromStdString(QZGraphStore::encodePoints(axises));
}

std::vector<QZPaintLogicAxis> QZPaintManagerView::decodeGraphKeyPoints(const QString& text)
{
    return QZGraphStore::decodePoints(text.toStdString());
}

QString QZPaintManagerView::dbVersion()
{
    return QZGraphStore::version;
}

void QZPaintManagerView::setCurrentGroup(const QString& stockCode, std::uint64_t cycle, const QString& viewIdentiry)
{
    currentStockCode_ = stockCode;
    currentCycle_ = cycle;
    currentIdentify_ = viewIdentiry;
}

void QZPaintManagerView::loadDB(const QString& stockCode, std::uint64_t cycle, const QString& viewIdentiry)
{
    setCurrentGroup(stockCode, cycle, viewIdentiry);
    isValidateSaveDB_ = true;
    // Our own hold: a host's hook may switch the user in the middle.
    const auto database = graphDatabase();
    bool loaded = false;
    caught(QStringLiteral("Read line paint DB exception : "), [&] { loaded = loadGroup(*database); });
    if (!loaded && QZPaintOptions::current().failedLoadBarsSave)
        isValidateSaveDB_ = false;
}

// A file that has no table yet holds no group, which is no failure.
bool QZPaintManagerView::loadGroup(QZGraphDatabase& database)
{
    if (!database.goodConnection())
        database.openWithFlags(readWriteCreate);
    QZPaintLayer& layer = *paintLayer_;
    {
        const std::lock_guard lock(layer.graphs());
        layer.graphs().removeAll();
    }
    loadedTypes_ = enableTypes();
    storedGroup_->clear();
    QZGraphStore store(database);
    auto rows = store.selectGroup(constructDBIndex(currentStockCode_, currentCycle_, currentIdentify_));
    if (!rows) {
        writeBusCommonLog(QStringLiteral("Empty result set for stockCode ") + currentStockCode_);
        return QZGraphStore::isMissingTable(database.lastErrorMessage());
    }
    const QZGraphSet::Members read = QZGraphReader(store, *this).readGraphs(*rows, *storedGroup_);
    storedGroup_->version = database.version();
    if (!rows->failure().isNull()) {
        writeBusCommonLog(QStringLiteral("Read line paint DB exception : ") + rows->failure());
        database.failed(rows->failure().toUtf8().constData());
    }
    {
        const std::lock_guard lock(layer.graphs());
        layer.graphs().addAll(read);
    }
    takeOverArmedTool(splitView(), layer);
    if (layer.graphs().count() > 0 || layer.currentGraph())
        displayPaintLayer();
    return rows->failure().isNull() || QZGraphStore::isMissingTable(rows->failure());
}

void QZPaintManagerView::saveDB(const QString& stockCode, std::uint64_t cycle, const QString& viewIdentiry)
{
    const auto database = graphDatabase();
    if (!database->openWithFlags(readWriteCreate)) {
        writeBusCommonLog(QStringLiteral("Open line paint DB file failed!"));
        return;
    }
    setCurrentGroup(stockCode, cycle, viewIdentiry);
    if (const auto missing = QZGraphStore(*database).createTableIfMissing()) {
        writeBusCommonLog(*missing);
        database->close();
        return;
    }
    if (!isValidateSaveDB_)
        return;
    bool saved = false;
    caught(QStringLiteral("Write line paint DB exception : "), [&] { saved = saveGroup(*database); });
    // Closing takes an unfinished transaction back, and lets the next save open what is there by then.
    if (!saved)
        database->close();
}

// What cannot be written leaves the stored group, the pane and the right to save as they were.
bool QZPaintManagerView::saveGroup(QZGraphDatabase& database)
{
    const std::lock_guard lock(paintLayer_->graphs());
    const QString key = constructDBIndex(currentStockCode_, currentCycle_, currentIdentify_);
    if (!replaceGroup(database, key, QZGraphReader::ownTypes(loadedTypes_), *paintLayer_->graphs().snapshot()))
        return false;
    emptyIfActive(*paintLayer_);
    isValidateSaveDB_ = false;
    storedGroup_->clear();
    return true;
}

bool QZPaintManagerView::storeDB()
{
    const auto database = graphDatabase();
    if (!isValidateSaveDB_)
        return false;
    if (!database->openWithFlags(readWriteCreate)) {
        writeBusCommonLog(QStringLiteral("Open line paint DB file failed!"));
        return false;
    }
    if (storedGroup_->version == database->version() && !storedGroup_->differsFrom(*paintLayer_->graphs().snapshot()))
        return true;
    if (const auto missing = QZGraphStore(*database).createTableIfMissing()) {
        writeBusCommonLog(*missing);
        database->close();
        return false;
    }
    bool stored = false;
    caught(QStringLiteral("Write line paint DB exception : "), [&] { stored = mergeGroup(*database); });
    if (!stored)
        database->close();
    return stored;
}

// Rows and figures change only when all of it is written.
bool QZPaintManagerView::mergeGroup(QZGraphDatabase& database)
{
    const QString key = constructDBIndex(currentStockCode_, currentCycle_, currentIdentify_);
    QZGraphStore store(database);
    QZGraphReader reader(store, *this);
    const auto readRows = [&]() -> std::optional<std::vector<QZStoredGroup::Row>> {
        auto rows = store.selectNumberedGroup(key);
        if (!rows)
            return std::nullopt;
        auto read = reader.readNumberedRows(*rows);
        if (rows->failure().isNull())
            return read;
        database.failed(rows->failure().toUtf8().constData());
        return std::nullopt;
    };
    const std::lock_guard lock(paintLayer_->graphs());
    auto before = database.beginTransaction() ? readRows() : std::nullopt;
    if (!before)
        return logWriteError(database);
    auto merge = storedGroup_->mergeWith(*paintLayer_->graphs().snapshot(), std::move(*before));
    const auto erase = [&store](std::int64_t row) { return store.deleteRow(row); };
    const auto insert = [&](const auto& graph) { return store.insertGraph(key, *graph); };
    if (!std::ranges::all_of(merge.erased, erase) || !std::ranges::all_of(merge.inserted, insert))
        return logWriteError(database);
    const auto after = readRows();
    if (!after || !database.commit())
        return logWriteError(database);
    for (QZStoredGroup::Row& row : merge.newcomers)
        if (auto graph = reader.graphOf(std::move(row.values)))
            merge.figures.emplace(row.number, std::move(graph));
    takeOver(merge, *paintLayer_);
    storedGroup_->follow(merge, *after);
    storedGroup_->version = database.version();
    return true;
}

QString QZPaintManagerView::groupDescription() const
{
    QStringList graphs;
    for (const auto& graph : *paintLayer_->graphs().snapshot())
        graphs.append(strQZShapeType(graph->type()));
    return QStringLiteral("<QZPaintManagerView: 0x") + QString::number(reinterpret_cast<quintptr>(this), 16) +
           QStringLiteral("> graphs {(") + graphs.join(QStringLiteral(", ")) + QStringLiteral(")}\nPath:") +
           graphDatabase()->databasePath();
}

void QZPaintManagerView::loginUserWillChange()
{
    if (currentStockCode_.isNull() || currentIdentify_.isNull())
        return;
    sharedStore().isUserChanged = false;
    saveDB(currentStockCode_, currentCycle_, currentIdentify_);
    displayPaintLayer();
    writeBusCommonLog(QStringLiteral("Login user changed saveDB ") + groupDescription());
}

void QZPaintManagerView::loginUserDidChange()
{
    // The path too: while no pane shows a group, nobody hears that the user will change.
    if (!sharedStore().isUserChanged || graphDatabase()->databasePath() != databasePathOfUser())
        switchToFileOfUser();
    if (currentStockCode_.isNull() || currentIdentify_.isNull())
        return;
    loadDB(currentStockCode_, currentCycle_, currentIdentify_);
    qInfo().noquote() << QStringLiteral("Login user changed loadDB ") + groupDescription();
}

void QZPaintManagerView::switchToFileOfUser()
{
    if (QZPaintControl* palette = QZPaintControl::existing(); palette != nullptr && palette->window().isVisible()) {
        palette->window().removeFromWindowOf(*this);
        palette->window().close();
    }
    SharedStore& store = sharedStore();
    writeBusCommonLog(QStringLiteral("Closed database Path:") + store.database->databasePath());
    store.database->close();
    store.database = openDBFile();
    writeBusCommonLog(QStringLiteral("Opened new database Path:") + store.database->databasePath());
    store.isUserChanged = true;
}
