#include "app/picture/SvgDevice.h"

#include <QBuffer>
#include <QFontInfo>
#include <QPaintEngine>
#include <QPainterPath>
#include <QXmlStreamWriter>

#include <cmath>
#include <limits>

namespace {

constexpr int dotsPerInch = 96;
constexpr double pointsPerInch = 72;
constexpr double millimetresPerInch = 25.4;

QString number(double value)
{
    return QString::number(value, 'g', 7);
}

QString pathData(const QPainterPath& path)
{
    QString data;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        if (element.isMoveTo())
            data += u'M';
        else if (element.isLineTo())
            data += u'L';
        else
            data += element.isCurveTo() ? u'C' : u' ';
        data += number(element.x) + u',' + number(element.y);
    }
    return data;
}

QString capName(Qt::PenCapStyle cap)
{
    return cap == Qt::FlatCap     ? QStringLiteral("butt")
           : cap == Qt::SquareCap ? QStringLiteral("square")
                                  : QStringLiteral("round");
}

QString joinName(Qt::PenJoinStyle join)
{
    return join == Qt::BevelJoin   ? QStringLiteral("bevel")
           : join == Qt::RoundJoin ? QStringLiteral("round")
                                   : QStringLiteral("miter");
}

/// Without the control characters that XML has no form for.
QString writable(QString text)
{
    text.removeIf([](QChar each) { return each.unicode() < u' ' && each != u'\t'; });
    return text;
}

} // namespace

class SvgEngine final : public QPaintEngine {
public:
    explicit SvgEngine(QSizeF size)
        : QPaintEngine(AllFeatures & ~(PatternBrush | PerspectiveTransform | ConicalGradientFill | PorterDuff)),
          size_(size)
    {}

    [[nodiscard]] const QByteArray& document() const { return document_; }

    bool begin(QPaintDevice* /*device*/) override;
    bool end() override;
    [[nodiscard]] Type type() const override { return SVG; }
    void updateState(const QPaintEngineState& newState) override;
    void drawPath(const QPainterPath& path) override;
    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override;
    void drawRects(const QRectF* rects, int count) override;
    void drawPixmap(const QRectF& target, const QPixmap& pixmap, const QRectF& source) override;
    void drawTextItem(const QPointF& origin, const QTextItem& item) override;

    // The base hands them on to those above.
    using QPaintEngine::drawPolygon;
    using QPaintEngine::drawRects;

private:
    void attribute(const char* name, const QString& value) { xml_.writeAttribute(QLatin1String(name), value); }
    void attribute(const char* name, double value) { attribute(name, number(value)); }
    void color(const char* name, const QColor& value);
    /// Starts an element among those with the same clip and transform.
    void startElement(const char* name);
    void leaveGroups();
    void strokeStyle();
    void fillStyle(bool isFilled);
    void combineClip(const QPainterPath& path, Qt::ClipOperation operation);

    QSizeF size_;
    QBuffer buffer_;
    QXmlStreamWriter xml_;
    QByteArray document_;

    QPen pen_;
    QBrush brush_;
    double opacity_ = 1;
    QTransform transform_;
    QPainterPath clip_; // px of the picture
    bool isClipped_ = false;
    bool isGroupStale_ = true;
    int openGroups_ = 0;
    int clipCount_ = 0;
};

bool SvgEngine::begin(QPaintDevice* /*device*/)
{
    buffer_.open(QIODevice::WriteOnly | QIODevice::Truncate);
    xml_.setDevice(&buffer_);
    xml_.setAutoFormatting(true);
    xml_.setAutoFormattingIndent(0);
    xml_.writeStartDocument();
    xml_.writeStartElement(QStringLiteral("svg"));
    xml_.writeDefaultNamespace(QStringLiteral("http://www.w3.org/2000/svg"));
    xml_.writeNamespace(QStringLiteral("http://www.w3.org/1999/xlink"), QStringLiteral("xlink"));
    attribute("width", size_.width());
    attribute("height", size_.height());
    attribute("viewBox", QStringLiteral("0 0 %1 %2").arg(number(size_.width()), number(size_.height())));
    return true;
}

