#include "surface/QZPaintActiveManager.h"

#include "surface/QZPaintLayer.h"

#include <QCoreApplication>

QZPaintActiveManager& QZPaintActiveManager::sharedManager()
{
    static QZPaintActiveManager manager;
    // Figures hold fonts and images, which must go while the application is there.
    static const bool isTidied = [] {
        qAddPostRoutine([] { manager.currentLayer_.reset(); });
        return true;
    }();
    Q_UNUSED(isTidied);
    return manager;
}

void QZPaintActiveManager::setCurrentActiveLayer(const std::shared_ptr<QZPaintLayer>& layer)
{
    if (currentLayer_ == layer)
        return;
    if (const auto before = currentLayer_) {
        if (before->currentGraph())
            before->currentGraph()->setSelected(false);
        before->setActive(false);
    }
    currentLayer_ = layer;
    if (currentLayer_)
        currentLayer_->setActive(true);
}
