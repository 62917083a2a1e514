#include "KeloMenuBar/backends/MenuGenerations.h"

#include <utility>

namespace kelo {

namespace {

// Hosts announce one opening up to twice (AboutToShow and AboutToShowGroup), so the one before is two back.
constexpr std::size_t keptGenerations = 3;

struct KeyName
{
    QChar key;
    QLatin1String name;
};

// The X key symbols of keys that are not named by their own character.
constexpr KeyName keyNames[] = {
    {u',', QLatin1String("comma")},    {u'.', QLatin1String("period")}, {u'-', QLatin1String("minus")},
    {u'+', QLatin1String("plus")},     {u'/', QLatin1String("slash")},  {u';', QLatin1String("semicolon")},
    {u'?', QLatin1String("question")}, {u' ', QLatin1String("space")},
};

QString keyName(const QString &key)
{
    for (const KeyName &entry : keyNames) {
        if (key == entry.key)
            return entry.name;
    }
    return key;
}

QList<QStringList> shortcut(const MenuItem &item)
{
    QStringList keys{QStringLiteral("Control")};
    if (item.modifiers == KeyModifiers::CommandShift)
        keys << QStringLiteral("Shift");
    return {keys << keyName(item.keyEquivalent)};
}

QVariantMap only(const QStringList &names, QVariantMap properties)
{
    if (!names.isEmpty())
        properties.removeIf([&](const auto &entry) { return !names.contains(entry.key()); });
    return properties;
}

} // namespace

QVariantMap dbusMenuProperties(const MenuItem &item)
{
    if (item.isSeparator)
        return {{QStringLiteral("type"), QStringLiteral("separator")}};
    // A single underscore marks an access key.
    QString label = item.text();
    QVariantMap properties{{QStringLiteral("label"), label.replace(u'_', QLatin1String("__"))}};
    if (!item.isEnabled)
        properties.insert(QStringLiteral("enabled"), false);
    if (!item.keyEquivalent.isEmpty())
        properties.insert(QStringLiteral("shortcut"), QVariant::fromValue(shortcut(item)));
    return properties;
}

void MenuGenerations::replace(Menu menu)
{
    const int count = static_cast<int>(menu.items().size());
    m_generations.push_back({m_nextId, std::move(menu)});
    if (m_generations.size() > keptGenerations)
        m_generations.pop_front();
    m_nextId += count;
    ++m_revision;
}

std::optional<DBusMenuLayout> MenuGenerations::layout(int id, int depth, const QStringList &names) const
{
    if (id != rootId) {
        const MenuItem *found = currentItem(id);
        return found ? std::optional(DBusMenuLayout{id, only(names, dbusMenuProperties(*found)), {}})
                     : std::nullopt;
    }
    DBusMenuLayout root{
        rootId, only(names, {{QStringLiteral("children-display"), QStringLiteral("submenu")}}), {}};
    if (depth == 0 || m_generations.empty())
        return root;
    int childId = m_generations.back().firstId;
    for (const MenuItem &item : m_generations.back().menu.items())
        root.children << DBusMenuLayout{childId++, only(names, dbusMenuProperties(item)), {}};
    return root;
}

QList<DBusMenuProperties> MenuGenerations::properties(const QList<int> &ids, const QStringList &names) const
{
    QList<DBusMenuProperties> result;
    if (ids.isEmpty()) {
        const auto root = layout(rootId, 1, names);
        for (const DBusMenuLayout &child : root->children)
            result << DBusMenuProperties{child.id, child.properties};
    }
    for (int id : ids) {
        if (const auto found = layout(id, 0, names))
            result << DBusMenuProperties{id, found->properties};
    }
    return result;
}

bool MenuGenerations::contains(int id) const
{
    return id == rootId || item(id);
}

std::function<void()> MenuGenerations::action(int id) const
{
    const ClosureMenuItem *found = item(id);
    return found && found->isEnabled ? found->action : nullptr;
}

const MenuItem *MenuGenerations::currentItem(int id) const
{
    return !m_generations.empty() && id >= m_generations.back().firstId ? item(id) : nullptr;
}

const ClosureMenuItem *MenuGenerations::item(int id) const
{
    for (const Generation &generation : m_generations) {
        // Any number comes over the bus: none may overflow.
        const qint64 index = qint64(id) - generation.firstId;
        const auto &items = generation.menu.items();
        if (index >= 0 && index < static_cast<qint64>(items.size()))
            return &items[static_cast<std::size_t>(index)];
    }
    return nullptr;
}

} // namespace kelo
