#include "KeloHotkey/HotKeyCombo.h"

#include "KeloHotkey/KeyboardLayout.h"

#include <QJsonDocument>
#include <QJsonObject>
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
};

// In the order in which they are shown.
constexpr ModifierForm modifierForms[] = {
    {controlKey, Qt::ControlModifier, u'⌃'},
    {optionKey, Qt::AltModifier, u'⌥'},
    {shiftKey, Qt::ShiftModifier, u'⇧'},
    {commandKey, Qt::MetaModifier, u'⌘'},
};

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
    if (keyCode > std::numeric_limits<std::uint16_t>::max())
        qFatal("%u is no key code", keyCode);
    QStringList caps;
    for (const ModifierForm &form : modifierForms) {
        if (modifiers & form.bit)
            caps.append(QChar(form.symbol));
    }
    caps.append(KeyboardLayout::displayName(std::uint16_t(keyCode)));
    return caps;
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
