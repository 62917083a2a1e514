#include "KeloMenuBar/backends/PopupMenu.h"

#include "KeloTheme/ViewLoader.h"
#include "Platform/Activation.h"
#include "Platform/linux/X11Connection.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QTimer>
#include <algorithm>
#include <utility>

namespace kelo {

namespace {

// As PopupMenu.qml has them.
constexpr int edge = 5;
constexpr int indent = 12;
constexpr int rowHeight = 26;
constexpr int separatorHeight = 9;
constexpr int shortcutGap = 32;
constexpr int narrowest = 160;
constexpr int widest = 480;
// Widths are measured in whole pixels, and a text is not to be cut for the rest.
constexpr int rounding = 4;

// The panel that was clicked may hold the pointer until the button is released.
constexpr int grabAttempts = 20;
constexpr int grabInterval = 25;

QString shortcutText(const MenuItem &item)
{
    return item.shortcut().toString(QKeySequence::NativeText);
}

// Below and to the right of the point where there is room, else on its other side; never outside the screen.
QPoint placed(QSize size, QPoint point, const QRect &screen)
{
    const int right = screen.right() - size.width() + 1;
    const int y = point.y() + size.height() > screen.bottom() ? point.y() - size.height() : point.y();
    return {std::clamp(point.x(), screen.left(), std::max(screen.left(), right)), std::max(screen.top(), y)};
}

} // namespace

PopupMenu::~PopupMenu()
{
    dismiss();
}

QVariantList PopupMenu::items() const
{
    QVariantList items;
    for (const MenuItem &item : m_menu.items())
        items.append(QVariantMap{{QStringLiteral("title"), item.text()},
                                 {QStringLiteral("shortcut"), shortcutText(item)},
                                 {QStringLiteral("isEnabled"), item.isEnabled},
                                 {QStringLiteral("isSeparator"), item.isSeparator}});
    return items;
}

void PopupMenu::open(Menu menu, QPoint position)
{
    dismiss();
    m_menu = std::move(menu);
    m_wasPressed = false;
    m_keyboardLeads = false;
    const QScreen *found = QGuiApplication::screenAt(position);
    const QRect available = (found ? found : QGuiApplication::primaryScreen())->availableGeometry();
    const QSize size = measure().boundedTo({widest, available.height()});
    m_window.reset(
        m_views.createWindow({.module = QStringLiteral("KeloMenuBarViews"),
                              .component = QStringLiteral("PopupMenu"),
                              .properties = {{QStringLiteral("menu"), QVariant::fromValue<QObject *>(this)}},
                              .size = size,
                              .kind = ViewKind::popup}));
    if (!m_window)
        return;
    m_window->setFlags(Qt::Popup | Qt::FramelessWindowHint);
    m_window->setGeometry(QRect(placed(size, position, available), size));
    m_window->installEventFilter(this);
    m_window->show();
    m_window->raise();
    const mivora::X11Connection x11;
    m_previousFocus = x11.inputFocus();
    x11.setInputFocus(xcb_window_t(m_window->winId()));
    x11.flush();
    grab(grabAttempts);
}

QSize PopupMenu::measure() const
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
    return size;
}

void PopupMenu::grab(int attemptsLeft)
{
    if (!m_window || (m_window->setMouseGrabEnabled(true) && m_window->setKeyboardGrabEnabled(true)) ||
        attemptsLeft == 0)
        return;
    QTimer::singleShot(grabInterval, m_window.get(), [this, attemptsLeft] { grab(attemptsLeft - 1); });
}

void PopupMenu::dismiss()
{
    if (!m_window)
        return;
    const mivora::X11Connection x11;
    if (x11.inputFocus() == m_window->winId())
        x11.setInputFocus(m_previousFocus);
    m_window->setMouseGrabEnabled(false);
    m_window->setKeyboardGrabEnabled(false);
    m_window->hide();
    // It may be at work: what closes it happens in it.
    QWindow *window = m_window.release();
    connect(
        window, &QObject::destroyed, this, [this] { m_views.releaseUnused(); }, Qt::QueuedConnection);
    window->deleteLater();
    setCurrent(-1);
}

