#include "Settings/SettingsWindowController.h"

#include "KeloTheme/GlassSurface.h"
#include "KeloTheme/ViewLoader.h"

#include <QEvent>
#include <QPointer>
#include <QScreen>
#include <QWindow>

namespace mivora {

namespace {

constexpr QSize contentSize(720, 540);
constexpr std::chrono::minutes keptUnused{1};

// All that a window has but the ways to resize it.
constexpr Qt::WindowFlags windowFlags = Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                        Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint |
                                        Qt::WindowCloseButtonHint;

} // namespace

SettingsWindowController::SettingsWindowController(Preferences &prefs, const EventSource &source,
                                                   kelo::HotKeyService &service, kelo::ViewLoader &views,
                                                   const SettingsActions &actions, QObject *parent)
    : QObject(parent), m_views(views), m_general(prefs, service, actions.refresh),
      m_calendars(prefs, source, actions)
{
    m_unused.setSingleShot(true);
    keepUnusedFor(keptUnused);
    connect(&m_unused, &QTimer::timeout, this, &SettingsWindowController::release);
}

SettingsWindowController::~SettingsWindowController() = default;

bool SettingsWindowController::show(std::optional<SettingsPage> page)
{
    if (page)
        m_router.select(*page);
    m_unused.stop();
    m_calendars.reload();
    if (!m_window && !build())
        return false;
    m_window->setTitle(title(m_router.page()));
    m_window->setWindowStates(m_window->windowStates() & ~Qt::WindowMinimized);
    m_window->show();
    m_window->raise();
    m_window->requestActivate();
    return true;
}

void SettingsWindowController::calendarsChanged()
{
    // A closed window asks again when it is shown.
    if (m_window && m_window->isVisible())
        m_calendars.reload();
}

bool SettingsWindowController::eventFilter(QObject *watched, QEvent *event)
{
    // The permission can have changed while the user was elsewhere, in the system settings for one.
    if (event->type() == QEvent::FocusIn)
        m_calendars.reload();
    if (event->type() == QEvent::Hide)
        m_unused.start();
    return QObject::eventFilter(watched, event);
}

bool SettingsWindowController::build()
{
    m_window.reset(m_views.createWindow(
        {.module = QStringLiteral("SettingsViews"),
         .component = QStringLiteral("SettingsView"),
         .properties = {{QStringLiteral("router"), QVariant::fromValue<QObject *>(&m_router)},
                        {QStringLiteral("general"), QVariant::fromValue<QObject *>(&m_general)},
                        {QStringLiteral("calendars"), QVariant::fromValue<QObject *>(&m_calendars)}},
         .size = contentSize,
         .title = title(m_router.page())}));
    if (!m_window)
        return false;
    kelo::GlassSurface::configure(*m_window, contentSize, m_window->title());
    m_window->setFlags(windowFlags);
    m_window->installEventFilter(this);
    place();
    m_router.onChange = [window = QPointer(m_window.get())](SettingsPage page) {
        if (window)
            window->setTitle(title(page));
    };
    return true;
}

void SettingsWindowController::place()
{
    const QRect screen = m_window->screen()->availableGeometry();
    m_window->setPosition(m_position.value_or(screen.center() - QRect(QPoint(), contentSize).center()));
}

void SettingsWindowController::release()
{
    if (!m_window || m_window->isVisible())
        return;
    m_position = m_window->position();
    m_window.reset();
    m_views.releaseUnused();
}

} // namespace mivora
