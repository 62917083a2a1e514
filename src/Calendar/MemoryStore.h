#pragma once

#include "Calendar/CalendarLoader.h"

#include <mutex>

namespace mivora {

class AccessMemory;

/// Meetings in order of their start, to be asked for those of an interval.
class MeetingList
{
public:
    /// Takes away the objects that were removed and adds those that are new, in one pass.
    void change(MeetingChanges changes);

    /// The meetings that overlap [from, to).
    Meetings overlapping(Timestamp from, Timestamp to) const;

private:
    struct Entry
    {
        Timestamp start;
        Timestamp end;
        /// The latest end of this meeting and of all before it: it never falls along the list.
        Timestamp latestEnd;
        std::shared_ptr<const Meeting> meeting;
    };

    std::vector<Entry> m_entries;
};

/// The user's calendars in memory, as loaders find them. Desktops have no permission of their own for
/// calendars, so this store asks the user: nothing is read before the permission is remembered.
class MemoryStore final : public EventStore
{
    Q_OBJECT

public:
    using Loaders = std::vector<std::unique_ptr<CalendarLoader>>;

    /// Begins to load `window` with the event loop, or when that is allowed. `access` must outlive the store.
    MemoryStore(AccessMemory &access, EventWindow window, Loaders loaders, QObject *parent = nullptr);
    ~MemoryStore() override;

    /// Not determined until allowed; then full when one kind of calendars can be read, else restricted when
    /// one is, else denied.
    AuthorizationStatus authorizationStatus() const override;

    /// The user pressed "allow": remembered, and answered when everything is loaded.
    void requestFullAccess(AccessAnswer answer) override;

    std::vector<CalendarInfo> calendars() const override;
    Meetings meetings(Timestamp from, Timestamp to,
                      const std::optional<std::set<std::string>> &calendarIDs) override;
    bool isLoaded() const override;
    void setTimeZone(const QTimeZone &zone) override;

private:
    /// What one loader found. Nobody is told that access is missing before that is known.
    struct Part
    {
        std::unique_ptr<CalendarLoader> loader;
        std::vector<CalendarInfo> calendars{};
        AuthorizationStatus status = AuthorizationStatus::fullAccess;
        bool isLoaded = false;
    };

    /// What loaders found, on its way from their threads. A loader that hangs may outlive the store.
    struct Inbox
    {
        std::mutex mutex;
        MemoryStore *store = nullptr;
        std::vector<std::pair<Part *, StoreUpdate>> updates;
    };

    void start();
    void takeUpdates();
    void take(Part &part, StoreUpdate update);
    void extendWindow(Timestamp from, Timestamp to);
    void setWindow(EventWindow window);
    void answerRequests();

    AccessMemory &m_access;
    EventWindow m_window;
    /// What was asked for since the window was chosen.
    std::optional<std::pair<Timestamp, Timestamp>> m_asked;
    MeetingList m_meetings;
    std::vector<AccessAnswer> m_waiting;
    std::vector<Part> m_parts;
    std::shared_ptr<Inbox> m_inbox = std::make_shared<Inbox>();
};

} // namespace mivora
