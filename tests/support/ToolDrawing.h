#pragma once

#include "support/RecordingContext.h"
#include "support/TestOwner.h"
#include "tools/QZPaintToolTable.h"

#include <gtest/gtest.h>

/// Figures of the tool table on a layer of 400 x 300 px over a TestChart, in the colour #010203, and what they draw.
class ToolDrawing : public ::testing::Test {
protected:
    using Lines = std::vector<std::string>;
    using Points = std::vector<QZPoint>;

    /// A figure of `type`, clicked through `points`, all of its points or the first few.
    std::shared_ptr<QZPaintGraph> tool(QZShapeType type, const Points& points, std::uint64_t width = 1)
    {
        auto graph = placed(createPaintTool(type), owner, points);
        graph->setStrokeColor(QColor(1, 2, 3));
        graph->setLineWidth(width);
        return graph;
    }

    /// A figure whose last point of `points` still follows the mouse.
    std::shared_ptr<QZPaintGraph> following(QZShapeType type, const Points& points)
    {
        const auto graph = tool(type, {points.begin(), points.end() - 1});
        graph->mouseMoved(points.back());
        return graph;
    }

    /// What is drawn, line by line, without the handles.
    static Lines drawn(QZPaintGraph& graph)
    {
        RecordingContext context;
        graph.drawInContext(context);
        EXPECT_TRUE(context.isBalanced());
        std::erase_if(context.lines, [](const std::string& line) {
            return line.starts_with("clear ") || line.ends_with(" w2 #1d3fbb");
        });
        return context.lines;
    }

    /// What is drawn, without what most of it has in common: `0,0-9,9;0,0-9,9 w2 dash 5,3;rect 0,0 9x9;"1" 9,9;`
    static std::string brief(QZPaintGraph& graph)
    {
        std::string all;
        for (std::string line : drawn(graph)) {
            for (const std::string common : {"segment ", "path ", "text ", " w1", " 11px", " #010203"})
                if (const auto at = line.find(common); at != std::string::npos)
                    line.erase(at, common.size());
            all += line + ";";
        }
        return all;
    }

    /// A text as brief() tells of it.
    static std::string text(const QString& string, double x, double y, int pixelSize)
    {
        return "\"" + string.toStdString() + "\" " + RecordingContext::at({x, y}) + " " + std::to_string(pixelSize) +
               "px;";
    }

    /// A figure clicked through `points`, what brief() tells of it (how it begins, before "..."), and a hit distance.
    /// A finished figure looks the same before its last click.
    struct Figure {
        const char* name;
        QZShapeType type;
        Points points;
        std::string drawing;
        QZPoint at;
        double distance;
    };

    void expectFigures(const std::vector<Figure>& figures)
    {
        for (const auto& [name, type, points, expected, at, distance] : figures) {
            SCOPED_TRACE(name);
            const auto graph = tool(type, points);
            const auto told = [&expected = expected](QZPaintGraph& figure) {
                const std::string all = brief(figure);
                return expected.ends_with("...") ? all.substr(0, expected.size() - 3) + "..." : all;
            };
            EXPECT_EQ(told(*graph), expected);
            EXPECT_NEAR(graph->minDistanceFromPoint(at), distance, 1e-5);
            const bool hadFigure = !graph->isEditing() && points.size() > 1; // before its last click
            EXPECT_EQ(hadFigure ? told(*following(type, points)) : expected, expected) << "the last under the mouse";
        }
    }

    std::shared_ptr<TestOwner> owner = std::make_shared<TestOwner>();
    TestChart& chart = owner->testChart;
};
