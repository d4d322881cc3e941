#include "surface/QZPaintSplitView.h"

#include "panels/QZMessageBoxAlert.h"
#include "panels/QZPaintControl.h"
#include "panels/QZPaintGraphConfigWC.h"
#include "panels/QZPaintTextConfigWC.h"
#include "panels/QZPanelDefaults.h"
#include "platform/QZGlobalEnv.h"
#include "platform/QZLog.h"
#include "surface/QZPaintActiveManager.h"
#include "surface/QZPaintLayer.h"
#include "surface/QZPaintManagerView.h"
#include "tools/QZPaintMarks.h"

#include <QChildEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QSplitterHandle>
#include <QStyleHints>

#include <algorithm>
#include <cmath>
#include <utility>

/// A divider keeps its presses from the split view, which must hear of them: a press on it leaves no pane active.
class QZPaintSplitHandle final : public QSplitterHandle {
public:
    QZPaintSplitHandle(Qt::Orientation orientation, QZPaintSplitView& split)
        : QSplitterHandle(orientation, &split), split_(split)
    {}

protected:
    void mousePressEvent(QMouseEvent* event) override
    {
        if (event->button() == Qt::LeftButton && !split_.mouseDown(mapTo(&split_, event->position()), 1))
            return;
        QSplitterHandle::mousePressEvent(event);
    }

private:
    QZPaintSplitView& split_;
};

std::vector<QZPaintSplitView*>& QZPaintSplitView::splitViews()
{
    static std::vector<QZPaintSplitView*> views;
    return views;
}

QZPaintSplitView::QZPaintSplitView(Qt::Orientation orientation, QWidget* parent) : QSplitter(orientation, parent)
{
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setChildrenCollapsible(false);
    QZPanelDefaults::install();
    installMessageBoxAlert();
    splitViews().push_back(this);
}

QZPaintSplitView::~QZPaintSplitView()
{
    QZPaintControl* palette = QZPaintControl::existing();
    if (palette != nullptr && palette->delegate() == this)
        palette->setDelegate(nullptr);
    // Once this is no split view any more, its panes cannot tell that they go.
    forEachView([this](QZPaintManagerView& view, QZPaintLayer&) { viewWillLeave(view); });
    std::erase(splitViews(), this);
}

QSplitterHandle* QZPaintSplitView::createHandle()
{
    return new QZPaintSplitHandle(orientation(), *this);
}

void QZPaintSplitView::childEvent(QChildEvent* event)
{
    QSplitter::childEvent(event);
    if (event->added())
        event->child()->installEventFilter(this);
    if (!event->removed())
        return;
    event->child()->removeEventFilter(this);
    // One that is being deleted is no manager view any more; it has told by itself.
    if (auto* view = qobject_cast<QZPaintManagerView*>(event->child()))
        viewWillLeave(*view);
}

// The mouse leaves a pane for places of which no move is heard: a divider, a menu, another window.
bool QZPaintSplitView::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Leave)
        if (const auto* view = qobject_cast<QZPaintManagerView*>(watched))
            view->paintLayer()->setMouseInside(false);
    return QSplitter::eventFilter(watched, event);
}

std::vector<QZPaintManagerView*> QZPaintSplitView::managerViews() const
{
    std::vector<QZPaintManagerView*> views;
    for (int i = 0; i < count(); ++i)
        if (auto* view = qobject_cast<QZPaintManagerView*>(widget(i)))
            views.push_back(view);
    return views;
}

template <typename Visit>
void QZPaintSplitView::forEachView(Visit visit) const
{
    const auto now = managerViews();
    const std::vector<QPointer<QZPaintManagerView>> views(now.begin(), now.end());
    for (const auto& view : views) {
        if (view == nullptr || view->parent() != this) // only compared: this view may be gone as well
            continue;
        const auto layer = view->paintLayer(); // outlives a pane that is deleted meanwhile
        visit(*view, *layer);
    }
}

QZPoint QZPaintSplitView::pointIn(const QZPaintManagerView& view, QPointF location) const
{
    const QPointF local = view.mapFrom(this, location);
    return {local.x(), view.height() - local.y()};
}

// A pane that was just hidden keeps its frame until the next layout.
bool QZPaintSplitView::isInFrame(const QZPaintManagerView& view, QPointF location)
{
    const QRectF frame = view.geometry();
    return !view.isHidden() && location.x() >= frame.left() && location.x() < frame.right() &&
           location.y() >= frame.top() && location.y() < frame.bottom();
}

QZPaintManagerView* QZPaintSplitView::activeViewAtPoint(QPointF point)
{
    const auto views = managerViews();
    const auto hit = std::ranges::find_if(views, [point](const auto* view) { return isInFrame(*view, point); });
    const QPointer<QZPaintManagerView> view(hit == views.end() ? nullptr : *hit);
    activateOnly(view);
    return view;
}

// NOLINTNEXTLINE(readability-make-member-function-const): it changes the layers
void QZPaintSplitView::activateOnly(const QZPaintManagerView* view)
{
    for (const auto& layer : paintLayers())
        layer->setActive(view != nullptr && layer->managerView() == view);
}

void QZPaintSplitView::setActiveView(QZPaintManagerView* view)
{
    if (view != nullptr && view->splitView() != this) {
        writeBusCommonLog(QStringLiteral("A view that is no pane of the split view cannot become its active one"));
        return;
    }
    activateOnly(view);
    activeView_ = view;
}

