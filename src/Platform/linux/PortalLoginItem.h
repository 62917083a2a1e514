#pragma once

#include "Platform/LoginItem.h"

#include <QDBusConnection>
#include <QObject>
#include <memory>

namespace mivora {

/// The login item of a sandbox, whose own autostart entries no session sees: asked for through
/// org.freedesktop.portal.Background. Nothing here waits for the portal, or for the user whom it may ask.
class PortalLoginItem final : public QObject, public LoginItem
{
    Q_OBJECT

public:
    /// The portal doesn't tell what it was last asked for, so its answers are kept in `memory`.
    PortalLoginItem(std::unique_ptr<LoginItem> memory, const QDBusConnection &bus)
        : m_memory(std::move(memory)), m_bus(bus)
    {
    }

    bool isEnabled() const override { return m_memory->isEnabled(); }

    /// Always succeeds at once; what the portal refuses later is written to the system log.
    std::optional<QString> setEnabled(bool enabled) override;

private:
    void request(bool enabled);
    void answered(bool asWanted, bool enabled);

    std::unique_ptr<LoginItem> m_memory;
    QDBusConnection m_bus;
};

/// What starts this program at login: an autostart entry, in a Flatpak by way of the desktop portal.
std::unique_ptr<LoginItem> makeLoginItem();

} // namespace mivora
