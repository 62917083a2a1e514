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

ClosureMenuItem &Menu::addItem(const QString &title, const QString &keyEquivalent,
                               std::function<void()> action)
{
    return m_items.emplace_back(
        ClosureMenuItem{{.title = title, .keyEquivalent = keyEquivalent}, std::move(action)});
}

void Menu::addSeparator()
{
    m_items.push_back({{.isSeparator = true}, nullptr});
}

void Menu::removeAll()
{
    m_items.clear();
}

} // namespace kelo
