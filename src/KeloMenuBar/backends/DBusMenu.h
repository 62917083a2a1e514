#pragma once

#include "KeloMenuBar/backends/MenuGenerations.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <functional>

namespace kelo {

/// com.canonical.dbusmenu on the object that is its parent. The menu is built when the host is about to show
/// it. Hosts get all properties, whichever they ask for.
class DBusMenu final : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version CONSTANT)
    Q_PROPERTY(QString TextDirection READ textDirection)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath CONSTANT)

public:
    /// `build` makes the menu anew, each time that it is called.
    DBusMenu(const QDBusConnection &bus, std::function<Menu()> build, QObject *exported);

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
    void ensureBuilt();
    void rebuild();
    bool handleEvent(int id, const QString &eventId);

    QDBusConnection m_bus;
    std::function<Menu()> m_build;
    MenuGenerations m_generations;
};

} // namespace kelo
