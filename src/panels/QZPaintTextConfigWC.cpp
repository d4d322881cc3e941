#include "panels/QZPaintTextConfigWC.h"

#include "panels/QZInterfaceLoader.h"
#include "panels/QZPanelTheme.h"
#include "panels/QZSharedInstance.h"
#include "platform/QZFont.h"
#include "platform/QZGlobalEnv.h"
#include "platform/QZLog.h"

#include <QLayout>
#include <QScreen>
#include <QSignalBlocker>

#include <algorithm>

// A static library's resources must be asked for by name, and the macro works only outside any namespace.
static void initTextConfigResources()
{
    Q_INIT_RESOURCE(qz_text_config);
}

namespace {

constexpr std::int64_t initialSize = 12; // px, a new note's

QWidget* createControl(const QString& className, const QString& /*name*/, QWidget* parent)
{
    if (className == QLatin1String("QZPaintTextField"))
        return new QZPaintTextField(parent);
    if (className == QLatin1String("QZPaintGraphConfigColorWell"))
        return new QZPaintGraphConfigColorWell(parent);
    return nullptr;
}

} // namespace

QZPaintTextConfigWC& QZPaintTextConfigWC::sharedWC()
{
    return QZSharedInstance<QZPaintTextConfigWC>::get(
        [] { return std::make_unique<QZPaintTextConfigWC>(QStringLiteral("QZPaintTextConfigWC")); });
}

QZPaintTextConfigWC* QZPaintTextConfigWC::existing()
{
    return QZSharedInstance<QZPaintTextConfigWC>::existing();
}

QZPaintTextConfigWC::QZPaintTextConfigWC(const QString& interfaceFile)
{
    initTextConfigResources();
    contents_ = QZInterfaceLoader(createControl).loadInterface(interfaceFile, &window_);
    if (contents_ == nullptr)
        writeBusCommonLog(QStringLiteral("The text configuration panel has no interface file %1").arg(interfaceFile));
    txtText_ = outlet<QZPaintTextField>(QStringLiteral("txtText"));
    cwColor_ = outlet<QZPaintGraphConfigColorWell>(QStringLiteral("cwColor"));
    popSize_ = outlet<QComboBox>(QStringLiteral("popSize"));
    windowDidLoad();
    styleObservation_ = QZNotificationCenter::defaultCenter().observe(QZUIOverallStyleDidChangeNotification,
                                                                      [this](const QZNotification&) { applyTheme(); });
}

QZPaintTextConfigWC::~QZPaintTextConfigWC()
{
    window_.removeEventFilter(this);
}

template <typename Widget>
Widget* QZPaintTextConfigWC::outlet(const QString& name)
{
    if (auto* found = contents_ == nullptr ? nullptr : contents_->findChild<Widget*>(name))
        return found;
    if (contents_ != nullptr)
        writeBusCommonLog(QStringLiteral("The text configuration panel's interface file has no %1").arg(name));
    auto* substitute = new Widget(&window_);
    substitute->setVisible(false);
    return substitute;
}

void QZPaintTextConfigWC::windowDidLoad()
{
    window_.setWindowTitle(QStringLiteral("Text"));
    for (int i = 0; i < popSize_->count(); ++i)
        popSize_->setItemData(i, popSize_->itemText(i).toLongLong());
    setText(QStringLiteral("新建"));
    setSize(initialSize);
    connect(txtText_, &QPlainTextEdit::textChanged, this, &QZPaintTextConfigWC::controlTextDidChange);
    connect(txtText_, &QZPaintTextField::editingEnded, this, &QZPaintTextConfigWC::editedText);
    connect(cwColor_, &QAbstractButton::clicked, this, [this] { colorPicker_.pick(*cwColor_); });
    connect(&colorPicker_, &QZColorPicker::colorPicked, this, &QZPaintTextConfigWC::selectedColor);
    connect(popSize_, &QComboBox::activated, this, &QZPaintTextConfigWC::selectedSize);
    window_.installEventFilter(this);
    applyTheme();
    if (contents_ != nullptr && contents_->layout() != nullptr)
        contents_->layout()->activate();
    sizeToFit();
}

