#include "KeloTheme/plugin/Box.h"

#include <QPainter>
#include <QPainterPath>
#include <QQuickWindow>
#include <QSGRenderNode>
#include <QSGRendererInterface>
#include <algorithm>
#include <cmath>

namespace kelo {

namespace {

struct Shape
{
    QSizeF size;
    double radius = 0;
    QColor color;
    QColor edge;
    double edgeWidth = 0;
};

// For the software scene graph, which is the one that views are drawn by.
class BoxNode final : public QSGRenderNode
{
public:
    BoxNode(QQuickWindow &window, const Shape &shape) : m_window(window), m_shape(shape) {}

    RenderingFlags flags() const override { return BoundedRectRendering; }

    // The next pixel may be one further.
    QRectF rect() const override { return QRectF(QPointF(), m_shape.size).adjusted(-1, -1, 1, 1); }

    void render(const RenderState *state) override
    {
        // An empty region is what is left where nothing is to be seen, or where nothing clips.
        const QRegion *clip = state->clipRegion();
        const bool hasRegion = clip && !clip->isEmpty();
        if (!hasRegion && isClipped())
            return;
        auto *painter = static_cast<QPainter *>(
            m_window.rendererInterface()->getResource(&m_window, QSGRendererInterface::PainterResource));
        painter->save();
        if (hasRegion)
            painter->setClipRegion(*clip, Qt::ReplaceClip);
        painter->setOpacity(inheritedOpacity());
        draw(*painter, painter->device()->devicePixelRatio());
        painter->restore();
    }

private:
    bool isClipped() const
    {
        const QSGNode *node = parent();
        while (node && node->type() != ClipNodeType)
            node = node->parent();
        return node;
    }

    // The size is rounded apart from the place, so that what is moved keeps it.
    void draw(QPainter &painter, double ratio) const
    {
        const QPointF corner = matrix()->toTransform().map(QPointF()) * ratio;
        const QSizeF size = m_shape.size * ratio;
        const QRectF outer(std::round(corner.x()), std::round(corner.y()), wholePixels(size.width()),
                           wholePixels(size.height()));
        const double radius = m_shape.radius * ratio;
        painter.setTransform(QTransform::fromScale(1 / ratio, 1 / ratio));
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillPath(rounded(outer, radius), m_shape.color);
        if (m_shape.edge.alpha() == 0)
            return;
        const double width = wholePixels(m_shape.edgeWidth * ratio);
        const QPainterPath inner = rounded(outer.adjusted(width, width, -width, -width), radius - width);
        painter.fillPath(rounded(outer, radius).subtracted(inner), m_shape.edge);
    }

    static double wholePixels(double length) { return length > 0 ? std::max(1.0, std::round(length)) : 0; }

    static QPainterPath rounded(const QRectF &rect, double radius)
    {
        const double most = std::min({std::max(radius, 0.0), rect.width() / 2, rect.height() / 2});
        QPainterPath path;
        path.addRoundedRect(rect, most, most);
        return path;
    }

    QQuickWindow &m_window;
    Shape m_shape;
};

} // namespace

Box::Box(QQuickItem *parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    connect(this, &Box::changed, this, &QQuickItem::update);
}

QSGNode *Box::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    delete old;
    if (size().isEmpty())
        return nullptr;
    return new BoxNode(*window(), {size(), m_radius, m_color, m_edge, m_edgeWidth});
}

} // namespace kelo
