#pragma once

#include <QPluginLoader>

namespace kelo {

class UpdateEngine;

/// Loads the update engine's plug-in on first need. Looked for in $MIVORA_UPDATES (a file), then in
/// lib/mivora and lib beside the program's bin folder.
class UpdateEngineLoader final
{
public:
    /// Null, with a line in the log, when it can't be loaded. It lives as long as the process.
    UpdateEngine *engine();

private:
    QPluginLoader m_plugin;
};

} // namespace kelo
