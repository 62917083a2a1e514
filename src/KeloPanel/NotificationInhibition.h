#pragma once

#include <QDBusConnection>
#include <QObject>
#include <memory>

namespace kelo {

/// Whether the desktop holds notifications back, as it does while nothing is to disturb the user or others
/// see the screen: `Inhibited` of org.freedesktop.Notifications, which not every desktop has. It is followed
/// as long as this lives.
class NotificationInhibition final : public QObject
{
    Q_OBJECT

public:
    explicit NotificationInhibition(const QDBusConnection &bus);

    /// Also until the desktop has told: what others have seen can't be taken back. False where nothing tells.
    bool isInhibited() const { return m_isInhibited; }

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void ask();

private:
    QDBusConnection m_bus;
    /// The latest one, whose answer counts.
    std::unique_ptr<QObject> m_question;
    bool m_isInhibited = true;
};

} // namespace kelo
