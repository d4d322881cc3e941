#pragma once

#include "support/RecordingContext.h"
#include "support/TestOwner.h"
#include "tools/QZPaintToolTable.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

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
        Lines lines;
        for (const std::string& line : context.lines)
            if (!line.starts_with("clear ") && !line.ends_with(" w2 #1d3fbb"))
                lines.push_back(line);
        return lines;
    }

    /// What is drawn at a width of 1, without what all of that has in common: `0,0-9,9;0,0-9,9 dash 5,3;"1" 9,9;`
    static std::string brief(QZPaintGraph& graph)
    {
        std::string all;
        for (std::string line : drawn(graph)) {
            line.erase(0, line.find(' ') + 1);
            for (const std::string common : {" w1", " 11px", " #010203"})
                if (const auto at = line.find(common); at != std::string::npos)
                    line.erase(at, common.size());
            all += line + ";";
        }
        return all;
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
        for (const Figure& figure : figures) {
            SCOPED_TRACE(figure.name);
            const auto expectDrawing = [&figure](QZPaintGraph& graph) {
                std::string drawing = brief(graph);
                if (figure.drawing.ends_with("..."))
                    drawing.replace(std::min(drawing.size(), figure.drawing.size() - 3), std::string::npos, "...");
                EXPECT_EQ(drawing, figure.drawing);
            };
            const auto graph = tool(figure.type, figure.points);
            expectDrawing(*graph);
            EXPECT_NEAR(graph->minDistanceFromPoint(figure.at), figure.distance, 1e-5);
            if (graph->isEditing() || figure.points.size() == 1)
                continue; // without a last click, or without a figure before it
            SCOPED_TRACE("its last point under the mouse");
            expectDrawing(*following(figure.type, figure.points));
        }
    }

    std::shared_ptr<TestOwner> owner = std::make_shared<TestOwner>();
    TestChart& chart = owner->testChart;
};
