#pragma once

#include "Calendar/EventSource.h"
#include "Calendar/EventStore.h"

namespace mivora {

/// The calendar source over the platform's store: selects calendars, colours, sorts, and passes on changes.
/// Filters nothing.
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
    bool isNothingToRead() const override;
    void requestAccess(std::function<void(bool)> answer) override;
    std::vector<CalendarInfo> calendars() const override;
    std::vector<Meeting> meetings(Timestamp start, Timestamp end,
                                  const std::optional<std::set<std::string>> &calendarIDs) override;
    void setOnChange(ChangeHandler handler) override;

private:
    void handleStoreChange();

    std::unique_ptr<EventStore> m_store;
    ChangeHandler m_onChange;
};

} // namespace mivora
