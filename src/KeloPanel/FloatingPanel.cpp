#include "KeloPanel/FloatingPanel.h"

#include "KeloPanel/LayerShell.h"
#include "KeloPanel/backends/PanelBackend.h"
#include "KeloTheme/ViewLoader.h"
#include "Platform/Activation.h"
#include "Platform/linux/X11Connection.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QKeyEvent>

namespace kelo {

PanelPlatform panelPlatform()
{
    const QByteArray wanted = qgetenv("MIVORA_PANEL");
    if (wanted == "window")
        return PanelPlatform::window;
    if (wanted == "notification")
        return PanelPlatform::notification;
    if (mivora::X11Connection::isAvailable())
        return PanelPlatform::x11;
    if (!QGuiApplication::platformName().startsWith(QLatin1String("wayland")))
        return PanelPlatform::window;
    return SessionLayers::get().shell ? PanelPlatform::layers : PanelPlatform::notification;
}

FloatingPanel::FloatingPanel(ViewLoader &views, PanelContent content)
    : m_views(views), m_content(std::move(content)), m_backend(PanelBackend::create())
{
}

FloatingPanel::~FloatingPanel()
{
    orderOut();
}

bool FloatingPanel::isVisible() const
{
    return m_window && m_window->isVisible();
}

bool FloatingPanel::isKey() const
{
    return m_window && m_backend->hasKeyboard(*m_window);
}

bool FloatingPanel::isComposing() const
{
    const QObject *focus = m_window ? m_window->focusObject() : nullptr;
    return focus && focus->property("inputMethodComposing").toBool();
}

QSize FloatingPanel::frameSize()
{
    measure();
    return m_surface.frame().windowSize;
}

void FloatingPanel::setOrigin(const QPointF &origin)
{
    m_origin = origin.toPoint();
    if (isVisible())
        m_window->setPosition(m_origin);
}

bool FloatingPanel::makeKeyAndOrderFront()
{
    return orderFront(Keyboard::take);
}

bool FloatingPanel::orderFrontRegardless()
{
    return orderFront(Keyboard::keep);
}

void FloatingPanel::orderOut()
{
    if (!isVisible())
        return;
    m_origin = m_window->position();
    m_backend->orderOut(*m_window);
}

void FloatingPanel::releaseView()
{
    if (isVisible() || !m_window)
        return;
    m_window.reset();
    m_views.releaseUnused();
}

// KWin hands keys typed into other programs to XWayland, whose focus can still be where the pointer once was.
// No key that isn't meant for the panel may press one of its buttons either.
bool FloatingPanel::eventFilter(QObject *watched, QEvent *event)
{
    // The last events come when it has gone from here.
    mivora::holdActivationOf(*event, static_cast<QWindow &>(*watched));
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::TouchBegin:
    case QEvent::TabletPress:
        m_isAddressed = true;
        break;
    case QEvent::KeyPress:
        if (!m_isAddressed || !isKey())
            return true;
        return keyHandler && keyHandler(static_cast<const QKeyEvent &>(*event));
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

bool FloatingPanel::orderFront(Keyboard keyboard)
{
    measure();
    if (!prepareWindow())
        return false;
    if (!isVisible()) {
        m_isAddressed = false;
        m_backend->orderFront(*m_window, {m_origin, m_place}, m_surface.frame());
        announce();
    }
    if (keyboard == Keyboard::take) {
        m_isAddressed = true;
        m_backend->takeKeyboard(*m_window);
    }
    return true;
}

bool FloatingPanel::prepareWindow()
{
    if (m_window)
        return true;
    m_window.reset(m_views.createWindow({.module = m_content.module,
                                         .component = m_content.component,
                                         .properties = m_content.properties,
                                         .size = m_surface.frame().windowSize,
                                         .kind = ViewKind::floating,
                                         .title = m_content.title,
                                         .surface = &m_surface}));
    if (!m_window)
        return false;
    m_surface.setWindow(m_window.get());
    m_surface.onDrag = [this](const QPoint &distance) { m_backend->moveBy(*m_window, distance); };
    m_window->setFlag(Qt::WindowTransparentForInput, !m_content.takesInput);
    m_window->installEventFilter(this);
    connect(m_window.get(), &QWindow::activeChanged, this, [this] {
        if (!isKey() && onResignKey)
            onResignKey();
    });
    m_backend->prepare(*m_window);
    return true;
}

// Screen readers speak what appears with the role of an alert. The view names the item that stands for all of
// it.
void FloatingPanel::announce()
{
    if (!QAccessible::isActive())
        return;
    if (QObject *item = m_window->findChild<QObject *>(QStringLiteral("announcement"))) {
        for (const QAccessible::Event type : {QAccessible::ObjectShow, QAccessible::Alert}) {
            QAccessibleEvent event(item, type);
            QAccessible::updateAccessibility(&event);
        }
    }
}

// The desktop may have begun or ceased to composite since the last showing; a visible panel stays as it is.
void FloatingPanel::measure()
{
    if (!isVisible())
        m_surface.setFrame(GlassSurface::floating(m_views.scaled(m_content.size), m_content.cornerRadius),
                           GlassSurface::isBlurred());
}

} // namespace kelo
