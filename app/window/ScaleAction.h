#pragma once

class ChartSplitView;
class QToolBar;

/// Adds the switch between the linear and the logarithmic scale of prices to a tool bar, which owns it. Its tooltip,
/// and on switching the status line, tell why prices that have no logarithms keep the linear scale.
void addScaleAction(QToolBar& bar, ChartSplitView& chart);
