#include "app/chart/ChartSplitView.h"

#include "app/chart/CandlePane.h"
#include "app/chart/MacdPane.h"
#include "app/chart/VolumePane.h"
#include "panels/QZPaintControl.h"
#include "surface/QZPaintLayer.h"
#include "tools/QZPaintRangeStatistics.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace {

/// One notch of a mouse wheel, in Qt's units.
constexpr double wheelNotch = 120;
constexpr double zoomStep = 1.2;
/// Part of the screen that a notch, or an arrow key, scrolls.
constexpr double scrollPart = 0.05;
/// Natural logarithm of what a drag over the whole height of an axis stretches by.
constexpr double stretchPerHeight = 2;

} // namespace

ChartSplitView::ChartSplitView(QWidget* parent)
    : QZPaintSplitView(Qt::Vertical, parent),
      prices_(new CandlePane(viewport_, this)),
      macd_(new MacdPane(viewport_, this))
{
    setHandleWidth(3);
    addPane(prices_, 3);
    addPane(new VolumePane(viewport_, this), 1);
    addPane(macd_, 1);
    addViewActions();
    connect(&viewport_, &ChartViewport::changed, this, &ChartSplitView::refreshPanes);
    showMacd(false);
    applyTheme();
}

void ChartSplitView::addPane(ChartPane* pane, int stretch)
{
    panes_.push_back(pane);
    addWidget(pane);
    pane->installEventFilter(this);
    setStretchFactor(count() - 1, stretch);
}

void ChartSplitView::addViewActions()
{
    averages_ = addViewAction("averages", tr("Moving &averages"), true,
                              [this](bool isOn) { prices_->setAveragesVisible(isOn); });
    macdShown_ = addViewAction("macd", tr("&MACD"), false, [this](bool isOn) { showMacd(isOn); });
}

template <typename Show>
QAction* ChartSplitView::addViewAction(const char* name, const QString& text, bool isChecked, Show show)
{
    auto* action = new QAction(text, this);
    action->setObjectName(QLatin1String(name));
    action->setCheckable(true);
    action->setChecked(isChecked);
    connect(action, &QAction::toggled, this, [this, show](bool isOn) {
        show(isOn);
        refreshPanes();
    });
    viewActions_.push_back(action);
    return action;
}

std::vector<ChartPane*> ChartSplitView::shownPanes() const
{
    std::vector<ChartPane*> shown = panes_;
    if (!macdShown_->isChecked())
        std::erase(shown, macd_);
    return shown;
}

void ChartSplitView::showMacd(bool isShown)
{
    if (!isShown) {
        if (activeView() == macd_) {
            setActiveView(nullptr);
            deselect();
            QZPaintControl::sharedManager().resetAllButtons(false);
            Q_EMIT activePaneChanged();
            Q_EMIT drawingChanged();
        }
        if (macd_->paintLayer()->graphs().contains(QZPaintRangeStatistics::sharedGraph().get())) {
            macd_->removeRangeStatisticsGraph();
            Q_EMIT figuresRemoved();
        }
        // A widget that does not show keeps its place in the splitter, and clicks are dealt out by this rectangle.
        macd_->setValidateRect({});
    }
    macd_->setVisible(isShown);
    for (ChartPane* pane : panes_)
        pane->setDateAxisVisible(pane == shownPanes().back());
}

void ChartSplitView::setChartData(const std::shared_ptr<const ChartData>& shown)
{
    for (ChartPane* pane : panes_)
        pane->setChartData(shown);
    resetView();
    Q_EMIT scaleChanged();
}

void ChartSplitView::resetView()
{
    const ChartData& shown = *prices_->chartData();
    if (!shown.isLine || shown.series.isEmpty()) {
        viewport_.reset(shown.series.size());
        return;
    }
    // Also what is still to come of the newest day.
    constexpr std::int32_t endOfDay = 240000; // hhmmss
    const std::vector<Bar>& bars = shown.series.bars();
    const int first = shown.calendar.indexOf({bars.front().date, 0});
    const int end = shown.calendar.indexOf({bars.back().date, endOfDay});
    viewport_.reset(end);
    viewport_.show(first, end - 1);
}

