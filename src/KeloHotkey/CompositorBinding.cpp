#include "KeloHotkey/CompositorBinding.h"

#include <algorithm>
#include <iterator>

namespace kelo {

namespace {

struct Compositor
{
    /// In XDG_CURRENT_DESKTOP, or a variable that it sets.
    const char *desktop;
    const char *variable;
    const char *file;
    /// Of control, option, shift and command, and what stands between them.
    const char *modifiers;
    char separator;
    /// %1 are the modifiers, %2 the key, %3 the command, %4 its words in quotation marks.
    const char *line;
};

constexpr Compositor compositors[] = {
    {"sway", "SWAYSOCK", "~/.config/sway/config", "Ctrl Mod1 Shift Mod4", '+', "bindsym %1+%2 exec %3"},
    {"Hyprland", "HYPRLAND_INSTANCE_SIGNATURE", "~/.config/hypr/hyprland.conf", "CTRL ALT SHIFT SUPER", ' ',
     "bind = %1, %2, exec, %3"},
    {"niri", "NIRI_SOCKET", "~/.config/niri/config.kdl (binds)", "Ctrl Alt Shift Super", '+',
     "%1+%2 { spawn %4; }"},
    {"labwc", "LABWC_PID", "~/.config/labwc/rc.xml (keyboard)", "C A S W", '-',
     "<keybind key=\"%1-%2\"><action name=\"Execute\" command=\"%3\"/></keybind>"},
    {"river", "", "~/.config/river/init", "Control Alt Shift Super", '+',
     "riverctl map normal %1 %2 spawn '%3'"},
};

bool isRunning(const Compositor &compositor)
{
    const QStringList desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(QLatin1Char(':'));
    return desktops.contains(QLatin1String(compositor.desktop), Qt::CaseInsensitive) ||
           qEnvironmentVariableIsSet(compositor.variable);
}

} // namespace

CompositorBinding compositorBinding(const HotKeyCombo &combo, const QString &command)
{
    const auto *compositor = std::ranges::find_if(compositors, isRunning);
    QStringList keys =
        compositor == std::end(compositors) ? QStringList() : combo.keysIn(compositor->modifiers);
    if (keys.isEmpty())
        return {{}, command};
    const QString key = keys.takeLast();
    // The logo comes first by custom.
    if (combo.modifiers & commandKey)
        keys.prepend(keys.takeLast());
    const QString words = QString(command).replace(QLatin1Char(' '), QLatin1String("\" \""));
    return {QLatin1String(compositor->file),
            QString(QLatin1String(compositor->line))
                .replace(QLatin1String("%4"), QLatin1Char('"') + words + QLatin1Char('"'))
                .replace(QLatin1String("%3"), command)
                .arg(keys.join(QLatin1Char(compositor->separator)), key)};
}

} // namespace kelo
