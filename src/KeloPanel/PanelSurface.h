#pragma once

#include "KeloTheme/GlassSurface.h"

#include <QObject>
#include <QPoint>
#include <QWindow>
#include <functional>

namespace kelo {

/// What a panel's QML surface knows of its window: its measures, and how to be moved by the background.
class PanelSurface final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int margin READ margin NOTIFY changed)
    Q_PROPERTY(double cornerRadius READ cornerRadius NOTIFY changed)
    Q_PROPERTY(bool isLiquid READ isLiquid NOTIFY changed)
    Q_PROPERTY(double opacity READ opacity NOTIFY changed)

public:
    using QObject::QObject;

    const FloatingFrame &frame() const { return m_frame; }

    int margin() const { return m_frame.contentRect.left(); }

    double cornerRadius() const { return m_frame.cornerRadius; }

    bool isLiquid() const { return !m_frame.shadowByWindow; }

    /// Of the surface: lower where the window manager blurs what is behind, since text stays legible then.
    double opacity() const;

    void setFrame(const FloatingFrame &frame, bool isBlurred);

    void setWindow(QWindow *window) { m_window = window; }

    /// Called with how far the window is from where the user drags it.
    std::function<void(const QPoint &distance)> onDrag;

    /// The window follows the pointer between beginDrag() and the last drag().
    Q_INVOKABLE void beginDrag();
    Q_INVOKABLE void drag();

Q_SIGNALS:
    void changed();

private:
    FloatingFrame m_frame;
    bool m_isBlurred = false;
    QWindow *m_window = nullptr;
    QPoint m_grip;
};

} // namespace kelo
