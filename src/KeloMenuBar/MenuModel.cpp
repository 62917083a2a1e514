#include "KeloMenuBar/MenuModel.h"

#include "Platform/Activation.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QKeyEvent>
#include <algorithm>
#include <utility>

namespace kelo {

namespace {

// As MenuView.qml has them.
constexpr int edge = 5;
constexpr int indent = 12;
constexpr int rowHeight = 26;
constexpr int separatorHeight = 9;
constexpr int shortcutGap = 32;
constexpr int narrowest = 160;
constexpr int widest = 480;
// Widths are measured in whole pixels, and a text is not to be cut for the rest.
constexpr int rounding = 4;

QString shortcutText(const MenuItem &item)
{
    return item.shortcut().toString(QKeySequence::NativeText);
}

} // namespace

void MenuModel::setMenu(Menu menu)
{
    m_menu = std::move(menu);
    QVariantList items;
    for (int index = 0; index < int(m_menu.items().size()); ++index) {
        const MenuItem &item = m_menu.items()[std::size_t(index)];
        items.append(QVariantMap{{QStringLiteral("title"), item.text()},
                                 {QStringLiteral("shortcut"), shortcutText(item)},
                                 {QStringLiteral("isEnabled"), item.isEnabled},
                                 {QStringLiteral("isStop"), isStop(index, m_stops)},
                                 {QStringLiteral("isSeparator"), item.isSeparator}});
    }
    if (items == m_items)
        return;
    const QVariant before = m_items.value(m_current);
    m_items = std::move(items);
    Q_EMIT itemsChanged();
    setCurrent(before.isValid() ? int(m_items.indexOf(before)) : -1);
}

QSize MenuModel::size() const
{
    const QFontMetrics metrics(QGuiApplication::font());
    QSize size(narrowest, 2 * edge);
    for (const MenuItem &item : m_menu.items()) {
        const QString shortcut = shortcutText(item);
        const int extra = shortcut.isEmpty() ? 0 : shortcutGap + metrics.horizontalAdvance(shortcut);
        const int width = metrics.horizontalAdvance(item.text()) + rounding + extra + 2 * (edge + indent);
        size = {std::max(size.width(), width),
                size.height() + (item.isSeparator ? separatorHeight : rowHeight)};
    }
    return {std::min(size.width(), widest), size.height()};
}

void MenuModel::setCurrent(int index)
{
    if (std::exchange(m_current, index) != index)
        Q_EMIT currentChanged();
}

void MenuModel::goToFirst()
{
    m_keyboardLeads = true;
    setCurrent(next(-1, 1, Stops::atChoices));
}

void MenuModel::choose(int index)
{
    if (!isStop(index, Stops::atChoices))
        return;
    // The menu may be opened again, and filled anew, by what the action does.
    const auto action = m_menu.items()[std::size_t(index)].action;
    Q_EMIT ended();
    if (action)
        action();
}

bool MenuModel::filter(QWindow &window, QEvent &event)
{
    mivora::holdActivationOf(event, window);
    switch (event.type()) {
    case QEvent::MouseMove:
        followPointer();
        return false;
    case QEvent::ShortcutOverride:
        // Accepted, it becomes a key press, and no shortcut of other windows is triggered by it.
        event.setAccepted(itemWithShortcut(static_cast<QKeyEvent &>(event)) >= 0);
        return event.isAccepted();
    case QEvent::KeyPress:
        pressKey(static_cast<QKeyEvent &>(event));
        return true;
    default:
        return false;
    }
}

void MenuModel::pressKey(const QKeyEvent &event)
{
    m_keyboardLeads = true;
    const int count = int(m_menu.items().size());
    switch (event.key()) {
    case Qt::Key_Escape:
        Q_EMIT ended();
        break;
    case Qt::Key_Down:
        setCurrent(next(m_current, 1, m_stops));
        break;
    case Qt::Key_Up:
        setCurrent(next(m_current < 0 ? count : m_current, -1, m_stops));
        break;
    case Qt::Key_PageDown:
        setCurrent(afterPage(1));
        break;
    case Qt::Key_PageUp:
        setCurrent(afterPage(-1));
        break;
    case Qt::Key_Home:
        setCurrent(next(-1, 1, m_stops));
        break;
    case Qt::Key_End:
        setCurrent(next(count, -1, m_stops));
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        choose(m_current);
        break;
    default:
        choose(itemWithShortcut(event));
    }
}

bool MenuModel::isStop(int index, Stops stops) const
{
    if (index < 0 || index >= int(m_menu.items().size()))
        return false;
    const MenuItem &item = m_menu.items()[std::size_t(index)];
    return stops == Stops::atTexts ? !item.isSeparator : item.canBeChosen();
}

// The next stop in this direction, round the ends; -1 when there is none.
int MenuModel::next(int index, int step, Stops stops) const
{
    const int count = int(m_menu.items().size());
    for (int tried = 0; tried < count; ++tried) {
        index = (index + step + count) % count;
        if (isStop(index, stops))
            return index;
    }
    return -1;
}

// Some stops on, but not round the ends.
int MenuModel::afterPage(int step) const
{
    int index = m_current;
    for (int stops = 0; stops < 8; ++stops) {
        const int further = next(index, step, m_stops);
        if ((further - index) * step > 0)
            index = further;
    }
    return index;
}

int MenuModel::itemWithShortcut(const QKeyEvent &event) const
{
    const auto &items = m_menu.items();
    const auto found = std::find_if(items.begin(), items.end(), [&](const MenuItem &item) {
        return item.canBeChosen() && item.shortcut() == QKeySequence(event.keyCombination());
    });
    return found == items.end() ? -1 : int(found - items.begin());
}

} // namespace kelo
