#pragma once

#include <QImage>
#include <QPoint>
#include <QWidget>

#include <optional>

/// The grip at the left end of the graph configuration strip: dragging it moves the window it is in.
class QZPaintGraphConfigTitleView : public QWidget {
    Q_OBJECT
public:
    explicit QZPaintGraphConfigTitleView(QWidget* parent = nullptr);

    /// Takes the picture of the present theme.
    void loadImage();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    QImage image_;
    /// From the window's top left corner to the pointer, while the grip moves the window itself.
    std::optional<QPoint> grabOffset_;
};
