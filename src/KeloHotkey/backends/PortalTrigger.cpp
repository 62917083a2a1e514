#include "KeloHotkey/backends/PortalTrigger.h"

#include "KeloHotkey/KeyboardLayout.h"

#include <limits>

namespace kelo {

QString portalTrigger(const HotKeyCombo &combo)
{
    if (combo.keyCode > std::numeric_limits<std::uint16_t>::max())
        return {};
    const QString key = KeyboardLayout::symbolName(static_cast<std::uint16_t>(combo.keyCode));
    if (key.isEmpty())
        return {};
    QStringList parts;
    if (combo.modifiers & controlKey)
        parts.append(QStringLiteral("CTRL"));
    if (combo.modifiers & optionKey)
        parts.append(QStringLiteral("ALT"));
    if (combo.modifiers & shiftKey)
        parts.append(QStringLiteral("SHIFT"));
    if (combo.modifiers & commandKey)
        parts.append(QStringLiteral("LOGO"));
    parts.append(key);
    return parts.join(QLatin1Char('+'));
}

} // namespace kelo
