#include "ChartFixture.h"
#include "app/picture/ChartPicture.h"
#include "app/picture/RenderOptions.h"
#include "app/picture/Renderer.h"
#include "platform/QZFrameComFun.h"
#include "platform/QZGlobalEnv.h"

#include <QFile>
#include <QTemporaryDir>
#include <QXmlStreamReader>

namespace {

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Of any colour of any pixel, out of 255.
int largestDifference(const QImage& first, const QImage& second)
{
    EXPECT_EQ(first.size(), second.size());
    int largest = 0;
    for (int y = 0; y < first.height(); ++y) {
        for (int x = 0; x < first.width(); ++x) {
            const QColor one = first.pixelColor(x, y);
            const QColor other = second.pixelColor(x, y);
            largest = std::max({largest, std::abs(one.red() - other.red()), std::abs(one.green() - other.green()),
                                std::abs(one.blue() - other.blue())});
        }
    }
    return largest;
}

/// A folder to render in.
class RenderFolder {
public:
    QString pathOf(const char* name) const { return folder_.filePath(QLatin1String(name)); }

    void writeBars(const QString& name, const std::vector<Bar>& bars) const
    {
        QFile file(folder_.filePath(name + QStringLiteral(".csv")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("date,open,high,low,close\n");
        for (const Bar& bar : bars) {
            file.write(QByteArray::number(bar.date) + ',' + QByteArray::number(bar.open) + ',' +
                       QByteArray::number(bar.high) + ',' + QByteArray::number(bar.low) + ',' +
                       QByteArray::number(bar.close) + '\n');
        }
    }

    /// As from the command line, in the temporary folder. The exit status; what was told is in `told`.
    int render(QString line)
    {
        line.replace(u'@', folder_.path() + u'/');
        const QStringList arguments = (QStringLiteral("qzchart ") + line).split(u' ');
        QCommandLineParser parser;
        const RenderOptions options(parser);
        EXPECT_TRUE(parser.parse(arguments)) << qPrintable(parser.errorText());
        told.clear();
        const auto request = options.request(told);
        if (!request)
            return Renderer::unusable;
        const auto tell = [this](const QString& each) { told += each + u'\n'; };
        return Renderer(tell, tell).run(*request);
    }

    QString told;

private:
    const QTemporaryDir folder_;
};

class ChartPictureTest : public ChartTest, public RenderFolder {};

} // namespace

TEST_F(ChartPictureTest, ShowsTheScreenWithoutCrosshairAndHandles)
{
    chart.setAveragesVisible(false); // smooth lines blend in another order there
    drawSegment(200, 240);
    user.moveTo(at(220, 98));
    const auto shown = [this] { return chart.grab().toImage().convertToFormat(QImage::Format_RGB32); };
    const auto picture = [this] { return ChartPicture::image(chart, 1).convertToFormat(QImage::Format_RGB32); };
    EXPECT_NE(picture(), shown());
    const QImage selected = picture();
    user.key(Qt::Key_Escape);
    EXPECT_EQ(picture(), selected); // and the legend is that of the bar under the mouse
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&chart, &leave);
    // Beside the plots, QCustomPlot's labels stand on whole pixels of the screen, and there is the panes' divider.
    chart.setMacdVisible(true);
    QTest::qWait(0);
    ASSERT_EQ(chart.shownPanes().size(), 3U);
    for (const ChartPane* pane : chart.shownPanes()) {
        const QRect plot = pane->flippedValidateRect().toRect().translated(pane->pos());
        EXPECT_LE(largestDifference(picture().copy(plot), shown().copy(plot)), 2) << "as blending is rounded";
    }
}

TEST_F(ChartPictureTest, VectorsStayVectorsAndTextsTexts)
{
    drawSegment(200, 240);
    figure()->setLineType(1);
    figure()->setLineWidth(2);
    figure()->setStrokeColor(QColor(1, 2, 3));
    QXmlStreamReader xml(ChartPicture::svg(chart));
    QStringList texts;
    int dashedLines = 0;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        EXPECT_NE(xml.name(), QLatin1String("image"));
        if (xml.attributes().value(QLatin1String("stroke")) == QLatin1String("#010203")) {
            ++dashedLines;
            EXPECT_EQ(xml.attributes().value(QLatin1String("stroke-dasharray")), QLatin1String("20 10"));
            EXPECT_EQ(xml.attributes().value(QLatin1String("stroke-width")), QLatin1String("2"));
        }
        if (xml.name() == QLatin1String("text"))
            texts.append(xml.readElementText());
    }
    EXPECT_FALSE(xml.hasError()) << qPrintable(xml.errorString());
    EXPECT_EQ(dashedLines, 1);
    EXPECT_TRUE(texts.contains(chart.panes()[0]->reading().legend().front().text)) << qPrintable(texts.join(u'|'));
    EXPECT_EQ(ChartPicture::pdf(chart).count("/Subtype /Image"), 0);
}

