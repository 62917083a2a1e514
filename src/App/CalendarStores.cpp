#include "App/CalendarStores.h"

#include "Calendar/CombinedStore.h"
#include "Calendar/desktop/DesktopStore.h"
#include "Calendar/folder/CalendarRoots.h"
#include "Calendar/folder/FolderStore.h"
#include "ICalendar/CalendarText.h"
#include "Platform/DefaultsStore.h"
#include "Preferences/Settings.h"

namespace mivora {

namespace {

std::vector<std::string> ownAddresses(const DefaultsStore &defaults)
{
    std::vector<std::string> addresses;
    for (const QString &written : storedList(defaults, settingsKey::addresses)) {
        if (std::string address = ical::mailAddress(written.toStdString()); !address.empty())
            addresses.push_back(std::move(address));
    }
    return addresses;
}

} // namespace

std::unique_ptr<EventStore> makeCalendarStore(const StoreOptions &options, const DefaultsStore &defaults,
                                              AccessMemory &access)
{
    const EventWindow window = windowAround(options.now, options.zone);
    const std::vector<std::string> addresses = ownAddresses(defaults);
    std::vector<CombinedStore::Part> parts;
    FolderStore::Setup folders{
        .roots = calendarRoots(options.folders), .window = window, .addresses = addresses};
    parts.push_back({"folders", std::make_unique<FolderStore>(std::move(folders))});
    if (options.folders.empty() && qEnvironmentVariable("MIVORA_EDS") != QLatin1String("none")) {
        DesktopStore::Setup desktop{
            .bus = QDBusConnection::sessionBus(), .window = window, .addresses = addresses};
        parts.push_back({"desktop", std::make_unique<DesktopStore>(std::move(desktop))});
    }
    return std::make_unique<CombinedStore>(std::move(parts), access);
}

} // namespace mivora
