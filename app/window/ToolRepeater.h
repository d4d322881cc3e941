#pragma once

#include "model/QZDrawingTypes.h"
#include "platform/QZNotificationCenter.h"

#include <QObject>

class ChartSplitView;

/// Chooses a tool anew when its figure is finished, as long as it is switched on or Shift is held at the last point. A
/// text note is not repeated: its editor would close.
class ToolRepeater : public QObject {
    Q_OBJECT

public:
    /// `chart` is borrowed and outlives this.
    explicit ToolRepeater(ChartSplitView& chart);

    void setOn(bool on) { isOn_ = on; }

Q_SIGNALS:
    /// A figure is finished whose tool is to be chosen anew.
    void toolWanted();

private:
    void finished(const QZNotification& notification);

    ChartSplitView& chart_;
    bool isOn_ = false;
    QZShapeType creating_ = QZShapeTypeNone; ///< before the present press
    QZShapeType wanted_ = QZShapeTypeNone;   ///< to be chosen anew
    QZObservation observation_;
};
