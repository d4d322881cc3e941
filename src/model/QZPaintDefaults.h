#pragma once

#include <QColor>
#include <QString>

#include <cstdint>

/// The style that a new figure takes and the magnet switch: what the user last chose. The panels keep it; before there
/// are any, their initial values are answered. A host may answer in their place.
class QZPaintDefaults {
public:
    QZPaintDefaults() = default;
    QZPaintDefaults(const QZPaintDefaults&) = delete;
    QZPaintDefaults& operator=(const QZPaintDefaults&) = delete;
    virtual ~QZPaintDefaults();

    [[nodiscard]] virtual std::uint64_t lineType() const;
    /// px; figures keep the whole part.
    [[nodiscard]] virtual double lineWidth() const;
    [[nodiscard]] virtual QColor strokeColor() const;
    /// An invalid colour when none was chosen; a figure then fills with its stroke colour.
    [[nodiscard]] virtual QColor fillColor() const;
    [[nodiscard]] virtual QString text() const;
    /// Size of a figure's text (px).
    [[nodiscard]] virtual double textSize() const;
    [[nodiscard]] virtual bool isMagnet() const;

    /// The host's, else the panels', else the initial values.
    [[nodiscard]] static const QZPaintDefaults& current();
    /// The host's own, borrowed until replaced or destroyed; null for none.
    static void setCurrent(const QZPaintDefaults* defaults);
    /// The panels', which set themselves; borrowed likewise.
    static void setPanels(const QZPaintDefaults* defaults);
};
