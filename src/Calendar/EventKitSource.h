#pragma once

#include "Calendar/EventSource.h"
#include "Calendar/EventStore.h"

#include <QObject>
#include <memory>
#include <unordered_map>

namespace mivora {

/// The calendar source over the platform's store: maps its values, selects calendars, sorts, and passes on
/// changes. Filters nothing.
class EventKitSource final : public QObject, public EventSource
{
    Q_OBJECT

public:
    explicit EventKitSource(std::unique_ptr<EventStore> store, QObject *parent = nullptr);

    /// The platform's own word on the permission; authorization() is made from it.
    AuthorizationStatus authorizationStatus() const { return m_store->authorizationStatus(); }

    /// The store below; it lives as long as the source.
    EventStore &store() const { return *m_store; }

    CalendarAuthorization authorization() const override;
    void requestAccess(std::function<void(bool)> answer) override;
    std::vector<CalendarInfo> calendars() const override;
    std::vector<Meeting> meetings(Timestamp start, Timestamp end,
                                  const std::optional<std::set<std::string>> &calendarIDs) override;
    void setOnChange(ChangeHandler handler) override;

private:
    /// A conversion that was already done. It keeps its event alive, so that the address stays its key.
    struct Converted
    {
        std::shared_ptr<const StoreEvent> event;
        Meeting meeting;
        std::uint64_t lastQuery = 0;
    };

    const Meeting &converted(const std::shared_ptr<const StoreEvent> &event);
    void startQuery(std::vector<StoreCalendar> calendars);
    void forgetUnused(std::size_t inUse);
    void handleStoreChange();

    std::unique_ptr<EventStore> m_store;
    ChangeHandler m_onChange;
    std::vector<StoreCalendar> m_knownCalendars;
    std::unordered_map<const StoreEvent *, Converted> m_converted;
    std::uint64_t m_query = 0;
};

} // namespace mivora
