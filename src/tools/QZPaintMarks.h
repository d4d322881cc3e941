#pragma once

#include "model/QZPaintGraph.h"

/// A mark on a bar: an arrow up where a trader bought or a rise began, an arrow down where it ended. One class for
/// both; the glyph decides the type.
class QZPaintToolUp : public QZPaintGraph {
public:
    static constexpr char16_t upGlyph[] = u"\u2B06\uFE0E";
    static constexpr char16_t downGlyph[] = u"\u2B07\uFE0E";

    QZPaintToolUp() : QZPaintGraph(QZSTToolUp, 1) {}

    [[nodiscard]] std::int64_t type() const override { return markType_; }
    /// The glyph, null when none was set; the up glyph is drawn then.
    [[nodiscard]] QString string() const { return string_; }
    /// Another glyph than the two leaves the type as it is.
    void setString(const QString& string);
    /// The box of the glyph (px): centred on the key point in x, standing on it in y.
    [[nodiscard]] QZRect textRect() const;

    [[nodiscard]] std::uint64_t lineType() const override { return 0; }
    [[nodiscard]] unsigned editingConfigs() const override { return QZGraphConfig::strokeColor; }
    void drawInContext(QZGraphicsContext& context) override;
    /// 0 inside the box, maxMinDistance elsewhere.
    double minDistanceFromPoint(QZPoint point) override;

protected:
    [[nodiscard]] bool snapsToMagnet() const override { return false; }

private:
    [[nodiscard]] QString glyph() const;

    std::int64_t markType_ = QZSTToolUp;
    QString string_;
};

/// A note on the chart. Placing it opens the panel in which its text is written.
class QZPaintToolText : public QZPaintGraph {
public:
    QZPaintToolText();

    /// The box of the text (px): begins at the key point in x, centred on it in y.
    [[nodiscard]] QZRect textBorderRect() const;
    /// Where the panel's own top left corner belongs.
    [[nodiscard]] QZPoint topLeftLocation() const;

    [[nodiscard]] std::uint64_t lineType() const override { return 0; }
    [[nodiscard]] unsigned editingConfigs() const override { return QZGraphConfig::editText; }
    void mouseDown(QZPoint point) override;
    void drawInContext(QZGraphicsContext& context) override;
    /// 0 inside the box, maxMinDistance elsewhere.
    double minDistanceFromPoint(QZPoint point) override;

protected:
    [[nodiscard]] bool snapsToMagnet() const override { return false; }
};
