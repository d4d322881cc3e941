#include "app/bars/BarFiles.h"
#include "app/bars/SampleBars.h"
#include "app/chart/AxisTicks.h"
#include "app/chart/BarProgress.h"
#include "app/demo/DemoGestures.h"
#include "app/demo/Gallery.h"
#include "app/picture/RenderOptions.h"
#include "app/picture/Renderer.h"
#include "app/window/Appearance.h"
#include "app/window/ChartWindow.h"
#include "app/window/Preferences.h"
#include "model/QZPaintOptions.h"
#include "platform/QZFrameComFun.h"
#include "platform/QZGetFixData.h"
#include "platform/QZGlobalEnv.h"
#include "platform/QZLog.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>
#include <span>

namespace {

Q_LOGGING_CATEGORY(qzchart, "qzchart", QtInfoMsg)

constexpr int failed = 1;
constexpr int unusable = 2;

void print(FILE* stream, const QString& line)
{
    std::fprintf(stream, "%s\n", qUtf8Printable(line));
    std::fflush(stream);
}

bool writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush())
        return true;
    print(stderr, QStringLiteral("%1: %2").arg(path, file.errorString()));
    return false;
}

int generateSamples(const QString& folder)
{
    const QDir dir(folder);
    if (!dir.mkpath(QStringLiteral("."))) {
        print(stderr, QStringLiteral("%1: cannot create the folder").arg(folder));
        return failed;
    }
    const bool written = writeFile(dir.filePath(QStringLiteral("daily.csv")), dailySampleCsv()) &&
                         writeFile(dir.filePath(QStringLiteral("minutes.csv")), minuteSampleCsv());
    return written ? 0 : failed;
}

/// Says what is wrong with the bars of a file.
void tellProblems(const BarReadResult& bars)
{
    if (!bars.isOk())
        print(stderr, bars.error);
    for (const QString& reason : bars.skipReasons)
        print(stderr, reason);
    if (bars.skippedRows > 0)
        print(stderr, bars.summary());
}

int drawGallery(const QString& folder)
{
    const QTemporaryDir figures;
    QZFrameComFun::setRootFolder(figures.path());
    const QString failure = Gallery().write(folder, [](const QString& file) { print(stdout, file); });
    if (!failure.isNull())
        print(stderr, failure);
    return failure.isNull() ? 0 : failed;
}

int renderPictures(const RenderOptions& options)
{
    QString error;
    const auto request = options.request(error);
    if (!request) {
        print(stderr, QStringLiteral("qzchart: %1").arg(error));
        return unusable;
    }
    const auto printTo = [](FILE* stream) { return [stream](const QString& line) { print(stream, line); }; };
    return Renderer(printTo(stdout), printTo(stderr)).run(*request);
}

/// What the user chose in earlier runs, but for a theme that is named now.
void restoreChoices(const QString& theme)
{
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation));
    Preferences::keepIn(folder.filePath(QStringLiteral("qzchart.ini")));
    Appearance::shared().restore();
    if (!theme.isNull())
        Appearance::shared().pin(theme == QLatin1String("dark") ? ThemeChoice::Dark : ThemeChoice::Light);
}

/// Shows the files that were named, else those of the last run, else the sample.
int showFiles(ChartWindow& window, const QStringList& named)
{
    if (named.isEmpty() && window.restoreFiles())
        return 0;
    const QStringList paths = named.isEmpty() ? QStringList(dailySamplePath()) : named;
    const QStringList files = barFiles(paths);
    if (files.size() > 1) {
        window.showFiles(paths); // the list tells of each what is wrong with it
        return 0;
    }
    if (files.isEmpty()) {
        print(stderr, QStringLiteral("qzchart: no files of bars in %1").arg(paths.join(QLatin1String(", "))));
        return unusable;
    }
    QGuiApplication::setQuitOnLastWindowClosed(false); // which the progress would be
    const BarReadResult bars = readBarsShowingProgress(files.front(), nullptr);
    QGuiApplication::setQuitOnLastWindowClosed(true);
    tellProblems(bars);
    if (!bars.isOk())
        return unusable;
    window.showBars(bars);
    return 0;
}

int runWindow(const QStringList& named, const QString& theme)
{
    restoreChoices(theme);
    auto window = std::make_unique<ChartWindow>();
    window->restorePlace();
    if (const int failure = showFiles(*window, named); failure != 0)
        return failure;
    window->show();
    window.release()->setAttribute(Qt::WA_DeleteOnClose);
    return QApplication::exec();
}

