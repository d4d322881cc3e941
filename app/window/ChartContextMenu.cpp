#include "app/window/ChartContextMenu.h"

#include "app/chart/ChartSplitView.h"
#include "model/QZPaintGraph.h"
#include "panels/QZPaintControl.h"
#include "surface/QZPaintLayer.h"

#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QMenu>
#include <QPointer>

#include <algorithm>
#include <utility>

namespace {

/// A menu over the chart, gone when it closes.
QMenu& makeMenu(ChartSplitView& chart)
{
    auto* menu = new QMenu(&chart);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    return *menu;
}

bool isForMenu(const QZPaintGraph& figure)
{
    return figure.type() != QZSTToolRangeStatistics; // it has its own window, which the chart's menu closes
}

} // namespace

ChartContextMenu::ChartContextMenu(ChartSplitView& chart, QList<QAction*> chartActions)
    : chart_(chart), chartActions_(std::move(chartActions))
{
    chart.installEventFilter(this);
}

bool ChartContextMenu::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::ContextMenu)
        return QObject::eventFilter(watched, event);
    const bool isDrawing =
        chart_.figureInCreation() != nullptr || QZPaintControl::sharedManager().selectedType() != QZShapeTypeNone;
    if (!isDrawing && (QGuiApplication::mouseButtons() & Qt::LeftButton) == 0)
        open(*static_cast<QContextMenuEvent*>(event));
    return true;
}

void ChartContextMenu::open(const QContextMenuEvent& event)
{
    for (ChartPane* pane : chart_.panes()) {
        QZPaintLayer& layer = *pane->paintLayer();
        auto figure = layer.currentGraph();
        if (event.reason() != QContextMenuEvent::Keyboard) {
            const QPoint place = pane->mapFromGlobal(event.globalPos());
            if (!pane->rect().contains(place))
                continue;
            const QZPoint point{static_cast<double>(place.x()), static_cast<double>(pane->height() - place.y())};
            figure = pane->validateRect().contains(point) ? layer.getClosedGraph(point) : nullptr;
            chart_.setActiveView(pane);
            Q_EMIT chart_.activePaneChanged();
            if (figure && isForMenu(*figure)) {
                layer.mouseDown(point);
                layer.mouseUp(point);
            }
        }
        if (figure && isForMenu(*figure)) {
            openFor(*pane, figure, event.globalPos());
            return;
        }
    }
    QMenu& menu = makeMenu(chart_);
    menu.addActions(chartActions_);
    menu.popup(event.globalPos());
}

void ChartContextMenu::openFor(ChartPane& pane, const std::shared_ptr<QZPaintGraph>& figure, QPoint place)
{
    QMenu& menu = makeMenu(chart_);
    // The figure may be gone by then: another program deleted it, or it was let go of.
    const auto add = [&](const QString& name, auto act) {
        return menu.addAction(name, &pane, [view = &pane, chosen = std::weak_ptr(figure), act] {
            const auto current = view->paintLayer()->currentGraph();
            if (current && current == chosen.lock())
                act(*view, *current);
        });
    };
    const unsigned configs = figure->editingConfigs() | QZGraphConfig::deleteGraph;
    if (figure->type() == QZSTToolText)
        add(tr("Edit text…"),
            [](ChartPane& view, QZPaintGraph& note) { view.paintLayer()->orderFrontPaintTextConfigWindow(note); });
    if (figure->showsConfigStrip())
        add(tr("Style…"),
            [this, configs](ChartPane& view, QZPaintGraph& styled) { chart_.showStrip(styled, configs, view); });
    if (figure->showsConfigStrip()) {
        QAction* lock = add(tr("Locked"), [](ChartPane& view, QZPaintGraph& locked) {
            locked.setLocked(!locked.isLocked());
            view.paintLayer()->setNeedsDisplay();
        });
        lock->setCheckable(true);
        lock->setChecked(figure->isLocked());
    }
    QAction* remove = add(tr("Delete"), [](ChartPane& view, QZPaintGraph&) {
        view.paintLayer()->keyDown(QKeyEvent(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier));
    });
    remove->setEnabled(!figure->isFixed());
    menu.popup(place);
}
