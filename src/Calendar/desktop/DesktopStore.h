#pragma once

#include "Calendar/StoreMemory.h"
#include "Calendar/desktop/DesktopLoader.h"
#include "Calendar/desktop/DesktopService.h"

namespace mivora {

/// The calendars that the desktop keeps in Evolution Data Server: those of online accounts, and local ones.
///
/// Nothing of it is loaded where the session bus doesn't know the server. Access is full while the server can
/// be had, restricted when the bus refuses it, else denied. While it is away for a moment the last answer
/// stands.
class DesktopStore final : public EventStore
{
    Q_OBJECT

public:
    struct Setup
    {
        QDBusConnection bus;
        /// What is loaded first.
        EventWindow window;
        /// The user's own e-mail addresses, for calendars that don't name their owner.
        std::vector<std::string> addresses;
        DesktopCalendarsFactory factory = makeEdsCalendars;
    };

    /// Begins to load at once.
    explicit DesktopStore(Setup setup, QObject *parent = nullptr);
    ~DesktopStore() override;

    AuthorizationStatus authorizationStatus() const override { return m_memory.status(); }

    void requestFullAccess(AccessAnswer answer) override;

    std::vector<StoreCalendar> calendars() const override { return m_memory.calendars(); }

    StoreEvents events(Timestamp from, Timestamp to,
                       const std::optional<std::set<std::string>> &calendarIDs) override;

    bool isLoaded() const override { return m_isLoaded; }

    void setTimeZone(const QTimeZone &zone) override;

private:
    void load(const QString &service);
    void loadNothing();
    void receiveNews();
    void take(std::vector<LoaderNews> news);
    void answerRequests();

    DesktopService m_service;
    StoreMemory m_memory;
    std::vector<std::string> m_addresses;
    DesktopCalendarsFactory m_factory;
    std::vector<AccessAnswer> m_waiting;
    bool m_isLoaded = false;
    /// Last, so that it is gone before what it reports to.
    std::unique_ptr<DesktopLoader> m_loader;
};

} // namespace mivora
