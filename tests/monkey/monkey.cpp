// A monkey at the chart: random gestures at two windows, their panels and dialogs, and after each what must always
// hold. Usage: monkey [steps] [seed]; the seed and its number alone decide a step. A fault prints the last steps.

#include "app/bars/SampleBars.h"
#include "app/calendar/ChartCycle.h"
#include "app/chart/ChartPalette.h"
#include "app/chart/ChartSplitView.h"
#include "app/demo/UserInput.h"
#include "app/window/ChartWindow.h"
#include "model/QZPaintOptions.h"
#include "monkey/Steps.h"
#include "panels/QZPaintControl.h"
#include "panels/QZPaintGraphConfigWC.h"
#include "panels/QZPaintTextConfigWC.h"
#include "platform/QZFrameComFun.h"
#include "platform/QZGlobalEnv.h"
#include "platform/QZLog.h"
#include "support/RecordingContext.h"
#include "surface/QZPaintLayer.h"
#include "tools/QZPaintToolTable.h"

#include <QApplication>
#include <QFileDialog>
#include <QHashSeed>
#include <QLoggingCategory>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <random>

// Makes every report end in abort(), which prints the steps.
extern "C" const char* __asan_default_options() // NOLINT(readability-identifier-naming): the sanitizer's name
{
    return "abort_on_error=1";
}
extern "C" const char* __ubsan_default_options() // NOLINT(readability-identifier-naming): the sanitizer's name
{
    return "abort_on_error=1";
}

