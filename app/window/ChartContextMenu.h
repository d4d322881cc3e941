#pragma once

#include <QList>
#include <QObject>
#include <QPoint>

#include <memory>

class ChartPane;
class ChartSplitView;
class QAction;
class QContextMenuEvent;
class QZPaintGraph;

/// What the right mouse button and the menu key offer: on a figure, which they select, its style and its removal,
/// beside figures what the chart can do. Nothing while a tool is chosen or the left button is held: the mouse is the
/// tools'.
class ChartContextMenu : public QObject {
    Q_OBJECT

public:
    /// `chart` and the actions are borrowed and outlive this.
    ChartContextMenu(ChartSplitView& chart, QList<QAction*> chartActions);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void open(const QContextMenuEvent& event);
    void openFor(ChartPane& pane, const std::shared_ptr<QZPaintGraph>& figure, QPoint place);

    ChartSplitView& chart_;
    const QList<QAction*> chartActions_;
};
