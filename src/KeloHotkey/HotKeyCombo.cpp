#include "KeloHotkey/HotKeyCombo.h"

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
    return static_cast<std::uint32_t>(number);
}

} // namespace

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
