#include "app/demo/Gallery.h"
#include "tools/QZPaintToolTable.h"

#include <QSet>

#include <algorithm>
#include <gtest/gtest.h>

TEST(Gallery, ShowsAFigureOfEveryTool)
{
    Gallery gallery;
    QSet<QByteArray> seen;
    for (const QZPaintToolRow& tool : paintToolTable()) {
        SCOPED_TRACE(qPrintable(strQZShapeType(tool.type)));
        const auto figure = std::ranges::find(galleryFigures(), tool.type, &GalleryFigure::type);
        ASSERT_NE(figure, galleryFigures().end());
        const QImage picture = gallery.picture(*figure);
        ASSERT_EQ(picture.size(), QSize(480, 300));
        EXPECT_NE(picture, gallery.bareChart(*figure));
        seen.insert(QByteArray(reinterpret_cast<const char*>(picture.constBits()), picture.sizeInBytes()));
    }
    EXPECT_EQ(seen.size(), static_cast<qsizetype>(galleryFigures().size())); // of the tool itself, not of another one
}