bool SvgEngine::end()
{
    leaveGroups();
    xml_.writeEndDocument();
    document_ = buffer_.buffer();
    buffer_.close();
    return !xml_.hasError();
}

void SvgEngine::updateState(const QPaintEngineState& newState)
{
    const DirtyFlags changed = newState.state();
    if (changed.testFlag(DirtyTransform)) {
        isGroupStale_ = isGroupStale_ || transform_ != newState.transform();
        transform_ = newState.transform();
    }
    if (changed.testFlag(DirtyPen))
        pen_ = newState.pen();
    if (changed.testFlag(DirtyBrush))
        brush_ = newState.brush();
    if (changed.testFlag(DirtyOpacity))
        opacity_ = newState.opacity();
    if (changed.testFlag(DirtyClipEnabled) && isClipped_ != newState.isClipEnabled()) {
        isClipped_ = newState.isClipEnabled();
        isGroupStale_ = true;
    }
    if (changed.testFlag(DirtyClipPath)) {
        combineClip(newState.clipPath(), newState.clipOperation());
    } else if (changed.testFlag(DirtyClipRegion)) {
        QPainterPath path;
        path.addRegion(newState.clipRegion());
        combineClip(path, newState.clipOperation());
    }
}

void SvgEngine::combineClip(const QPainterPath& path, Qt::ClipOperation operation)
{
    const QPainterPath mapped = transform_.map(path);
    clip_ = operation == Qt::IntersectClip && isClipped_ ? clip_.intersected(mapped) : mapped;
    isClipped_ = operation != Qt::NoClip;
    isGroupStale_ = true;
}

void SvgEngine::leaveGroups()
{
    for (; openGroups_ > 0; --openGroups_)
        xml_.writeEndElement();
}

void SvgEngine::startElement(const char* name)
{
    if (isGroupStale_) {
        leaveGroups();
        isGroupStale_ = false;
        if (isClipped_) {
            const QString id = QStringLiteral("clip%1").arg(++clipCount_);
            xml_.writeStartElement(QStringLiteral("clipPath"));
            attribute("id", id);
            xml_.writeEmptyElement(QStringLiteral("path"));
            attribute("d", pathData(clip_));
            xml_.writeEndElement();
            xml_.writeStartElement(QStringLiteral("g"));
            attribute("clip-path", QStringLiteral("url(#%1)").arg(id));
            ++openGroups_;
        }
        if (!transform_.isIdentity()) {
            const QTransform& t = transform_;
            xml_.writeStartElement(QStringLiteral("g"));
            attribute("transform", QStringLiteral("matrix(%1 %2 %3 %4 %5 %6)")
                                       .arg(number(t.m11()), number(t.m12()), number(t.m21()), number(t.m22()),
                                            number(t.dx()), number(t.dy())));
            ++openGroups_;
        }
    }
    xml_.writeStartElement(QLatin1String(name));
}

void SvgEngine::color(const char* name, const QColor& value)
{
    attribute(name, value.name());
    if (const double opacity = value.alphaF() * opacity_; opacity < 1)
        attribute(qPrintable(QLatin1String(name) + QStringLiteral("-opacity")), opacity);
}

void SvgEngine::fillStyle(bool isFilled)
{
    if (isFilled && brush_.style() != Qt::NoBrush)
        color("fill", brush_.color());
    else
        attribute("fill", QStringLiteral("none"));
}

void SvgEngine::strokeStyle()
{
    if (pen_.style() == Qt::NoPen)
        return;
    color("stroke", pen_.color());
    const double width = pen_.widthF() > 0 ? pen_.widthF() : 1;
    attribute("stroke-width", width);
    attribute("stroke-linecap", capName(pen_.capStyle()));
    attribute("stroke-linejoin", joinName(pen_.joinStyle()));
    attribute("stroke-miterlimit", pen_.miterLimit());
    if (pen_.isCosmetic() || pen_.widthF() == 0)
        attribute("vector-effect", QStringLiteral("non-scaling-stroke"));
    if (pen_.style() == Qt::SolidLine)
        return;
    QStringList lengths;
    for (const double length : pen_.dashPattern())
        lengths.append(number(length * width));
    attribute("stroke-dasharray", lengths.join(u' '));
    attribute("stroke-dashoffset", pen_.dashOffset() * width);
}

