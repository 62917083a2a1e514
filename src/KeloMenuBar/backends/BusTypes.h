#pragma once

#include <QDBusArgument>
#include <QDBusVariant>
#include <QImage>
#include <QList>
#include <QMetaType>
#include <QStringList>
#include <QVariantMap>
#include <tuple>

// The compound types of com.canonical.dbusmenu and org.kde.StatusNotifierItem. `members` has those of a
// structure in the order of its signature.
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

    template<typename Self> static auto members(Self &self) { return std::tie(self.id, self.properties); }
};

/// (isvu): what happened to an item, "clicked" or "opened".
struct DBusMenuEvent
{
    int id = 0;
    QString name;
    QDBusVariant data;
    uint timestamp = 0;

    template<typename Self> static auto members(Self &self)
    {
        return std::tie(self.id, self.name, self.data, self.timestamp);
    }
};

/// (iiay): ARGB pixels in network byte order.
struct NotifierPixmap
{
    int width = 0;
    int height = 0;
    QByteArray bytes;

    static NotifierPixmap fromImage(const QImage &image);

    template<typename Self> static auto members(Self &self)
    {
        return std::tie(self.width, self.height, self.bytes);
    }
};

/// (sa(iiay)ss)
struct NotifierToolTip
{
    QString iconName{};
    QList<NotifierPixmap> iconPixmap{};
    QString title{};
    QString description{};

    template<typename Self> static auto members(Self &self)
    {
        return std::tie(self.iconName, self.iconPixmap, self.title, self.description);
    }
};

/// Makes QtDBus know these types. To be called before an item or a menu is exported.
void registerBusTypes();

QDBusArgument &operator<<(QDBusArgument &argument, const DBusMenuLayout &layout);
const QDBusArgument &operator>>(const QDBusArgument &argument, DBusMenuLayout &layout);

template<typename Structure>

requires requires(Structure &structure)
{
    Structure::members(structure);
}

QDBusArgument &operator<<(QDBusArgument &argument, const Structure &structure)
{
    argument.beginStructure();
    std::apply([&](const auto &...members) { (argument << ... << members); }, Structure::members(structure));
    argument.endStructure();
    return argument;
}

template<typename Structure>

requires requires(Structure &structure)
{
    Structure::members(structure);
}

const QDBusArgument &operator>>(const QDBusArgument &argument, Structure &structure)
{
    argument.beginStructure();
    std::apply([&](auto &...members) { (argument >> ... >> members); }, Structure::members(structure));
    argument.endStructure();
    return argument;
}

} // namespace kelo

Q_DECLARE_METATYPE(kelo::DBusMenuLayout)
Q_DECLARE_METATYPE(kelo::DBusMenuProperties)
Q_DECLARE_METATYPE(kelo::DBusMenuEvent)
Q_DECLARE_METATYPE(kelo::NotifierPixmap)
Q_DECLARE_METATYPE(kelo::NotifierToolTip)
