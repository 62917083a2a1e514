#pragma once

#include "Platform/Workspace.h"

namespace mivora {

/// Opens links with the handlers of the desktop, as GIO finds them; in a sandbox through the OpenURI portal.
///
/// Only schemes that meetings have (https, zoommtg, msteams) and links into the system settings are accepted:
/// links come from invitations, and some handlers run what they are given. A handler that was started and
/// then fails by itself is not noticed.
class GioWorkspace final : public Workspace
{
public:
    /// Looks the handler up and starts it on a thread: both can wait for disks, the session bus and the
    /// portal.
    void open(const QString &url, Opened done) override;
    /// A handler whose program is missing is none.
    bool hasHandler(const QString &scheme) const override;
    bool leadsSomewhere(const QString &link) const override;
};

} // namespace mivora
