#pragma once

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QPainter>
#include <QWidget>

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <vector>

/// What widgets look like, one below the other, to compare with a picture that somebody has looked at.
class Picture {
public:
    void add(QWidget& widget) { parts_.push_back(widget.grab().toImage()); }

    /// Whether it is like the file of that name in the tests' folder; rounding aside. If not, the folder for temporary
    /// files has what it looks like: look at it, and if it is better, replace the file.
    [[nodiscard]] ::testing::AssertionResult isLike(const QString& file) const
    {
        const QImage shown = image();
        const QImage wanted = QImage(QStringLiteral(QT_TESTCASE_SOURCEDIR "/") + file).convertToFormat(shown.format());
        const QString seen = QDir::temp().filePath(QString(file).replace(u'/', u'-'));
        if (wanted.size() == shown.size() && farthest(shown, wanted) <= rounding)
            return ::testing::AssertionSuccess();
        shown.save(seen);
        return ::testing::AssertionFailure() << "not like " << file.toStdString() << ", see " << seen.toStdString();
    }

    /// The largest difference of a channel, of 255.
    static int farthest(const QImage& a, const QImage& b)
    {
        int most = 0;
        for (int y = 0; y < a.height(); ++y) {
            for (int at = 0; at < a.width() * 4; ++at)
                most = std::max(most, std::abs(a.constScanLine(y)[at] - b.constScanLine(y)[at]));
        }
        return most;
    }

private:
    static constexpr int rounding = 12; // of 255

    [[nodiscard]] QImage image() const
    {
        QSize size;
        for (const QImage& part : parts_)
            size = QSize(std::max(size.width(), part.width()), std::max(size.height(), 0) + part.height());
        QImage all(size, QImage::Format_RGB32);
        all.fill(Qt::gray);
        QPainter painter(&all);
        int top = 0;
        for (const QImage& part : parts_) {
            painter.drawImage(0, top, part);
            top += part.height();
        }
        return all;
    }

    std::vector<QImage> parts_;
};
