#include "KeloPanel/LayerShell.h"

#include "Platform/Activation.h"
#include "Platform/PluginFile.h"
#include "Platform/linux/WaylandGlobals.h"

namespace kelo {

namespace {

SessionLayers find()
{
    if (!mivora::waylandGlobals().contains("zwlr_layer_shell_v1"))
        return {nullptr, QStringLiteral("the compositor offers no layers")};
    mivora::PluginFile file("mivora-layershell", "MIVORA_LAYERSHELL");
    auto *shell = file.get<LayerShell>();
    if (!shell)
        return {nullptr, file.errorText()};
    mivora::setTokenRequest(
        [shell](QWindow &window, auto take) { shell->requestToken(window, std::move(take)); });
    return {shell, {}};
}

} // namespace

const SessionLayers &SessionLayers::get()
{
    static const SessionLayers layers = find();
    return layers;
}

} // namespace kelo
