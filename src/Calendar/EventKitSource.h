#pragma once

#include "Calendar/CalendarLoader.h"
#include "Calendar/EventSource.h"

#include <QObject>
#include <mutex>

namespace mivora {

class AccessMemory;

/// The user's calendars in memory, as loaders find them: it never blocks, and filters nothing. Desktops have
/// no permission of their own for calendars, so the user is asked: nothing is read before the permission is
/// remembered.
class EventKitSource final : public QObject, public EventSource
{
    Q_OBJECT

public:
    using Loaders = std::vector<std::unique_ptr<CalendarLoader>>;

    /// Begins to load `window` with the event loop, or when that is allowed. `access` must outlive the
    /// source.
    EventKitSource(AccessMemory &access, EventWindow window, Loaders loaders);
    ~EventKitSource() override;

    /// Not determined until allowed; then full when one kind of calendars can be read, else restricted when
    /// one is, else denied. authorization() is made from it.
    AuthorizationStatus authorizationStatus() const;

    /// Whether the first load is finished.
    bool isLoaded() const;

    /// The zone in which floating times and whole days are meant, from now on.
    void setTimeZone(const QTimeZone &zone);

    CalendarAuthorization authorization() const override;
    bool isNothingToRead() const override;

    /// The user pressed "allow": remembered, and answered when everything is loaded.
    void requestAccess(std::function<void(bool)> answer) override;

    std::vector<CalendarInfo> calendars() const override;

    /// An interval outside of what is loaded is answered from what is there, and is loaded in the background.
    std::vector<Meeting> meetings(Timestamp start, Timestamp end,
                                  const std::optional<std::set<std::string>> &calendarIDs) override;

    void setOnChange(ChangeHandler handler) override { m_onChange = std::move(handler); }

Q_SIGNALS:
    /// Calendars, meetings or the authorization are not what they were: once per burst of changes.
    void changed();

private:
    struct Part
    {
        std::unique_ptr<CalendarLoader> loader;
        /// What it found. Nobody is told that access is missing before that is known.
        StoreUpdate found{.status = AuthorizationStatus::fullAccess, .isLoaded = false};
    };

    /// What loaders found, on its way from their threads. A loader that hangs may outlive the source.
    struct Inbox
    {
        std::mutex mutex;
        EventKitSource *source = nullptr;
        std::vector<std::pair<Part *, StoreUpdate>> updates;
    };

    void start();
    void takeUpdates();
    void take(Part &part, StoreUpdate update);
    void announce();
    std::vector<CalendarInfo> allCalendars() const;
    void extendWindow(Timestamp from, Timestamp to);
    void setWindow(EventWindow window);
    void answerRequests();

    AccessMemory &m_access;
    EventWindow m_window;
    /// What was asked for since the window was chosen.
    std::optional<std::pair<Timestamp, Timestamp>> m_asked;
    std::vector<std::function<void(bool)>> m_waiting;
    std::vector<Part> m_parts;
    std::shared_ptr<Inbox> m_inbox = std::make_shared<Inbox>();
    ChangeHandler m_onChange;
};

} // namespace mivora