void PopupMenu::choose(int index)
{
    // The menu may be opened again, and filled anew, by what the action does.
    const auto action = m_menu.items().at(std::size_t(index)).action;
    dismiss();
    if (action)
        action();
}

void PopupMenu::setCurrent(int index)
{
    if (std::exchange(m_current, index) != index)
        Q_EMIT currentChanged();
}

bool PopupMenu::eventFilter(QObject *, QEvent *event)
{
    if (event->type() == QEvent::KeyPress || event->type() == QEvent::MouseButtonRelease)
        mivora::holdActivation({.time = std::uint32_t(static_cast<QInputEvent *>(event)->timestamp())});
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        return press(static_cast<QMouseEvent *>(event)->position().toPoint());
    case QEvent::MouseMove:
        m_keyboardLeads = false;
        return drag(*static_cast<QMouseEvent *>(event));
    case QEvent::MouseButtonRelease:
        return release();
    case QEvent::ShortcutOverride:
        // Accepted, it becomes a key press, and no shortcut of other windows is triggered by it.
        event->setAccepted(itemWithShortcut(*static_cast<QKeyEvent *>(event)) >= 0);
        return event->isAccepted();
    case QEvent::KeyPress:
        return pressKey(*static_cast<QKeyEvent *>(event));
    default:
        return false;
    }
}

bool PopupMenu::press(QPoint position)
{
    m_wasPressed = true;
    const bool isOutside = !QRect(QPoint(), m_window->size()).contains(position);
    if (isOutside)
        dismiss();
    return isOutside;
}

// With the button held that opened the menu, the view is to see what it would without.
bool PopupMenu::drag(const QMouseEvent &event)
{
    if (m_wasPressed || event.buttons() == Qt::NoButton)
        return false;
    QMouseEvent hover(event.type(), event.position(), event.globalPosition(), Qt::NoButton, Qt::NoButton,
                      event.modifiers());
    QCoreApplication::sendEvent(m_window.get(), &hover);
    return true;
}

bool PopupMenu::release()
{
    const bool ends = !std::exchange(m_wasPressed, true);
    if (ends && m_current >= 0)
        choose(m_current);
    return ends;
}

bool PopupMenu::pressKey(const QKeyEvent &event)
{
    m_keyboardLeads = true;
    const int count = int(m_menu.items().size());
    const int withShortcut = itemWithShortcut(event);
    switch (event.key()) {
    case Qt::Key_Escape:
        dismiss();
        break;
    case Qt::Key_Down:
        moveFrom(m_current, 1);
        break;
    case Qt::Key_Up:
        moveFrom(m_current < 0 ? count : m_current, -1);
        break;
    case Qt::Key_Home:
        moveFrom(-1, 1);
        break;
    case Qt::Key_End:
        moveFrom(count, -1);
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        if (m_current >= 0)
            choose(m_current);
        break;
    default:
        if (withShortcut >= 0)
            choose(withShortcut);
    }
    return true;
}

// The next item in this direction that can be chosen, round the ends.
void PopupMenu::moveFrom(int index, int step)
{
    const int count = int(m_menu.items().size());
    for (int tried = 0; tried < count; ++tried) {
        index = (index + step + count) % count;
        if (m_menu.items()[std::size_t(index)].canBeChosen())
            return setCurrent(index);
    }
}

int PopupMenu::itemWithShortcut(const QKeyEvent &event) const
{
    const auto &items = m_menu.items();
    const auto found = std::find_if(items.begin(), items.end(), [&](const MenuItem &item) {
        return item.canBeChosen() && item.shortcut() == QKeySequence(event.keyCombination());
    });
    return found == items.end() ? -1 : int(found - items.begin());
}

} // namespace kelo
