#include "panels/QZPaintGraphConfigWC.h"

#include "panels/QZInterfaceLoader.h"
#include "panels/QZPanelTheme.h"
#include "panels/QZSharedInstance.h"
#include "platform/QZGlobalEnv.h"
#include "platform/QZLog.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QToolButton>

#include <algorithm>
#include <type_traits>

// A static library's resources must be asked for by name, and the macro works only outside any namespace.
static void initGraphConfigResources()
{
    Q_INIT_RESOURCE(qz_graph_config);
}

namespace {

struct LineTypeItem {
    const char* key = nullptr;
    const char* name = nullptr;
};

/// By tag.
constexpr std::array<LineTypeItem, 5> lineTypeItems{{
    {"QZPaintGraphConfigWC.ConfigLineTypeSolid", "Solid"},
    {"QZPaintGraphConfigWC.ConfigLineTypeDashed", "Dashed"},
    {"QZPaintGraphConfigWC.ConfigLineTypeDotted", "Dotted"},
    {"QZPaintGraphConfigWC.ConfigLineTypeDashedDotted", "Dash and dot"},
    {"QZPaintGraphConfigWC.ConfigLineTypeDashedDottedDotted", "Dash and two dots"},
}};

/// Distance of the strip from the top of the chart window where it first appears (px).
constexpr int topDistance = 40;
constexpr int separatorWidth = 1;

QZPaletteLoad& theme()
{
    return QZGlobalEnv::getShareInstance().paletteLoad();
}

QColor defaultStrokeColor()
{
    return theme()
        .getCustomColor(QStringLiteral("QZLinePaintToolFactory.DefaultLineColor"))
        .value_or(QColor(254, 100, 0));
}

QPixmap themePicture(const char* key)
{
    return QPixmap::fromImage(theme().getCustomImage(QLatin1String(key)));
}

QWidget* createControl(const QString& className, const QString& /*name*/, QWidget* parent)
{
    if (className == QLatin1String("QZPaintGraphConfigTitleView"))
        return new QZPaintGraphConfigTitleView(parent);
    if (className == QLatin1String("QZPaintGraphConfigColorWell"))
        return new QZPaintGraphConfigColorWell(parent);
    if (className == QLatin1String("QZPopUpButton"))
        return new QZPopUpButton(parent);
    return nullptr;
}

} // namespace

QZPaintGraphConfigWC& QZPaintGraphConfigWC::sharedWC()
{
    return QZSharedInstance<QZPaintGraphConfigWC>::get(
        [] { return std::make_unique<QZPaintGraphConfigWC>(QStringLiteral("QZPaintGraphConfigWC")); });
}

QZPaintGraphConfigWC* QZPaintGraphConfigWC::existing()
{
    return QZSharedInstance<QZPaintGraphConfigWC>::existing();
}

QZPaintGraphConfigWC::QZPaintGraphConfigWC(const QString& interfaceFile) : window_(Qt::FramelessWindowHint)
{
    initGraphConfigResources();
    loadOutlets(interfaceFile);
    windowDidLoad();
    styleObservation_ = QZNotificationCenter::defaultCenter().observe(QZUIOverallStyleDidChangeNotification,
                                                                      [this](const QZNotification&) { applyTheme(); });
}

QZPaintGraphConfigWC::~QZPaintGraphConfigWC()
{
    // The window goes last, hiding on its way: by then there is nothing left to follow it.
    window_.removeEventFilter(this);
}

template <typename Widget>
Widget* QZPaintGraphConfigWC::outlet(const QString& name)
{
    if (auto* found = contents_ == nullptr ? nullptr : contents_->findChild<Widget*>(name))
        return found;
    if (contents_ != nullptr)
        writeBusCommonLog(QStringLiteral("The graph configuration strip's interface file has no %1").arg(name));
    // Abstract buttons are the one case that needs a concrete class.
    using Concrete = std::conditional_t<std::is_same_v<Widget, QAbstractButton>, QToolButton, Widget>;
    auto* substitute = new Concrete(&window_);
    substitute->setVisible(false);
    substitute->resize(0, 0);
    return substitute;
}

