#include "surface/QZPaintManagerView.h"

#include "model/QZPlaneGeometry.h"
#include "platform/QZHostNotifications.h"
#include "surface/QZPaintLayer.h"
#include "surface/QZPaintOverlay.h"
#include "surface/QZPaintSplitView.h"
#include "surface/QZStoredGroup.h"
#include "tools/QZPaintRangeStatistics.h"

#include <QChildEvent>
#include <QResizeEvent>

QZPaintManagerView::QZPaintManagerView(QWidget* parent)
    : QWidget(parent), storedGroup_(std::make_unique<QZStoredGroup>())
{
    configView();
}

QZPaintManagerView::~QZPaintManagerView()
{
    configViewBeforeRelease();
}

void QZPaintManagerView::configView()
{
    openGraphDatabaseIfAbsent();
    setMouseTracking(true);
    paintLayer_ = QZPaintLayer::create(this);
    overlay_ = new QZPaintOverlay(*this);
    overlay_->setGeometry(rect());
    overlay_->show(); // also when the view is made inside a visible parent
    const int parentHeight = parentWidget() == nullptr ? height() : parentWidget()->height();
    setValidateRect({static_cast<double>(x()), static_cast<double>(parentHeight - y() - height()),
                     static_cast<double>(width()), static_cast<double>(height())});

    QZNotificationCenter& center = QZNotificationCenter::defaultCenter();
    observations_ = {
        center.observe(QZUIOverallStyleDidChangeNotification,
                       [this](const QZNotification&) { appSkinStyleHasChanged(); }),
        center.observe(QZLoginUserWillChangeNotification, [this](const QZNotification&) { loginUserWillChange(); }),
        center.observe(QZUserNameChangedNotification, [this](const QZNotification&) { loginUserDidChange(); }),
        center.observe(QZApplicationShouldTerminate, [this](const QZNotification&) { qzAppWillTerminate(); })};
}

void QZPaintManagerView::configViewBeforeRelease()
{
    if (QZPaintSplitView* split = splitView())
        split->viewWillLeave(*this);
    closeGraphDatabase();
    paintLayer_->setManagerView(nullptr);
    observations_ = {};
}

void QZPaintManagerView::removeFromSuperview()
{
    configViewBeforeRelease();
    setParent(nullptr);
}

QZPaintSplitView* QZPaintManagerView::splitView() const
{
    return qobject_cast<QZPaintSplitView*>(parentWidget());
}

QZPaintLayerHost& QZPaintManagerView::layerHost() const
{
    static QZPaintStripHost alone;
    QZPaintSplitView* split = splitView();
    return split == nullptr ? alone : *split;
}

bool QZPaintManagerView::isDragging() const
{
    return paintLayer_->currentGraph() && paintLayer_->currentGraph()->isDragging();
}

void QZPaintManagerView::displayPaintLayer()
{
    paintLayer_->setNeedsDisplay();
}

void QZPaintManagerView::drawGraphs(QPainter& painter) const
{
    paintLayer_->drawGraphs(painter);
}

void QZPaintManagerView::viewDidEndLiveResize()
{
    displayPaintLayer();
}

void QZPaintManagerView::appSkinStyleHasChanged()
{
    displayPaintLayer();
}

void QZPaintManagerView::qzAppWillTerminate() {}

void QZPaintManagerView::setValidateRect(QZRect rect)
{
    if (validateRect_ == rect)
        return;
    validateRect_ = rect;
    displayPaintLayer();
}

QZPoint QZPaintManagerView::convertToPrecisionPoint(QZPoint point) const
{
    return convertFromLogicAxis(convertFromPoint(point).value_or(QZPaintLogicAxis{}));
}

std::optional<QZPaintLogicAxis> QZPaintManagerView::convertFromPoint(QZPoint /*point*/) const
{
    return QZPaintLogicAxis{};
}

QZPoint QZPaintManagerView::convertFromLogicAxis(const QZPaintLogicAxis& /*axis*/) const
{
    return {};
}

bool QZPaintManagerView::canBeDraggedToLeft(QZPoint /*point*/) const
{
    return true;
}

bool QZPaintManagerView::canBeDraggedToRight(QZPoint /*point*/) const
{
    return true;
}

double QZPaintManagerView::convertXForMagnet(double x, bool /*canOverflow*/) const
{
    return x;
}

double QZPaintManagerView::getXPointWithLocation(float /*location*/, int /*gapCount*/) const
{
    return missingCoordinate;
}

bool QZPaintManagerView::calcRegressionData(QZRegressionCalcData& /*data*/) const
{
    return false;
}

bool QZPaintManagerView::calcBoxLineData(QZBoxLineCalcData& /*data*/) const
{
    return false;
}

std::optional<QZPaintRetangleModel> QZPaintManagerView::infomationForRetangle(QZPoint /*start*/, QZPoint /*endPoint*/,
                                                                              int /*deltaCount*/) const
{
    return QZPaintRetangleModel{.varyPrice = QStringLiteral("0.0"), .identify = QStringLiteral("Unknow")};
}

QZPoint QZPaintManagerView::convertPointForMagnet(QZPoint point, std::uint64_t /*style*/) const
{
    return point;
}

void QZPaintManagerView::displayRangeStatisticsGraphFromDate(std::int32_t startDate, std::int32_t startTime,
                                                             std::int32_t endDate, std::int32_t endTime)
{
    const auto& band = QZPaintRangeStatistics::sharedGraph();
    band->setLayer(paintLayer_);
    {
        const std::lock_guard lock(paintLayer_->graphs());
        paintLayer_->graphs().add(band);
    }
    band->place({startDate, startTime}, {endDate, endTime});
    displayPaintLayer();
}

void QZPaintManagerView::removeRangeStatisticsGraph()
{
    const auto& band = QZPaintRangeStatistics::sharedGraph();
    {
        const std::lock_guard lock(paintLayer_->graphs());
        paintLayer_->graphs().remove(band.get());
    }
    band->setSelected(false); // also of a band that another pane's press has dropped
    if (paintLayer_->currentGraph() == band)
        paintLayer_->setCurrentGraph(nullptr);
    band->mouseUp({}); // of a drag that it is taken away from
    band->setLayer(nullptr);
    displayPaintLayer();
}

QZRect QZPaintManagerView::layerFrame() const
{
    return {0.0, 0.0, static_cast<double>(width()), static_cast<double>(height())};
}

QRectF QZPaintManagerView::flippedValidateRect() const
{
    return {validateRect_.x, height() - validateRect_.maxY(), validateRect_.width, validateRect_.height};
}

void QZPaintManagerView::updateOverlay()
{
    overlay_->update();
}

void QZPaintManagerView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    overlay_->setGeometry(rect());
    viewDidEndLiveResize();
}

void QZPaintManagerView::childEvent(QChildEvent* event)
{
    QWidget::childEvent(event);
    if (!event->added() || overlay_ == nullptr || event->child() == overlay_)
        return;
    event->child()->installEventFilter(this);
    overlay_->raise();
}

// A host's widget that is raised stays below the figures.
bool QZPaintManagerView::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ZOrderChange && watched->parent() == this)
        overlay_->raise();
    return QWidget::eventFilter(watched, event);
}
