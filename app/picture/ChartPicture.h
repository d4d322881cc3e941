#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QString>

class ChartSplitView;
class QPagedPaintDevice;

/// Pictures of a chart as it stands on the screen, without crosshair and handles, in its theme. Every kind is painted
/// in the same way: in those made of vectors lines, dashes and texts stay such.
namespace ChartPicture {

/// `pixelRatio` is device pixels per px.
QImage image(const ChartSplitView& chart, double pixelRatio);
/// An SVG document.
QByteArray svg(const ChartSplitView& chart);
/// A PDF document of one page that is as large as the chart at 96 px per inch.
QByteArray pdf(const ChartSplitView& chart);
/// As large as the page allows, in its middle. False when the device cannot be painted on.
bool print(const ChartSplitView& chart, QPagedPaintDevice& printer);

/// Writes the picture of the kind that the suffix tells: .png, .svg or .pdf. Returns why that failed, null if it did
/// not; a file of that name stays as it was then.
QString write(const ChartSplitView& chart, const QString& path);
/// Why no picture can be written under this name, null if one can.
QString unusableName(const QString& path);

} // namespace ChartPicture