namespace {

std::mt19937 chance;
int answer = 0; // to the question that this step may raise
std::vector<BarReadResult> stocks;
const std::vector<Qt::KeyboardModifiers> heldKeys{
    {}, {}, {}, {}, Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier};

int below(int limit)
{
    return std::uniform_int_distribution<int>(0, limit - 1)(chance);
}

template <typename Container>
auto anyOf(const Container& all)
{
    return *(std::begin(all) + below(static_cast<int>(std::size(all))));
}

template <typename Value>
Value anyOf(std::initializer_list<Value> all)
{
    return *(all.begin() + below(static_cast<int>(all.size())));
}

std::vector<ChartWindow*> windows()
{
    std::vector<ChartWindow*> all;
    for (QWindow* window : QGuiApplication::topLevelWindows()) { // in the order of their making
        QWidget* widget = window->handle() == nullptr ? nullptr : QWidget::find(window->winId());
        if (auto* chart = dynamic_cast<ChartWindow*>(widget))
            all.push_back(chart);
    }
    return all;
}

std::vector<ChartPane*> panes()
{
    std::vector<ChartPane*> all;
    for (ChartWindow* window : windows())
        all.insert(all.end(), window->chart().panes().begin(), window->chart().panes().end());
    return all;
}

void require(bool holds, const QString& claim)
{
    if (!holds)
        qFatal("does not hold: %s", qUtf8Printable(claim));
}

void openWindows()
{
    while (windows().size() < 2) {
        auto* window = new ChartWindow;
        window->setAttribute(Qt::WA_DeleteOnClose);
        window->showBars(anyOf(stocks));
        window->resize(640, 420);
        window->show();
        QCoreApplication::processEvents();
    }
    // A desktop gives another window the keyboard, and with it the palette.
    if (QZPaintControl::sharedManager().delegate() == nullptr)
        windows().front()->chart().resetPiantConfigDelegate();
}

/// Somewhere on a pane, often on a figure, at times off the pane: in its window, y downwards.
QPoint placeOver(const ChartPane& pane)
{
    const QZRect plot = pane.validateRect();
    QZPoint at{plot.x + plot.width * below(101) / 100, plot.y + plot.height * below(101) / 100};
    const auto figures = pane.paintLayer()->graphs().snapshot();
    if (const int kind = below(10); kind == 0) {
        at = {below(pane.width() + 200) - 100.0, below(pane.height() + 200) - 100.0};
    } else if (kind < 5 && !figures->empty()) {
        const auto figure = anyOf(*figures);
        const QZPoint from = anyOf(figure->points());
        const QZPoint to = anyOf(figure->points());
        at = {std::clamp((from.x + to.x) / 2, -999.0, 999.0), std::clamp((from.y + to.y) / 2, -999.0, 999.0)};
    }
    const QPoint place = UserInput(*pane.window()).positionOf(pane, at).toPoint() + QPoint(below(3), below(3));
    Steps::add(QStringLiteral("%1,%2").arg(place.x()).arg(place.y()));
    return place;
}

void press(QZShapeType type)
{
    Steps::add(strQZShapeType(type));
    QTest::mouseClick(ChartPalette::button(type), Qt::LeftButton);
}

/// Clicks, several fast ones too, or drags in so many moves; some drags do not end.
void useMouse(const QPointer<ChartPane>& pane, int moves)
{
    const auto button = anyOf({Qt::LeftButton, Qt::LeftButton, Qt::LeftButton, Qt::LeftButton, Qt::RightButton});
    const int times = moves > 0 ? 1 : anyOf({1, 1, 1, 1, 1, 2, 3, 4});
    Steps::add(QStringLiteral("button %1, %2 times").arg(button).arg(times));
    const QPoint from = placeOver(*pane);
    const QPoint to = moves == 0 ? from : placeOver(*anyOf(panes()));
    const auto act = [&](QTest::MouseAction action, QPoint at) {
        if (pane != nullptr)
            QTest::mouseEvent(action, pane->window()->windowHandle(), button, {}, at);
    };
    act(QTest::MouseMove, from);
    for (int i = 0; i < times; ++i) {
        QTest::lastMouseTimestamp -= i == 0 ? 0 : QTest::mouseDoubleClickInterval;
        act(QTest::MousePress, from);
        for (int move = 1; move <= moves; ++move)
            act(QTest::MouseMove, from + (to - from) * move / moves);
        act(moves > 0 && below(8) == 0 ? QTest::MouseMove : QTest::MouseRelease, to);
    }
}

void draw()
{
    const auto tools = paintToolTable();
    press(below(6) == 0 ? QZSTToolText : anyOf(tools.first(tools.size() - 1)).type); // the last one is the band
    const QPointer<ChartPane> pane = anyOf(panes());
    for (int points = below(7); points > 0 && pane != nullptr; --points)
        useMouse(pane, 0);
}

void turnWheel()
{
    const ChartPane& pane = *anyOf(panes());
    const QPoint turned(anyOf({0, 0, -120, 600}), anyOf({120, -120, 1, -2400, 4800}));
    UserInput(*pane.window()).wheel(placeOver(pane), turned, anyOf(heldKeys));
}

void pressKey()
{
    const auto key =
        anyOf({Qt::Key_Escape, Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_1,    Qt::Key_5,    Qt::Key_6,
               Qt::Key_Return, Qt::Key_P,      Qt::Key_T,         Qt::Key_O,    Qt::Key_N,    Qt::Key_Q,
               Qt::Key_S,      Qt::Key_Z,      Qt::Key_Space,     Qt::Key_Tab,  Qt::Key_Left, Qt::Key_Right,
               Qt::Key_Up,     Qt::Key_Plus,   Qt::Key_Minus,     Qt::Key_Home, Qt::Key_End});
    QWindow* window = QGuiApplication::focusWindow();
    // Alt closes a menu, and QTest then presses the key in a window that is gone.
    const bool isMenu = window != nullptr && window->type() == Qt::Popup;
    const auto held = isMenu ? Qt::KeyboardModifiers() : anyOf(heldKeys);
    Steps::add(QKeySequence(key | held).toString());
    QTest::keyClick(window == nullptr ? windows().front()->windowHandle() : window, key, held);
}

/// Clicks a part of a panel or of an open menu; where a colour can be picked, picks one.
void poke()
{
    QWidget* panel =
        anyOf({static_cast<QWidget*>(&QZPaintControl::sharedManager().window()),
               static_cast<QWidget*>(&QZPaintGraphConfigWC::sharedWC().window()),
               static_cast<QWidget*>(&QZPaintTextConfigWC::sharedWC().window()), QApplication::activePopupWidget()});
    if (panel == nullptr || !panel->isVisible())
        return;
    if (auto* picker = panel->findChild<QColorDialog*>(); picker != nullptr && picker->isVisible())
        picker->setCurrentColor(QColor(below(256), below(256), below(256), below(256)));
    QWidget* part = anyOf(panel->findChildren<QWidget*>() << panel);
    Steps::add(QLatin1String(part->metaObject()->className()) + u' ' + part->objectName());
    if (part->isVisible() && part->window() == panel)
        QTest::mouseClick(part, anyOf({Qt::LeftButton, Qt::RightButton}), {},
                          {below(part->width() + 1), below(part->height() + 1)});
}

void typeText()
{
    const QZPanelWindow& editor = QZPaintTextConfigWC::sharedWC().window();
    if (!editor.isVisible())
        return;
    QInputMethodEvent event(anyOf({QString(), QStringLiteral("zhang")}), {});
    event.setCommitString(
        anyOf({QStringLiteral("涨停📈"), QStringLiteral("a\u0301שלום\t"), QString(300, u'宽'), QString()}));
    QCoreApplication::sendEvent(editor.findChild<QZPaintTextField*>(), &event);
    auto* sizes = editor.findChild<QComboBox*>();
    sizes->setCurrentIndex(below(sizes->count()));
    Q_EMIT sizes->activated(sizes->currentIndex());
    QTest::keyClick(editor.findChild<QZPaintTextField*>(), anyOf({Qt::Key_A, Qt::Key_Return, Qt::Key_Left}),
                    anyOf(heldKeys));
}

QStringList storedFigures(const ChartPane& pane)
{
    QStringList figures;
    for (const auto& graph : *pane.paintLayer()->graphs().snapshot()) {
        if (graph->isStored())
            figures << strQZShapeType(graph->type()) << graph->text() << QString::number(graph->lineWidth())
                    << ChartPane::encodeGraphKeyPoints(graph->logicAxises());
    }
    return figures;
}

void saveAndLoad()
{
    for (ChartPane* pane : panes()) {
        const BarSeries& series = pane->chartData()->series;
        const QStringList before = storedFigures(*pane);
        pane->saveDB(series.name(), cycleOf(series), pane->objectName());
        pane->loadDB(series.name(), cycleOf(series), pane->objectName());
        require(before == storedFigures(*pane), pane->objectName() + QStringLiteral(" gets its figures back"));
    }
}

/// What asks runs a loop of its own until it is answered.
void answerDialog()
{
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr)
        return;
    Steps::add(QStringLiteral("%1 answered %2").arg(QLatin1String(dialog->metaObject()->className())).arg(answer));
    if (auto* box = qobject_cast<QMessageBox*>(dialog)) {
        auto* chart = dynamic_cast<ChartWindow*>(box->parentWidget());
        // The window goes under the question. Qt's own messages do not survive that.
        if (chart != nullptr && answer == 2 && box->buttons().size() > 1)
            return delete chart;
        return box->buttons().at(answer % box->buttons().size())->click();
    }
    if (auto* files = qobject_cast<QFileDialog*>(dialog))
        files->selectFile(anyOf(stocks).path);
    dialog->done(answer == 0 ? QDialog::Rejected : QDialog::Accepted);
}