void QZPaintTextConfigWC::applyTheme()
{
    window_.setPalette(panelColors(window_.palette()));
    showFieldIn(color());
}

void QZPaintTextConfigWC::orderFront(const QWidget& chart, QPoint topLeft)
{
    sizeToFit();
    const QRect screen = chart.screen()->availableGeometry();
    window_.move(std::min(topLeft.x(), screen.right() - window_.width()),
                 std::min(topLeft.y(), screen.bottom() - window_.height()));
    window_.addToWindowOf(chart);
    window_.activateWindow();
    txtText_->setFocus();
    txtText_->selectAll();
}

void QZPaintTextConfigWC::setDelegate(QZPaintTextConfigWCDelegate* delegate)
{
    delegate_ = delegate;
    delegateLifetime_ = delegate == nullptr ? std::weak_ptr<void>() : delegate->lifetime_;
}

QZPaintTextConfigWCDelegate* QZPaintTextConfigWC::delegate() const
{
    return delegateLifetime_.expired() ? nullptr : delegate_;
}

void QZPaintTextConfigWC::setText(const QString& text)
{
    const QSignalBlocker silent(txtText_);
    txtText_->setPlainText(text);
    toldText_ = this->text();
    sizeToFit();
}

void QZPaintTextConfigWC::setColor(const QColor& color)
{
    cwColor_->setColor(color);
    colorPicker_.reload(*cwColor_);
    showFieldIn(color);
}

void QZPaintTextConfigWC::showFieldIn(const QColor& color)
{
    QPalette colors = txtText_->palette();
    colors.setColor(QPalette::Text, color.isValid() ? color : window_.palette().color(QPalette::Text));
    txtText_->setPalette(colors);
}

void QZPaintTextConfigWC::setSize(std::int64_t size)
{
    popSize_->setCurrentIndex(popSize_->findData(static_cast<qlonglong>(size)));
    showFieldAt(size);
    sizeToFit();
}

std::int64_t QZPaintTextConfigWC::size() const
{
    return popSize_->currentData().toLongLong();
}

void QZPaintTextConfigWC::showFieldAt(std::int64_t size)
{
    txtText_->setFont(labelFont(static_cast<double>(size)));
}

void QZPaintTextConfigWC::editedText()
{
    window_.close();
}

void QZPaintTextConfigWC::selectedColor()
{
    showFieldIn(color());
    if (auto* told = delegate())
        told->paintTextConfigColorDidChange(*this, color());
}

void QZPaintTextConfigWC::selectedSize()
{
    showFieldAt(size());
    if (auto* told = delegate())
        told->paintTextConfigSizeDidChange(*this, size());
    sizeToFit();
    txtText_->setFocus();
}

void QZPaintTextConfigWC::controlTextDidChange()
{
    if (text() != toldText_) {
        toldText_ = text();
        if (auto* told = delegate())
            told->paintTextConfigTextDidChange(*this, toldText_);
    }
    sizeToFit();
}

void QZPaintTextConfigWC::sizeToFit()
{
    if (contents_ == nullptr)
        return;
    const int growth = txtText_->naturalHeight() - txtText_->height();
    txtText_->setFixedHeight(txtText_->naturalHeight());
    const QLayout* layout = contents_->layout();
    const int height = layout == nullptr ? contents_->height() + growth : layout->totalMinimumSize().height();
    contents_->resize(contents_->width(), height);
    window_.resize(contents_->size());
}

bool QZPaintTextConfigWC::eventFilter(QObject* watched, QEvent* event)
{
    // A window that is taken off the screen must not leave its colour picker behind.
    if (watched == &window_ && event->type() == QEvent::Hide && !event->spontaneous())
        colorPicker_.close();
    return QObject::eventFilter(watched, event);
}
