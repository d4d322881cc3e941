#include "model/QZPaintDefaults.h"

#include "platform/QZGlobalEnv.h"

namespace {

const QZPaintDefaults* ofHost = nullptr;
const QZPaintDefaults* ofPanels = nullptr;

} // namespace

QZPaintDefaults::~QZPaintDefaults()
{
    if (ofHost == this)
        ofHost = nullptr;
    if (ofPanels == this)
        ofPanels = nullptr;
}

std::uint64_t QZPaintDefaults::lineType() const
{
    return 0;
}

double QZPaintDefaults::lineWidth() const
{
    return 1.0;
}

QColor QZPaintDefaults::strokeColor() const
{
    return QZGlobalEnv::getShareInstance()
        .paletteLoad()
        .getCustomColor(QStringLiteral("QZLinePaintToolFactory.DefaultLineColor"))
        .value_or(QColor(254, 100, 0));
}

QColor QZPaintDefaults::fillColor() const
{
    return {};
}

QString QZPaintDefaults::text() const
{
    return QStringLiteral("新建");
}

double QZPaintDefaults::textSize() const
{
    return 12.0;
}

bool QZPaintDefaults::isMagnet() const
{
    return false;
}

const QZPaintDefaults& QZPaintDefaults::current()
{
    static const QZPaintDefaults initial;
    if (ofHost != nullptr)
        return *ofHost;
    return ofPanels == nullptr ? initial : *ofPanels;
}

void QZPaintDefaults::setCurrent(const QZPaintDefaults* defaults)
{
    ofHost = defaults;
}

void QZPaintDefaults::setPanels(const QZPaintDefaults* defaults)
{
    ofPanels = defaults;
}
