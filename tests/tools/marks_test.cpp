#include "platform/QZFont.h"
#include "support/Contrast.h"
#include "support/ToolDrawing.h"
#include "tools/QZPaintMarks.h"

namespace {

using Marks = ToolDrawing;

const QString up = QString::fromUtf16(QZPaintToolUp::upGlyph);
const QString down = QString::fromUtf16(QZPaintToolUp::downGlyph);

/// As brief() tells of it.
std::string outline(QZRect box)
{
    return "rect" + RecordingContext::box(box) + ";";
}

/// Remembers the note whose panel was asked for.
struct PanelOwner : TestOwner {
    const QZPaintGraph* opened = nullptr;
    void orderFrontPaintTextConfigWindow(QZPaintGraph& graph) override { opened = &graph; }
};

} // namespace

TEST_F(Marks, AGlyphThatStandsOnItsPoint)
{
    using Row = std::tuple<QZShapeType, QString, QColor>;
    for (const auto& [type, glyph, color] :
         {Row{QZSTToolUp, up, QColor(255, 59, 48)}, Row{QZSTToolDown, down, QColor(24, 150, 66)}}) {
        SCOPED_TRACE(strQZShapeType(type).toStdString());
        EXPECT_EQ(createPaintTool(type)->strokeColor(), color);
        for (const char* background : {"#fcfcfd", "#14171c"})
            EXPECT_GE(contrast(color, QColor(background)), 3) << background;
        const auto mark = tool(type, {}, 5);
        EXPECT_EQ(mark->type(), type);
        const QZTextSize size = measureText(glyph, systemFont(15));
        const double left = 100 - size.width / 2;
        const std::string box = outline({left, 50, size.width, size.height});
        const std::string written = text(glyph, left, 47, 15);
        mark->mouseMoved({100, 50});
        EXPECT_EQ(brief(*mark), box) << "follows the mouse";
        owner->mouseInside = false;
        EXPECT_EQ(brief(*mark), "");
        owner->mouseInside = true;
        mark->mouseDown({100, 50});
        EXPECT_EQ(brief(*mark), written);
        mark->setSelected(true);
        EXPECT_EQ(brief(*mark), written + box);
        for (const auto& [at, distance] : std::vector<std::pair<QZPoint, double>>{
                 {{100, 50}, 0}, {{100, 49.9}, 6}, {{left + 0.1, 51}, 0}, {{left - 0.1, 51}, 6}})
            EXPECT_EQ(mark->minDistanceFromPoint(at), distance) << at.x << "," << at.y;
    }
}

TEST_F(Marks, TheGlyphDecidesTheType)
{
    QZPaintToolUp mark;
    const QZRect box = mark.textRect();
    mark.setLayer(owner);
    mark.setString(up);
    EXPECT_EQ(mark.textRect(), box) << "without one it is the up glyph";
    using Row = std::pair<QString, QZShapeType>;
    for (const auto& [string, type] :
         {Row{QLatin1String(""), QZSTToolUp}, Row{down, QZSTToolDown}, Row{QStringLiteral("B"), QZSTToolDown},
          Row{up, QZSTToolUp}, Row{QStringLiteral("S"), QZSTToolUp}}) {
        owner->displays = 0;
        mark.setString(string);
        mark.setString(string);
        EXPECT_EQ(mark.type(), type);
        EXPECT_EQ(owner->displays, 1);
    }
    EXPECT_EQ(mark.lineType(), 0U);
    EXPECT_EQ(mark.editingConfigs(), 2U);
}

TEST_F(Marks, ANoteOpensItsPanelWhenItIsPlaced)
{
    const auto panel = std::make_shared<PanelOwner>();
    owner = panel;
    const auto note = tool(QZSTToolText, {});
    EXPECT_EQ(note->text(), QStringLiteral("新建"));
    EXPECT_EQ(note->fillColor(), QColor(Qt::red));
    EXPECT_EQ(note->editingConfigs(), 1U);
    note->mouseMoved({100, 50});
    EXPECT_EQ(brief(*note), "") << "nothing but its handle";
    note->mouseDown({100, 50});
    EXPECT_EQ(std::exchange(panel->opened, nullptr), note.get());
    note->mouseDown({100, 50});
    EXPECT_EQ(panel->opened, nullptr) << "not by a click on a note that stands";

    note->setText(QStringLiteral("two\nlines"));
    const QZTextSize size = measureText(note->text(), labelFont(12));
    const QZRect box{100, 50 - size.height / 2, size.width + 10, size.height + 4};
    const std::string written = text(note->text(), 105, box.y, 12);
    EXPECT_EQ(brief(*note), written);
    note->setSelected(true);
    EXPECT_EQ(brief(*note), outline(box) + written);
    EXPECT_EQ(std::static_pointer_cast<QZPaintToolText>(note)->topLeftLocation(), (QZPoint{100, box.maxY()}));
    EXPECT_EQ(note->minDistanceFromPoint({box.maxX() - 0.1, box.maxY() - 0.1}), 0);
    EXPECT_EQ(note->minDistanceFromPoint({box.maxX() + 0.1, 50}), 6);
}
