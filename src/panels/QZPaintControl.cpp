#include "panels/QZPaintControl.h"

#include "model/QZPaintGraph.h"
#include "model/QZPaintOptions.h"
#include "panels/QZInterfaceLoader.h"
#include "panels/QZPaintGraphConfigWC.h"
#include "panels/QZSharedInstance.h"
#include "platform/QZFrameComFun.h"
#include "platform/QZGlobalEnv.h"
#include "platform/QZLog.h"

#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

// A static library's resources must be asked for by name, and the macro works only outside any namespace.
static void initPaletteResources()
{
    Q_INIT_RESOURCE(qz_palette);
}

namespace {

constexpr int captionSize = 10; // px

std::uint64_t typeOf(const QAbstractButton& button)
{
    return static_cast<std::uint64_t>(enumQZShapeType(button.objectName()));
}

QWidget* createButton(const QString& className, const QString& name, QWidget* parent)
{
    if (className == QLatin1String("QZPaintControlButton"))
        return new QZPaintControlButton(name, parent);
    if (className == QLatin1String("QZPaintToolCtrlBtn"))
        return new QZPaintToolCtrlBtn(name, parent);
    return nullptr;
}

} // namespace

QZPaintControl& QZPaintControl::sharedManager()
{
    return QZSharedInstance<QZPaintControl>::get(
        [] { return std::make_unique<QZPaintControl>(QStringLiteral("QZPaintControl")); });
}

QZPaintControl* QZPaintControl::existing()
{
    return QZSharedInstance<QZPaintControl>::existing();
}

QZPaintControl::QZPaintControl(const QString& interfaceFile)
    : window_(Qt::WindowTitleHint | Qt::WindowCloseButtonHint | Qt::CustomizeWindowHint)
{
    initPaletteResources();
    auto& center = QZNotificationCenter::defaultCenter();
    observations_ = {
        center.observe(QZPaintSyncGraphTypeNotification,
                       [this](const QZNotification& notification) { syncButtonSelection(notification); }),
        center.observe(QZUIOverallStyleDidChangeNotification, [this](const QZNotification&) { configWindowColors(); })};
    connect(&window_, &QZPanelWindow::willClose, this, &QZPaintControl::windowWillClose);

    QZInterfaceLoader loader(createButton);
    content_ = loader.loadInterface(interfaceFile, &window_);
    if (content_ == nullptr)
        writeBusCommonLog(QStringLiteral("The tool palette has no interface file %1").arg(interfaceFile));
    windowDidLoad();
}

QZPaintControl::~QZPaintControl() = default;

void QZPaintControl::windowDidLoad()
{
    window_.setWindowTitle(QStringLiteral("Drawing tools"));
    configWindowColors();
    if (content_ == nullptr)
        return;
    auto* layout = new QVBoxLayout(&window_);
    layout->setContentsMargins({});
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addWidget(content_);

    for (auto* button : content_->findChildren<QAbstractButton*>(QString(), Qt::FindDirectChildrenOnly))
        button->setEnabled((enableTypes_ & typeOf(*button)) != 0);
    for (QZPaintControlButton* button : buttons())
        connectAction(*button);
    for (auto* caption : content_->findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly)) {
        QFont font = caption->font();
        font.setPixelSize(captionSize);
        caption->setFont(font);
    }
}

void QZPaintControl::configWindowColors()
{
    const QColor background = QZGlobalEnv::getShareInstance()
                                  .paletteLoad()
                                  .getCustomColor(QStringLiteral("QZLinePaintToolFactory.PanelBackgroundColor"))
                                  .value_or(QColor(Qt::white));
    const bool isDark = background.lightnessF() < 0.5F;
    QPalette colors = window_.palette();
    colors.setColor(QPalette::Window, background);
    // The captions, which are to be greyed but still legible.
    colors.setColor(QPalette::WindowText, isDark ? QColor(0xA3, 0xA9, 0xB3) : QColor(0x66, 0x6B, 0x75));
    window_.setPalette(colors);
}

void QZPaintControl::connectAction(QZPaintControlButton& button)
{
    struct Action {
        QLatin1StringView name;
        void (QZPaintControl::*run)(QZPaintControlButton& sender) = nullptr;
    };
    static constexpr std::array actions{
        Action{QLatin1StringView("changeShape"), &QZPaintControl::changeShape},
        Action{QLatin1StringView("setMagnetAction"), &QZPaintControl::setMagnetAction},
        Action{QLatin1StringView("deleteAllGraphs"), &QZPaintControl::deleteAllGraphs},
        Action{QLatin1StringView("eyeAction"), &QZPaintControl::eyeAction},
    };
    const QString name = button.property("action").toString();
    const auto* action = std::ranges::find_if(actions, [&name](const Action& row) { return name == row.name; });
    if (action == actions.end()) {
        writeBusCommonLog(QStringLiteral("Palette button %1 has the unknown action %2").arg(button.objectName(), name));
        return;
    }
    connect(&button, &QAbstractButton::clicked, this, [this, &button, run = action->run] { (this->*run)(button); });
}

QList<QZPaintControlButton*> QZPaintControl::buttons() const
{
    if (content_ == nullptr)
        return {};
    return content_->findChildren<QZPaintControlButton*>(QString(), Qt::FindDirectChildrenOnly);
}

