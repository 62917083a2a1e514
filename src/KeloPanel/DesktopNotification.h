#pragma once

#include <QDBusConnection>
#include <QDBusPendingReply>
#include <QObject>
#include <QStringList>
#include <optional>

class QDBusPendingCallWatcher;

namespace kelo {

struct NotificationContent
{
    /// Plain text.
    QString summary;
    QString body{};
    /// Keys and labels of its buttons in turn; the key "default" is a click on the notification itself.
    QStringList actions{};
    /// A line of the body where the desktop shows no buttons.
    QString insteadOfActions{};
    /// Whether it is urgent and stays until it is closed; else the desktop takes it away after some seconds.
    bool stays = false;
};

/// One notification of the desktop (org.freedesktop.Notifications). Nothing waits for the desktop's answers;
/// where there is no such service, failed() tells so.
class DesktopNotification final : public QObject
{
    Q_OBJECT

public:
    explicit DesktopNotification(const QDBusConnection &bus, QObject *parent = nullptr);
    /// One that was closed before the desktop had answered is closed here, if the answer comes soon: what
    /// stays on the screen after the program has nobody to answer to it.
    ~DesktopNotification() override;
    Q_DISABLE_COPY_MOVE(DesktopNotification)

    /// Replaces what this notification showed before.
    void show(const NotificationContent &content);
    void close();

Q_SIGNALS:
    /// The user pressed the action with this key: nothing is on the screen any more.
    void actionInvoked(const QString &key);
    /// The user closed the notification without an action.
    void dismissed();
    /// The desktop took the notification away by itself, even one that stays.
    void expired();
    /// The desktop can't show it: nothing is on the screen.
    void failed();

private Q_SLOTS:
    void receiveToken(uint id, const QString &token);
    void receiveAction(uint id, const QString &key);
    void receiveClosed(uint id, uint reason);

private:
    void listen();
    void send(const NotificationContent &content);
    bool sendNext();
    void finishShowing(const QDBusPendingReply<uint> &reply);
    void finishClosing(uint id, uint reason);

    QDBusConnection m_bus;
    /// Given by the desktop; 0 when nothing is shown.
    uint m_id = 0;
    /// What was closed a moment ago, by an action that is still to come or by nobody.
    uint m_ended = 0;
    /// The call that the desktop hasn't answered yet.
    QDBusPendingCallWatcher *m_sending = nullptr;
    /// What was asked for meanwhile.
    std::optional<NotificationContent> m_next;
    /// What the desktop gave for the action that it tells of next.
    QByteArray m_activationToken;
    bool m_closesNext = false;
    /// Nothing until the desktop has told.
    std::optional<bool> m_hasActions;
    bool m_listens = false;
};

} // namespace kelo
