#pragma once

#include "platform/QZFrameComFun.h"
#include "platform/QZGlobalEnv.h"
#include "support/Spies.h"
#include "support/widgets/TestPane.h"
#include "surface/QZGraphDatabase.h"
#include "surface/QZPaintActiveManager.h"
#include "tools/QZPaintToolTable.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

/// Accounts in a temporary folder, with "ann" logged in and her file being the shared one, empty.
class GraphStore : public testing::Test {
protected:
    static constexpr std::uint64_t day = QZPCCandlestickCycleDay;
    static inline const QString stock = QStringLiteral("600000");
    static inline const QString pane = QStringLiteral("main");

    void SetUp() override
    {
        rootBefore_ = QZFrameComFun::setRootFolder(root_.path());
        ASSERT_FALSE(rootBefore_.isEmpty()) << "that is the real user's folder";
        QZGlobalEnv::getShareInstance().setLoginUser(QStringLiteral("ann"));
        reopen();
    }
    void TearDown() override
    {
        QZPaintActiveManager::sharedManager().setCurrentActiveLayer(nullptr);
        QZGlobalEnv::getShareInstance().setLoginUser({});
        QZFrameComFun::setRootFolder(rootBefore_);
    }

    /// As after the application was started anew.
    void reopen()
    {
        TestView().loginUserDidChange();
        QZPaintManagerView::graphDatabase()->close();
        log_.lines.clear();
    }

    /// What was logged since it was last asked.
    std::string log() { return std::exchange(log_.lines, {}).join(u'\n').toStdString(); }
    static QString file() { return QZFrameComFun::getUserAccountFilePath(databaseFileName, true); }
    static std::shared_ptr<QZGraphDatabase> otherConnection()
    {
        auto database = QZGraphDatabase::databaseWithPath(file());
        database->openWithFlags(6);
        return database;
    }
    static bool run(const std::string& statement) { return otherConnection()->executeUpdate(statement); }
    /// Whatever is stored in one column, in the order of rows, with commas.
    static std::string stored(const std::string& column, const std::string& where = "1")
    {
        const auto database = otherConnection();
        auto rows = database->executeQuery("SELECT " + column + " FROM GraphTable WHERE " + where);
        QStringList values;
        while (rows && rows->next())
            values.append(rows->stringForColumn(column));
        return values.join(u',').toStdString();
    }

    /// Adds a finished figure; its width tells it from others.
    static QZPaintGraph& add(QZPaintManagerView& view, std::uint64_t width = 1, std::int64_t type = QZSTLineSegment)
    {
        const auto graph = createPaintTool(type);
        graph->setLayer(view.paintLayer());
        graph->setEditing(false);
        graph->setLineWidth(width);
        std::vector<QZPaintLogicAxis> axises;
        axises.reserve(graph->points().size());
        for (int i = 0; i < graph->maxPointCount(); ++i)
            axises.push_back({TestChart::firstDate + 5 + 3 * i, 93000 + i, 50.25 + 20.5 * i});
        graph->setLogicAxises(std::move(axises));
        view.paintLayer()->graphs().add(graph);
        return *graph;
    }
    /// Loads the group, adds figures of these widths and saves it again.
    static void store(QZPaintManagerView& view, const QString& code, std::initializer_list<std::uint64_t> widths)
    {
        view.loadDB(code, day, pane);
        for (const std::uint64_t width : widths)
            add(view, width);
        view.saveDB(code, day, pane);
    }
    static std::vector<std::shared_ptr<QZPaintGraph>> graphs(const QZPaintManagerView& view)
    {
        return *view.paintLayer()->graphs().snapshot();
    }

    QTemporaryDir root_;
    QString rootBefore_;
    LogSpy log_;
};