void QZPaintControl::setDelegate(QZPaintControlWCDelegate* delegate)
{
    QZPaintControlWCDelegate* before = this->delegate();
    delegate_ = delegate;
    delegateLifetime_.reset();
    if (delegate != nullptr)
        delegateLifetime_ = delegate->lifetime_;
    if (before == delegate || lastSelectedBtn_ == nullptr)
        return;
    if (before != nullptr)
        before->changeShapeTo(QZShapeTypeNone, {});
    if (delegate == nullptr)
        resetAllButtons(false);
    else
        sendShape();
}

void QZPaintControl::sendShape() const
{
    QZPaintControlWCDelegate* receiver = delegate();
    if (receiver == nullptr || lastSelectedBtn_ == nullptr)
        return;
    const auto& images = lastSelectedBtn_->images();
    receiver->changeShapeTo(selectedType(), images.empty() ? QImage() : images.front());
}

QZPaintControlWCDelegate* QZPaintControl::delegate() const
{
    return delegateLifetime_.expired() ? nullptr : delegate_;
}

void QZPaintControl::setEnableTypes(std::uint64_t enableTypes)
{
    if (enableTypes_ == enableTypes)
        return;
    enableTypes_ = enableTypes;
    const QString eye = strQZShapeType(QZSTToolEye);
    for (QZPaintControlButton* button : buttons()) {
        const bool isAllowed = (enableTypes_ & typeOf(*button)) != 0;
        button->setEnabled(isAllowed && (!hidden_ || button->objectName() == eye));
    }
}

void QZPaintControl::setControlKey(const QString& controlKey)
{
    if (controlKey_ == controlKey)
        return;
    controlKey_ = controlKey;
    if (!configDict_) {
        configDict_ = QZPaintControlProfiles::readFile(QZFrameComFun::getStorageFilePath(
            QZFrameComFun::applicationStorage, QString(), QStringLiteral("QZPaintControl.plist"), false));
    }
    setEnableTypes(configDict_->enableTypes(controlKey_));
}

QZShapeType QZPaintControl::selectedType() const
{
    return lastSelectedBtn_ == nullptr ? QZShapeTypeNone : enumQZShapeType(lastSelectedBtn_->objectName());
}

QZPanelWindow& QZPaintControl::assistantPanel()
{
    return QZPaintGraphConfigWC::sharedWC().window();
}

void QZPaintControl::changeShape(QZPaintControlButton& sender)
{
    if (lastSelectedBtn_ != &sender) {
        if (lastSelectedBtn_ != nullptr)
            lastSelectedBtn_->setSelected(false);
        sender.setSelected(true);
        lastSelectedBtn_ = &sender;
        sendShape();
    }
    returnKeyboard();
}

void QZPaintControl::returnKeyboard()
{
    if (QWindow* mainWindow = QZGlobalEnv::getShareInstance().mainWindow())
        mainWindow->requestActivate();
}

void QZPaintControl::setMagnetAction(QZPaintControlButton& sender)
{
    magnet_ = !magnet_;
    sender.setSelected(QZPaintOptions::current().magnetButtonTellsTruth ? magnet_ : !sender.isSelected());
    returnKeyboard();
}

void QZPaintControl::deselect(QZPaintControlButton& button) const
{
    const bool isMagnetButton = button.objectName() == strQZShapeType(QZSTToolMagnet);
    button.setSelected(magnet_ && isMagnetButton && QZPaintOptions::current().magnetButtonTellsTruth);
}

void QZPaintControl::deleteAllGraphs(QZPaintControlButton& /*sender*/)
{
    if (auto* receiver = delegate())
        receiver->removeAllGraphs(*this);
    returnKeyboard();
}

void QZPaintControl::eyeAction(QZPaintControlButton& sender)
{
    for (QZPaintControlButton* button : buttons()) {
        if (button == &sender || (enableTypes_ & typeOf(*button)) == 0)
            continue;
        deselect(*button);
        // A flip, not a set: what a host enabled or disabled by hand in between ends up inverted.
        button->setEnabled(!button->isEnabled());
    }
    // It may have been chosen before enableTypes lost it.
    if (lastSelectedBtn_ != nullptr)
        lastSelectedBtn_->setSelected(false);
    lastSelectedBtn_ = nullptr;
    hidden_ = !hidden_;
    sender.setSelected(!sender.isSelected());
    if (auto* receiver = delegate())
        receiver->showOrHiddenAllGraphs(*this);
    returnKeyboard();
}

void QZPaintControl::syncButtonSelection(const QZNotification& notification)
{
    const auto* graph = dynamic_cast<const QZPaintGraph*>(notification.object);
    const QString name = graph == nullptr ? QString() : strQZShapeType(graph->type());
    if (name.isEmpty())
        return;
    for (QZPaintControlButton* button : buttons()) {
        if (button->objectName() != name)
            continue;
        button->setSelected(graph->isEditing());
        if (button == lastSelectedBtn_ && !button->isSelected())
            lastSelectedBtn_ = nullptr;
    }
}

void QZPaintControl::resetAllButtons(bool includingFunctions)
{
    for (QZPaintControlButton* button : buttons()) {
        if (includingFunctions || !button->isFnButton())
            deselect(*button);
    }
    if (lastSelectedBtn_ != nullptr)
        lastSelectedBtn_->setSelected(false);
    lastSelectedBtn_ = nullptr;
}

void QZPaintControl::windowWillClose()
{
    resetAllButtons(false);
    if (auto* receiver = delegate())
        receiver->windowWillClosed(*this);
}
