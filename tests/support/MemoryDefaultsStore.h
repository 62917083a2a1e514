#pragma once

#include "Platform/DefaultsStore.h"

#include <QMap>
#include <functional>
#include <variant>

namespace mivora {

/// A settings store that lives in memory only.
class MemoryDefaultsStore final : public DefaultsStore
{
    Q_OBJECT

public:
    enum class Kind { standard, preview };

    explicit MemoryDefaultsStore(Kind kind = Kind::preview, QObject *parent = nullptr);

    bool isStandard() const override { return m_kind == Kind::standard; }

    QStringList keys() const override;
    std::optional<bool> boolean(const QString &key) const override;
    std::optional<qint64> integer(const QString &key) const override;
    std::optional<QString> string(const QString &key) const override;
    std::optional<QStringList> stringList(const QString &key) const override;
    std::optional<QByteArray> data(const QString &key) const override;

    void setBoolean(const QString &key, bool value) override;
    void setInteger(const QString &key, qint64 value) override;
    void setString(const QString &key, const QString &value) override;
    void setStringList(const QString &key, const QStringList &value) override;
    void setData(const QString &key, const QByteArray &value) override;
    void remove(const QString &key) override;

    /// Runs \a writes, which change this store, as another process would: they end in changedExternally().
    void changeFromOutside(const std::function<void(DefaultsStore &)> &writes);

private:
    using Value = std::variant<bool, qint64, QString, QStringList, QByteArray>;

    template<typename T> std::optional<T> read(const QString &key) const;

    Kind m_kind;
    QMap<QString, Value> m_values;
};

} // namespace mivora
