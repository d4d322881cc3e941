#include "app/window/ToolRepeater.h"

#include "app/chart/ChartPalette.h"
#include "app/chart/ChartSplitView.h"
#include "model/QZPaintGraph.h"
#include "model/QZPaintNotifications.h"
#include "surface/QZPaintLayer.h"

#include <QAbstractButton>
#include <QGuiApplication>

#include <algorithm>

ToolRepeater::ToolRepeater(ChartSplitView& chart) : chart_(chart)
{
    connect(&chart, &ChartSplitView::drawingChanged, this, [this] {
        const auto figure = chart_.figureInCreation();
        creating_ = figure ? static_cast<QZShapeType>(figure->type()) : QZShapeTypeNone;
    });
    // The press that finished the figure has to come to its end first.
    connect(
        this, &ToolRepeater::toolWanted, this,
        [this] {
            if (QAbstractButton* button = ChartPalette::button(wanted_))
                button->click();
        },
        Qt::QueuedConnection);
    observation_ = QZNotificationCenter::defaultCenter().observe(
        QZPaintGraphFinishedEditingNotification, [this](const QZNotification& posted) { finished(posted); });
}

void ToolRepeater::finished(const QZNotification& notification)
{
    const auto pane = std::ranges::find_if(chart_.panes(), [&notification](const ChartPane* each) {
        return each->paintLayer().get() == notification.object;
    });
    if (pane == chart_.panes().end())
        return;
    // A figure that was cancelled is not among the finished ones, and one that was edited was not in creation.
    QZPaintLayer& layer = *(*pane)->paintLayer();
    const auto figure = layer.currentGraph();
    const bool isNew = figure && figure->type() == creating_ && layer.graphs().contains(figure.get());
    const bool isWanted = isOn_ || (QGuiApplication::keyboardModifiers() & Qt::ShiftModifier) != 0;
    if (!isNew || !isWanted || creating_ == QZSTToolText)
        return;
    wanted_ = creating_;
    Q_EMIT toolWanted();
}
