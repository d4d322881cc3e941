#pragma once

#include <QColor>
#include <QString>

#include <cstdint>

/// The style that a new figure takes and the magnet switch: what the user last chose. The panels keep it and install
/// themselves; before that, their initial values are answered.
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

    static const QZPaintDefaults& current();
    /// `defaults` is borrowed until replaced or destroyed; null restores the initial values.
    static void setCurrent(const QZPaintDefaults* defaults);
};
