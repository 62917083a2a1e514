#pragma once

#include "Calendar/EventStore.h"

#include <memory>
#include <unordered_map>

namespace mivora {

class AccessMemory;

/// Several calendar stores as one. Desktops have no permission of their own for calendars, so this one asks
/// the user: nothing is given before the permission is in the memory.
class CombinedStore final : public EventStore
{
    Q_OBJECT

public:
    struct Part
    {
        /// Short and stable; put before a calendar's identifier where an earlier part has the same one.
        std::string name;
        std::unique_ptr<EventStore> store;
    };

    /// \a memory must outlive the store.
    CombinedStore(std::vector<Part> parts, AccessMemory &memory, QObject *parent = nullptr);

    /// Not determined until allowed; then full when one of the stores can be read, else restricted when one
    /// of them says so, else denied.
    AuthorizationStatus authorizationStatus() const override;

    /// The user pressed "allow": remembered, then every store is asked.
    void requestFullAccess(AccessAnswer answer) override;

    std::vector<StoreCalendar> calendars() const override;
    StoreEvents events(Timestamp from, Timestamp to,
                       const std::optional<std::set<std::string>> &calendarIDs) override;
    bool isLoaded() const override;
    void setTimeZone(const QTimeZone &zone) override;

private:
    using Names = std::unordered_map<std::string, std::string>;

    void handleChange();
    void nameCalendars();
    std::optional<std::set<std::string>> ownIDs(std::size_t part, const std::set<std::string> &ids) const;
    std::shared_ptr<const StoreEvent> renamed(std::size_t part,
                                              const std::shared_ptr<const StoreEvent> &event);

    /// An event in a calendar that goes by another name here; made once, so that it stays the same object.
    struct RenamedEvent
    {
        std::shared_ptr<const StoreEvent> original;
        std::shared_ptr<const StoreEvent> renamed;
    };

    std::vector<Part> m_parts;
    AccessMemory &m_memory;
    /// For each part the calendars that go by another name: own identifier to the one given here.
    std::vector<Names> m_names;
    std::unordered_map<const StoreEvent *, RenamedEvent> m_renamed;
};

} // namespace mivora
