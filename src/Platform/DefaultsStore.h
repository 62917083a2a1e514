#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QStringList>
#include <optional>

namespace mivora {

/// A persistent store of the user's settings: typed values under string keys.
///
/// A typed read of a key that is missing, or whose value is of another type, gives nothing. Every write is on
/// disk when the setter returns. What a write cannot do (a full disk, a read-only folder) is reported once by
/// writeFailed(); the value is kept in memory all the same.
class DefaultsStore : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Whether this is the user's own store, and not one made for a preview or a test.
    virtual bool isStandard() const = 0;

    virtual QStringList keys() const = 0;
    virtual std::optional<bool> boolean(const QString &key) const = 0;
    virtual std::optional<qint64> integer(const QString &key) const = 0;
    virtual std::optional<QString> string(const QString &key) const = 0;
    virtual std::optional<QStringList> stringList(const QString &key) const = 0;
    virtual std::optional<QByteArray> data(const QString &key) const = 0;

    virtual void setBoolean(const QString &key, bool value) = 0;
    virtual void setInteger(const QString &key, qint64 value) = 0;
    virtual void setString(const QString &key, const QString &value) = 0;
    virtual void setStringList(const QString &key, const QStringList &value) = 0;
    virtual void setData(const QString &key, const QByteArray &value) = 0;
    virtual void remove(const QString &key) = 0;

Q_SIGNALS:
    /// Another process changed the stored values.
    void changedExternally();
    /// A value could not be written to disk; \a reason names the file and the error.
    void writeFailed(const QString &reason);
};

} // namespace mivora