int playDemo(const QStringList& named, const QString& picturePath)
{
    // A demonstration draws on a sheet of its own, never on the user's figures, and knows of no user's choices.
    const QTemporaryDir demoFolder;
    QZFrameComFun::setRootFolder(demoFolder.path());
    ChartWindow window;
    if (const int failure = showFiles(window, named); failure != 0)
        return failure;
    window.show();
    const QString failure = DemoGestures(window).play(picturePath);
    if (!failure.isNull()) {
        print(stderr, failure);
        return failed;
    }
    print(stdout, QStringLiteral("Wrote %1").arg(QFileInfo(picturePath).absoluteFilePath()));
    return 0;
}

/// Large numbers look alike on the axes, in the legends and on the figures.
void writeNumbersAlike()
{
    setFixDataFormatter(
        [](double value, int /*decimals*/) { return std::isfinite(value) ? volumeText(value) : QStringLiteral("--"); });
}

/// The store tells of all that it does; what is no trouble is no news on a terminal.
void silenceRoutine()
{
    setBusCommonLogSink([](const QString& line) {
        constexpr std::array routine{"Empty result set", "Opened new database", "Closed database",
                                     "Login user changed"};
        if (std::ranges::none_of(routine, [&line](const char* start) { return line.startsWith(QLatin1String(start)); }))
            qCWarning(qzchart).noquote() << line;
    });
}

/// What needs no window needs no display either, and what Qt misses on a server is no news there.
std::unique_ptr<QCoreApplication> createApplication(int& argc, char** argv)
{
    for (const char* argument : std::span(argv, static_cast<std::size_t>(argc))) {
        if (std::strncmp(argument, "--generate-samples", 18) == 0 || std::strcmp(argument, "--help") == 0)
            return std::make_unique<QCoreApplication>(argc, argv);
        if (RenderOptions::isAsked(argument) || std::strncmp(argument, "--gallery", 9) == 0) {
            if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
                qputenv("QT_QPA_PLATFORM", "offscreen");
            QLoggingCategory::setFilterRules(QStringLiteral("default.warning=false\nqzchart.warning=false"));
        }
    }
    return std::make_unique<QApplication>(argc, argv);
}

} // namespace

int main(int argc, char** argv)
{
    const auto application = createApplication(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("qzchart"));
    silenceRoutine();
    writeNumbersAlike();
    QZPaintOptions::setCurrent({.bindsTexts = true,
                                .failedLoadBarsSave = true,
                                .keepsForeignRows = true,
                                .hiddenFiguresIgnoreMouse = true,
                                .magnetButtonTellsTruth = true,
                                .newFiguresTakeChosenLine = true,
                                .lockedFiguresStay = true,
                                .indexesGroups = true});

    const QCommandLineOption demo(QStringLiteral("demo"),
                                  QStringLiteral("Play a demonstration and write what the window shows to PNG."),
                                  QStringLiteral("PNG"));
    const QCommandLineOption theme(QStringLiteral("theme"), QStringLiteral("Colours: light or dark."),
                                   QStringLiteral("name"), QStringLiteral("light"));
    const QCommandLineOption samples(QStringLiteral("generate-samples"),
                                     QStringLiteral("Write the sample bars to the folder DIR and exit."),
                                     QStringLiteral("DIR"));
    const QCommandLineOption gallery(QStringLiteral("gallery"),
                                     QStringLiteral("Write a picture of each drawing tool to the folder DIR and exit."),
                                     QStringLiteral("DIR"));
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("A stock chart to draw on."));
    parser.addHelpOption();
    parser.addOptions({demo, theme, samples, gallery});
    const RenderOptions pictures(parser);
    parser.addPositionalArgument(QStringLiteral("FILE"),
                                 QStringLiteral("Delimited text files of bars, or folders of them."),
                                 QStringLiteral("[FILE...]"));
    parser.process(*application);
    if (parser.isSet(samples))
        return generateSamples(parser.value(samples));
    if (!QZGlobalEnv::getShareInstance().setTheme(parser.value(theme))) {
        print(stderr, QStringLiteral("qzchart: no theme named %1").arg(parser.value(theme)));
        return unusable;
    }
    if (parser.isSet(gallery))
        return drawGallery(parser.value(gallery));
    if (pictures.isChosen())
        return renderPictures(pictures);

    // Without a screen Qt warns of every window that cannot be raised. QT_LOGGING_RULES brings the warnings back.
    if (QGuiApplication::platformName() == QLatin1String("offscreen"))
        QLoggingCategory::setFilterRules(QStringLiteral("default.warning=false"));
    const QStringList named = parser.positionalArguments();
    if (parser.isSet(demo))
        return playDemo(named, parser.value(demo));
    return runWindow(named, parser.isSet(theme) ? parser.value(theme) : QString());
}
