#include "support/MemoryDefaultsStore.h"

namespace mivora {

MemoryDefaultsStore::MemoryDefaultsStore(Kind kind, QObject *parent) : DefaultsStore(parent), m_kind(kind) {}

template<typename T> std::optional<T> MemoryDefaultsStore::read(const QString &key) const
{
    const auto found = m_values.find(key);
    if (found == m_values.end())
        return std::nullopt;
    const T *value = std::get_if<T>(&*found);
    return value ? std::optional(*value) : std::nullopt;
}

QStringList MemoryDefaultsStore::keys() const
{
    return m_values.keys();
}

std::optional<bool> MemoryDefaultsStore::boolean(const QString &key) const
{
    return read<bool>(key);
}

std::optional<qint64> MemoryDefaultsStore::integer(const QString &key) const
{
    return read<qint64>(key);
}

std::optional<QString> MemoryDefaultsStore::string(const QString &key) const
{
    return read<QString>(key);
}

std::optional<QStringList> MemoryDefaultsStore::stringList(const QString &key) const
{
    return read<QStringList>(key);
}

std::optional<QByteArray> MemoryDefaultsStore::data(const QString &key) const
{
    return read<QByteArray>(key);
}

void MemoryDefaultsStore::setBoolean(const QString &key, bool value)
{
    m_values.insert(key, value);
}

void MemoryDefaultsStore::setInteger(const QString &key, qint64 value)
{
    m_values.insert(key, value);
}

void MemoryDefaultsStore::setString(const QString &key, const QString &value)
{
    m_values.insert(key, value);
}

void MemoryDefaultsStore::setStringList(const QString &key, const QStringList &value)
{
    m_values.insert(key, value);
}

void MemoryDefaultsStore::setData(const QString &key, const QByteArray &value)
{
    m_values.insert(key, value);
}

void MemoryDefaultsStore::remove(const QString &key)
{
    m_values.remove(key);
}

void MemoryDefaultsStore::changeFromOutside(const std::function<void(DefaultsStore &)> &writes)
{
    writes(*this);
    Q_EMIT changedExternally();
}

} // namespace mivora
