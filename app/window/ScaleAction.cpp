#include "app/window/ScaleAction.h"

#include "app/chart/ChartSplitView.h"
#include "app/window/Preferences.h"

#include <QAction>
#include <QMainWindow>
#include <QStatusBar>
#include <QToolBar>

void addScaleAction(QToolBar& bar, ChartSplitView& chart)
{
    constexpr int messageTime = 6000; // ms
    QAction* action = bar.addAction(QObject::tr("Log"));
    action->setCheckable(true);
    const auto follow = [action, &chart] {
        action->setChecked(chart.isLogarithmic());
        const QString tip = QObject::tr("Logarithmic scale of prices (L)");
        const QString why = QObject::tr("The scale stays linear: prices of zero or below have no logarithm");
        const bool isRefused = chart.isLogarithmic() && !chart.hasLogarithms();
        action->setToolTip(isRefused ? tip + QStringLiteral("\n") + why : tip);
        auto* window = qobject_cast<QMainWindow*>(chart.window());
        if (isRefused && window != nullptr && window->isVisible())
            window->statusBar()->showMessage(why, messageTime);
    };
    QObject::connect(action, &QAction::toggled, &chart, &ChartSplitView::setLogarithmic);
    QObject::connect(&chart, &ChartSplitView::scaleChanged, action, follow);
    follow();
    Preferences::follow(*action, Preferences::logarithmic);
}
