#include "panels/QZPopUpButton.h"

#include "platform/QZGlobalEnv.h"
#include "platform/QZLog.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>

namespace {

constexpr QSize itemSize(46, 16);
constexpr double imageLeft = 10.0;
constexpr double imageWidth = 26.0;
constexpr double imageSide = 16.0;

constexpr int framesPerStrip = 2;
constexpr int scaleToHeight = 1;

constexpr double arrowHalfWidth = 2.5;
constexpr double arrowHeight = 3.0;
constexpr double arrowMargin = 4.0;

/// Starts at the item that is chosen, so that the arrow keys step on from there.
class PopUpMenu : public QMenu {
public:
    explicit PopUpMenu(QZPopUpButton& button) : QMenu(&button), button_(button) {}

protected:
    void showEvent(QShowEvent* event) override
    {
        QMenu::showEvent(event);
        setActiveAction(button_.itemWithTag(button_.selectedTag()));
    }

    void mousePressEvent(QMouseEvent* event) override
    {
        // A press on the button closes the menu; handed on to the button it would open it again.
        const QPoint location = button_.mapFromGlobal(event->globalPosition().toPoint());
        setAttribute(Qt::WA_NoMouseReplay, button_.rect().contains(location));
        QMenu::mousePressEvent(event);
    }

private:
    QZPopUpButton& button_;
};

void drawArrow(QPainter& painter, const QRectF& bounds, const QColor& color)
{
    const QPointF tip(bounds.right() - arrowMargin - arrowHalfWidth, bounds.center().y() + arrowHeight / 2.0);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, 1.2));
    painter.drawPolyline(
        QPolygonF{tip + QPointF(-arrowHalfWidth, -arrowHeight), tip, tip + QPointF(arrowHalfWidth, -arrowHeight)});
}

} // namespace

QZPopUpButtonMenuItem::QZPopUpButtonMenuItem(int tag, QMenu& menu) : QWidgetAction(&menu), menu_(menu), tag_(tag)
{
    setDefaultWidget(new QZPopUpButtonMenuItemView(*this));
    menu.addAction(this);
}

void QZPopUpButtonMenuItem::setCustomHighlight(bool customHighlight)
{
    customHighlight_ = customHighlight;
    defaultWidget()->update();
}

void QZPopUpButtonMenuItem::loadImages()
{
    const QImage strip = QZGlobalEnv::getShareInstance().paletteLoad().getCustomImage(highlightImageName_);
    image_ = QZPaletteLoad::getImageInGroupByScale(strip, framesPerStrip, 0, scaleToHeight, imageSide);
    highlightImage_ = QZPaletteLoad::getImageInGroupByScale(strip, framesPerStrip, 1, scaleToHeight, imageSide);
    defaultWidget()->update();
}

void QZPopUpButtonMenuItem::draw(QPainter& painter, const QRectF& rect, bool highlighted, const QColor& color) const
{
    painter.save();
    const QImage& picture = highlighted ? highlightImage_ : image_;
    if (!picture.isNull()) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(rect, picture);
    } else {
        QPen pen = samplePen_;
        pen.setColor(color);
        painter.setClipRect(rect);
        painter.setPen(pen);
        painter.drawLine(QPointF(rect.left(), rect.center().y()), QPointF(rect.right(), rect.center().y()));
    }
    painter.restore();
}

QZPopUpButtonMenuItemView::QZPopUpButtonMenuItemView(QZPopUpButtonMenuItem& item) : item_(item)
{
    setFixedSize(itemSize);
    setMouseTracking(true);
}

QRectF QZPopUpButtonMenuItemView::imageRectForBounds(const QRectF& bounds)
{
    return {bounds.left() + imageLeft, bounds.top(), imageWidth, imageSide};
}

void QZPopUpButtonMenuItemView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    const bool highlighted = item_.customHighlight();
    const QColor color = palette().color(highlighted ? QPalette::HighlightedText : QPalette::Text);
    painter.fillRect(rect(), highlighted ? palette().highlight() : palette().base());
    if (item_.menu().activeAction() == &item_) {
        if (!highlighted)
            painter.fillRect(rect(), palette().midlight());
        painter.setPen(highlighted ? color : palette().color(QPalette::Highlight));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
    item_.draw(painter, imageRectForBounds(rect()), highlighted, color);
}

void QZPopUpButtonMenuItemView::enterEvent(QEnterEvent* event)
{
    item_.menu().setActiveAction(&item_);
    QWidget::enterEvent(event);
}

void QZPopUpButtonMenuItemView::mousePressEvent(QMouseEvent* event)
{
    event->accept();
}

void QZPopUpButtonMenuItemView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    // The item under the pointer counts: the button may have been pressed on another one.
    const QPoint location = item_.menu().mapFromGlobal(event->globalPosition().toPoint());
    if (auto* view = qobject_cast<QZPopUpButtonMenuItemView*>(item_.menu().childAt(location)))
        view->pick();
}

