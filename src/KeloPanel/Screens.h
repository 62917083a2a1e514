#pragma once

#include "KeloPanel/PanelPlacement.h"

#include <QObject>
#include <QTimer>
#include <optional>

class QScreen;

namespace kelo {

/// The screen where the user works: that of the active window; where there is none, or the desktop doesn't
/// tell, that of the pointer; else the desktop's primary one. Nothing without screens.
std::optional<ScreenArea> mainScreen();

/// The screen at a point of the desktop, or the first that a rectangle of it touches; else the main one.
std::optional<ScreenArea> screenAt(const QPointF &point);
std::optional<ScreenArea> screenTouching(const QRectF &rect);

/// Tells when screens come, go or change, or when the desktop's bars do.
class ScreenWatcher final : public QObject
{
    Q_OBJECT

public:
    explicit ScreenWatcher(QObject *parent = nullptr);

Q_SIGNALS:
    /// Once for changes that come together.
    void changed();

private:
    void watch(const QScreen *screen);

    QTimer m_settle;
};

} // namespace kelo
