#pragma once

#include "Meetings/JoinLink.h"

#include <set>

namespace mivora {

/// Tells whether the app of a service is installed.
class InstalledApps
{
public:
    virtual ~InstalledApps() = default;

    virtual bool isInstalled(Service service) const = 0;
};

/// The link that Join opens: the app's where there is one, it is installed, and the user has not asked for
/// the browser; else the web link. \a installed is only asked when its answer matters.
const Url &linkToOpen(const JoinLink &link, const std::set<Service> &browserServices,
                      const InstalledApps &installed);

} // namespace mivora