TEST_F(ChartPictureTest, RendersStoredFiguresWithoutTouchingThem)
{
    drawSegment(200, 240);
    ASSERT_TRUE(chart.panes()[0]->storeDB());
    writeBars(stock, bars());
    writeBars(QStringLiteral("bare"), bars());
    const QString stored = QZFrameComFun::getUserAccountFilePath(databaseFileName, false);
    const QByteArray before = contentOf(stored);

    EXPECT_EQ(render(QStringLiteral("--render @with.png --size 640x480 --stock @%1.csv").arg(stock)), Renderer::done);
    EXPECT_EQ(render(QStringLiteral("--render @without.png --size 640x480 --stock @bare.csv")), Renderer::done);
    EXPECT_TRUE(told.contains(QStringLiteral("no figures are stored for bare day"))) << qPrintable(told);
    const QImage with(pathOf("with.png"));
    EXPECT_EQ(with.size(), QSize(640, 480));
    EXPECT_NE(with, QImage(pathOf("without.png")));

    ASSERT_TRUE(QFile(pathOf("broken.csv")).open(QIODevice::WriteOnly));
    EXPECT_EQ(render(QStringLiteral("--render-all @all @")), Renderer::failed);
    EXPECT_EQ(told.count(u'\n'), 2) << qPrintable(told);
    EXPECT_TRUE(told.contains(QStringLiteral("broken.csv")) && told.contains(QStringLiteral("1/1 %1 day").arg(stock)));
    EXPECT_TRUE(QFile::exists(pathOf("all/") + stock + QStringLiteral("-day.png")));
    EXPECT_EQ(contentOf(stored), before);
    EXPECT_EQ(QZFrameComFun::getUserAccountFilePath(databaseFileName, false), stored);
}

TEST(Rendering, TellsWhatCannotBeDone)
{
    RenderFolder folder;
    folder.writeBars(QStringLiteral("bars"), market({}).series.bars());
    struct Row {
        const char* name;
        const char* options;
        int status;
        const char* told;
    };
    for (const Row& row :
         {Row{"size", "--size 1600", Renderer::unusable, "--size 1600"},
          Row{"too large", "--size 10001x900", Renderer::unusable, "--size 10001x900"},
          Row{"unknown period", "--period hour", Renderer::unusable, "--period hour"},
          Row{"shorter period", "--period 5m", Renderer::unusable, "day cannot be put together to 5m"},
          Row{"no date", "--from soon", Renderer::unusable, "--from soon"},
          Row{"two days in one", "--to 01/02/2020", Renderer::unusable, "--to 01/02/2020"},
          Row{"after the bars", "--from 2031-01-01", Renderer::failed, "no bars from 2031-01-01 on"},
          Row{"a weekend", "--from 2020-01-04 --to 2020-01-05", Renderer::failed, "2020-01-04 to 2020-01-05"},
          Row{"nobody", "--user nobody", Renderer::unusable, "user nobody"},
          Row{"no file", "--stock @none.csv", Renderer::unusable, "one stock at a time"},
          Row{"one day", "--from 2020-01-03 --to 2020-01-03", Renderer::done, "Wrote"},
          Row{"longer period", "--period month", Renderer::done, "Wrote"}}) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(folder.render(QStringLiteral("--render @x.svg --stock @bars.csv ") + QLatin1String(row.options)),
                  row.status);
        EXPECT_TRUE(folder.told.contains(QLatin1String(row.told))) << qPrintable(folder.told);
    }
    QZGlobalEnv::getShareInstance().setLoginUser({});
    EXPECT_EQ(folder.render(QStringLiteral("--render @x.bmp --stock @bars.csv")), Renderer::unusable);
    EXPECT_EQ(folder.render(QStringLiteral("--render @none/x.png --stock @bars.csv")), Renderer::failed);
    EXPECT_EQ(folder.render(QStringLiteral("--render @x.png --stock @none.csv")), Renderer::unusable);
}
