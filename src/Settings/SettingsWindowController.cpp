#include "Settings/SettingsWindowController.h"

#include <QGuiApplication>

namespace mivora {

namespace {

constexpr QSize contentSize(720, 540);
constexpr std::chrono::minutes keptClosed{1};

// All that a window has but the ways to resize it.
constexpr Qt::WindowFlags windowFlags = Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                        Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint |
                                        Qt::WindowCloseButtonHint;

} // namespace

SettingsWindowController::SettingsWindowController(Preferences &prefs, EventSource &source,
                                                   CalendarWays &ways, kelo::HotKeyService &service,
                                                   kelo::ViewLoader &views, const SettingsActions &actions)
    : m_general(prefs, service, actions.registerHotKey, actions.copy),
      m_calendars(prefs, source, ways, actions.ownCalendars),
      m_window(views,
               {.module = QStringLiteral("SettingsViews"),
                .component = QStringLiteral("SettingsView"),
                .properties = {{QStringLiteral("router"), QVariant::fromValue<QObject *>(&m_router)},
                               {QStringLiteral("general"), QVariant::fromValue<QObject *>(&m_general)},
                               {QStringLiteral("calendars"), QVariant::fromValue<QObject *>(&m_calendars)}},
                .size = contentSize,
                .flags = windowFlags},
               keptClosed)
{
    m_router.onChange = [this](SettingsPage page) { m_window.setTitle(title(page)); };
    // The permission can have changed while the user was elsewhere, in the system settings for one.
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, [this](const QWindow *window) {
        if (!window || window != m_window.window())
            return;
        m_general.reload();
        m_calendars.reload();
    });
}

bool SettingsWindowController::show(std::optional<SettingsPage> page)
{
    m_router.select(page.value_or(m_router.page()));
    m_calendars.reload();
    return m_window.show();
}

void SettingsWindowController::calendarsChanged()
{
    // A closed window asks again when it is shown.
    if (m_window.isVisible())
        m_calendars.reload();
}

} // namespace mivora
