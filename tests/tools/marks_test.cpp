#include "platform/QZFont.h"
#include "support/Contrast.h"
#include "support/ToolDrawing.h"
#include "tools/QZPaintMarks.h"

namespace {

using Marks = ToolDrawing;

const QString up = QString::fromUtf16(QZPaintToolUp::upGlyph);
const QString down = QString::fromUtf16(QZPaintToolUp::downGlyph);

std::string text(const QString& string, double x, double y, const char* style)
{
    return "text \"" + string.toStdString() + "\" " + RecordingContext::number(x) + "," + RecordingContext::number(y) +
           style;
}

std::string rect(QZRect box, const char* style)
{
    return "rect " + RecordingContext::number(box.x) + "," + RecordingContext::number(box.y) + " " +
           RecordingContext::number(box.width) + "x" + RecordingContext::number(box.height) + style;
}

/// Remembers the note whose panel was asked for.
struct PanelOwner : TestOwner {
    const QZPaintGraph* opened = nullptr;
    void orderFrontPaintTextConfigWindow(QZPaintGraph& graph) override { opened = &graph; }
};

} // namespace

TEST_F(Marks, AGlyphThatStandsOnItsPoint)
{
    struct Row {
        const char* name;
        QZShapeType type;
        QString glyph;
        QColor color;
    };
    for (const Row& row :
         {Row{"up", QZSTToolUp, up, QColor(255, 59, 48)}, Row{"down", QZSTToolDown, down, QColor(24, 150, 66)}}) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(createPaintTool(row.type)->strokeColor(), row.color);
        for (const char* background : {"#fcfcfd", "#14171c"})
            EXPECT_GE(contrast(row.color, QColor(background)), 3) << background;
        const auto mark = tool(row.type, {{100, 50}}, 5);
        EXPECT_EQ(mark->type(), row.type);
        const QZTextSize size = measureText(row.glyph, systemFont(15));
        const double left = 100 - size.width / 2;
        const std::string glyph = text(row.glyph, left, 47, " 15px #010203");
        EXPECT_EQ(drawn(*mark), Lines{glyph});
        mark->setSelected(true);
        EXPECT_EQ(drawn(*mark), (Lines{glyph, rect({left, 50, size.width, size.height}, " w1 #010203")}));
        for (const auto& [point, distance] : std::vector<std::pair<QZPoint, double>>{
                 {{100, 50}, 0}, {{100, 49.9}, 6}, {{left + 0.1, 51}, 0}, {{left - 0.1, 51}, 6}})
            EXPECT_EQ(mark->minDistanceFromPoint(point), distance) << point.x << "," << point.y;
    }
}

TEST_F(Marks, TheGlyphDecidesTheType)
{
    QZPaintToolUp mark;
    EXPECT_EQ(mark.type(), QZSTToolUp);
    const QZRect box = mark.textRect();
    mark.setLayer(owner);
    mark.setString(up);
    EXPECT_EQ(mark.textRect(), box) << "without one it is the up glyph";
    for (const auto& [string, type] : std::vector<std::pair<QString, QZShapeType>>{{QLatin1String(""), QZSTToolUp},
                                                                                   {down, QZSTToolDown},
                                                                                   {QStringLiteral("B"), QZSTToolDown},
                                                                                   {up, QZSTToolUp},
                                                                                   {QStringLiteral("S"), QZSTToolUp}}) {
        owner->displays = 0;
        mark.setString(string);
        mark.setString(string);
        EXPECT_EQ(mark.type(), type);
        EXPECT_EQ(owner->displays, 1);
    }
    EXPECT_EQ(mark.lineType(), 0U);
    EXPECT_EQ(mark.editingConfigs(), 2U);
}

TEST_F(Marks, WhileAMarkIsPlacedItsBoxFollowsTheMouse)
{
    const auto mark = tool(QZSTToolUp, {});
    mark->mouseMoved({100, 50});
    const QZTextSize size = measureText(up, systemFont(15));
    EXPECT_EQ(drawn(*mark), Lines{rect({100 - size.width / 2, 50, size.width, size.height}, " w1 #010203")});
    owner->mouseInside = false;
    EXPECT_EQ(drawn(*mark), Lines{});
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
    EXPECT_EQ(drawn(*note), Lines{}) << "nothing but its handle";
    note->mouseDown({100, 50});
    EXPECT_EQ(panel->opened, note.get());
    panel->opened = nullptr;
    note->mouseDown({100, 50});
    EXPECT_EQ(panel->opened, nullptr) << "not by a click on a note that stands";

    note->setText(QStringLiteral("two\nlines"));
    const QZTextSize size = measureText(note->text(), labelFont(12));
    const QZRect box{100, 50 - size.height / 2, size.width + 10, size.height + 4};
    const std::string written = text(note->text(), 105, box.y, " 12px #010203");
    EXPECT_EQ(drawn(*note), Lines{written});
    note->setSelected(true);
    EXPECT_EQ(drawn(*note), (Lines{rect(box, " w1 #010203"), written}));
    EXPECT_EQ(std::static_pointer_cast<QZPaintToolText>(note)->topLeftLocation(), (QZPoint{100, box.maxY()}));
    EXPECT_EQ(note->minDistanceFromPoint({box.maxX() - 0.1, box.maxY() - 0.1}), 0);
    EXPECT_EQ(note->minDistanceFromPoint({box.maxX() + 0.1, 50}), 6);
}