void QZPopUpButtonMenuItemView::pick()
{
    item_.menu().close();
    item_.trigger();
}

QRectF QZPopUpButtonCell::imageRectForBounds(const QRectF& frame)
{
    return {frame.center() - QPointF(imageSide, imageSide) / 2.0, QSizeF(imageSide, imageSide)};
}

void QZPopUpButtonCell::drawImageWithFrame(QPainter& painter, const QRectF& frame, const QZPopUpButtonMenuItem* item,
                                           const QColor& color)
{
    if (item == nullptr)
        return;
    QRectF rect = imageRectForBounds(frame);
    rect.setLeft(rect.left() - (imageWidth - rect.width()) / 2.0);
    rect.setWidth(imageWidth);
    item->draw(painter, rect, false, color);
}

QZPopUpButton::QZPopUpButton(QWidget* parent) : QAbstractButton(parent), menu_(new PopUpMenu(*this))
{
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::TabFocus);
    // The menu, a window of its own, takes the button's colours.
    menu_->setAttribute(Qt::WA_WindowPropagation);
    connect(this, &QAbstractButton::clicked, this, &QZPopUpButton::openMenu);
    connect(menu_, &QMenu::aboutToHide, this, [this] { setDown(false); });
    connect(menu_, &QMenu::hovered, this, [this] {
        for (const QZPopUpButtonMenuItem* item : items_)
            item->defaultWidget()->update();
    });
}

void QZPopUpButton::openMenu()
{
    QPoint corner = mapToGlobal(rect().bottomLeft() + QPoint(0, 1));
    const int height = menu_->sizeHint().height();
    if (const QScreen* theScreen = screen(); corner.y() + height > theScreen->availableGeometry().bottom() + 1)
        corner.ry() -= rect().height() + height;
    setDown(true);
    menu_->popup(corner);
}

QSize QZPopUpButton::sizeHint() const
{
    return {52, 30};
}

QStringList QZPopUpButton::itemTags() const
{
    QStringList tags;
    for (const QZPopUpButtonMenuItem* item : items_)
        tags.append(QString::number(item->tag()));
    return tags;
}

void QZPopUpButton::setItemTags(const QStringList& tags)
{
    menu_->clear();
    items_.clear();
    selectedItem_ = nullptr;
    for (const QString& text : tags) {
        bool isNumber = false;
        const int tag = text.toInt(&isNumber);
        if (!isNumber || tag < 0) {
            writeBusCommonLog(QStringLiteral("Pop-up %1 has an item without a usable tag: %2").arg(objectName(), text));
            continue;
        }
        auto* item = new QZPopUpButtonMenuItem(tag, *menu_);
        connect(item, &QAction::triggered, this, [this, tag] {
            selectItemWithTag(tag);
            Q_EMIT itemPicked();
        });
        items_.push_back(item);
    }
}

QZPopUpButtonMenuItem* QZPopUpButton::itemWithTag(int tag) const
{
    for (QZPopUpButtonMenuItem* item : items_) {
        if (item->tag() == tag)
            return item;
    }
    return nullptr;
}

int QZPopUpButton::selectedTag() const
{
    return selectedItem_ == nullptr ? noTag : selectedItem_->tag();
}

void QZPopUpButton::selectItemWithTag(int tag)
{
    QZPopUpButtonMenuItem* item = itemWithTag(tag);
    if (item == selectedItem_)
        return;
    if (selectedItem_ != nullptr)
        selectedItem_->setCustomHighlight(false);
    selectedItem_ = item;
    if (item != nullptr)
        item->setCustomHighlight(true);
    setAccessibleDescription(item == nullptr ? QString() : item->text());
    update();
}

void QZPopUpButton::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    if (isDown()) {
        painter.fillRect(rect(), palette().mid());
    } else if (underMouse()) {
        painter.fillRect(rect(), palette().midlight());
    }
    const QColor color = palette().color(QPalette::ButtonText);
    QZPopUpButtonCell::drawImageWithFrame(painter, rect(), selectedItem_, color);
    drawArrow(painter, rect(), color);
    if (hasFocus()) {
        painter.setRenderHint(QPainter::Antialiasing, false);
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawRect(rect().adjusted(1, 1, -2, -2));
    }
}

void QZPopUpButton::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        openMenu();
    } else {
        event->ignore();
    }
}

void QZPopUpButton::keyPressEvent(QKeyEvent* event)
{
    static const QList<int> openers{Qt::Key_Space, Qt::Key_Select, Qt::Key_Return,
                                    Qt::Key_Enter, Qt::Key_Up,     Qt::Key_Down};
    if (openers.contains(event->key())) {
        openMenu();
    } else {
        QAbstractButton::keyPressEvent(event);
    }
}
