#include "KeloMenuBar/backends/DBusMenu.h"

#include "Platform/Activation.h"

#include <QGuiApplication>
#include <QTimer>
#include <utility>
#include <xkbcommon/xkbcommon.h>

namespace kelo {

namespace {

/// The number of the menu itself.
constexpr int rootId = 0;

// Hosts announce one opening up to twice (AboutToShow and AboutToShowGroup), so the one before is two back.
constexpr std::size_t keptOpenings = 3;

// Keys are named by X: "comma" for ",".
QString keyName(const QString &key)
{
    char name[64] = {};
    xkb_keysym_get_name(xkb_utf32_to_keysym(key.front().unicode()), name, sizeof name);
    return QString::fromLatin1(name);
}

QList<QStringList> shortcut(const MenuItem &item)
{
    QStringList keys{QStringLiteral("Control")};
    if (item.modifiers == KeyModifiers::CommandShift)
        keys << QStringLiteral("Shift");
    return {keys << keyName(item.keyEquivalent)};
}

} // namespace

QVariantMap dbusMenuProperties(const MenuItem &item)
{
    if (item.isSeparator)
        return {{QStringLiteral("type"), QStringLiteral("separator")}};
    // A single underscore marks an access key.
    QVariantMap properties{{QStringLiteral("label"), item.text().replace(u'_', QLatin1String("__"))}};
    if (!item.isEnabled)
        properties.insert(QStringLiteral("enabled"), false);
    if (!item.keyEquivalent.isEmpty())
        properties.insert(QStringLiteral("shortcut"), QVariant::fromValue(shortcut(item)));
    return properties;
}

DBusMenu::DBusMenu(const QDBusConnection &bus, std::function<Menu()> build,
                   std::function<QByteArray()> takeToken, QObject *exported)
    : QDBusAbstractAdaptor(exported), m_bus(bus), m_build(std::move(build)), m_takeToken(std::move(takeToken))
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
    if (const auto found = properties(parentId))
        layout = {parentId, *found, {}};
    else
        replyUnknownId(message, parentId);
    if (parentId == rootId && recursionDepth != 0) {
        for (const int id : currentIds())
            layout.children << DBusMenuLayout{id, *properties(id), {}};
    }
    return m_revision;
}

QList<DBusMenuProperties> DBusMenu::GetGroupProperties(const QList<int> &ids, const QStringList &)
{
    QList<DBusMenuProperties> result;
    // None asked for are all of them.
    for (const int id : ids.isEmpty() ? currentIds() : ids) {
        if (const auto found = properties(id))
            result << DBusMenuProperties{id, *found};
    }
    return result;
}

QDBusVariant DBusMenu::GetProperty(int id, const QString &name, const QDBusMessage &message)
{
    const QVariantMap found = properties(id).value_or(QVariantMap());
    if (!found.contains(name))
        replyUnknownId(message, id);
    return QDBusVariant(found.value(name));
}

void DBusMenu::Event(int id, const QString &eventId, const QDBusVariant &, uint timestamp)
{
    const ClosureMenuItem *clicked = eventId == QLatin1String("clicked") ? item(id) : nullptr;
    // Afterwards, so that the host has its answer first, and from a copy: the action may rebuild the menu.
    if (clicked && clicked->isEnabled && clicked->action)
        QTimer::singleShot(0, this, [this, timestamp, action = clicked->action] {
            mivora::holdActivation({m_takeToken(), timestamp});
            action();
        });
}

QList<int> DBusMenu::EventGroup(const QList<DBusMenuEvent> &events)
{
    QList<int> idErrors;
    for (const DBusMenuEvent &event : events) {
        Event(event.id, event.name, event.data, event.timestamp);
        if (!contains(event.id))
            idErrors << event.id;
    }
    return idErrors;
}

bool DBusMenu::AboutToShow(int id)
{
    if (id != rootId)
        return false;
    build();
    Q_EMIT LayoutUpdated(m_revision, rootId);
    return true;
}

QList<int> DBusMenu::AboutToShowGroup(const QList<int> &ids, QList<int> &idErrors)
{
    for (const int id : ids) {
        if (!contains(id))
            idErrors << id;
    }
    return ids.contains(rootId) && AboutToShow(rootId) ? QList<int>{rootId} : QList<int>{};
}

void DBusMenu::build()
{
    m_openings.push_back({m_nextId, m_build()});
    if (m_openings.size() > keptOpenings)
        m_openings.pop_front();
    m_nextId += int(m_openings.back().menu.items().size());
    ++m_revision;
}

// Hosts read the layout when they find the item, long before the menu is opened.
const DBusMenu::Opening &DBusMenu::current()
{
    if (m_openings.empty())
        build();
    return m_openings.back();
}

const ClosureMenuItem *DBusMenu::item(int id) const
{
    for (const Opening &opening : m_openings) {
        // Compared first: the number comes from the bus, and may be too low to be subtracted from.
        if (id < opening.firstId)
            continue;
        const auto index = std::size_t(id - opening.firstId);
        const auto &items = opening.menu.items();
        if (index < items.size())
            return &items[index];
    }
    return nullptr;
}

/// Whether the number is the menu's own or an item's that can still be clicked.
bool DBusMenu::contains(int id) const
{
    return id == rootId || item(id);
}

/// Of the menu itself or of a current item.
std::optional<QVariantMap> DBusMenu::properties(int id)
{
    const int firstId = current().firstId;
    if (id == rootId)
        return QVariantMap{{QStringLiteral("children-display"), QStringLiteral("submenu")}};
    const MenuItem *found = id >= firstId ? item(id) : nullptr;
    return found ? std::optional(dbusMenuProperties(*found)) : std::nullopt;
}

QList<int> DBusMenu::currentIds()
{
    QList<int> ids;
    for (int id = current().firstId; id < m_nextId; ++id)
        ids << id;
    return ids;
}

void DBusMenu::replyUnknownId(const QDBusMessage &message, int id) const
{
    message.setDelayedReply(true);
    m_bus.send(message.createErrorReply(QDBusError::InvalidArgs, QStringLiteral("No item %1").arg(id)));
}

} // namespace kelo
