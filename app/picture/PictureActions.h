#pragma once

class ChartSplitView;
class QMenu;

/// Adds to a menu what makes pictures of a chart: export to a file, print, copy. `chart` is borrowed and lives as long
/// as the menu.
void addPictureActions(QMenu& menu, const ChartSplitView& chart);
