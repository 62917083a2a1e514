#pragma once

#include "KeloMenuBar/StatusItemController.h"
#include "Meetings/CalendarInfo.h"
#include "Meetings/Timestamp.h"

#include <functional>

namespace mivora {

class Preferences;
class Scheduler;

/// The application's status item: shows the scheduler's next meeting, and opens the menu. Main thread only.
class StatusController final
{
public:
    /// `buildMenu` fills the menu, which is empty, each time that it opens. Scheduler, preferences and views
    /// must outlive the controller.
    StatusController(const Scheduler &scheduler, const Preferences &prefs, kelo::ViewLoader &views,
                     const QDBusConnection &bus, std::function<void(kelo::Menu &)> buildMenu);

    /// Sets title, icon and tool tip to what they are at `now`; a discreet one names no meeting.
    void update(Timestamp now, CalendarAuthorization authorization, bool isNothingToRead, bool isDiscreet);

    /// What the user can do about an icon that nothing shows, in one sentence; empty while something does.
    QString trayHint() const;

    kelo::StatusItemController &item() { return m_item; }

private:
    const Scheduler &m_scheduler;
    const Preferences &m_prefs;
    kelo::StatusItemController m_item;
};

} // namespace mivora
