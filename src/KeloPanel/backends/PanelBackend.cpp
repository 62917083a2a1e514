#include "KeloPanel/backends/PanelBackend.h"

#include "KeloPanel/backends/PlainPanelBackend.h"
#include "KeloPanel/backends/X11Connection.h"
#include "KeloPanel/backends/X11PanelBackend.h"

#include <QGuiApplication>
#include <algorithm>
#include <array>
#include <utility>

namespace kelo {

namespace {

constexpr std::array platformNames{
    std::pair{"x11", PanelPlatform::x11},
    std::pair{"window", PanelPlatform::window},
    std::pair{"notification", PanelPlatform::notification},
};

} // namespace

PanelPlatform panelPlatform()
{
    const bool hasX11 = X11Connection::isAvailable();
    const QByteArray wanted = qgetenv("MIVORA_PANEL");
    const auto *named = std::find_if(platformNames.begin(), platformNames.end(),
                                     [&](const auto &platform) { return wanted == platform.first; });
    if (named != platformNames.end() && (hasX11 || named->second != PanelPlatform::x11))
        return named->second;
    if (hasX11)
        return PanelPlatform::x11;
    const bool isWayland = QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
    return isWayland ? PanelPlatform::notification : PanelPlatform::window;
}

std::optional<RunningApp> frontmostApp()
{
    return X11Connection::isAvailable() ? X11Connection().activeApp() : std::nullopt;
}

std::unique_ptr<PanelBackend> PanelBackend::create()
{
    if (panelPlatform() == PanelPlatform::x11)
        return std::make_unique<X11PanelBackend>();
    return std::make_unique<PlainPanelBackend>();
}

} // namespace kelo