struct Gesture {
    const char* name;
    int weight;
    void (*play)();
};

constexpr std::array gestures{
    Gesture{"draw", 18, draw},
    Gesture{"click", 12, [] { useMouse(anyOf(panes()), 0); }},
    Gesture{"drag", 18, [] { useMouse(anyOf(panes()), 1 + below(12)); }},
    Gesture{"wheel", 4, turnWheel},
    Gesture{"view", 2, [] { anyOf(anyOf(windows())->chart().viewActions())->trigger(); }},
    Gesture{"key", 16, pressKey},
    Gesture{"poke", 18, poke},
    Gesture{"type", 5, typeText},
    Gesture{"magnet", 2, [] { press(QZSTToolMagnet); }},
    Gesture{"eye", 2, [] { press(QZSTToolEye); }},
    Gesture{"trash", 1, [] { press(QZSTToolDelete); }},
    Gesture{"bars", 2, [] { anyOf(windows())->showBars(anyOf(stocks)); }},
    Gesture{"user", 1, [] { QZGlobalEnv::getShareInstance().setLoginUser(QString(below(3), u'u')); }},
    Gesture{"save, load", 1, saveAndLoad},
    Gesture{"activate", 2, [] { anyOf(windows())->activateWindow(); }},
    Gesture{"resize", 2, [] { anyOf(windows())->resize(200 + below(900), 60 + below(600)); }},
    Gesture{"minimise", 1, [] { anyOf(windows())->showMinimized(); }},
    Gesture{"restore", 2, [] { anyOf(windows())->showNormal(); }},
    Gesture{"close", 1, [] { anyOf(windows())->close(); }},
    Gesture{"delete", 1, [] { delete anyOf(windows()); }},
};

