#pragma once

#include <QDBusVariant>
#include <QList>
#include <QMetaType>
#include <QStringList>
#include <QVariantMap>

class QDBusArgument;

// The compound types of com.canonical.dbusmenu.
namespace kelo {

/// (ia{sv}av): an item with the items below it.
struct DBusMenuLayout
{
    int id = 0;
    QVariantMap properties;
    QList<DBusMenuLayout> children;
};

/// (ia{sv})
struct DBusMenuProperties
{
    int id = 0;
    QVariantMap properties;
};

/// (ias): names of properties that an item no longer has.
struct DBusMenuRemovals
{
    int id = 0;
    QStringList properties;
};

/// (isvu): what happened to an item, "clicked" or "opened".
struct DBusMenuEvent
{
    int id = 0;
    QString name;
    QDBusVariant data;
    uint timestamp = 0;
};

/// Makes QtDBus know these types. To be called before a menu is exported.
void registerDBusMenuTypes();

QDBusArgument &operator<<(QDBusArgument &argument, const DBusMenuLayout &layout);
const QDBusArgument &operator>>(const QDBusArgument &argument, DBusMenuLayout &layout);
QDBusArgument &operator<<(QDBusArgument &argument, const DBusMenuProperties &item);
const QDBusArgument &operator>>(const QDBusArgument &argument, DBusMenuProperties &item);
QDBusArgument &operator<<(QDBusArgument &argument, const DBusMenuRemovals &item);
const QDBusArgument &operator>>(const QDBusArgument &argument, DBusMenuRemovals &item);
QDBusArgument &operator<<(QDBusArgument &argument, const DBusMenuEvent &event);
const QDBusArgument &operator>>(const QDBusArgument &argument, DBusMenuEvent &event);

} // namespace kelo

Q_DECLARE_METATYPE(kelo::DBusMenuLayout)
Q_DECLARE_METATYPE(kelo::DBusMenuProperties)
Q_DECLARE_METATYPE(kelo::DBusMenuRemovals)
Q_DECLARE_METATYPE(kelo::DBusMenuEvent)
