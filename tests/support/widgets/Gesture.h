#pragma once

#include "support/widgets/TestPane.h"

#include <QTest>

/// What a user does over one pane, as events of its window: whole layer points of that pane (px, y upwards). A move to
/// where the mouse is already is no event.
class Gesture {
public:
    explicit Gesture(TestPane& pane, int index = 0, Qt::MouseButton button = Qt::LeftButton)
        : pane_(pane), split_(pane.split()), view_(pane.view(index)), window_(split_.windowHandle()), button_(button)
    {}

    Gesture& press(QZPoint p) { return QTest::mousePress(window_, button_, {}, at(p)), *this; }
    Gesture& release(QZPoint p) { return QTest::mouseRelease(window_, button_, {}, at(p)), *this; }
    /// Without a button, or with it after press().
    Gesture& move(QZPoint p) { return QTest::mouseMove(window_, at(p)), *this; }
    Gesture& click(QZPoint p) { return move(p).press(p).release(p); }
    /// Makes the next press follow the last click at once; others come later than a double click could.
    Gesture& soon() { return QTest::lastMouseTimestamp -= QTest::mouseDoubleClickInterval, *this; }
    /// In two steps, the first of 1 px.
    Gesture& drag(QZPoint from, QZPoint to) { return press(from).move({from.x + 1.0, from.y}).move(to).release(to); }
    Gesture& key(Qt::Key key) { return QTest::keyClick(&split_, key), *this; }

    std::string state() { return pane_.state(); }

private:
    [[nodiscard]] QPoint at(QZPoint p) const
    {
        return view_.mapTo(&split_, QPoint(qRound(p.x), view_.height() - qRound(p.y)));
    }

    TestPane& pane_;
    QZPaintSplitView& split_;
    TestView& view_;
    QWindow* window_;
    Qt::MouseButton button_;
};
