#include "KeloMenuBar/Menu.h"

#include <utility>

namespace kelo {

ClosureMenuItem::ClosureMenuItem(const QString &title, std::function<void()> action,
                                 const QString &keyEquivalent)
    : MenuItem{.title = title, .keyEquivalent = keyEquivalent}, action(std::move(action))
{
}

ClosureMenuItem ClosureMenuItem::separator()
{
    ClosureMenuItem item({}, {}, {});
    item.isSeparator = true;
    return item;
}

ClosureMenuItem &Menu::addItem(const QString &title, const QString &keyEquivalent,
                               std::function<void()> action)
{
    return m_items.emplace_back(title, std::move(action), keyEquivalent);
}

void Menu::addSeparator()
{
    m_items.push_back(ClosureMenuItem::separator());
}

void Menu::removeAll()
{
    m_items.clear();
}

} // namespace kelo
