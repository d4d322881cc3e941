#include "surface/QZPaintSplitView.h"

#include "panels/QZMessageBoxAlert.h"
#include "panels/QZPaintGraphConfigWC.h"
#include "panels/QZPanelDefaults.h"
#include "surface/QZPaintLayer.h"
#include "surface/QZPaintManagerView.h"

#include <QChildEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QSplitterHandle>

#include <utility>

/// A divider keeps its presses from the split view, which must hear of them: a press on it leaves no pane active.
class QZPaintSplitHandle final : public QSplitterHandle {
public:
    QZPaintSplitHandle(Qt::Orientation orientation, QZPaintSplitView& split)
        : QSplitterHandle(orientation, &split), split_(split)
    {
        setMouseTracking(true);
    }

protected:
    void mousePressEvent(QMouseEvent* event) override
    {
        if (event->button() == Qt::LeftButton)
            split_.mouseDown(mapTo(&split_, event->position()), 1);
        QSplitterHandle::mousePressEvent(event);
    }

    void mouseMoveEvent(QMouseEvent* event) override
    {
        if (event->buttons() == Qt::NoButton)
            split_.mouseMoved(mapTo(&split_, event->position()));
        QSplitterHandle::mouseMoveEvent(event);
    }

private:
    QZPaintSplitView& split_;
};

QZPaintSplitView::QZPaintSplitView(Qt::Orientation orientation, QWidget* parent) : QSplitter(orientation, parent)
{
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setChildrenCollapsible(false);
    QZPanelDefaults::install();
    installMessageBoxAlert();
}

// The strip's controls would be dead, over a window that may live on.
QZPaintSplitView::~QZPaintSplitView()
{
    QZPaintGraphConfigWC* strip = QZPaintGraphConfigWC::existing();
    if (strip != nullptr && strip->delegate() == this)
        closeConfigWindow();
}

QSplitterHandle* QZPaintSplitView::createHandle()
{
    return new QZPaintSplitHandle(orientation(), *this);
}

void QZPaintSplitView::childEvent(QChildEvent* event)
{
    QSplitter::childEvent(event);
    if (event->removed() && event->child() == activeView_)
        activeView_.clear();
}

std::vector<QZPaintManagerView*> QZPaintSplitView::managerViews() const
{
    std::vector<QZPaintManagerView*> views;
    for (int i = 0; i < count(); ++i)
        if (auto* view = dynamic_cast<QZPaintManagerView*>(widget(i)))
            views.push_back(view);
    return views;
}

QZPoint QZPaintSplitView::pointIn(const QZPaintManagerView& view, QPointF location) const
{
    const QPointF local = view.mapFrom(this, location);
    return {local.x(), view.height() - local.y()};
}

bool QZPaintSplitView::isInFrame(const QZPaintManagerView& view, QPointF location)
{
    const QRectF frame = view.geometry();
    return !view.isHidden() && location.x() >= frame.left() && location.x() < frame.right() &&
           location.y() >= frame.top() && location.y() < frame.bottom();
}

// NOLINTNEXTLINE(readability-make-member-function-const): it changes the layers
QZPaintManagerView* QZPaintSplitView::activeViewAtPoint(QPointF point)
{
    QZPaintManagerView* active = nullptr;
    for (QZPaintManagerView* view : managerViews()) {
        view->paintLayer()->setActive(isInFrame(*view, point));
        if (active == nullptr && view->paintLayer()->isActive())
            active = view;
    }
    return active;
}

bool QZPaintSplitView::mouseDown(QPointF location, int clickCount)
{
    activeView_ = activeViewAtPoint(location);
    pressLocation_ = location;
    if (clickCount >= 2 && activeView_ != nullptr) {
        // A double click on a figure is no second click on the chart.
        const auto& current = activeView_->paintLayer()->currentGraph();
        if (current && (current->isEditing() || current->isSelected()))
            return false;
    }
    for (QZPaintManagerView* view : managerViews()) {
        const QZPoint point = pointIn(*view, location);
        if (!view->isHidden() && view->validateRect().contains(point))
            view->paintLayer()->mouseDown(point);
    }
    return true;
}

void QZPaintSplitView::mouseMoved(QPointF location)
{
    for (QZPaintManagerView* view : managerViews()) {
        const QZPoint point = pointIn(*view, location);
        view->paintLayer()->setMouseInside(isInFrame(*view, location));
        if (!view->isHidden() && view->validateRect().contains(point))
            view->paintLayer()->mouseMoved(point);
    }
}

bool QZPaintSplitView::mouseDragged(QPointF location)
{
    if (activeView_ == nullptr)
        return false;
    const QZPoint point = pointIn(*activeView_, location);
    if (!activeView_->validateRect().contains(point))
        return false;
    const auto layer = activeView_->paintLayer();
    // A drag begins where the button went down: a handle is taken hold of however quickly the mouse leaves it.
    if (const auto press = std::exchange(pressLocation_, std::nullopt)) {
        const QZPoint start = pointIn(*activeView_, *press);
        if (activeView_->validateRect().contains(start))
            layer->mouseDragged(start);
    }
    layer->mouseDragged(point);
    if (!layer->currentGraph() || !layer->currentGraph()->isSelected())
        return false;
    mouseMoved(location);
    return true;
}

void QZPaintSplitView::mouseUp(QPointF location)
{
    if (activeView_ != nullptr)
        activeView_->paintLayer()->mouseUp(pointIn(*activeView_, location));
}

void QZPaintSplitView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        mouseDown(event->position(), 1);
    QSplitter::mousePressEvent(event);
}

void QZPaintSplitView::mouseDoubleClickEvent(QMouseEvent* event)
{
    // QWidget's own handler would press once more, so it is never asked.
    const bool isSwallowed = event->button() == Qt::LeftButton && !mouseDown(event->position(), 2);
    event->setAccepted(isSwallowed);
}

void QZPaintSplitView::mouseMoveEvent(QMouseEvent* event)
{
    // A release that went elsewhere, as to a dialog, is noticed by the buttons.
    if (event->buttons() == Qt::NoButton && activeView_ != nullptr && activeView_->isDragging())
        mouseUp(event->position());
    if (event->buttons() == Qt::NoButton)
        mouseMoved(event->position());
    else if ((event->buttons() & Qt::LeftButton) != 0 && mouseDragged(event->position()))
        return;
    QSplitter::mouseMoveEvent(event);
}

void QZPaintSplitView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        mouseUp(event->position());
    QSplitter::mouseReleaseEvent(event);
}

void QZPaintSplitView::keyPressEvent(QKeyEvent* event)
{
    if (activeView_ == nullptr && event->key() == Qt::Key_Escape && count() > 0)
        activeView_ = dynamic_cast<QZPaintManagerView*>(widget(0));
    if (activeView_ != nullptr)
        activeView_->paintLayer()->keyDown(*event);
    QSplitter::keyPressEvent(event);
}