void ChartSplitView::applyTheme()
{
    const ChartTheme theme = ChartTheme::current();
    for (ChartPane* pane : panes_) {
        pane->applyTheme(theme);
        pane->paintLayer()->reloadGraphFontAndColor();
    }
    refreshPanes();
}

// All value axes are equally wide, so that a bar stands at the same x in every pane.
void ChartSplitView::refreshPanes()
{
    int axisWidth = 0;
    const auto panes = shownPanes();
    for (ChartPane* pane : panes)
        axisWidth = std::max(axisWidth, pane->fitValues());
    for (ChartPane* pane : panes)
        pane->refresh(axisWidth);
    pointAt(pointer_); // another bar may be there now
}

void ChartSplitView::removeAllGraphs(QZPaintControl& sender)
{
    const QPointer<ChartSplitView> self(this); // its window may close under the question
    QZPaintSplitView::removeAllGraphs(sender);
    if (self != nullptr)
        Q_EMIT figuresRemoved();
}

void ChartSplitView::changeShapeTo(std::int64_t shapeType, const QImage& imageThumbnail)
{
    QZPaintSplitView::changeShapeTo(shapeType, imageThumbnail);
    Q_EMIT drawingChanged();
}

void ChartSplitView::showOrHiddenAllGraphs(QZPaintControl& sender)
{
    QZPaintSplitView::showOrHiddenAllGraphs(sender);
    Q_EMIT drawingChanged();
}

std::shared_ptr<QZPaintGraph> ChartSplitView::figureInCreation() const
{
    std::shared_ptr<QZPaintGraph> furthest;
    for (const ChartPane* pane : panes_) {
        const auto figure = pane->paintLayer()->currentGraph();
        if (figure && figure->isEditing() && (!furthest || figure->currentPoint() > furthest->currentPoint()))
            furthest = figure;
    }
    return furthest;
}

void ChartSplitView::mousePressEvent(QMouseEvent* event)
{
    if (takeAxis(*event))
        return;
    const QZPaintManagerView* before = activeView();
    QZPaintSplitView::mousePressEvent(event);
    startPanning(*event);
    if (activeView() != before)
        Q_EMIT activePaneChanged();
    Q_EMIT drawingChanged();
}

void ChartSplitView::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (takeAxis(*event)) {
        stretchedPane_->fitAgain();
        refreshPanes();
        return;
    }
    QZPaintSplitView::mouseDoubleClickEvent(event);
    startPanning(*event);
    Q_EMIT drawingChanged();
}

// Only a press that neither places a point nor takes hold of a figure moves the chart.
void ChartSplitView::startPanning(const QMouseEvent& event)
{
    auto* pane = dynamic_cast<ChartPane*>(activeView());
    if (event.button() != Qt::LeftButton || pane == nullptr || pane->paintLayer()->currentGraph())
        return;
    pannedPane_ = pane;
    dragged_ = event.position();
    pane->setCursor(Qt::ClosedHandCursor);
}

void ChartSplitView::pan(QPointF position, bool movesValues)
{
    const QPointF way = position - dragged_;
    if (movesValues)
        pannedPane_->shiftValues(-way.y());
    viewport_.scrollBy(-way.x() / pannedPane_->scale().barWidth());
    dragged_ = position;
}

void ChartSplitView::stopPanning()
{
    if (pannedPane_)
        pannedPane_->setCursor(Qt::ArrowCursor);
    pannedPane_.clear();
    stretchedPane_.clear();
}

void ChartSplitView::mouseMoveEvent(QMouseEvent* event)
{
    // A release that went elsewhere, as to a dialog, is noticed by the buttons.
    if ((event->buttons() & Qt::LeftButton) == 0)
        stopPanning();
    showAxisCursor(event->position());
    if (stretchedPane_) {
        const double up = (dragged_.y() - event->position().y()) / std::max(stretchedPane_->scale().plot.height, 1.0);
        dragged_ = event->position();
        stretch(*stretchedPane_, std::exp(up * stretchPerHeight));
    } else if (pannedPane_) {
        pan(event->position(), pannedPane_->hasOwnRange() || (event->modifiers() & Qt::ShiftModifier) != 0);
    } else {
        QZPaintSplitView::mouseMoveEvent(event);
    }
    pointAt(event->position());
}