void SvgEngine::drawPath(const QPainterPath& path)
{
    startElement("path");
    attribute("d", pathData(path));
    if (path.fillRule() == Qt::OddEvenFill)
        attribute("fill-rule", QStringLiteral("evenodd"));
    fillStyle(true);
    strokeStyle();
    xml_.writeEndElement();
}

void SvgEngine::drawPolygon(const QPointF* points, int count, PolygonDrawMode mode)
{
    QString list;
    for (int i = 0; i < count; ++i)
        list += number(points[i].x()) + u',' + number(points[i].y()) + u' ';
    startElement(mode == PolylineMode ? "polyline" : "polygon");
    attribute("points", list.trimmed());
    if (mode == OddEvenMode)
        attribute("fill-rule", QStringLiteral("evenodd"));
    fillStyle(mode != PolylineMode);
    strokeStyle();
    xml_.writeEndElement();
}

void SvgEngine::drawRects(const QRectF* rects, int count)
{
    for (int i = 0; i < count; ++i) {
        const QRectF rect = rects[i].normalized();
        startElement("rect");
        attribute("x", rect.x());
        attribute("y", rect.y());
        attribute("width", rect.width());
        attribute("height", rect.height());
        fillStyle(true);
        strokeStyle();
        xml_.writeEndElement();
    }
}

void SvgEngine::drawPixmap(const QRectF& target, const QPixmap& pixmap, const QRectF& source)
{
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    pixmap.copy(source.toAlignedRect()).save(&buffer, "PNG");
    startElement("image");
    attribute("x", target.x());
    attribute("y", target.y());
    attribute("width", target.width());
    attribute("height", target.height());
    attribute("preserveAspectRatio", QStringLiteral("none"));
    xml_.writeAttribute(QStringLiteral("http://www.w3.org/1999/xlink"), QStringLiteral("href"),
                        QStringLiteral("data:image/png;base64,") + QString::fromLatin1(png.toBase64()));
    xml_.writeEndElement();
}

void SvgEngine::drawTextItem(const QPointF& origin, const QTextItem& item)
{
    const QFont font = item.font();
    const double size = font.pixelSize() > 0 ? font.pixelSize() : font.pointSizeF() * dotsPerInch / pointsPerInch;
    startElement("text");
    attribute("x", origin.x());
    attribute("y", origin.y());
    // A viewer may lack the font.
    attribute("font-family", QStringLiteral("'%1', sans-serif").arg(QFontInfo(font).family()));
    attribute("font-size", size);
    if (font.weight() != QFont::Normal)
        attribute("font-weight", font.weight());
    if (font.italic())
        attribute("font-style", QStringLiteral("italic"));
    color("fill", pen_.color());
    attribute("xml:space", QStringLiteral("preserve"));
    xml_.writeCharacters(writable(item.text()));
    xml_.writeEndElement();
}

SvgDevice::SvgDevice(QSizeF size) : size_(size), engine_(std::make_unique<SvgEngine>(size)) {}

SvgDevice::~SvgDevice() = default;

QPaintEngine* SvgDevice::paintEngine() const
{
    return engine_.get();
}

QByteArray SvgDevice::document() const
{
    return engine_->document();
}

int SvgDevice::metric(PaintDeviceMetric metric) const
{
    switch (metric) {
    case PdmWidth:
        return static_cast<int>(std::ceil(size_.width()));
    case PdmHeight:
        return static_cast<int>(std::ceil(size_.height()));
    case PdmWidthMM:
        return static_cast<int>(std::round(size_.width() * millimetresPerInch / dotsPerInch));
    case PdmHeightMM:
        return static_cast<int>(std::round(size_.height() * millimetresPerInch / dotsPerInch));
    case PdmDpiX:
    case PdmDpiY:
    case PdmPhysicalDpiX:
    case PdmPhysicalDpiY:
        return dotsPerInch;
    case PdmDevicePixelRatio:
        return 1;
    case PdmDevicePixelRatioScaled:
        return static_cast<int>(devicePixelRatioFScale());
    case PdmNumColors:
        return std::numeric_limits<int>::max();
    case PdmDepth:
        return 32;
    default:
        return QPaintDevice::metric(metric);
    }
}
