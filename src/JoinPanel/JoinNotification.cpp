#include "JoinPanel/JoinNotification.h"

#include "JoinPanel/JoinPanelModel.h"

#include <array>

namespace mivora {

namespace {

struct Action
{
    const char *key;
    void (JoinPanelModel::*perform)() const;
};

// "default" is a click on the notification itself.
constexpr std::array actions{
    Action{"default", &JoinPanelModel::join},
    Action{"join", &JoinPanelModel::join},
    Action{"snooze", &JoinPanelModel::snooze},
    Action{"dismiss", &JoinPanelModel::dismiss},
};

} // namespace

JoinNotification::JoinNotification(const JoinPanelModel &model, const QDBusConnection &bus)
    : m_model(model), m_notification(bus)
{
    connect(&m_notification, &kelo::DesktopNotification::actionInvoked, this, &JoinNotification::act);
    connect(&m_notification, &kelo::DesktopNotification::dismissed, this,
            [this] { act(QStringLiteral("dismiss")); });
    connect(&m_notification, &kelo::DesktopNotification::expired, this, [this] { m_hasExpired = true; });
    connect(&m_notification, &kelo::DesktopNotification::failed, this, [this] {
        m_isVisible = false;
        Q_EMIT failed();
    });
    connect(&model, &JoinPanelModel::changed, &m_update, qOverload<>(&QTimer::start));
    m_update.setSingleShot(true);
    connect(&m_update, &QTimer::timeout, this, &JoinNotification::update);
}

JoinNotification::~JoinNotification()
{
    hide();
}

void JoinNotification::show()
{
    m_isVisible = true;
    m_update.start();
}

// Not at once: a desktop that takes everything away would be asked again and again.
void JoinNotification::refresh()
{
    if (m_isVisible && m_hasExpired)
        m_update.start();
}

void JoinNotification::hide()
{
    if (!m_isVisible)
        return;
    m_isVisible = false;
    m_notification.close();
}

void JoinNotification::update()
{
    if (!m_isVisible)
        return;
    m_hasExpired = false;
    kelo::NotificationContent content;
    content.summary = m_model.title();
    content.body = m_model.timeText();
    if (m_model.hasLink()) {
        content.body += QStringLiteral(" · ") + m_model.serviceName();
        content.actions = {QStringLiteral("default"), tr("Join"), QStringLiteral("join"), tr("Join")};
        if (!m_model.isDiscreet())
            content.insteadOfActions = QString::fromStdString(m_model.meeting()->joinLink->webURL.text());
    }
    content.actions << QStringLiteral("snooze") << tr("Snooze 1 min") << QStringLiteral("dismiss")
                    << tr("Dismiss");
    content.stays = true;
    m_notification.show(content);
}

void JoinNotification::act(const QString &key)
{
    for (const Action &action : actions) {
        if (key == QLatin1String(action.key))
            (m_model.*action.perform)();
    }
    // Whoever owns the panel hides it where that was the end of it; else it is still wanted.
    m_update.start();
}

} // namespace mivora