void checkPanels()
{
    const QZPaintControl& palette = QZPaintControl::sharedManager();
    for (int bit = 0; bit < 42; ++bit) {
        const auto type = static_cast<QZShapeType>(std::int64_t{1} << bit);
        const auto* button = static_cast<QZPaintControlButton*>(ChartPalette::button(type));
        const bool isOn = (type == QZSTToolMagnet && palette.isMagnet()) || (type == QZSTToolEye && palette.isHidden());
        require(button->isSelected() == (isOn || palette.selectedType() == type),
                button->objectName() + QStringLiteral(" tells whether it is on"));
    }
    bool isCreating = false;
    bool hasFigure = false;
    const QZPanelWindow& strip = QZPaintGraphConfigWC::sharedWC().window();
    for (const ChartPane* pane : panes()) {
        const auto graph = pane->paintLayer()->currentGraph();
        isCreating = isCreating || (graph && graph->isEditing());
        hasFigure = hasFigure || (graph && graph->showsConfigStrip() && pane->window() == strip.chartWindow());
        require(!graph || graph->isEditing() != pane->paintLayer()->graphs().contains(graph.get()),
                QStringLiteral("the current figure is in creation or one of the pane's"));
    }
    const QString flag = QZContextIsPaintEditing;
    const bool isTold = QZGlobalEnv::getShareInstance().globalContext(flag, flag).toBool();
    require(isCreating || !isTold, QStringLiteral("a figure in creation that the host is told of is there"));
    require(hasFigure || !strip.isVisible(), QStringLiteral("the strip has a figure"));
}

void checkFigures(const ChartPane& pane)
{
    const auto current = pane.paintLayer()->currentGraph();
    for (const auto& graph : *pane.paintLayer()->graphs().snapshot()) {
        require(!current || graph == current || !graph->isSelected(),
                QStringLiteral("one figure of a pane is selected"));
        const QString name = strQZShapeType(graph->type());
        const bool isHidden = graph->isStored() && QZPaintControl::sharedManager().isHidden();
        require(graph->layer() == pane.paintLayer() && !graph->isEditing() && graph->isHidden() == isHidden,
                name + QStringLiteral(" is a figure of its pane and follows the eye"));
        RecordingContext context;
        graph->drawInContext(context);
        for (const std::string& line : context.lines)
            require(line.find("nan") == std::string::npos && line.find("inf") == std::string::npos,
                    name + QStringLiteral(" draws numbers, not ") + QString::fromStdString(line));
    }
}

void play(int step, unsigned seed)
{
    std::seed_seq numbers{seed, static_cast<unsigned>(step)};
    chance.seed(numbers);
    answer = below(4);
    Steps::begin(step, seed);
    openWindows();
    std::vector<double> weights;
    std::ranges::transform(gestures, std::back_inserter(weights), &Gesture::weight);
    const Gesture& gesture =
        gestures.at(std::discrete_distribution<std::size_t>(weights.begin(), weights.end())(chance));
    Steps::add(QLatin1String(gesture.name));
    gesture.play();
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    checkPanels();
    for (ChartPane* pane : panes()) {
        if (step % 10 == 0)
            checkFigures(*pane);
        if (step % 50 == 0)
            pane->window()->grab();
    }
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QHashSeed::setDeterministicGlobalSeed();
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    setBusCommonLogSink([](const QString& line) { // neither a figure nor a save is lost
        require(!line.contains(QStringLiteral("Delete")) && !line.contains(QStringLiteral("rror")), line);
    });
    QZPaintOptions::setCurrent({.bindsTexts = true,
                                .failedLoadBarsSave = true,
                                .keepsForeignRows = true,
                                .hiddenFiguresIgnoreMouse = true,
                                .magnetButtonTellsTruth = true,
                                .newFiguresTakeChosenLine = true}); // as qzchart
    const QTemporaryDir folder;
    QZFrameComFun::setRootFolder(folder.path());
    for (const QByteArray& rows : {dailySampleCsv(), minuteSampleCsv(), dailySampleCsv().left(500)}) {
        QFile file(folder.filePath(QStringLiteral("%1.csv").arg(stocks.size())));
        require(file.open(QIODevice::WriteOnly) && file.write(rows) == rows.size() && file.flush(), file.fileName());
        stocks.push_back(readBars(file.fileName()));
    }
    QTimer dialogs;
    QObject::connect(&dialogs, &QTimer::timeout, answerDialog);
    dialogs.start(0);
    const unsigned seed = argc > 2 ? static_cast<unsigned>(std::atoi(argv[2])) : 1;
    for (int step = 0; step < (argc > 1 ? std::atoi(argv[1]) : 1000); ++step)
        play(step, seed);
    qDeleteAll(windows());
    return 0;
}
