#pragma once

#include <QJsonObject>
#include <QObject>

namespace mivora {

/// A persistent store of JSON values under string keys, such as the user's settings.
///
/// Every write is on disk when the setter returns. What a write cannot do (a full disk, a read-only folder)
/// is reported once by writeFailed(); the value is kept in memory all the same.
class DefaultsStore : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Whether this is the user's own store, and not one made for a preview or a test.
    virtual bool isStandard() const = 0;

    /// All values, also under keys that nobody here knows.
    virtual const QJsonObject &values() const = 0;

    /// Undefined when there is none.
    QJsonValue value(const QString &key) const { return values().value(key); }

    /// Stores `value` under `key`; an undefined value removes the key.
    virtual void setValue(const QString &key, const QJsonValue &value) = 0;

Q_SIGNALS:
    /// Another process changed the stored values.
    void changedExternally();
    /// A value could not be written to disk; `reason` names the file and the error.
    void writeFailed(const QString &reason);
};

} // namespace mivora
