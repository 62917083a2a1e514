#pragma once

#include "KeloPanel/LayerShell.h"
#include "KeloPanel/backends/PanelBackend.h"

#include <QObject>

namespace kelo {

/// A surface of the compositor's top layer. The compositor gives it the keyboard by a click, but only while
/// the surface says that it takes it, which some take for a wish to have it at once.
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
    void setTakesKeyboard(QWindow &window, bool takes);

    LayerShell &m_shell;
    Qt::Edges m_edges;
    QMargins m_distance;
    QPoint m_dragged;
    bool m_takesKeyboard = false;
};

} // namespace kelo
