#include "support/widgets/TestPane.h"

#include "platform/QZGlobalEnv.h"
#include "support/widgets/Gesture.h"
#include "surface/QZPaintActiveManager.h"

#include <QCoreApplication>
#include <QPixmap>

TestPane::TestPane(const Options& options)
{
    const QSize size(static_cast<int>(options.frame.width), static_cast<int>(options.frame.height));
    for (int i = 0; i < options.panes; ++i) {
        views_.push_back(new TestView(split_.get()));
        split_->addWidget(views_.back());
    }
    split_->resize(size.width(), size.height() * options.panes + split_->handleWidth() * (options.panes - 1));
    split_->show();
    QCoreApplication::processEvents();
    for (TestView* view : views_) {
        view->setValidateRect(view->layerFrame());
        view->testChart.rect = view->layerFrame();
    }
}

TestPane::~TestPane()
{
    QZPaintActiveManager::sharedManager().setCurrentActiveLayer(nullptr);
}

bool TestPane::isPaintEditing()
{
    return QZGlobalEnv::getShareInstance().globalContext(QZContextIsPaintEditing, QZContextIsPaintEditing).toBool();
}

void TestPane::click(QZPoint point, int index)
{
    Gesture(*this, index).click(point);
}

std::shared_ptr<QZPaintGraph> TestPane::draw(std::int64_t type, const std::vector<QZPoint>& points, int index)
{
    arm(type);
    const auto graph = current(index);
    for (const QZPoint point : points)
        click(point, index);
    return graph;
}

QImage TestPane::paint()
{
    return split_->grab().toImage();
}
