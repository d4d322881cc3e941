#pragma once

#include <QAbstractButton>
#include <QImage>
#include <QMenu>
#include <QPen>
#include <QString>
#include <QStringList>
#include <QWidgetAction>

#include <vector>

/// A menu item that is a picture, with a second picture for the item that is chosen at present.
class QZPopUpButtonMenuItem : public QWidgetAction {
    Q_OBJECT
public:
    /// With a view of its own, as part of `menu`.
    QZPopUpButtonMenuItem(int tag, QMenu& menu);

    [[nodiscard]] int tag() const { return tag_; }
    [[nodiscard]] QMenu& menu() const { return menu_; }

    /// Marks the item that is chosen at present.
    [[nodiscard]] bool customHighlight() const { return customHighlight_; }
    void setCustomHighlight(bool customHighlight);

    /// Theme key of a strip of two pictures: plain and highlighted.
    [[nodiscard]] QString highlightImageName() const { return highlightImageName_; }
    void setHighlightImageName(const QString& name) { highlightImageName_ = name; }
    [[nodiscard]] QImage image() const { return image_; }
    [[nodiscard]] QImage highlightImage() const { return highlightImage_; }
    /// Cuts both pictures from the strip of the present theme.
    void loadImages();

    /// The line that is drawn when the theme has no picture; its colour does not matter.
    void setSamplePen(const QPen& pen) { samplePen_ = pen; }

    /// Draws one of the pictures into `rect`, or the sample line in `color` if there is no picture.
    void draw(QPainter& painter, const QRectF& rect, bool highlighted, const QColor& color) const;

private:
    QMenu& menu_;
    int tag_;
    bool customHighlight_ = false;
    QString highlightImageName_;
    QImage image_;
    QImage highlightImage_;
    QPen samplePen_;
};

/// Draws one item in the open menu. A mouse button released over it picks the item.
class QZPopUpButtonMenuItemView : public QWidget {
    Q_OBJECT
public:
    explicit QZPopUpButtonMenuItemView(QZPopUpButtonMenuItem& item);

    /// Where the picture goes, 26 x 16 px.
    [[nodiscard]] static QRectF imageRectForBounds(const QRectF& bounds);

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void pick();

    QZPopUpButtonMenuItem& item_;
};

/// Draws the face of a pop-up button.
class QZPopUpButtonCell {
public:
    /// A picture's place in the middle of `frame`, before it is widened.
    [[nodiscard]] static QRectF imageRectForBounds(const QRectF& frame);
    /// Draws the picture of `item` 26 px wide about the middle of its place; nothing without an item.
    static void drawImageWithFrame(QPainter& painter, const QRectF& frame, const QZPopUpButtonMenuItem* item,
                                   const QColor& color);
};

/// A button that opens a menu of pictures, of which one may be chosen. The space bar, Enter and the arrows open it too.
class QZPopUpButton : public QAbstractButton {
    Q_OBJECT
    /// Whole numbers, one item each, in their order; this is how an interface file lists the items.
    Q_PROPERTY(QStringList itemTags READ itemTags WRITE setItemTags)
public:
    static constexpr int noTag = -1;

    explicit QZPopUpButton(QWidget* parent = nullptr);

    [[nodiscard]] QMenu& menu() const { return *menu_; }
    /// Below the button, or above it where the screen ends. Returns at once.
    void openMenu();

    [[nodiscard]] QStringList itemTags() const;
    /// Replaces all items; none is chosen then. A text that is no number from 0 on is left out, with a line in the log.
    void setItemTags(const QStringList& tags);

    /// Owned by the menu.
    [[nodiscard]] const std::vector<QZPopUpButtonMenuItem*>& items() const { return items_; }
    /// Null when no item has this tag.
    [[nodiscard]] QZPopUpButtonMenuItem* itemWithTag(int tag) const;

    /// noTag when no item is chosen.
    [[nodiscard]] int selectedTag() const;
    /// Chooses the item, or none when no item has this tag. Emits nothing.
    void selectItemWithTag(int tag);

    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    /// The user picked an item, perhaps the one that was chosen already.
    void itemPicked();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QMenu* menu_; // child
    std::vector<QZPopUpButtonMenuItem*> items_;
    QZPopUpButtonMenuItem* selectedItem_ = nullptr;
};
