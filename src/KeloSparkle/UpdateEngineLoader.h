#pragma once

#include "Platform/PluginFile.h"

namespace kelo {

class UpdateEngine;

/// Loads the update engine's plug-in ($MIVORA_UPDATES, see PluginFile) on first need.
class UpdateEngineLoader final
{
public:
    /// Null, with a line in the log, when it can't be loaded. It lives as long as the process.
    UpdateEngine *engine();

private:
    mivora::PluginFile m_plugin{"mivora-updates", "MIVORA_UPDATES"};
};

} // namespace kelo
