#include "KeloMenuBar/backends/DBusMenu.h"

#include <QGuiApplication>
#include <QTimer>

namespace kelo {

namespace {

void replyUnknownId(const QDBusConnection &bus, const QDBusMessage &message, int id)
{
    message.setDelayedReply(true);
    bus.send(message.createErrorReply(QDBusError::InvalidArgs, QStringLiteral("No item %1").arg(id)));
}

} // namespace

DBusMenu::DBusMenu(const QDBusConnection &bus, std::function<Menu()> build, QObject *exported)
    : QDBusAbstractAdaptor(exported), m_bus(bus), m_build(std::move(build))
{
    registerBusTypes();
}

QString DBusMenu::textDirection() const
{
    return QGuiApplication::isRightToLeft() ? QStringLiteral("rtl") : QStringLiteral("ltr");
}

uint DBusMenu::GetLayout(int parentId, int recursionDepth, const QStringList &, const QDBusMessage &message,
                         DBusMenuLayout &layout)
{
    ensureBuilt();
    if (const auto properties = m_generations.properties(parentId))
        layout = {parentId, *properties, {}};
    else
        replyUnknownId(m_bus, message, parentId);
    if (parentId == MenuGenerations::rootId && recursionDepth != 0)
        layout = m_generations.layout();
    return m_generations.revision();
}

QList<DBusMenuProperties> DBusMenu::GetGroupProperties(const QList<int> &ids, const QStringList &)
{
    ensureBuilt();
    QList<DBusMenuProperties> result;
    for (const int id : ids) {
        if (const auto properties = m_generations.properties(id))
            result << DBusMenuProperties{id, *properties};
    }
    // None asked for are all of them.
    if (ids.isEmpty()) {
        for (const DBusMenuLayout &item : m_generations.layout().children)
            result << DBusMenuProperties{item.id, item.properties};
    }
    return result;
}

QDBusVariant DBusMenu::GetProperty(int id, const QString &name, const QDBusMessage &message)
{
    ensureBuilt();
    const auto properties = m_generations.properties(id);
    if (properties && properties->contains(name))
        return QDBusVariant(properties->value(name));
    replyUnknownId(m_bus, message, id);
    return {};
}

void DBusMenu::Event(int id, const QString &eventId, const QDBusVariant &, uint)
{
    handleEvent(id, eventId);
}

QList<int> DBusMenu::EventGroup(const QList<DBusMenuEvent> &events)
{
    QList<int> idErrors;
    for (const DBusMenuEvent &event : events) {
        if (!handleEvent(event.id, event.name))
            idErrors << event.id;
    }
    return idErrors;
}

bool DBusMenu::AboutToShow(int id)
{
    if (id != MenuGenerations::rootId)
        return false;
    rebuild();
    return true;
}

QList<int> DBusMenu::AboutToShowGroup(const QList<int> &ids, QList<int> &idErrors)
{
    for (int id : ids) {
        if (!m_generations.contains(id))
            idErrors << id;
    }
    return ids.contains(MenuGenerations::rootId) && AboutToShow(MenuGenerations::rootId)
               ? QList<int>{MenuGenerations::rootId}
               : QList<int>{};
}

void DBusMenu::ensureBuilt()
{
    // Hosts read the layout when they find the item, long before the menu is opened.
    if (m_generations.revision() == 0)
        m_generations.replace(m_build());
}

void DBusMenu::rebuild()
{
    m_generations.replace(m_build());
    Q_EMIT LayoutUpdated(m_generations.revision(), MenuGenerations::rootId);
}

bool DBusMenu::handleEvent(int id, const QString &eventId)
{
    if (eventId == QLatin1String("clicked")) {
        // Afterwards, so that the host has its answer first, and from a copy: the action may rebuild the
        // menu.
        if (auto action = m_generations.action(id))
            QTimer::singleShot(0, this, std::move(action));
    }
    return m_generations.contains(id);
}

} // namespace kelo
