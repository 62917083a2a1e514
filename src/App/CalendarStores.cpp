#include "App/CalendarStores.h"

#include "Calendar/CombinedStore.h"
#include "Calendar/folder/CalendarRoots.h"
#include "Calendar/folder/FolderStore.h"
#include "Platform/DefaultsStore.h"
#include "Preferences/Settings.h"

namespace mivora {

namespace {

std::vector<std::string> rootsOf(const StoreOptions &options)
{
    if (options.folders.empty())
        return calendarRoots();
    std::vector<std::string> roots;
    for (const std::string &folder : options.folders)
        roots.push_back(absolutePath(folder));
    return roots;
}

std::vector<std::string> ownAddresses(const DefaultsStore &defaults)
{
    std::vector<std::string> addresses;
    for (const QString &address : defaults.stringList(settingsKey::addresses).value_or(QStringList()))
        addresses.push_back(address.trimmed().toLower().toStdString());
    return addresses;
}

} // namespace

std::unique_ptr<EventStore> makeCalendarStore(const StoreOptions &options, const DefaultsStore &defaults,
                                              AccessMemory &access)
{
    std::vector<CombinedStore::Part> parts;
    FolderStore::Setup folders{.roots = rootsOf(options),
                               .window = windowAround(options.now, options.zone),
                               .addresses = ownAddresses(defaults)};
    parts.push_back({"folders", std::make_unique<FolderStore>(std::move(folders))});
    return std::make_unique<CombinedStore>(std::move(parts), access);
}

} // namespace mivora
