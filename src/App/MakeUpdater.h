#pragma once

#include "KeloUpdates/Updater.h"

#include <memory>

namespace kelo {
class ViewLoader;
}

namespace mivora {

class Workspace;

/// The updater of this build: with a feed in its information dictionary (`share/mivora/info.json` beside the
/// program's bin folder) one that checks, otherwise one that leaves updates to a package manager. `views` and
/// `workspace` must outlive it. Nothing is loaded or fetched here.
std::unique_ptr<kelo::Updater> makeUpdater(kelo::ViewLoader &views, Workspace &workspace);

/// Whether that updater can check inside the program, for commands, which make none.
bool canCheckForUpdates();

} // namespace mivora
