#include "App/MakeUpdater.h"

#include "KeloUpdates/LinkUpdater.h"
#include "Platform/Workspace.h"

namespace mivora {

std::unique_ptr<kelo::Updater> makeUpdater(kelo::ViewLoader &, Workspace &workspace, const QDBusConnection &)
{
    return std::make_unique<kelo::LinkUpdater>(
        QStringLiteral(MIVORA_CHANGELOG_PAGE),
        [&workspace](const QString &url) { workspace.open(url, [](bool) {}); });
}

bool canCheckForUpdates()
{
    return false;
}

} // namespace mivora
