#pragma once

#include "surface/QZPaintLayerHost.h"

/// The shared panels as every layer sees them. By itself it is the host of a pane that stands in no split view: its
/// figures show in the panels, which change nothing there and are hidden by nobody.
class QZPaintStripHost : public QZPaintLayerHost {
public:
    void showStrip(const QZPaintGraph& figure, unsigned configs, const QWidget& view) override;
    void setStripConfigs(unsigned configs) override;
    void showTextPanel(const QZPaintToolText& note, const QWidget& view) override;
    void hidePanels() override {}
    void hideIdlePanels() override {}
    bool takePanels() override { return false; }
    [[nodiscard]] std::int64_t armedType() const override;
    [[nodiscard]] bool isActivePane(const QZPaintManagerView& /*view*/) const override { return false; }
};