void QZPaintSplitView::viewWillLeave(QZPaintManagerView& view)
{
    const auto layer = view.paintLayer();
    if (activeView_ == &view)
        activeView_.clear();
    QZPaintActiveManager& manager = QZPaintActiveManager::sharedManager();
    if (manager.currentActiveLayer() == layer)
        manager.setCurrentActiveLayer(nullptr);
    layer->cancelCurrentGraph();

    // What other panes were doing goes on.
    const auto graphOf = [](const auto& other) { return other->currentGraph(); };
    const auto isCreating = [](const auto& graph) { return graph && graph->isEditing(); };
    if (std::ranges::any_of(allPaintLayers(), isCreating, graphOf))
        QZGlobalEnv::getShareInstance().setGlobalContext(QZContextIsPaintEditing, QZContextIsPaintEditing, true);
    hideIdlePanels();
}

bool QZPaintSplitView::mouseDown(QPointF location, int clickCount)
{
    const QPointer<QZPaintSplitView> self(this);
    activeView_ = activeViewAtPoint(location);
    pressLocation_ = location;
    if (clickCount >= 2 && activeView_ != nullptr) {
        const auto layer = activeView_->paintLayer();
        const auto current = layer->currentGraph();
        if (std::dynamic_pointer_cast<QZPaintToolText>(current)) {
            layer->mouseDoubleClicked();
            return false;
        }
        // A double click on a figure is no second click on the chart.
        if (current && (current->isEditing() || current->isSelected()))
            return false;
    }
    forEachView([this, location](const QZPaintManagerView& view, QZPaintLayer& layer) {
        const QZPoint point = pointIn(view, location);
        if (view.validateRect().contains(point))
            layer.mouseDown(point);
    });
    return self != nullptr;
}

void QZPaintSplitView::mouseMoved(QPointF location)
{
    forEachView([this, location](const QZPaintManagerView& view, QZPaintLayer& layer) {
        const QZPoint point = pointIn(view, location);
        layer.setMouseInside(isInFrame(view, location));
        if (view.validateRect().contains(point))
            layer.mouseMoved(point);
    });
}

bool QZPaintSplitView::mouseDragged(QPointF location)
{
    if (activeView_ == nullptr)
        return false;
    const QPointer<QZPaintSplitView> self(this);
    const auto layer = activeView_->paintLayer();
    const QZRect valid = activeView_->validateRect();
    const QZPoint point = pointIn(*activeView_, location);
    if (!valid.contains(point))
        return false;
    // A handle is taken hold of where the button went down, however quickly the mouse leaves it.
    if (const auto press = std::exchange(pressLocation_, std::nullopt)) {
        const QZPoint start = pointIn(*activeView_, *press);
        if (layer->currentGraph() && valid.contains(start))
            layer->currentGraph()->selectKeyPointNearPoint(start);
    }
    layer->mouseDragged(point);
    if (self == nullptr)
        return true;
    if (!layer->currentGraph() || !layer->currentGraph()->isSelected())
        return false;
    mouseMoved(location);
    return true;
}

void QZPaintSplitView::mouseUp(QPointF location)
{
    if (activeView_ == nullptr)
        return;
    const auto layer = activeView_->paintLayer();
    layer->mouseUp(pointIn(*activeView_, location));
}

// Qt tells the second press from the first, and takes the third for a first one again.
int QZPaintSplitView::clickCountOf(const QMouseEvent& press)
{
    const QStyleHints& hints = *QGuiApplication::styleHints();
    const QPointF way = press.position() - lastPress_.location;
    const bool follows = press.timestamp() - lastPress_.time < static_cast<quint64>(hints.mouseDoubleClickInterval()) &&
                         std::max(std::abs(way.x()), std::abs(way.y())) <= hints.mouseDoubleClickDistance();
    int clickCount = press.type() == QEvent::MouseButtonDblClick ? 2 : 1;
    if (follows && lastPress_.clickCount >= 2)
        clickCount = lastPress_.clickCount + 1;
    lastPress_ = {press.position(), press.timestamp(), clickCount};
    return clickCount;
}

void QZPaintSplitView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && !mouseDown(event->position(), clickCountOf(*event)))
        return;
    QSplitter::mousePressEvent(event);
}

void QZPaintSplitView::mouseMoveEvent(QMouseEvent* event)
{
    const QPointer<QZPaintSplitView> self(this);
    if (event->buttons() == Qt::NoButton) {
        // A release that went elsewhere, as to a dialog, is noticed by the buttons.
        if (activeView_ != nullptr && activeView_->isDragging())
            mouseUp(event->position());
        if (self != nullptr)
            mouseMoved(event->position());
    } else if ((event->buttons() & Qt::LeftButton) != 0 && mouseDragged(event->position())) {
        return;
    }
    if (self != nullptr)
        QSplitter::mouseMoveEvent(event);
}

void QZPaintSplitView::mouseReleaseEvent(QMouseEvent* event)
{
    const QPointer<QZPaintSplitView> self(this);
    if (event->button() == Qt::LeftButton)
        mouseUp(event->position());
    if (self != nullptr)
        QSplitter::mouseReleaseEvent(event);
}

void QZPaintSplitView::keyPressEvent(QKeyEvent* event)
{
    const QPointer<QZPaintSplitView> self(this);
    if (activeView_ == nullptr && event->key() == Qt::Key_Escape && count() > 0)
        activeView_ = qobject_cast<QZPaintManagerView*>(widget(0));
    if (activeView_ != nullptr) {
        const auto layer = activeView_->paintLayer();
        layer->keyDown(*event);
    }
    if (self != nullptr)
        QSplitter::keyPressEvent(event);
}
