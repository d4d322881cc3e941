#pragma once

#include <QWidget>

class QZPaintManagerView;

/// Shows a manager view's paint layer above everything else in the view. The mouse does not see it.
class QZPaintOverlay final : public QWidget {
    Q_OBJECT
public:
    explicit QZPaintOverlay(QZPaintManagerView& view);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QZPaintManagerView& view_;
};
