#pragma once

#include "Platform/DefaultsStore.h"

namespace mivora {

/// A settings store that lives in memory only. To write as another process does, set values and emit
/// changedExternally().
class MemoryDefaultsStore final : public DefaultsStore
{
public:
    enum class Kind { standard, preview };

    explicit MemoryDefaultsStore(Kind kind = Kind::preview, const QJsonObject &values = {})
        : m_kind(kind), m_values(values)
    {
    }

    bool isStandard() const override { return m_kind == Kind::standard; }

    const QJsonObject &values() const override { return m_values; }

    void setValue(const QString &key, const QJsonValue &value) override { m_values.insert(key, value); }

private:
    Kind m_kind;
    QJsonObject m_values;
};

} // namespace mivora
