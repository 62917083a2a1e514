#include "KeloMenuBar/Menu.h"

#include <QGuiApplication>
#include <utility>

namespace kelo {

// Qt's text for the modifier, so that our catalogues have it where Qt's own are not installed.
[[maybe_unused]] constexpr const char *modifierText = QT_TRANSLATE_NOOP("QShortcut", "Ctrl");

QString MenuItem::text() const
{
    constexpr QChar leftToRightMark(0x200E);
    const bool turnsAround = title.isRightToLeft() && !QGuiApplication::isRightToLeft();
    return turnsAround ? leftToRightMark + title : title;
}

QKeySequence MenuItem::shortcut() const
{
    if (keyEquivalent.isEmpty())
        return {};
    const bool hasShift = modifiers == KeyModifiers::CommandShift;
    return QKeySequence((hasShift ? QStringLiteral("Ctrl+Shift+") : QStringLiteral("Ctrl+")) + keyEquivalent);
}

ClosureMenuItem::ClosureMenuItem(const QString &title, std::function<void()> action,
                                 const QString &keyEquivalent)
    : MenuItem{.title = title, .keyEquivalent = keyEquivalent}, action(std::move(action))
{
}

ClosureMenuItem &Menu::addItem(const QString &title, const QString &keyEquivalent,
                               std::function<void()> action)
{
    return m_items.emplace_back(title, std::move(action), keyEquivalent);
}

void Menu::addSeparator()
{
    m_items.emplace_back(QString(), nullptr, QString()).isSeparator = true;
}

void Menu::removeAll()
{
    m_items.clear();
}

} // namespace kelo
