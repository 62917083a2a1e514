#include "Meetings/JoinLink.h"

namespace mivora {

const Url &linkToOpen(const JoinLink &link, const std::set<Service> &browserServices,
                      const InstalledApps &installed)
{
    // Asking for an installed app may cost a look-up in the desktop's database, so it comes last.
    const bool opensApp =
        link.nativeURL && !browserServices.contains(link.service) && installed.isInstalled(link.service);
    return opensApp ? *link.nativeURL : link.webURL;
}

} // namespace mivora
