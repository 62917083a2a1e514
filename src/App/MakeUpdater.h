#pragma once

#include "KeloUpdates/Updater.h"

#include <QDBusConnection>
#include <memory>

namespace kelo {
class ViewLoader;
}

namespace mivora {

class Workspace;

/// The updater of this build, as MIVORA_UPDATER chose it when it was configured. `views` and `workspace`
/// must outlive it. Nothing is loaded or fetched here.
std::unique_ptr<kelo::Updater> makeUpdater(kelo::ViewLoader &views, Workspace &workspace,
                                           const QDBusConnection &sessionBus);

/// Whether that updater can check inside the program, for commands, which make none.
bool canCheckForUpdates();

} // namespace mivora
