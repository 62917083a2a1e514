#include "App/ConflictAlert.h"

namespace mivora {

ConflictAlert::ConflictAlert(kelo::ViewLoader &views, const QDBusConnection &bus, QObject *parent)
    : QObject(parent), m_notification(bus),
      m_window(views, {.module = QStringLiteral("AppViews"),
                       .component = QStringLiteral("AlertView"),
                       .properties = {{QStringLiteral("alert"), QVariant::fromValue<QObject *>(this)}},
                       .size = {380, 170},
                       .flags = Qt::Dialog | Qt::WindowStaysOnTopHint,
                       .title = QStringLiteral("Mivora"),
                       .isModal = true})
{
}

void ConflictAlert::show(const QString &shortcut)
{
    m_message = tr("%1 is already in use").arg(shortcut);
    Q_EMIT messageChanged();
    if (!m_window.show())
        m_notification.show({.summary = m_message, .body = informativeText(), .stays = true});
}

QString ConflictAlert::informativeText() const
{
    return tr("Another app uses this shortcut. Choose a different one in Settings.");
}

} // namespace mivora
