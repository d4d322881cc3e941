#pragma once

#include <memory>

class QZPaintLayer;

/// Remembers the one layer of the application that is active, so that only one pane at a time has a selection.
class QZPaintActiveManager {
public:
    static QZPaintActiveManager& sharedManager();

    [[nodiscard]] const std::shared_ptr<QZPaintLayer>& currentActiveLayer() const { return currentLayer_; }
    /// Deselects and deactivates the layer before, then activates `layer`; null leaves none active.
    void setCurrentActiveLayer(const std::shared_ptr<QZPaintLayer>& layer);

private:
    std::shared_ptr<QZPaintLayer> currentLayer_;
};
