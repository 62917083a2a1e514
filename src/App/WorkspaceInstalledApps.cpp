#include "App/WorkspaceInstalledApps.h"

namespace mivora {

bool WorkspaceInstalledApps::isInstalled(Service service) const
{
    switch (service) {
    case Service::zoom:
        return m_workspace.hasHandler(QStringLiteral("zoommtg"));
    case Service::teams:
        return m_workspace.hasHandler(QStringLiteral("msteams"));
    case Service::facetime:
        // The app's link is the web link itself: whatever opens it is right.
        return true;
    case Service::meet:
    case Service::webex:
    case Service::other:
        return false;
    }
    return false;
}

} // namespace mivora
