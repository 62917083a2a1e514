#include "Platform/linux/LinuxPlatform.h"

#include "Platform/linux/ClipboardPasteboard.h"
#include "Platform/linux/GioWorkspace.h"
#include "Platform/linux/JsonDefaultsStore.h"
#include "Platform/linux/LinuxSystemEvents.h"
#include "Platform/linux/PortalLoginItem.h"
#include "Platform/linux/XdgLoginItem.h"

namespace mivora {

std::unique_ptr<DefaultsStore> makeLinuxDefaultsStore()
{
    return std::make_unique<JsonDefaultsStore>(JsonDefaultsStore::settingsPath());
}

std::unique_ptr<LoginItem> makeLinuxLoginItem()
{
    auto entry = std::make_unique<XdgLoginItem>(XdgLoginItem::Places::ofThisProcess());
    if (!PortalLoginItem::isNeeded())
        return entry;
    return std::make_unique<PortalLoginItem>(std::move(entry), QDBusConnection::sessionBus());
}

LinuxPlatform makeLinuxPlatform(const QDBusConnection &systemBus)
{
    return {makeLinuxDefaultsStore(), makeLinuxLoginItem(), std::make_unique<GioWorkspace>(),
            std::make_unique<ClipboardPasteboard>(),
            std::make_unique<LinuxSystemEvents>(LinuxSystemEvents::Sources::ofTheSystem(systemBus))};
}

} // namespace mivora
