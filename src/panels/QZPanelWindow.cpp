#include "panels/QZPanelWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QMoveEvent>
#include <QPainter>
#include <QWindow>

#include <chrono>

namespace {

constexpr std::chrono::milliseconds secondReturn(200);

/// The edge of a panel that has no frame of its own: a white one would melt into a white chart.
class Outline final : public QWidget {
public:
    explicit Outline(QWidget& panel) : QWidget(&panel) { setAttribute(Qt::WA_TransparentForMouseEvents); }

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter(this);
        painter.setPen(QColor(128, 128, 128, 150));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
};

} // namespace

QZPanelWindow::QZPanelWindow(Qt::WindowFlags flags) : QWidget(nullptr, Qt::Tool | flags)
{
    if ((flags & Qt::FramelessWindowHint) != 0)
        outline_ = new Outline(*this);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_AlwaysShowToolTips);
    secondReturn_.setSingleShot(true);
    secondReturn_.setInterval(secondReturn);
    connect(&secondReturn_, &QTimer::timeout, this, [this] {
        if (QApplication::activeWindow() == this)
            returnUnlessChoosing();
    });
}

void QZPanelWindow::addToWindowOf(const QWidget& chart)
{
    attachTo(chart.window());
    if (!chartWindow_->isVisible()) {
        showsWithChart_ = true;
        return;
    }
    show();
    raise();
}

void QZPanelWindow::removeFromWindowOf(const QWidget& chart)
{
    if (chartWindow_ != chart.window())
        return;
    returnKeyboard();
    attachTo(nullptr);
}

void QZPanelWindow::attachTo(QWidget* window)
{
    if (chartWindow_ != window) {
        if (chartWindow_ != nullptr)
            chartWindow_->removeEventFilter(this);
        if (window != nullptr)
            window->installEventFilter(this);
        // A window manager stacks a window by what it was tied to when it was shown.
        if (window != nullptr && isVisible())
            hide();
        chartWindow_ = window;
        showsWithChart_ = false;
    }
    // Only native windows are tied to each other; asking for its id makes ours. A chart window may have got a new one.
    winId();
    windowHandle()->setTransientParent(window == nullptr ? nullptr : window->windowHandle());
    // Sees every click, those on disabled buttons too. A handle is watched once, however often this is done.
    windowHandle()->installEventFilter(this);
}

void QZPanelWindow::returnKeyboard()
{
    const QWidget* active = QApplication::activeWindow();
    const bool hasKeyboard = active == this || (active != nullptr && active->parentWidget() == this);
    if (!hasKeyboard)
        return;
    if (canBecomeKeyWindow() && active != this && isVisible())
        activateWindow();
    else if (chartWindow_ != nullptr && chartWindow_->isVisible())
        chartWindow_->activateWindow();
}

void QZPanelWindow::clicked()
{
    if (canBecomeKeyWindow())
        return;
    // Before the click takes effect, so that what it opens has the keyboard in the end.
    returnUnlessChoosing();
    // The window manager gives the clicked window the keyboard, at times only after it was asked to give it back.
    secondReturn_.start();
}

void QZPanelWindow::returnUnlessChoosing()
{
    if (QApplication::activePopupWidget() == nullptr)
        returnKeyboard();
}

void QZPanelWindow::closeEvent(QCloseEvent* event)
{
    Q_EMIT willClose();
    returnKeyboard();
    QWidget::closeEvent(event);
}

void QZPanelWindow::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (outline_ == nullptr)
        return;
    outline_->setGeometry(rect());
    outline_->raise();
}

void QZPanelWindow::keyPressEvent(QKeyEvent* event)
{
    QWidget* chart = chartWindow_ == nullptr ? nullptr : chartWindow_->focusWidget();
    if (chart != nullptr)
        QCoreApplication::sendEvent(chart, event);
    else
        QWidget::keyPressEvent(event);
}

bool QZPanelWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == windowHandle() && event->type() == QEvent::MouseButtonRelease)
        clicked();
    if (watched != chartWindow_)
        return QWidget::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::Move:
        if (isVisible()) {
            const auto& moved = static_cast<const QMoveEvent&>(*event);
            move(pos() + moved.pos() - moved.oldPos());
        }
        break;
    case QEvent::Resize:
        Q_EMIT chartResized();
        break;
    case QEvent::Hide:
        // Minimised, it comes back; closed or hidden by its owner, it is gone.
        if (isVisible() && event->spontaneous()) {
            showsWithChart_ = true;
            hide();
        } else if (isVisible()) {
            close();
        }
        break;
    case QEvent::Show:
        if (showsWithChart_) {
            showsWithChart_ = false;
            addToWindowOf(*chartWindow_);
        }
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}
