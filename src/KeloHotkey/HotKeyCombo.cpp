#include "KeloHotkey/HotKeyCombo.h"

#include "KeloHotkey/KeyboardLayout.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <cmath>
#include <limits>
#include <span>

namespace kelo {

namespace {

std::optional<std::uint32_t> unsigned32(const QJsonValue &value)
{
    const double number = value.toDouble(-1);
    if (!value.isDouble() || number < 0 || number > std::numeric_limits<std::uint32_t>::max() ||
        std::trunc(number) != number)
        return std::nullopt;
    return std::uint32_t(number);
}

struct ModifierForm
{
    std::uint32_t bit;
    Qt::KeyboardModifier held;
    char16_t symbol;
};

// In the order in which they are shown.
constexpr ModifierForm modifierForms[] = {
    {controlKey, Qt::ControlModifier, u'⌃'},
    {optionKey, Qt::AltModifier, u'⌥'},
    {shiftKey, Qt::ShiftModifier, u'⇧'},
    {commandKey, Qt::MetaModifier, u'⌘'},
};

struct ModifierName
{
    std::uint32_t bit;
    const char *name;
};

// Like those of menus, in the context that Qt has for them.
constexpr ModifierName namesOfGtk[] = {
    {shiftKey, QT_TRANSLATE_NOOP("QShortcut", "Shift")},
    {controlKey, QT_TRANSLATE_NOOP("QShortcut", "Ctrl")},
    {optionKey, QT_TRANSLATE_NOOP("QShortcut", "Alt")},
    {commandKey, QT_TRANSLATE_NOOP("QShortcut", "Super")},
};
constexpr ModifierName namesOfQt[] = {
    {commandKey, QT_TRANSLATE_NOOP("QShortcut", "Meta")},
    {controlKey, "Ctrl"},
    {optionKey, "Alt"},
    {shiftKey, "Shift"},
};

// Each toolkit has its order, and its name for the key with the logo.
std::span<const ModifierName> modifierNames()
{
    const auto desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(QLatin1Char(':'));
    if (desktops.contains(QLatin1String("KDE")) || desktops.contains(QLatin1String("LXQt")))
        return namesOfQt;
    return namesOfGtk;
}

std::uint16_t keyCodeOf(const HotKeyCombo &combo)
{
    if (combo.keyCode > std::numeric_limits<std::uint16_t>::max())
        qFatal("%u is no key code", combo.keyCode);
    return std::uint16_t(combo.keyCode);
}

} // namespace

std::uint32_t HotKeyCombo::carbonFlags(Qt::KeyboardModifiers modifiers)
{
    std::uint32_t flags = 0;
    for (const ModifierForm &form : modifierForms) {
        if (modifiers & form.held)
            flags |= form.bit;
    }
    return flags;
}

QStringList HotKeyCombo::keyCaps() const
{
    QStringList caps;
    for (const ModifierForm &form : modifierForms) {
        if (modifiers & form.bit)
            caps.append(QChar(form.symbol));
    }
    caps.append(KeyboardLayout::displayName(keyCodeOf(*this)));
    return caps;
}

QStringList HotKeyCombo::keyNames() const
{
    QStringList names;
    for (const ModifierName &modifier : modifierNames()) {
        if (modifiers & modifier.bit)
            names.append(QCoreApplication::translate("QShortcut", modifier.name));
    }
    return names << KeyboardLayout::name(keyCodeOf(*this));
}

QString HotKeyCombo::displayString() const
{
    return keyCaps().join(QString());
}

QByteArray HotKeyCombo::toJson() const
{
    return "{\"keyCode\":" + QByteArray::number(keyCode) + ",\"modifiers\":" + QByteArray::number(modifiers) +
           '}';
}

std::optional<HotKeyCombo> HotKeyCombo::fromJson(const QByteArray &json)
{
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    const auto keyCode = unsigned32(object.value(QLatin1String("keyCode")));
    const auto modifiers = unsigned32(object.value(QLatin1String("modifiers")));
    if (!keyCode || !modifiers)
        return std::nullopt;
    return HotKeyCombo{*keyCode, *modifiers};
}

} // namespace kelo
