#pragma once

#include "Platform/DefaultsStore.h"
#include "Platform/LoginItem.h"
#include "Platform/Pasteboard.h"
#include "Platform/SystemEvents.h"
#include "Platform/Workspace.h"

#include <QDBusConnection>
#include <memory>

namespace mivora {

/// Everything that the application asks of the operating system.
struct LinuxPlatform
{
    std::unique_ptr<DefaultsStore> defaults;
    std::unique_ptr<LoginItem> loginItem;
    std::unique_ptr<Workspace> workspace;
    std::unique_ptr<Pasteboard> pasteboard;
    std::unique_ptr<SystemEvents> systemEvents;
};

/// The user's settings alone, for commands that need nothing else.
std::unique_ptr<DefaultsStore> makeLinuxDefaultsStore();

/// Starts this program at login, in a Flatpak by way of the desktop portal.
std::unique_ptr<LoginItem> makeLinuxLoginItem();

/// The platform of the running desktop. A `systemBus` that is not connected only means fewer events.
LinuxPlatform makeLinuxPlatform(const QDBusConnection &systemBus = QDBusConnection::systemBus());

} // namespace mivora
