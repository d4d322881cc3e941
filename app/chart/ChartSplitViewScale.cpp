#include "app/chart/ChartSplitView.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>

void ChartSplitView::setLogarithmic(bool isLogarithmic)
{
    isLogarithmic_ = isLogarithmic;
    for (ChartPane* pane : panes_)
        pane->setLogarithmic(isLogarithmic);
    refreshPanes();
    Q_EMIT scaleChanged();
}

bool ChartSplitView::hasLogarithms() const
{
    return std::ranges::any_of(panes_, [](const ChartPane* pane) { return pane->hasLogarithms(); });
}

ChartPane* ChartSplitView::paneWithAxisAt(QPointF position) const
{
    const auto found = std::ranges::find_if(panes_, [&](const ChartPane* pane) {
        const QPointF local = pane->mapFrom(this, position);
        return pane->isVisible() && pane->isOnValueAxis({local.x(), pane->height() - local.y()});
    });
    return found == panes_.end() ? nullptr : *found;
}

// The split view's own handling of the press would choose the pane, which drops what another pane has begun.
bool ChartSplitView::takeAxis(const QMouseEvent& press)
{
    ChartPane* pane = paneWithAxisAt(press.position());
    if (press.button() != Qt::LeftButton || pane == nullptr)
        return false;
    stretchedPane_ = pane;
    dragged_ = press.position();
    return true;
}

void ChartSplitView::stretch(ChartPane& pane, double factor)
{
    pane.stretchValues(factor);
    refreshPanes();
}

// On the plot the cursor is the figures'.
void ChartSplitView::showAxisCursor(QPointF position)
{
    const ChartPane* onAxis = stretchedPane_ ? stretchedPane_.data() : paneWithAxisAt(position);
    for (ChartPane* pane : panes_) {
        const bool isShown = pane->cursor().shape() == Qt::SizeVerCursor;
        if (isShown != (pane == onAxis))
            pane->setCursor(isShown ? Qt::ArrowCursor : Qt::SizeVerCursor);
    }
}

bool ChartSplitView::scaleByKey(const QKeyEvent& event)
{
    if ((event.modifiers() & ~Qt::KeypadModifier) != 0)
        return false;
    if (event.key() == Qt::Key_L) {
        setLogarithmic(!isLogarithmic_);
    } else if (event.key() == Qt::Key_F) {
        for (ChartPane* pane : panes_)
            pane->fitAgain();
        refreshPanes();
    } else {
        return false;
    }
    return true;
}
