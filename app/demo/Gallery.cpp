#include "app/demo/Gallery.h"

#include "app/bars/BarReader.h"
#include "app/bars/SampleBars.h"
#include "app/chart/ChartPalette.h"
#include "app/demo/GallerySheet.h"
#include "app/demo/UserInput.h"
#include "app/picture/ChartPicture.h"
#include "panels/QZPaintControl.h"
#include "panels/QZPaintTextConfigWC.h"
#include "surface/QZPaintLayer.h"

#include <QAbstractButton>
#include <QDir>
#include <QFile>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

/// Stands out between red and green candles.
constexpr QColor lineColor(28, 84, 208);

/// Highs and lows in turn: of several highs without a low between them the highest, of lows the lowest.
std::vector<Swing> alternating(const std::vector<Swing>& swings)
{
    std::vector<Swing> turns;
    for (const Swing& swing : swings) {
        if (turns.empty() || turns.back().isHigh != swing.isHigh)
            turns.push_back(swing);
        else if ((swing.price > turns.back().price) == swing.isHigh)
            turns.back() = swing;
    }
    return turns;
}

} // namespace

Gallery::Gallery(QSize pictureSize) : pane_(*chart_.panes().front())
{
    // The bars of the figures alone: what they mean is about price.
    for (ChartPane* pane : chart_.panes())
        pane->setVisible(pane == &pane_);
    pane_.setDateAxisVisible(true);
    pane_.setLegendVisible(false);
    chart_.setAveragesVisible(false);
    chart_.setChartData(std::make_shared<const ChartData>(readBars(dailySamplePath()).series));
    chart_.setEnablePaintControl(true);
    chart_.setSupportPaint(true);
    chart_.resize(pictureSize);
    chart_.show();
    UserInput::settle();
    ChartPalette::follow(false, pane_.enableTypes());
}

QString Gallery::nameOf(const GalleryFigure& figure)
{
    const QAbstractButton* button = ChartPalette::button(figure.type);
    return button == nullptr ? QObject::tr("Range statistics") : button->accessibleName();
}

void Gallery::show(const GalleryFigure& figure)
{
    const auto [first, last, reach] = figure.scene;
    ChartViewport& viewport = chart_.viewport();
    viewport.zoom((last - first) / viewport.span(), first);
    viewport.scrollBy(first - viewport.first());
    turns_ = alternating(findSwings(pane_.chartData()->series, first, last, reach));
}

QPointF Gallery::positionOf(const GallerySpot& spot) const
{
    const Swing& turn = turns_.at(static_cast<std::size_t>(spot.turn));
    const PaneScale& scale = pane_.scale();
    const double price = turn.price + spot.percent / 100 * (scale.high - scale.low);
    const QZPoint point{scale.xOf(turn.bar + spot.bars), scale.yOf(price)};
    return pane_.mapTo(&chart_, QPointF(point.x, pane_.height() - point.y));
}

void Gallery::draw(const GalleryFigure& figure)
{
    UserInput user(chart_);
    if (QAbstractButton* button = ChartPalette::button(figure.type))
        button->click();
    for (const GallerySpot& spot : figure.spots) {
        user.moveTo(positionOf(spot));
        // The ruler's second click would begin the next measurement.
        if (figure.type != QZSTToolRule || &spot != &figure.spots.back())
            user.click(positionOf(spot));
    }
    if (figure.type == QZSTToolText)
        writeNote();
    // As in the strip; marks have colours of their own.
    const auto graphs = pane_.paintLayer()->graphs().snapshot();
    for (const auto& graph : *graphs) {
        if (figure.type != QZSTToolUp && figure.type != QZSTToolDown)
            graph->setStrokeColor(lineColor);
        graph->setLineWidth(static_cast<std::uint64_t>(figure.lineWidth));
    }
}

void Gallery::writeNote()
{
    QZPaintTextConfigWC& editor = QZPaintTextConfigWC::sharedWC();
    editor.window().findChild<QZPaintTextField*>()->setPlainText(QObject::tr("Last buyers:\nno volume"));
    editor.editedText();
}

void Gallery::showBand(const GalleryFigure& figure)
{
    const BarSeries& series = pane_.chartData()->series;
    const auto momentOf = [&](const GallerySpot& spot) {
        return series.timeAt(turns_.at(static_cast<std::size_t>(spot.turn)).bar + spot.bars);
    };
    const BarTime first = momentOf(figure.spots.front());
    const BarTime last = momentOf(figure.spots.back());
    pane_.displayRangeStatisticsGraphFromDate(first.date, first.time, last.date, last.time);
}

void Gallery::clear()
{
    QZPaintControl::sharedManager().resetAllButtons(false);
    pane_.removeRangeStatisticsGraph();
    const auto layer = pane_.paintLayer();
    layer->cancelCurrentGraph();
    const auto graphs = layer->graphs().snapshot();
    for (const auto& graph : *graphs)
        layer->removeGraph(*graph);
}

QImage Gallery::bareChart(const GalleryFigure& figure)
{
    clear();
    show(figure);
    return ChartPicture::image(chart_, 1);
}

QImage Gallery::picture(const GalleryFigure& figure)
{
    clear();
    show(figure);
    if (figure.type == QZSTToolRangeStatistics)
        showBand(figure);
    else
        draw(figure);
    QImage image = ChartPicture::image(chart_, 1);
    // The ruler is never finished, and so no part of a picture.
    if (figure.type == QZSTToolRule)
        QPainter(&image).drawImage(pane_.pos(), pane_.paintLayer()->contents(pane_.size(), 1));
    else if (pane_.paintLayer()->graphs().count() == 0)
        image = {};
    clear();
    return image;
}

QString Gallery::write(const QString& folder, const std::function<void(const QString&)>& progress)
{
    const QDir dir(folder);
    if (!dir.mkpath(QStringLiteral(".")))
        return QStringLiteral("%1: cannot create the folder").arg(folder);
    std::vector<GalleryPicture> pictures;
    QString page = QStringLiteral("# The tools\n\nDrawn by `./run --gallery` on the sample bars.\n");
    const auto save = [&](const QImage& image, const QString& name) {
        progress(name);
        return withFewColors(image).save(dir.filePath(name));
    };
    for (const GalleryFigure& figure : galleryFigures()) {
        const QString file = strQZShapeType(figure.type) + QStringLiteral(".png");
        pictures.push_back({nameOf(figure), picture(figure)});
        if (pictures.back().image.isNull())
            return QStringLiteral("%1: the gestures drew nothing").arg(file);
        if (!save(pictures.back().image, file))
            return QStringLiteral("%1: cannot be written").arg(dir.filePath(file));
        page += QStringLiteral("\n## %1\n\n![%1](%2)\n").arg(pictures.back().name, file);
    }
    QFile index(dir.filePath(QStringLiteral("README.md")));
    if (!save(gallerySheet(pictures), QStringLiteral("sheet.png")) || !index.open(QIODevice::WriteOnly) ||
        index.write(page.toUtf8()) < 0)
        return QStringLiteral("%1: the sheet and its page cannot be written").arg(folder);
    return {};
}
