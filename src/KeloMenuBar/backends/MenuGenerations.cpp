#include "KeloMenuBar/backends/MenuGenerations.h"

#include <utility>
#include <xkbcommon/xkbcommon.h>

namespace kelo {

namespace {

// Hosts announce one opening up to twice (AboutToShow and AboutToShowGroup), so the one before is two back.
constexpr std::size_t keptGenerations = 3;

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

void MenuGenerations::replace(Menu menu)
{
    const int count = static_cast<int>(menu.items().size());
    m_generations.push_back({m_nextId, std::move(menu)});
    if (m_generations.size() > keptGenerations)
        m_generations.pop_front();
    m_nextId += count;
    ++m_revision;
}

DBusMenuLayout MenuGenerations::layout() const
{
    DBusMenuLayout root{rootId, *properties(rootId), {}};
    if (m_generations.empty())
        return root;
    int id = m_generations.back().firstId;
    for (const MenuItem &item : m_generations.back().menu.items())
        root.children << DBusMenuLayout{id++, dbusMenuProperties(item), {}};
    return root;
}

std::optional<QVariantMap> MenuGenerations::properties(int id) const
{
    if (id == rootId)
        return QVariantMap{{QStringLiteral("children-display"), QStringLiteral("submenu")}};
    const bool isCurrent = !m_generations.empty() && id >= m_generations.back().firstId;
    const MenuItem *found = isCurrent ? item(id) : nullptr;
    return found ? std::optional(dbusMenuProperties(*found)) : std::nullopt;
}

std::function<void()> MenuGenerations::action(int id) const
{
    const ClosureMenuItem *found = item(id);
    return found && found->isEnabled ? found->action : nullptr;
}

const ClosureMenuItem *MenuGenerations::item(int id) const
{
    for (const Generation &generation : m_generations) {
        // Compared first: the number comes from the bus, and may be too low to be subtracted from.
        if (id < generation.firstId)
            continue;
        const auto index = static_cast<std::size_t>(id - generation.firstId);
        const auto &items = generation.menu.items();
        if (index < items.size())
            return &items[index];
    }
    return nullptr;
}

} // namespace kelo
