#pragma once

#include <cstdint>

class QWidget;
class QZPaintGraph;
class QZPaintManagerView;
class QZPaintToolText;

/// What a paint layer asks of the surroundings of its pane: the panels, and which pane the user works in.
class QZPaintLayerHost {
public:
    QZPaintLayerHost() = default;
    QZPaintLayerHost(const QZPaintLayerHost&) = delete;
    QZPaintLayerHost& operator=(const QZPaintLayerHost&) = delete;
    virtual ~QZPaintLayerHost() = default;

    /// Gives the strip the style of `figure` and the controls `configs` (see QZPaintGraph::editingConfigs), and shows
    /// it above the window of `view`.
    virtual void showStrip(const QZPaintGraph& figure, unsigned configs, const QWidget& view) = 0;
    virtual void setStripConfigs(unsigned configs) = 0;
    /// Opens the text editor with the values of `note`, its top left corner on the note's, which lies in `view`.
    virtual void showTextPanel(const QZPaintToolText& note, const QWidget& view) = 0;
    /// Hides the strip and the text editor.
    virtual void hidePanels() = 0;
    /// The same unless a figure that the strip can show is current in one of these panes.
    virtual void hideIdlePanels() = 0;
    /// Makes the panels serve these panes. False for a pane that stands alone, which they show but cannot change.
    virtual bool takePanels() = 0;
    /// The palette's chosen tool, 0 for none.
    [[nodiscard]] virtual std::int64_t armedType() const = 0;
    /// Whether the last left press chose `view`.
    [[nodiscard]] virtual bool isActivePane(const QZPaintManagerView& view) const = 0;
};
