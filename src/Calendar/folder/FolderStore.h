#pragma once

#include "Calendar/EventStore.h"
#include "Calendar/folder/OccurrenceList.h"
#include "Calendar/ical/CalendarText.h"

#include <map>
#include <memory>

namespace mivora {

class FolderLoader;
struct LoaderNews;

/// The days around \a now that a calendar is loaded for at first: from yesterday on, as far as a day's end
/// and the next midnight need no other load.
EventWindow windowAround(Timestamp now, const QTimeZone &zone);

/// Calendars in folders of iCalendar files, as vdirsyncer, khal and others keep them.
///
/// In a root, a folder with .ics files is a calendar, a folder of such folders an account, and an .ics file a
/// calendar of its own. Files are read on threads of the store's own, and followed when they change. All of
/// them can be read as soon as one root can: access is full then, else denied.
class FolderStore final : public EventStore
{
    Q_OBJECT

public:
    struct Setup
    {
        /// Absolute paths; see calendarRoots(). They need not exist yet.
        std::vector<std::string> roots;
        /// What is loaded first.
        EventWindow window;
        /// The user's own e-mail addresses, for calendars that don't name their owner.
        std::vector<std::string> addresses;
    };

    /// Begins to load at once.
    explicit FolderStore(Setup setup, QObject *parent = nullptr);
    ~FolderStore() override;

    AuthorizationStatus authorizationStatus() const override;
    void requestFullAccess(AccessAnswer answer) override;

    std::vector<StoreCalendar> calendars() const override { return m_calendars; }

    StoreEvents events(Timestamp from, Timestamp to,
                       const std::optional<std::set<std::string>> &calendarIDs) override;

    bool isLoaded() const override { return m_isLoaded; }

    void setTimeZone(const QTimeZone &zone) override;

    /// Looks for changes in all folders, for file systems that don't tell of them.
    void rescan();

private:
    void receiveNews();
    void apply(LoaderNews news);
    void answerRequests();
    void wantInterval(Timestamp from, Timestamp to);

    std::vector<StoreCalendar> m_calendars;
    std::map<std::string, OccurrenceList> m_occurrences;
    std::vector<AccessAnswer> m_waiting;
    EventWindow m_window;
    /// What was asked for since the window was chosen.
    std::optional<std::pair<Timestamp, Timestamp>> m_asked;
    bool m_isLoaded = false;
    bool m_isReadable = false;
    /// Last, so that it is gone before what it reports to.
    std::unique_ptr<FolderLoader> m_loader;
};

} // namespace mivora
