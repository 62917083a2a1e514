#pragma once

#include "App/BusCommand.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QJsonObject>
#include <QObject>
#include <QString>
#include <optional>

namespace mivora {

/// Whether the user's systemd was told of the display of this session (org.freedesktop.systemd1.Manager):
/// what it starts would find none, or another one's, otherwise.
bool managerKnowsDisplay(const QDBusConnection &bus);

/// The Mivora that runs already, seen over the session bus. Calls wait for the answer, a few seconds at most:
/// this is for commands, which have nothing else to do.
class RunningInstance final : public QObject
{
    Q_OBJECT

public:
    explicit RunningInstance(QDBusConnection bus = QDBusConnection::sessionBus());

    /// Whether there is one now.
    bool isThere() const;

    /// Its agenda; nothing when there is none or it does not answer. `all` adds the meetings that the
    /// settings leave out.
    std::optional<QJsonObject> agenda(bool all = false) const;

    /// Has it do `action` with an optional argument; `activation` is for what it shows or starts then.
    CommandResult perform(const QString &action, const QString &argument, const Activation &activation) const;

    /// Has the bus start it by the systemd of the user's own, unless it is there. False, and nothing was
    /// started, where systemd doesn't run this session, or has no unit for it.
    bool startByManager() const;

    /// Brings up its settings, as a second start does, or shows it `link`. False when it does not answer.
    bool activate(const Activation &activation, const QString &link = {}) const;

    /// From now on announces changes of its agenda, what happens to meetings, and its coming and going.
    void follow();

Q_SIGNALS:
    void agendaChanged(const QJsonObject &agenda);
    /// A name of meetingEvent, and the meeting as the agenda has it.
    void happened(const QString &event, const QJsonObject &meeting);
    void came();
    void went();

private Q_SLOTS:
    void receive(const QString &json, const QDBusMessage &signal);

private:
    QDBusMessage call(const char *interface, const QString &method, const QVariantList &arguments) const;

    QDBusConnection m_bus;
};

} // namespace mivora
