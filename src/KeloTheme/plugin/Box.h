#pragma once

#include <QColor>
#include <QQuickItem>

namespace kelo {

/// A rectangle, round at its corners if wanted, that is drawn on the pixels of the screen: at any scale its
/// sides are sharp, equal sizes are equal, and a circle is one.
class Box : public QQuickItem
{
    Q_OBJECT
    Q_PROPERTY(double radius MEMBER m_radius NOTIFY changed)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)
    /// A line inside of the rectangle; none while it is transparent.
    Q_PROPERTY(QColor edge MEMBER m_edge NOTIFY changed)
    Q_PROPERTY(double edgeWidth MEMBER m_edgeWidth NOTIFY changed)

public:
    explicit Box(QQuickItem *parent = nullptr);

Q_SIGNALS:
    void changed();

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;

private:
    double m_radius = 0;
    QColor m_color = Qt::transparent;
    QColor m_edge = Qt::transparent;
    double m_edgeWidth = 1;
};

} // namespace kelo
