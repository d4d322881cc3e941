#include "model/QZPaintDefaults.h"

#include "platform/QZGlobalEnv.h"

namespace {

const QZPaintDefaults* installed = nullptr;

} // namespace

QZPaintDefaults::~QZPaintDefaults()
{
    if (installed == this)
        installed = nullptr;
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
    return installed == nullptr ? initial : *installed;
}

void QZPaintDefaults::setCurrent(const QZPaintDefaults* defaults)
{
    installed = defaults;
}
