#include "KeloHotkey/HotKeyCombo.h"

#include "KeloHotkey/KeyboardLayout.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <array>
#include <cmath>
#include <limits>

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
    /// In the context that Qt has for the words of menus.
    const char *name;
};

// In the order in which the symbols are shown.
constexpr std::array modifierForms{
    ModifierForm{controlKey, Qt::ControlModifier, u'⌃', QT_TRANSLATE_NOOP("QShortcut", "Ctrl")},
    ModifierForm{optionKey, Qt::AltModifier, u'⌥', QT_TRANSLATE_NOOP("QShortcut", "Alt")},
    ModifierForm{shiftKey, Qt::ShiftModifier, u'⇧', QT_TRANSLATE_NOOP("QShortcut", "Shift")},
    ModifierForm{commandKey, Qt::MetaModifier, u'⌘', QT_TRANSLATE_NOOP("QShortcut", "Super")},
};

// Each toolkit has its order, and its name for the key with the logo.
constexpr std::array orderOfGtk{2, 0, 1, 3};
constexpr std::array orderOfQt{3, 0, 1, 2};
constexpr const char *commandOfQt = QT_TRANSLATE_NOOP("QShortcut", "Meta");

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
    const auto desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(QLatin1Char(':'));
    const bool isQt = desktops.contains(QLatin1String("KDE")) || desktops.contains(QLatin1String("LXQt"));
    QStringList names;
    for (const int index : isQt ? orderOfQt : orderOfGtk) {
        const auto &[bit, held, symbol, name] = modifierForms.at(std::size_t(index));
        if (modifiers & bit)
            names.append(
                QCoreApplication::translate("QShortcut", isQt && bit == commandKey ? commandOfQt : name));
    }
    return names << KeyboardLayout::name(keyCodeOf(*this));
}

QStringList HotKeyCombo::keysIn(const char *modifierNames) const
{
    const QString key = KeyboardLayout::symbolName(std::uint16_t(keyCode));
    if (key.isEmpty())
        return {};
    QStringList keys = QString::fromLatin1(modifierNames).split(QLatin1Char(' '));
    for (qsizetype i = keys.size() - 1; i >= 0; --i) {
        if (!(modifiers & modifierForms.at(std::size_t(i)).bit))
            keys.removeAt(i);
    }
    return keys << key;
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