void QZPaintGraphConfigWC::loadOutlets(const QString& interfaceFile)
{
    QZInterfaceLoader loader(createControl);
    contents_ = loader.loadInterface(interfaceFile, &window_);
    if (contents_ == nullptr)
        writeBusCommonLog(QStringLiteral("The graph configuration strip has no interface file %1").arg(interfaceFile));
    titleView_ = outlet<QZPaintGraphConfigTitleView>(QStringLiteral("titleView"));
    btnEdit_ = outlet<QAbstractButton>(QStringLiteral("btnEdit"));
    cwStrokeColor_ = outlet<QZPaintGraphConfigColorWell>(QStringLiteral("cwStrokeColor"));
    cwFillColor_ = outlet<QZPaintGraphConfigColorWell>(QStringLiteral("cwFillColor"));
    popLineType_ = outlet<QZPopUpButton>(QStringLiteral("popLineType"));
    popLineWidth_ = outlet<QZPopUpButton>(QStringLiteral("popLineWidth"));
    btnIsLocked_ = outlet<QAbstractButton>(QStringLiteral("btnIsLocked"));
    btnDelete_ = outlet<QAbstractButton>(QStringLiteral("btnDelete"));

    const std::array<QWidget*, 7> controls{btnEdit_,      cwStrokeColor_, cwFillColor_, popLineType_,
                                           popLineWidth_, btnIsLocked_,   btnDelete_};
    for (std::size_t bit = 0; bit < configs_.size(); ++bit) {
        if (contents_ == nullptr || !contents_->isAncestorOf(controls[bit]))
            continue;
        configs_[bit] = {outlet<QWidget>(QStringLiteral("boxVertical%1").arg(bit + 1)), controls[bit]};
    }
}

void QZPaintGraphConfigWC::windowDidLoad()
{
    window_.setWindowTitle(QStringLiteral("Drawing style"));
    stackContainer_ = new QWidget(contents_ == nullptr ? &window_ : contents_);
    auto* stack = new QHBoxLayout(stackContainer_);
    stack->setContentsMargins({});
    stack->setSpacing(0);
    for (const Config& config : configs_) {
        if (config.control == nullptr)
            continue;
        config.separator->setFixedWidth(separatorWidth);
        config.control->setFixedSize(config.control->size());
        stack->addWidget(config.separator);
        stack->addWidget(config.control);
        config.separator->setBackgroundRole(QPalette::Mid);
        config.separator->setAutoFillBackground(true);
        config.control->installEventFilter(this);
    }
    btnIsLocked_->setCheckable(true);
    cwStrokeColor_->setColor(defaultStrokeColor());
    chosenLine_.color = defaultStrokeColor();
    prepareItems();
    popLineType_->selectItemWithTag(static_cast<int>(lineType_));
    popLineWidth_->selectItemWithTag(lineWidth_ - 1);
    connectControls();
    applyTheme();
    layOutControls();
}

void QZPaintGraphConfigWC::connectControls()
{
    connect(btnEdit_, &QAbstractButton::clicked, this, &QZPaintGraphConfigWC::clickedEdit);
    connect(&window_, &QZPanelWindow::chartResized, this, &QZPaintGraphConfigWC::keepOverChart);
    connect(cwStrokeColor_, &QAbstractButton::clicked, this, [this] { colorPicker_.pick(*cwStrokeColor_); });
    connect(cwFillColor_, &QAbstractButton::clicked, this,
            [this] { colorPicker_.pick(*cwFillColor_, QColorDialog::ShowAlphaChannel); });
    connect(&colorPicker_, &QZColorPicker::colorPicked, this, [this](const QZPaintGraphConfigColorWell* well) {
        if (well == cwStrokeColor_)
            selectedStrokeColor();
        else
            selectedFillColor();
    });
    connect(popLineType_, &QZPopUpButton::itemPicked, this, &QZPaintGraphConfigWC::selectedLineType);
    connect(popLineWidth_, &QZPopUpButton::itemPicked, this, &QZPaintGraphConfigWC::selectedLineWidth);
    for (const QZPopUpButton* popUp : {popLineType_, popLineWidth_}) // picked from or not
        connect(&popUp->menu(), &QMenu::aboutToHide, &window_, &QZPanelWindow::returnKeyboard);
    // Not its click, which assistive technology leaves out.
    connect(btnIsLocked_, &QAbstractButton::toggled, this, &QZPaintGraphConfigWC::clickedIsLocked);
    connect(btnDelete_, &QAbstractButton::clicked, this, &QZPaintGraphConfigWC::clickedDelete);
    connect(&window_, &QZPanelWindow::willClose, this, &QZPaintGraphConfigWC::windowWillClose);
    window_.installEventFilter(this);
}

