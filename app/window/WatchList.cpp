#include "app/window/WatchList.h"

#include "app/bars/BarReader.h"
#include "app/bars/Quote.h"
#include "app/chart/AxisTicks.h"
#include "app/chart/ChartTheme.h"

#include <QFileInfo>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <array>

namespace {

enum Column { NameColumn, LastColumn, ChangeColumn, ColumnCount };
constexpr int pathRole = Qt::UserRole;
constexpr int percentRole = Qt::UserRole + 1;
/// Wide enough for a price of seven digits and a change of three (px).
constexpr std::array columnWidths{90, 75, 70};

QString percentText(double percent)
{
    return QString::asprintf("%+.2f%%", percent);
}

void color(QTreeWidgetItem& item, const ChartTheme& theme)
{
    const double percent = item.data(ChangeColumn, percentRole).toDouble();
    item.setForeground(ChangeColumn, percent > 0 ? theme.candleUp : percent < 0 ? theme.candleDown : theme.axisText);
}

} // namespace

WatchList::WatchList(QWidget* parent)
    : QDockWidget(tr("Watch list"), parent), filter_(new QLineEdit), list_(new QTreeWidget)
{
    setObjectName(QStringLiteral("watchList"));
    auto* content = new QWidget(this);
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(filter_);
    layout->addWidget(list_);
    setWidget(content);

    filter_->setPlaceholderText(tr("Find a stock (/)"));
    filter_->setAccessibleName(tr("Name of a stock"));
    filter_->setClearButtonEnabled(true);
    filter_->setFocusPolicy(Qt::ClickFocus);
    filter_->installEventFilter(this);
    connect(filter_, &QLineEdit::textChanged, this, &WatchList::filter);
    connect(filter_, &QLineEdit::returnPressed, this, &WatchList::pick);

    list_->setAccessibleName(tr("Stocks"));
    list_->setColumnCount(ColumnCount);
    list_->setHeaderLabels({tr("Stock"), tr("Last"), tr("Change")});
    for (int column = 0; column < ColumnCount; ++column)
        list_->setColumnWidth(column, columnWidths.at(static_cast<std::size_t>(column)));
    for (const int column : {LastColumn, ChangeColumn})
        list_->headerItem()->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    list_->header()->setStretchLastSection(false);
    list_->header()->setSectionResizeMode(NameColumn, QHeaderView::Stretch);
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setFocusPolicy(Qt::NoFocus);
    connect(list_, &QTreeWidget::itemClicked, this, &WatchList::choose);

    readers_.setMaxThreadCount(1); // the chart's own reading goes on beside it
    hide();
}

WatchList::~WatchList()
{
    readers_.clear();
    readers_.waitForDone();
}

void WatchList::setFiles(const QStringList& paths)
{
    readers_.clear();
    ++generation_;
    list_->clear();
    filter_->clear();
    for (const QString& path : paths) {
        auto* item = new QTreeWidgetItem(list_, {QFileInfo(path).completeBaseName()});
        item->setData(NameColumn, pathRole, path);
        item->setToolTip(NameColumn, path);
        for (const int column : {LastColumn, ChangeColumn})
            item->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
        readInBackground(path, list_->topLevelItemCount() - 1);
    }
    setVisible(paths.size() > 1);
}

void WatchList::readInBackground(const QString& path, int row)
{
    readers_.start([this, path, row, generation = generation_] {
        const BarReadResult bars = readBars(path);
        const auto quote = quoteOf(bars.series);
        const QString last = quote ? priceText(quote->last, bars.series.priceDecimals()) : QString();
        const auto tellIt = [this, row, generation, quote, last, reason = bars.error] {
            if (generation != generation_)
                return;
            if (quote)
                tell(row, last, quote->percent);
            else
                tellFailure(row, reason);
        };
        QMetaObject::invokeMethod(this, tellIt, Qt::QueuedConnection);
    });
}

void WatchList::tell(int row, const QString& last, double percent)
{
    QTreeWidgetItem* item = list_->topLevelItem(row);
    item->setText(LastColumn, last);
    item->setText(ChangeColumn, percentText(percent));
    item->setData(ChangeColumn, percentRole, percent);
    color(*item, ChartTheme::current());
}

void WatchList::tellFailure(int row, const QString& reason)
{
    QTreeWidgetItem* item = list_->topLevelItem(row);
    item->setText(LastColumn, QStringLiteral("–"));
    for (int column = 0; column < ColumnCount; ++column)
        item->setToolTip(column, reason);
    QFont font = list_->font();
    font.setItalic(true);
    item->setFont(NameColumn, font);
}

void WatchList::applyTheme()
{
    const ChartTheme theme = ChartTheme::current();
    for (int row = 0; row < list_->topLevelItemCount(); ++row)
        color(*list_->topLevelItem(row), theme);
}

void WatchList::setCurrentFile(const QString& path)
{
    list_->setCurrentItem(nullptr);
    for (int row = 0; row < list_->topLevelItemCount(); ++row) {
        if (list_->topLevelItem(row)->data(NameColumn, pathRole).toString() == path)
            list_->setCurrentItem(list_->topLevelItem(row));
    }
}

void WatchList::choose(QTreeWidgetItem* item)
{
    if (item != nullptr)
        Q_EMIT fileChosen(item->data(NameColumn, pathRole).toString());
}

void WatchList::step(int direction)
{
    QTreeWidgetItem* current = list_->currentItem();
    if (current == nullptr)
        choose(list_->topLevelItem(0));
    else
        choose(direction > 0 ? list_->itemBelow(current) : list_->itemAbove(current));
}

void WatchList::startFilter()
{
    show();
    filter_->setFocus(Qt::ShortcutFocusReason);
    filter_->selectAll();
}

void WatchList::filter(const QString& text)
{
    for (int row = 0; row < list_->topLevelItemCount(); ++row) {
        QTreeWidgetItem* item = list_->topLevelItem(row);
        item->setHidden(!item->text(NameColumn).contains(text.trimmed(), Qt::CaseInsensitive));
    }
}

void WatchList::pick()
{
    const QString text = filter_->text().trimmed();
    const auto named = list_->findItems(text, Qt::MatchStartsWith);
    const auto holding = list_->findItems(text, Qt::MatchContains);
    QTreeWidgetItem* found = !named.isEmpty() ? named.front() : holding.value(0);
    if (text.isEmpty() || found == nullptr)
        return;
    leaveFilter();
    choose(found);
}

void WatchList::leaveFilter()
{
    filter_->clear();
    Q_EMIT filterLeft();
}

bool WatchList::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == filter_ && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        leaveFilter();
        return true;
    }
    return QDockWidget::eventFilter(watched, event);
}
