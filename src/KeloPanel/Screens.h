#pragma once

#include "KeloPanel/PanelPlacement.h"

#include <QObject>
#include <QTimer>
#include <optional>
#include <vector>

class QScreen;

namespace kelo {

/// The screens of the desktop now, in the platform's order.
std::vector<ScreenArea> currentScreens();

/// The desktop's primary screen; the first one where none is primary; nothing without screens.
std::optional<ScreenArea> mainScreen();

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
