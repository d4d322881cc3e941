#include "support/widgets/TestPane.h"

#include "panels/QZPaintGraphConfigWC.h"
#include "platform/QZGlobalEnv.h"
#include "support/widgets/Gesture.h"
#include "surface/QZPaintActiveManager.h"

#include <QCoreApplication>
#include <QMetaEnum>
#include <QPixmap>

#include <span>

TestPane::TestPane(const Options& options)
{
    const QSize size(static_cast<int>(options.frame.width), static_cast<int>(options.frame.height));
    for (int i = 0; i < options.panes; ++i) {
        views_.push_back(new TestView(split_.get()));
        split_->addWidget(views_.back());
    }
    split_->resize(size.width(), size.height() * options.panes + split_->handleWidth() * (options.panes - 1));
    split_->show();
    QCoreApplication::processEvents();
    for (const auto& view : views_) {
        view->setValidateRect(view->layerFrame());
        view->testChart.rect = view->layerFrame();
    }
}

TestPane::~TestPane()
{
    QZPaintActiveManager::sharedManager().setCurrentActiveLayer(nullptr);
}

bool TestPane::isPaintEditing()
{
    return QZGlobalEnv::getShareInstance().globalContext(QZContextIsPaintEditing, QZContextIsPaintEditing).toBool();
}

TestPane& TestPane::click(QZPoint point, int index)
{
    Gesture(*this, index).click(point);
    return *this;
}

std::shared_ptr<QZPaintGraph> TestPane::draw(std::int64_t type, const std::vector<QZPoint>& points, int index)
{
    arm(type);
    const auto graph = current(index);
    for (const QZPoint point : points)
        click(point, index);
    return graph;
}

std::string TestPane::state()
{
    QStringList words;
    const auto say = [&words](bool holds, const QString& word) {
        if (holds)
            words.append(word);
    };
    for (int i = 0; i < static_cast<int>(views_.size()); ++i) {
        if (views_[static_cast<std::size_t>(i)] == nullptr)
            continue;
        const bool isChosen = split_ != nullptr && split_->activeView() == &view(i);
        const bool isServed = QZPaintActiveManager::sharedManager().currentActiveLayer().get() == &layer(i);
        const bool isActive = layer(i).isActive();
        const bool isAll = isChosen && isServed && isActive;
        say(isAll, QStringLiteral("active"));
        say(!isAll && isChosen, QStringLiteral("chosen"));
        say(!isAll && isActive, QStringLiteral("live"));
        say(!isAll && isServed, QStringLiteral("served"));
        say(layer(i).isMouseInside(), QStringLiteral("mouse"));
        const Qt::CursorShape cursor = view(i).cursor().shape();
        const QString cursorName = QLatin1String(QMetaEnum::fromType<Qt::CursorShape>().valueToKey(cursor));
        say(cursor != Qt::ArrowCursor, QString(cursorName).remove(QStringLiteral("Cursor")));
        auto graphs = *layer(i).graphs().snapshot();
        if (current(i) && !layer(i).graphs().contains(current(i).get()))
            graphs.push_back(current(i));
        for (const auto& graph : graphs) {
            words.append(strQZShapeType(graph->type()).remove(QStringLiteral("QZST")));
            const bool isPlacing = graph->isEditing();
            const int placed = isPlacing ? graph->currentPoint().value_or(0) : graph->maxPointCount();
            for (const QZPoint point : std::span(graph->points()).first(static_cast<std::size_t>(placed)))
                words.append(QStringLiteral("%1,%2").arg(point.x).arg(point.y));
            const bool isCurrent = graph == current(i);
            say(isPlacing, QStringLiteral("placing"));
            say(isCurrent && !isPlacing, QStringLiteral("current"));
            say(isCurrent != graph->isSelected() && !isPlacing,
                graph->isSelected() ? QStringLiteral("selected") : QStringLiteral("unselected"));
            say(graph->isHidden(), QStringLiteral("hidden"));
            say(graph->isDragging(), QStringLiteral("dragged"));
        }
        words.append(QStringLiteral("|"));
    }
    QZPaintGraphConfigWC& strip = QZPaintGraphConfigWC::sharedWC();
    say(strip.window().isVisible(), QStringLiteral("strip %1").arg(strip.enabledConfigs()));
    say(isPaintEditing(), QStringLiteral("painting"));
    return words.join(u' ').toStdString();
}

QImage TestPane::paint()
{
    return split_->grab().toImage();
}
