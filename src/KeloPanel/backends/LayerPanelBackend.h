#pragma once

#include "KeloPanel/LayerShell.h"
#include "KeloPanel/backends/PanelBackend.h"

#include <QObject>

namespace kelo {

/// A surface of the compositor's top layer. The keyboard is its own from a press on until the pointer leaves:
/// a surface that leaves that to the compositor is given it at once by some, and by the pointer's moving on
/// it by others.
class LayerPanelBackend final : public QObject, public PanelBackend
{
    Q_OBJECT

public:
    explicit LayerPanelBackend(LayerShell &shell);

    void prepare(QWindow &window) override;
    void orderFront(QWindow &window, const PanelPosition &position, const FloatingFrame &frame) override;
    void takeKeyboard(QWindow &window) override;
    void orderOut(QWindow &window) override;
    void moveBy(QWindow &window, const QPoint &distance) override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void pointerLeft(QWindow &window);
    void setHasKeyboard(QWindow &window, bool has);

    LayerShell &m_shell;
    Qt::Edges m_edges;
    QMargins m_distance;
    QPoint m_dragged;
    bool m_hasKeyboard = false;
};

} // namespace kelo
