#include "app/picture/ChartPicture.h"

#include "app/chart/ChartSplitView.h"
#include "app/chart/CustomPlot.h"
#include "app/picture/SvgDevice.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFileInfo>
#include <QPageSize>
#include <QPdfWriter>
#include <QSaveFile>

#include <algorithm>
#include <array>

namespace {

constexpr int pixelsPerInch = 96;
constexpr double pointsPerPixel = 72.0 / pixelsPerInch;

QString translated(const char* text)
{
    return QCoreApplication::translate("ChartPicture", text);
}

/// In px of the chart.
void paint(QCPPainter& painter, const ChartSplitView& chart)
{
    painter.fillRect(chart.rect(), ChartTheme::current().background);
    for (const ChartPane* pane : chart.shownPanes()) {
        const QPoint corner = pane->mapTo(&chart, QPoint());
        painter.save();
        painter.translate(corner);
        pane->paintPicture(painter);
        painter.restore();
    }
}

void useVectors(QCPPainter& painter)
{
    painter.setModes(QCPPainter::pmVectorized | QCPPainter::pmNoCaching | QCPPainter::pmNonCosmetic);
}

QByteArray png(const ChartSplitView& chart)
{
    QByteArray content;
    QBuffer buffer(&content);
    buffer.open(QIODevice::WriteOnly);
    ChartPicture::image(chart, chart.devicePixelRatioF()).save(&buffer, "PNG");
    return content;
}

struct Kind {
    const char* suffix;
    QByteArray (*content)(const ChartSplitView& chart);
};

constexpr std::array kinds{Kind{"png", png}, Kind{"svg", ChartPicture::svg}, Kind{"pdf", ChartPicture::pdf}};

const Kind* kindOf(const QString& path)
{
    const QString suffix = QFileInfo(path).suffix();
    const auto isMeant = [&](const Kind& kind) {
        return suffix.compare(QLatin1String(kind.suffix), Qt::CaseInsensitive) == 0;
    };
    const auto kind = std::ranges::find_if(kinds, isMeant);
    return kind == kinds.end() ? nullptr : &*kind;
}

} // namespace

QImage ChartPicture::image(const ChartSplitView& chart, double pixelRatio)
{
    QImage image((QSizeF(chart.size()) * pixelRatio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(pixelRatio);
    QCPPainter painter(&image);
    if (painter.isActive())
        paint(painter, chart);
    return image;
}

QByteArray ChartPicture::svg(const ChartSplitView& chart)
{
    SvgDevice device(chart.size());
    QCPPainter painter(&device);
    useVectors(painter);
    paint(painter, chart);
    painter.end();
    return device.document();
}

QByteArray ChartPicture::pdf(const ChartSplitView& chart)
{
    QByteArray content;
    QBuffer buffer(&content);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(pixelsPerInch);
    writer.setPageSize(QPageSize(QSizeF(chart.size()) * pointsPerPixel, QPageSize::Point, {}, QPageSize::ExactMatch));
    writer.setPageMargins({});
    return print(chart, writer) ? content : QByteArray();
}

bool ChartPicture::print(const ChartSplitView& chart, QPagedPaintDevice& printer)
{
    QCPPainter painter(&printer);
    if (!painter.isActive())
        return false;
    useVectors(painter);
    const double scale = std::min(static_cast<double>(printer.width()) / chart.width(),
                                  static_cast<double>(printer.height()) / chart.height());
    painter.translate((printer.width() - scale * chart.width()) / 2, (printer.height() - scale * chart.height()) / 2);
    painter.scale(scale, scale);
    paint(painter, chart);
    return painter.end();
}

QString ChartPicture::unusableName(const QString& path)
{
    return kindOf(path) != nullptr ? QString()
                                   : translated("%1: the name of a picture ends in .png, .svg or .pdf").arg(path);
}

QString ChartPicture::write(const ChartSplitView& chart, const QString& path)
{
    const Kind* kind = kindOf(path);
    if (kind == nullptr)
        return unusableName(path);
    const QByteArray content = kind->content(chart);
    if (content.isEmpty())
        return translated("%1: the picture is too large").arg(path);
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.commit())
        return {};
    return QStringLiteral("%1: %2").arg(path, file.errorString());
}
