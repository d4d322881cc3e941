// Linked to an example, which knows nothing of it, plays its user:
//     EXAMPLE draw FOLDER    draws a segment and writes what it looks like to FOLDER/picture.png
//     EXAMPLE find FOLDER    finds the segment in the next run, and deletes it
// FOLDER takes the place of the user's own, where the figures lie.

#include "panels/QZPaintControl.h"
#include "platform/QZFrameComFun.h"
#include "platform/QZGlobalEnv.h"
#include "surface/QZPaintLayer.h"
#include "surface/QZPaintSplitView.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QPainter>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace {

void require(bool isTrue, const char* what)
{
    if (isTrue)
        return;
    qCritical("not so: %s", what);
    std::exit(EXIT_FAILURE); // NOLINT(concurrency-mt-unsafe): nothing else runs
}

QZPaintSplitView& shownSplitView()
{
    for (QWidget* window : QApplication::topLevelWidgets()) {
        auto* split = qobject_cast<QZPaintSplitView*>(window);
        if (split != nullptr && QTest::qWaitForWindowExposed(split))
            return *split;
    }
    require(false, "a window of panes is shown");
    std::abort();
}

class User {
public:
    User() : split_(shownSplitView()), pane_(*split_.managerViews().at(0)), plot_(pane_.validateRect()) {}

    void draw(const QString& picture)
    {
        requireIcons();
        requirePlot();
        const QImage before = pane_.grab().toImage();
        QTest::mouseClick(button(QStringLiteral("QZSTLineSegment")), Qt::LeftButton);
        click(start());
        click(end());
        const auto axes = figure().logicAxises();
        require(axes[1].price > axes[0].price, "prices rise upwards");
        require(time(axes[1]) > time(axes[0]), "time runs to the right");
        require(time(axes[1]) > time(*pane_.convertFromPoint({end().x - 40.0, end().y})),
                "time goes on after the bars");
        requireChangeFromStartToEnd(before);
        move(figure().points()[0]);
        require(pane_.cursor().shape() == Qt::CrossCursor, "the mouse is followed over a handle");
        require(button(QStringLiteral("QZSTToolMagnet")) != nullptr, "the magnet can be had");
        requireMagnet();
        requireScroll();
        requireTheme(picture);
    }

    void findAndDelete()
    {
        const QImage before = pane_.grab().toImage();
        click({(start().x + end().x) / 2.0, (start().y + end().y) / 2.0});
        require(pane_.paintLayer()->currentGraph().get() == &figure(), "the segment is selected by a click on it");
        QTest::keyClick(&split_, Qt::Key_Delete);
        require(pane_.paintLayer()->graphs().count() == 0, "Delete removes the segment");
        requireChangeFromStartToEnd(before);
    }

private:
    static constexpr double tolerance = 9.0; // px: a bar or the half of a handle

    // The second point is higher, later, and beyond the last bar.
    [[nodiscard]] QZPoint start() const { return at(0.3, 0.25); }
    [[nodiscard]] QZPoint end() const { return at(0.95, 0.75); }
    [[nodiscard]] QZPoint at(double x, double y) const
    {
        return {std::round(plot_.x + x * plot_.width), std::round(plot_.y + y * plot_.height)};
    }
    static std::pair<int, int> time(const QZPaintLogicAxis& axis) { return {axis.date, axis.time}; }

    [[nodiscard]] const QZPaintGraph& figure() const
    {
        require(pane_.paintLayer()->graphs().count() == 1, "there is one figure");
        return *pane_.paintLayer()->graphs().snapshot()->front();
    }

    static QWidget& palette() { return QZPaintControl::sharedManager().window(); }
    static QZPaintControlButton* button(const QString& identifier)
    {
        auto* found = palette().findChild<QZPaintControlButton*>(identifier);
        require(found != nullptr && found->isVisible() && found->isEnabled(), qPrintable(identifier));
        return found;
    }

    [[nodiscard]] QPoint inWindow(QZPoint point) const
    {
        return pane_.mapTo(&split_, QPoint(qRound(point.x), pane_.height() - qRound(point.y)));
    }
    void move(QZPoint point) { QTest::mouseMove(split_.windowHandle(), inWindow(point)); }
    void click(QZPoint point)
    {
        move(point);
        QTest::mouseClick(split_.windowHandle(), Qt::LeftButton, {}, inWindow(point));
    }

