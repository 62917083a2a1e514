#include "KeloMenuBar/backends/PopupMenu.h"

#include "KeloTheme/ViewLoader.h"
#include "Platform/linux/X11Connection.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QScreen>
#include <QTimer>
#include <algorithm>
#include <climits>
#include <utility>

namespace kelo {

namespace {

// The panel that was clicked may hold the pointer until the button is released.
constexpr int grabAttempts = 20;
constexpr int grabInterval = 25;

// Below and to the right of the point where there is room, else on its other side; never outside the screen.
QPoint placed(QSize size, QPoint point, const QRect &screen)
{
    const int right = screen.right() - size.width() + 1;
    const int y = point.y() + size.height() > screen.bottom() ? point.y() - size.height() : point.y();
    return {std::clamp(point.x(), screen.left(), std::max(screen.left(), right)), std::max(screen.top(), y)};
}

} // namespace

PopupMenu::PopupMenu(ViewLoader &views) : m_views(views)
{
    connect(&m_model, &MenuModel::ended, this, &PopupMenu::dismiss);
}

PopupMenu::~PopupMenu()
{
    dismiss();
}

void PopupMenu::open(Menu menu, QPoint position)
{
    dismiss();
    m_model.setMenu(std::move(menu));
    m_wasPressed = false;
    m_model.followPointer();
    const QScreen *found = QGuiApplication::screenAt(position);
    const QRect available = (found ? found : QGuiApplication::primaryScreen())->availableGeometry();
    const QSize size = m_model.size().boundedTo({INT_MAX, available.height()});
    m_window.reset(m_views.createWindow(
        {.module = QStringLiteral("KeloMenuBarViews"),
         .component = QStringLiteral("MenuView"),
         .properties = {{QStringLiteral("menu"), QVariant::fromValue<QObject *>(&m_model)}},
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
    m_model.setCurrent(-1);
}

bool PopupMenu::eventFilter(QObject *watched, QEvent *event)
{
    if (m_model.filter(static_cast<QWindow &>(*watched), *event))
        return true;
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        return press(static_cast<QMouseEvent *>(event)->position().toPoint());
    case QEvent::MouseMove:
        return drag(*static_cast<QMouseEvent *>(event));
    case QEvent::MouseButtonRelease:
        return release();
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
    if (ends)
        m_model.choose(m_model.current());
    return ends;
}

} // namespace kelo
