#include "KeloHotkey/backends/Accelerator.h"

#include "KeloHotkey/KeyboardLayout.h"
#include "KeloHotkey/VirtualKeys.h"

#include <algorithm>
#include <array>
#include <span>

namespace kelo {

namespace {

struct AcceleratorModifier
{
    QLatin1String name;
    std::uint32_t bit = 0;
};

// As accelerators name them. The first of each is written, in this order.
constexpr std::array acceleratorModifiers{
    AcceleratorModifier{QLatin1String("Shift"), shiftKey},
    AcceleratorModifier{QLatin1String("Control"), controlKey},
    AcceleratorModifier{QLatin1String("Alt"), optionKey},
    AcceleratorModifier{QLatin1String("Super"), commandKey},
    AcceleratorModifier{QLatin1String("Primary"), controlKey},
    AcceleratorModifier{QLatin1String("Ctrl"), controlKey},
    AcceleratorModifier{QLatin1String("Mod1"), optionKey},
    AcceleratorModifier{QLatin1String("Mod4"), commandKey},
};
constexpr std::size_t writtenNames = 4;

bool typesKey(std::uint16_t keyCode, const QString &name)
{
    // What is above Tab is bound by its place.
    if (name == QLatin1String("Above_Tab"))
        return keyCode == virtualGrave;
    return KeyboardLayout::symbolName(keyCode).compare(name, Qt::CaseInsensitive) == 0;
}

/// The part of an accelerator behind its modifiers, and these. Nothing when it has other ones than the four.
std::optional<std::pair<std::uint32_t, QString>> readAccelerator(const QString &text)
{
    std::uint32_t modifiers = 0;
    qsizetype end = 0;
    while (end < text.size() && text[end] == QLatin1Char('<')) {
        const qsizetype close = text.indexOf(QLatin1Char('>'), end);
        const QString name = text.mid(end + 1, close - end - 1);
        const auto *known =
            std::ranges::find_if(acceleratorModifiers, [&](const AcceleratorModifier &modifier) {
                return name.compare(modifier.name, Qt::CaseInsensitive) == 0;
            });
        if (close < 0 || known == acceleratorModifiers.end())
            return std::nullopt;
        modifiers |= known->bit;
        end = close + 1;
    }
    return std::pair(modifiers, text.mid(end));
}

} // namespace

QString Accelerator::of(const HotKeyCombo &combo)
{
    const QString key = KeyboardLayout::symbolName(std::uint16_t(combo.keyCode));
    QString text;
    for (const AcceleratorModifier &modifier : std::span(acceleratorModifiers).first(writtenNames)) {
        if (combo.modifiers & modifier.bit)
            text += QLatin1Char('<') + modifier.name + QLatin1Char('>');
    }
    return key.isEmpty() ? QString() : text + key;
}

bool Accelerator::names(const QString &text, const HotKeyCombo &combo)
{
    const auto read = readAccelerator(text);
    return read && read->first == combo.modifiers && typesKey(std::uint16_t(combo.keyCode), read->second);
}

QString Accelerator::words(const QString &text)
{
    const auto read = readAccelerator(text);
    const auto *pair = std::ranges::find_if(keyCodePairs, [&](const KeyCodePair &candidate) {
        return read && typesKey(candidate.virtualKey, read->second);
    });
    return pair == keyCodePairs.end() ? text : HotKeyCombo{pair->virtualKey, read->first}.text();
}

} // namespace kelo