void QZPaintGraphConfigWC::prepareItems()
{
    for (QZPopUpButtonMenuItem* item : popLineType_->items()) {
        if (static_cast<std::size_t>(item->tag()) >= lineTypeItems.size())
            continue;
        const LineTypeItem& type = lineTypeItems.at(static_cast<std::size_t>(item->tag()));
        item->setHighlightImageName(QLatin1String(type.key));
        item->setText(QLatin1String(type.name));
    }
    for (QZPopUpButtonMenuItem* item : popLineWidth_->items()) {
        const double width = item->tag() + 1.0;
        item->setHighlightImageName(QStringLiteral("QZPaintGraphConfigWC.ConfigLineWidth%1").arg(width));
        item->setText(QStringLiteral("%1 px").arg(width));
        // An interface file may list wider lines than the theme has pictures of.
        item->setSamplePen(QPen(QBrush(Qt::SolidPattern), width, Qt::SolidLine, Qt::FlatCap));
    }
}

void QZPaintGraphConfigWC::applyTheme()
{
    window_.setPalette(panelColors(window_.palette()));
    titleView_->loadImage();
    btnEdit_->setIcon(themePicture("QZPaintGraphConfigWC.ConfigTextEdit"));
    btnDelete_->setIcon(themePicture("QZPaintGraphConfigWC.ConfigDelete"));
    QIcon lock(themePicture("QZPaintGraphConfigWC.ConfigUnlock"));
    lock.addPixmap(themePicture("QZPaintGraphConfigWC.ConfigLocked"), QIcon::Normal, QIcon::On);
    btnIsLocked_->setIcon(lock);
    for (QZPopUpButton* popUp : {popLineType_, popLineWidth_}) {
        for (QZPopUpButtonMenuItem* item : popUp->items())
            item->loadImages();
        popUp->update();
    }
}

void QZPaintGraphConfigWC::setEnabledConfigs(std::uint64_t enabledConfigs)
{
    if (enabledConfigs_ == enabledConfigs)
        return;
    enabledConfigs_ = enabledConfigs;
    layOutControls();
    if (const auto* well = colorPicker_.activeWell(); well != nullptr && well->isHidden())
        windowWillClose();
}

void QZPaintGraphConfigWC::layOutControls()
{
    if (contents_ == nullptr) {
        window_.resize(1, 1);
        return;
    }
    const int titleWidth = titleView_->width();
    int width = titleWidth;
    for (std::size_t bit = 0; bit < configs_.size(); ++bit) {
        const Config& config = configs_[bit];
        if (config.control == nullptr)
            continue;
        const bool isShown = (enabledConfigs_ >> bit & 1U) != 0;
        config.separator->setVisible(isShown);
        config.control->setVisible(isShown);
        if (isShown)
            width += config.control->width() + separatorWidth;
    }
    const int height = contents_->height();
    window_.resize(width, height);
    contents_->setGeometry(window_.rect());
    stackContainer_->setGeometry(titleWidth, 0, window_.width() - titleWidth, height);
    stackContainer_->layout()->activate();
}

void QZPaintGraphConfigWC::placeOverChart()
{
    const QWidget* chart = window_.chartWindow();
    if (chart == nullptr)
        return;
    // Only where it first appears: afterwards it stays where its user puts it, but for another chart window.
    const QRect frame = chart->geometry();
    if (!window_.testAttribute(Qt::WA_Moved))
        window_.move(frame.center().x() - window_.width() / 2, frame.top() + topDistance);
    if (placedOver_ != chart)
        isOutside_ = false;
    placedOver_ = chart;
    keepOverChart();
}

void QZPaintGraphConfigWC::keepOverChart()
{
    const QWidget* chart = window_.chartWindow();
    // Before it is shown it has no place yet.
    if (chart == nullptr || placedOver_ != chart || isOutside_)
        return;
    const QRect frame = chart->geometry();
    const QPoint last = frame.bottomRight() - QPoint(window_.width() - 1, window_.height() - 1);
    const QPoint now = window_.pos();
    window_.move(std::max(frame.left(), std::min(now.x(), last.x())),
                 std::max(frame.top(), std::min(now.y(), last.y())));
}

bool QZPaintGraphConfigWC::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == &window_) {
        if (event->type() == QEvent::Show && !event->spontaneous())
            placeOverChart();
        else if (event->type() == QEvent::Resize)
            keepOverChart();
        else if (event->type() == QEvent::Move && placedOver_ != nullptr && placedOver_ == window_.chartWindow())
            isOutside_ = !placedOver_->geometry().contains(window_.geometry());
        // A strip that is taken off the screen without being closed must not leave its picker behind.
        if (event->type() == QEvent::Hide && !event->spontaneous())
            windowWillClose();
    } else if (event->type() == QEvent::KeyPress) {
        const auto* keyEvent = static_cast<QKeyEvent*>(event);
        const int key = keyEvent->key();
        auto* button = qobject_cast<QAbstractButton*>(watched);
        if (button != nullptr && (key == Qt::Key_Return || key == Qt::Key_Enter)) {
            if (!keyEvent->isAutoRepeat())
                button->click();
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}
