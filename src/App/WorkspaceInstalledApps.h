#pragma once

#include "Meetings/JoinLink.h"
#include "Platform/Workspace.h"

namespace mivora {

/// Asks the desktop which meeting apps are installed, anew at every question.
class WorkspaceInstalledApps final : public InstalledApps
{
public:
    /// `workspace` must outlive this.
    explicit WorkspaceInstalledApps(const Workspace &workspace) : m_workspace(workspace) {}

    bool isInstalled(Service service) const override;

private:
    const Workspace &m_workspace;
};

} // namespace mivora
