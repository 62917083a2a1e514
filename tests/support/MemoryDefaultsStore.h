#pragma once

#include "Platform/DefaultsStore.h"

#include <functional>

namespace mivora {

/// A settings store that lives in memory only.
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

    /// Runs `writes`, which change this store, as another process would: they end in changedExternally().
    void changeFromOutside(const std::function<void(DefaultsStore &)> &writes)
    {
        writes(*this);
        Q_EMIT changedExternally();
    }

private:
    Kind m_kind;
    QJsonObject m_values;
};

} // namespace mivora
