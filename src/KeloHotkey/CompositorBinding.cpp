#include "KeloHotkey/CompositorBinding.h"

#include "KeloHotkey/KeyboardLayout.h"

#include <algorithm>
#include <array>

namespace kelo {

namespace {

struct Compositor
{
    /// In XDG_CURRENT_DESKTOP, or a variable that it sets.
    QLatin1String desktop;
    const char *variable = nullptr;
    QLatin1String file;
    /// Of command, control, option and shift.
    std::array<QLatin1String, 4> modifiers;
    QLatin1Char separator{' '};
    /// %1 are the modifiers, %2 the key, %3 the command.
    QLatin1String line;
    /// The words of the command are in quotation marks of their own.
    bool quotesWords = false;
};

constexpr std::array compositors{
    Compositor{QLatin1String("sway"),
               "SWAYSOCK",
               QLatin1String("~/.config/sway/config"),
               {QLatin1String("Mod4"), QLatin1String("Ctrl"), QLatin1String("Mod1"), QLatin1String("Shift")},
               QLatin1Char('+'),
               QLatin1String("bindsym %1+%2 exec %3")},
    Compositor{QLatin1String("Hyprland"),
               "HYPRLAND_INSTANCE_SIGNATURE",
               QLatin1String("~/.config/hypr/hyprland.conf"),
               {QLatin1String("SUPER"), QLatin1String("CTRL"), QLatin1String("ALT"), QLatin1String("SHIFT")},
               QLatin1Char(' '),
               QLatin1String("bind = %1, %2, exec, %3")},
    Compositor{QLatin1String("niri"),
               "NIRI_SOCKET",
               QLatin1String("~/.config/niri/config.kdl (binds)"),
               {QLatin1String("Super"), QLatin1String("Ctrl"), QLatin1String("Alt"), QLatin1String("Shift")},
               QLatin1Char('+'),
               QLatin1String("%1+%2 { spawn %3; }"),
               true},
    Compositor{QLatin1String("labwc"),
               "LABWC_PID",
               QLatin1String("~/.config/labwc/rc.xml (keyboard)"),
               {QLatin1String("W"), QLatin1String("C"), QLatin1String("A"), QLatin1String("S")},
               QLatin1Char('-'),
               QLatin1String("<keybind key=\"%1-%2\"><action name=\"Execute\" command=\"%3\"/></keybind>")},
    Compositor{
        QLatin1String("river"),
        "",
        QLatin1String("~/.config/river/init"),
        {QLatin1String("Super"), QLatin1String("Control"), QLatin1String("Alt"), QLatin1String("Shift")},
        QLatin1Char('+'),
        QLatin1String("riverctl map normal %1 %2 spawn '%3'")},
};

constexpr std::array modifierBits{commandKey, controlKey, optionKey, shiftKey};

bool isRunning(const Compositor &compositor)
{
    const QStringList desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(QLatin1Char(':'));
    return desktops.contains(compositor.desktop, Qt::CaseInsensitive) ||
           qEnvironmentVariableIsSet(compositor.variable);
}

} // namespace

CompositorBinding compositorBinding(const HotKeyCombo &combo, const QString &command)
{
    const auto *compositor = std::ranges::find_if(compositors, isRunning);
    const QString key = KeyboardLayout::symbolName(std::uint16_t(combo.keyCode));
    if (compositor == compositors.end() || key.isEmpty())
        return {{}, command};
    QStringList modifiers;
    for (std::size_t i = 0; i < modifierBits.size(); ++i) {
        if (combo.modifiers & modifierBits[i])
            modifiers.append(compositor->modifiers[i]);
    }
    QString words = command;
    if (compositor->quotesWords)
        words = QLatin1Char('"') + words.replace(QLatin1Char(' '), QLatin1String("\" \"")) + QLatin1Char('"');
    return {compositor->file,
            QString(compositor->line).arg(modifiers.join(compositor->separator), key, words)};
}

} // namespace kelo
