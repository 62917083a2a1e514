#include "KeloHotkey/KeyboardLayout.h"

#include "KeloHotkey/VirtualKeys.h"
#include "KeloHotkey/backends/Keyboard.h"

#include <QCoreApplication>
#include <algorithm>
#include <iterator>

namespace kelo::KeyboardLayout {

namespace {

struct FixedName
{
    std::uint16_t keyCode;
    const char16_t *name;
};

// Keys whose name no layout changes.
constexpr FixedName fixedNames[] = {
    {36, u"↩"},   {48, u"⇥"},   {51, u"⌫"},   {53, u"⎋"},    {96, u"F5"},   {97, u"F6"},   {98, u"F7"},
    {99, u"F3"},  {100, u"F8"}, {101, u"F9"}, {103, u"F11"}, {109, u"F10"}, {111, u"F12"}, {117, u"⌦"},
    {118, u"F4"}, {120, u"F2"}, {122, u"F1"}, {123, u"←"},   {124, u"→"},   {125, u"↓"},   {126, u"↑"},
};

struct SpecialName
{
    std::uint16_t keyCode;
    const char *name;
};

// Those of shortcuts, in the context that Qt has for them. Of keys that type nothing, or that bear a word.
constexpr SpecialName specialNames[] = {
    {virtualReturn, QT_TRANSLATE_NOOP("QShortcut", "Return")},
    {virtualTab, QT_TRANSLATE_NOOP("QShortcut", "Tab")},
    {virtualBackspace, QT_TRANSLATE_NOOP("QShortcut", "Backspace")},
    {virtualEscape, QT_TRANSLATE_NOOP("QShortcut", "Esc")},
    {virtualDelete, QT_TRANSLATE_NOOP("QShortcut", "Delete")},
    {virtualInsert, QT_TRANSLATE_NOOP("QShortcut", "Insert")},
    {virtualHome, QT_TRANSLATE_NOOP("QShortcut", "Home")},
    {virtualEnd, QT_TRANSLATE_NOOP("QShortcut", "End")},
    {virtualPageUp, QT_TRANSLATE_NOOP("QShortcut", "Page Up")},
    {virtualPageDown, QT_TRANSLATE_NOOP("QShortcut", "Page Down")},
    {virtualLeft, QT_TRANSLATE_NOOP("QShortcut", "Left")},
    {virtualRight, QT_TRANSLATE_NOOP("QShortcut", "Right")},
    {virtualUp, QT_TRANSLATE_NOOP("QShortcut", "Up")},
    {virtualDown, QT_TRANSLATE_NOOP("QShortcut", "Down")},
    {virtualKeypadEnter, QT_TRANSLATE_NOOP("QShortcut", "Enter")},
    {71, QT_TRANSLATE_NOOP("QShortcut", "Num Lock")},
    {72, QT_TRANSLATE_NOOP("QShortcut", "Volume Up")},
    {73, QT_TRANSLATE_NOOP("QShortcut", "Volume Down")},
    {74, QT_TRANSLATE_NOOP("QShortcut", "Volume Mute")},
    {110, QT_TRANSLATE_NOOP("QShortcut", "Menu")},
    {127, QT_TRANSLATE_NOOP("QShortcut", "Power Off")},
    {105, "F13"},
    {107, "F14"},
    {113, "F15"},
    {106, "F16"},
    {64, "F17"},
    {79, "F18"},
    {80, "F19"},
    {90, "F20"},
};

bool isOnKeypad(std::uint16_t keyCode)
{
    return keyCode >= 65 && keyCode <= 95 && keyCode != 93 && keyCode != 94;
}

} // namespace

std::optional<QString> character(std::uint16_t keyCode)
{
    return Keyboard::instance().layout().character(keyCode);
}

QString displayName(std::uint16_t keyCode)
{
    if (keyCode == virtualSpace)
        return QCoreApplication::translate("KeyboardLayout", "Space", "the key");
    const auto *fixed = std::ranges::find(fixedNames, keyCode, &FixedName::keyCode);
    if (fixed != std::end(fixedNames))
        return QString::fromUtf16(fixed->name);
    if (const auto typed = character(keyCode))
        return typed->toUpper();
    return QLatin1Char('#') + QString::number(keyCode);
}

QString name(std::uint16_t keyCode)
{
    const auto *special = std::ranges::find(specialNames, keyCode, &SpecialName::keyCode);
    if (special != std::end(specialNames))
        return QCoreApplication::translate("QShortcut", special->name);
    const QString onKey = displayName(keyCode);
    return isOnKeypad(keyCode) ? QCoreApplication::translate("QShortcut", "Num %1").arg(onKey) : onKey;
}

std::optional<std::uint16_t> keyCode(const QString &forCharacters)
{
    const QString wanted = forCharacters.toLower();
    for (std::uint16_t code = 0; code <= 127; ++code) {
        const auto typed = character(code);
        if (typed && typed->toLower() == wanted)
            return code;
    }
    return std::nullopt;
}

QString symbolName(std::uint16_t keyCode)
{
    return Keyboard::instance().layout().symbolName(keyCode);
}

void onChange(QObject *context, const std::function<void()> &changed)
{
    QObject::connect(&Keyboard::instance(), &Keyboard::changed, context, changed);
}

} // namespace kelo::KeyboardLayout
