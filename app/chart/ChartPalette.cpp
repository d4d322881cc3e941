#include "app/chart/ChartPalette.h"

#include "panels/QZPaintControl.h"
#include "panels/QZPanelWindow.h"

#include <QAbstractButton>

#include <array>

namespace {

/// In the palette's order.
constexpr std::array digitTools{QZSTLineSegment,  QZSTRay,     QZSTStraight,
                                QZSTArrowSegment, QZSTHorizon, QZSTToolPriceLine};

} // namespace

void ChartPalette::toggle()
{
    QZPanelWindow& panel = QZPaintControl::sharedManager().window();
    if (isOpen()) {
        panel.close();
        return;
    }
    if (panel.chartWindow() == nullptr)
        panel.move(window_.mapToGlobal(QPoint(12, 72)));
    panel.addToWindowOf(window_);
}

bool ChartPalette::isOpen() const
{
    const QZPanelWindow& panel = QZPaintControl::sharedManager().window();
    return panel.isVisible() && panel.chartWindow() == &window_;
}

void ChartPalette::takeOver()
{
    QZPanelWindow& panel = QZPaintControl::sharedManager().window();
    if (panel.isVisible() && panel.chartWindow() != &window_)
        panel.addToWindowOf(window_);
}

QAbstractButton* ChartPalette::button(QZShapeType type)
{
    return QZPaintControl::sharedManager().window().findChild<QAbstractButton*>(strQZShapeType(type));
}

bool ChartPalette::pressKey(int key)
{
    const int index = key - Qt::Key_1;
    if (index < 0 || index >= static_cast<int>(digitTools.size()))
        return false;
    if (QAbstractButton* tool = button(digitTools[static_cast<std::size_t>(index)]))
        tool->click();
    return true;
}

void ChartPalette::follow(bool isLine, std::int64_t paneTypes)
{
    QZPaintControl& palette = QZPaintControl::sharedManager();
    // The pane's tools narrow the profile's, so a profile that is set already has to be taken afresh.
    palette.setControlKey(QString());
    palette.setControlKey(isLine ? QZPaintControlRealTimeKey : QZPaintControlCandlestickKey);
    const std::uint64_t chartTypes = palette.enableTypes();
    palette.setEnableTypes(chartTypes & static_cast<std::uint64_t>(paneTypes));

    const QString otherChart =
        isLine ? QObject::tr("%1 (not on a line chart)") : QObject::tr("%1 (only on a line chart)");
    for (auto* button : palette.window().findChildren<QAbstractButton*>()) {
        const auto type = static_cast<std::uint64_t>(enumQZShapeType(button->objectName()));
        const QString& name = button->accessibleName();
        if ((palette.enableTypes() & type) != 0)
            button->setToolTip(name);
        else
            button->setToolTip(
                ((chartTypes & type) == 0 ? otherChart : QObject::tr("%1 (not in this pane)")).arg(name));
    }
}
