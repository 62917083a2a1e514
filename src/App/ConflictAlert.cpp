#include "App/ConflictAlert.h"

#include "KeloTheme/ViewLoader.h"

namespace mivora {

ConflictAlert::ConflictAlert(kelo::ViewLoader &views, const QDBusConnection &bus, QObject *parent)
    : QObject(parent), m_views(views), m_notification(bus)
{
}

ConflictAlert::~ConflictAlert() = default;

void ConflictAlert::show(const QString &shortcut)
{
    m_message = tr("%1 is already in use").arg(shortcut);
    Q_EMIT messageChanged();
    if (!m_window) {
        constexpr QSize size(380, 170);
        m_window.reset(m_views.createWindow(
            {.module = QStringLiteral("AppViews"),
             .component = QStringLiteral("AlertView"),
             .properties = {{QStringLiteral("alert"), QVariant::fromValue<QObject *>(this)}},
             .size = size,
             .kind = kelo::ViewKind::ordinary,
             .title = QStringLiteral("Mivora"),
             .surface = nullptr}));
        if (!m_window) {
            m_notification.show(
                {.summary = m_message, .body = informativeText(), .actions = {}, .stays = true});
            return;
        }
        m_window->setFlags(Qt::Dialog | Qt::WindowStaysOnTopHint);
        m_window->setMinimumSize(size);
        m_window->setMaximumSize(size);
    }
    m_window->show();
    m_window->raise();
    m_window->requestActivate();
}

QString ConflictAlert::informativeText() const
{
    return tr("Another app uses this shortcut. Choose a different one in Settings.");
}

void ConflictAlert::close()
{
    // Not now: the button that was pressed belongs to the window.
    m_window->hide();
    m_window.release()->deleteLater();
    m_views.releaseUnusedLater();
}

} // namespace mivora
