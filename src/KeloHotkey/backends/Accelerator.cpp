#include "KeloHotkey/backends/Accelerator.h"

#include "KeloHotkey/KeyboardLayout.h"
#include "KeloHotkey/VirtualKeys.h"

#include <string_view>
#include <utility>

namespace kelo {

namespace {

// What desktops write for each, in lower case.
constexpr std::pair<std::string_view, std::uint32_t> modifierNames[] = {
    {"shift", shiftKey}, {"control", controlKey}, {"ctrl", controlKey},  {"primary", controlKey},
    {"alt", optionKey},  {"mod1", optionKey},     {"super", commandKey}, {"mod4", commandKey},
};

bool typesKey(std::uint16_t keyCode, const QString &name)
{
    // What is above Tab is bound by its place.
    if (name == QLatin1String("Above_Tab"))
        return keyCode == virtualGrave;
    return !name.isEmpty() && KeyboardLayout::symbolName(keyCode).compare(name, Qt::CaseInsensitive) == 0;
}

} // namespace

QString Accelerator::of(const HotKeyCombo &combo)
{
    return combo.keysIn("<Control> <Alt> <Shift> <Super>").join(QString());
}

std::optional<HotKeyCombo> Accelerator::read(const QString &text)
{
    // "<Control", "<Alt", "j".
    QStringList parts = text.split(QLatin1Char('>'));
    const QString key = parts.takeLast();
    HotKeyCombo combo{.modifiers = 0};
    for (const QString &part : parts) {
        const std::string name = part.mid(1).toLower().toStdString();
        const auto *known =
            std::ranges::find(modifierNames, name, &std::pair<std::string_view, std::uint32_t>::first);
        if (known == std::end(modifierNames))
            return std::nullopt;
        combo.modifiers |= known->second;
    }
    for (const KeyCodePair &pair : keyCodePairs) {
        combo.keyCode = pair.virtualKey;
        if (typesKey(pair.virtualKey, key))
            return combo;
    }
    return std::nullopt;
}

} // namespace kelo
