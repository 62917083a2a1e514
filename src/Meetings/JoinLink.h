#pragma once

#include "Meetings/Service.h"
#include "Meetings/Url.h"

#include <optional>
#include <set>

namespace mivora {

/// The link by which a meeting is joined.
struct JoinLink
{
    Service service = Service::other;
    /// The https link as found, redirects unwrapped.
    Url webURL;
    /// The link that opens the service's own app; only Zoom, Teams and FaceTime have one.
    std::optional<Url> nativeURL{};

    friend bool operator==(const JoinLink &, const JoinLink &) = default;
};

/// Tells whether the app of a service is installed.
class InstalledApps
{
public:
    virtual ~InstalledApps() = default;

    virtual bool isInstalled(Service service) const = 0;
};

/// The link that Join opens: the app's where there is one, it is installed, and the user has not asked for
/// the browser; else the web link. `installed` is only asked when its answer matters.
inline const Url &linkToOpen(const JoinLink &link, const std::set<Service> &browserServices,
                             const InstalledApps &installed)
{
    // Asking for an installed app may cost a look-up in the desktop's database, so it comes last.
    const bool opensApp =
        link.nativeURL && !browserServices.contains(link.service) && installed.isInstalled(link.service);
    return opensApp ? *link.nativeURL : link.webURL;
}

} // namespace mivora