void ChartSplitView::mouseReleaseEvent(QMouseEvent* event)
{
    if (!stretchedPane_)
        QZPaintSplitView::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton)
        stopPanning();
}

bool ChartSplitView::eventFilter(QObject* watched, QEvent* event)
{
    auto* pane = event->type() == QEvent::Wheel ? dynamic_cast<ChartPane*>(watched) : nullptr;
    if (pane == nullptr)
        return QZPaintSplitView::eventFilter(watched, event);
    turnWheel(*pane, *static_cast<QWheelEvent*>(event));
    return true;
}

void ChartSplitView::turnWheel(ChartPane& pane, const QWheelEvent& event)
{
    const QPoint turned = event.angleDelta();
    const bool isSideways = std::abs(turned.x()) > std::abs(turned.y());
    const double notches = (isSideways ? turned.x() : turned.y()) / wheelNotch;
    if (paneWithAxisAt(pane.mapTo(this, event.position())) == &pane)
        stretch(pane, std::pow(zoomStep, notches));
    else if (isSideways || (event.modifiers() & Qt::ControlModifier) != 0)
        viewport_.scrollBy(-notches * scrollPart * viewport_.span());
    else
        viewport_.zoom(std::pow(zoomStep, -notches), pane.scale().indexAt(event.position().x()));
    pointAt(pane.mapTo(this, event.position()));
}

void ChartSplitView::keyPressEvent(QKeyEvent* event)
{
    const bool cancels = figureInCreation() != nullptr;
    QZPaintSplitView::keyPressEvent(event);
    if (event->key() == Qt::Key_Escape && !cancels)
        deselect();
    event->setAccepted(scrollByKey(*event) || scaleByKey(*event));
    Q_EMIT drawingChanged();
}

void ChartSplitView::deselect()
{
    for (const ChartPane* pane : panes_) {
        pane->paintLayer()->cancelCurrentGraph();
        pane->paintLayer()->setNeedsDisplay();
    }
}

bool ChartSplitView::scrollByKey(const QKeyEvent& event)
{
    const bool isFar = (event.modifiers() & Qt::ShiftModifier) != 0;
    const double bars = isFar ? viewport_.span() : std::max(1.0, std::round(viewport_.span() * scrollPart));
    const double newest = viewport_.barCount() - 1;
    const bool isNewestVisible = viewport_.first() <= newest && newest <= viewport_.last();
    const double anchor = isNewestVisible ? newest : (viewport_.first() + viewport_.last()) / 2;
    switch (event.key()) {
    case Qt::Key_Left:
        viewport_.scrollBy(-bars);
        return true;
    case Qt::Key_Right:
        viewport_.scrollBy(bars);
        return true;
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        viewport_.zoom(1 / zoomStep, anchor);
        return true;
    case Qt::Key_Minus:
        viewport_.zoom(zoomStep, anchor);
        return true;
    case Qt::Key_Home:
        viewport_.showFirstBar();
        return true;
    case Qt::Key_End:
        viewport_.showLastBar();
        return true;
    default:
        return false;
    }
}

void ChartSplitView::leaveEvent(QEvent* event)
{
    QZPaintSplitView::leaveEvent(event);
    pointAt(std::nullopt);
}

void ChartSplitView::pointAt(std::optional<QPointF> position)
{
    pointer_ = position;
    const auto localTo = [this](const ChartPane& pane) {
        const QPointF local = pane.mapFrom(this, pointer_.value_or(QPointF()));
        return QZPoint{local.x(), pane.height() - local.y()};
    };
    const auto panes = shownPanes();
    const auto under = std::ranges::find_if(
        panes, [&](const ChartPane* pane) { return pointer_ && pane->scale().plot.contains(localTo(*pane)); });
    std::optional<int> bar;
    if (under != panes.end())
        bar = (*under)->scale().barAt(localTo(**under).x);
    for (auto pane = panes.begin(); pane != panes.end(); ++pane)
        (*pane)->pointAt(bar, pane == under ? std::optional(localTo(**pane).y) : std::nullopt);
    Q_EMIT barPointedAt(bar);
}
