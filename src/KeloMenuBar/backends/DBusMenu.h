#pragma once

#include "KeloMenuBar/Menu.h"
#include "KeloMenuBar/backends/BusTypes.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <optional>

namespace kelo {

/// The properties of an item as com.canonical.dbusmenu has them; those with their default value left out.
QVariantMap dbusMenuProperties(const MenuItem &item);

/// com.canonical.dbusmenu on the object that is its parent: items by number, anew each time that the host is
/// about to show the menu. Hosts get all properties, whichever they ask for.
///
/// Numbers are never used again, so that a host cannot mix up two openings. A click may come when the next
/// opening has already been built: the items of the last few openings therefore stay alive.
class DBusMenu final : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version CONSTANT)
    Q_PROPERTY(QString TextDirection READ textDirection)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath CONSTANT)

public:
    /// `build` makes the menu anew, each time that it is called. `takeToken` takes the activation token that
    /// the host gave for the click on an item.
    DBusMenu(const QDBusConnection &bus, std::function<Menu()> build, std::function<QByteArray()> takeToken,
             QObject *exported);

    uint version() const { return 3; }

    QString textDirection() const;

    QString status() const { return QStringLiteral("normal"); }

    QStringList iconThemePath() const { return {}; }

public Q_SLOTS:
    uint GetLayout(int parentId, int recursionDepth, const QStringList &propertyNames,
                   const QDBusMessage &message, kelo::DBusMenuLayout &layout);
    QList<kelo::DBusMenuProperties> GetGroupProperties(const QList<int> &ids,
                                                       const QStringList &propertyNames);
    QDBusVariant GetProperty(int id, const QString &name, const QDBusMessage &message);
    void Event(int id, const QString &eventId, const QDBusVariant &data, uint timestamp);
    QList<int> EventGroup(const QList<kelo::DBusMenuEvent> &events);
    bool AboutToShow(int id);
    QList<int> AboutToShowGroup(const QList<int> &ids, QList<int> &idErrors);

Q_SIGNALS:
    void LayoutUpdated(uint revision, int parent);

private:
    struct Opening
    {
        int firstId = 1;
        Menu menu;
    };

    void build();
    const Opening &current();
    const ClosureMenuItem *item(int id) const;
    bool contains(int id) const;
    std::optional<QVariantMap> properties(int id);
    QList<int> currentIds();
    void replyUnknownId(const QDBusMessage &message, int id) const;

    QDBusConnection m_bus;
    std::function<Menu()> m_build;
    std::function<QByteArray()> m_takeToken;
    // The current one is the last.
    std::deque<Opening> m_openings;
    int m_nextId = 1;
    uint m_revision = 0;
};

} // namespace kelo
