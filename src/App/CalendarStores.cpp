#include "App/CalendarStores.h"

#include "Calendar/MemoryStore.h"
#include "CalendarEds/DesktopLoader.h"
#include "CalendarFolder/FolderLoader.h"
#include "Platform/DefaultsStore.h"
#include "Preferences/Settings.h"

namespace mivora {

namespace {

std::vector<std::string> ownAddresses(const DefaultsStore &defaults)
{
    std::vector<std::string> addresses;
    for (const QString &address : storedList(defaults, settingsKey::addresses))
        addresses.push_back(address.toStdString());
    return addresses;
}

} // namespace

std::unique_ptr<EventStore> makeCalendarStore(const StoreOptions &options, const DefaultsStore &defaults,
                                              AccessMemory &access)
{
    const std::vector<std::string> addresses = ownAddresses(defaults);
    MemoryStore::Loaders loaders;
    loaders.push_back(std::make_unique<FolderLoader>(
        FolderLoader::Setup{.roots = calendarRoots(options.folders), .addresses = addresses}));
    if (options.folders.empty() && qEnvironmentVariable("MIVORA_EDS") != QLatin1String("none"))
        loaders.push_back(std::make_unique<DesktopLoader>(
            DesktopLoader::Setup{.bus = QDBusConnection::sessionBus(), .addresses = addresses}));
    return std::make_unique<MemoryStore>(access, windowAround(options.now, options.zone), std::move(loaders));
}

} // namespace mivora