    /// Every example's prices run from 80 to 128.
    void requirePlot()
    {
        const auto isAt = [this](double y, double price) {
            return std::abs(pane_.convertFromPoint({plot_.x, y})->price - price) < 0.2;
        };
        require(isAt(plot_.minY(), 80.0) && isAt(plot_.maxY(), 128.0), "the figures' area is the plot");
    }

    static void requireIcons()
    {
        const auto buttons = palette().findChildren<QZPaintControlButton*>();
        require(buttons.size() > 40, "the palette has its buttons");
        for (const QZPaintControlButton* each : buttons) {
            const QImage icon = each->image().convertToFormat(QImage::Format_Alpha8);
            require(
                std::any_of(icon.constBits(), icon.constBits() + icon.sizeInBytes(), [](uchar a) { return a > 127; }),
                "every button shows its picture");
        }
    }

    /// Between the picture and what is shown now there is only a line from start to end.
    void requireChangeFromStartToEnd(const QImage& before)
    {
        const QImage now = pane_.grab().toImage();
        QRect changed;
        for (int y = 0; y < now.height(); ++y) {
            for (int x = 0; x < now.width(); ++x) {
                if (now.pixel(x, y) != before.pixel(x, y))
                    changed |= QRect(x, y, 1, 1);
            }
        }
        const auto isNear = [](double a, double b) { return std::abs(a - b) < tolerance; };
        require(isNear(changed.left(), start().x) && isNear(changed.right(), end().x), "the line is as wide as drawn");
        require(isNear(pane_.height() - changed.bottom(), start().y) && isNear(pane_.height() - changed.top(), end().y),
                "the line is as high as drawn");
    }

    void requireMagnet()
    {
        for (const double x : {0.2, 0.4, 0.6}) {
            const QZPoint snapped = pane_.convertPointForMagnet(at(x, 0.5), 0);
            require(snapped != pane_.convertToPrecisionPoint(at(x, 0.5)), "the magnet goes to the bar's prices");
            require(std::abs(pane_.convertPointForMagnet(snapped, 0).y - snapped.y) < 0.5, "and stays there");
        }
    }

    void requireScroll()
    {
        const QZPoint before = figure().points()[0];
        const QPointF place = pane_.rect().center();
        QWheelEvent wheel(place, pane_.mapToGlobal(place), {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&pane_, &wheel);
        pane_.grab();
        require(figure().points()[0].x > before.x + 1.0, "the segment goes along when the chart scrolls back");
    }

    void requireTheme(const QString& picture)
    {
        const auto lightness = [this] {
            const QImage all = pane_.grab().toImage().scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
            return all.pixelColor(0, 0).lightness();
        };
        const int light = lightness();
        QImage both(split_.width() + palette().width(), split_.height(), QImage::Format_RGB32);
        both.fill(Qt::gray);
        QPainter painter(&both);
        painter.drawPixmap(0, 0, split_.grab());
        painter.drawPixmap(split_.width(), 0, palette().grab());
        require(both.save(picture), "the picture is written");
        require(QZGlobalEnv::getShareInstance().setTheme(QStringLiteral("dark")), "there is a dark theme");
        require(light > 200 && lightness() < 80, "the chart follows the theme");
    }

    QZPaintSplitView& split_;
    QZPaintManagerView& pane_;
    QZRect plot_;
};

void drive()
{
    const QStringList arguments = QApplication::arguments();
    const bool draws = arguments.value(1) == u"draw";
    const QDir folder(arguments.value(2));
    require(arguments.size() == 3 && (draws || arguments[1] == u"find"), "called with draw or find, and a folder");
    require(folder.mkpath(QStringLiteral(".")), "the folder can be made");
    QZFrameComFun::setRootFolder(folder.path());
    if (draws)
        QFile::remove(QZFrameComFun::getUserAccountFilePath(databaseFileName, false));
    auto* started = new QTimer(qApp);
    started->setSingleShot(true);
    QObject::connect(started, &QTimer::timeout, started, [draws, folder] {
        if (draws)
            User().draw(folder.filePath(QStringLiteral("picture.png")));
        else
            User().findAndDelete();
        QApplication::quit();
    });
    started->start(0);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(drive)
