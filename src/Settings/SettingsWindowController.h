#pragma once

#include "Settings/CalendarsPageModel.h"
#include "Settings/GeneralPageModel.h"
#include "Settings/SettingsRouter.h"

#include <QObject>
#include <QPoint>
#include <QTimer>
#include <chrono>
#include <memory>
#include <optional>

class QWindow;

namespace kelo {
class ViewLoader;
}

namespace mivora {

/// Builds the settings window when it is first asked for, and keeps it when it is closed. Main thread only.
///
/// A window that stays closed for long gives its memory back; the next one has its page and its place.
class SettingsWindowController final : public QObject
{
    Q_OBJECT

public:
    /// All references outlive the controller.
    SettingsWindowController(Preferences &prefs, const EventSource &source, kelo::HotKeyService &service,
                             kelo::ViewLoader &views, const SettingsActions &actions,
                             QObject *parent = nullptr);
    ~SettingsWindowController() override;

    /// Brings the window to the front, on the page that is given or else on the one shown last. False when
    /// the window can't be made.
    bool show(std::optional<SettingsPage> page = {});

    /// To be called when the source's calendars or its permission changed.
    void calendarsChanged();

    /// Gives the memory of a closed window back; done anyway when it has been closed for a minute, or for as
    /// long as keepUnusedFor() says.
    void release();

    void keepUnusedFor(std::chrono::milliseconds time) { m_unused.setInterval(time); }

    SettingsRouter &router() { return m_router; }

    /// Null until the first show().
    QWindow *window() const { return m_window.get(); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool build();
    void place();

    kelo::ViewLoader &m_views;
    SettingsRouter m_router;
    GeneralPageModel m_general;
    CalendarsPageModel m_calendars;
    /// Where the window was when it was let go; nothing when it is to be centred.
    std::optional<QPoint> m_position;
    QTimer m_unused;
    std::unique_ptr<QWindow> m_window;
};

} // namespace mivora
