#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <atomic>
#include <string>
#include <vector>

namespace kelo {

/// The desktop's notification service on a private bus. Notifications are counted from 7 on.
class FakeNotifications final : public QDBusVirtualObject
{
public:
    explicit FakeNotifications(const QDBusConnection &bus) : m_bus(bus)
    {
        m_bus.registerVirtualObject(m_path, this);
        m_bus.registerService(m_name);
    }

    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        const QVariantList arguments = message.arguments();
        if (message.member() == QLatin1String("Notify")) {
            const uint replaced = arguments[1].toUInt();
            const QStringList parts{arguments[3].toString(), arguments[4].toString(),
                                    arguments[5].toStringList().join(QLatin1Char(',')),
                                    arguments[7].toString()};
            calls.push_back("notify " + std::to_string(replaced) + ' ' +
                            parts.join(QLatin1Char('|')).toStdString());
            id = replaced != 0 ? replaced : id + 1;
            connection.send(message.createReply(id));
        } else if (message.member() == QLatin1String("GetCapabilities")) {
            connection.send(message.createReply(capabilities));
            return true;
        } else if (message.member() == QLatin1String("Get")) {
            connection.send(message.createReply(QVariant::fromValue(QDBusVariant(isInhibited))));
            return true;
        } else {
            calls.push_back("close " + arguments.value(0).toString().toStdString());
            connection.send(message.createReply());
        }
        ++answered;
        return true;
    }

    void changeInhibited(bool value)
    {
        isInhibited = value;
        auto signal = QDBusMessage::createSignal(m_path, QStringLiteral("org.freedesktop.DBus.Properties"),
                                                 QStringLiteral("PropertiesChanged"));
        signal << m_name << QVariantMap{{QStringLiteral("Inhibited"), value}} << QStringList();
        m_bus.send(signal);
    }

    void invoke(uint id, const QString &action) { send(QStringLiteral("ActionInvoked"), {id, action}); }

    void closed(uint id, uint reason) { send(QStringLiteral("NotificationClosed"), {id, reason}); }

    QStringList capabilities{QStringLiteral("actions")};
    bool isInhibited = false;
    /// Of what was shown last.
    uint id = 6;
    /// "notify REPLACED SUMMARY|BODY|ACTIONS|TIMEOUT" and "close ID".
    std::vector<std::string> calls;
    /// How many these are, for another thread.
    std::atomic<std::size_t> answered = 0;

private:
    void send(const QString &signal, const QVariantList &arguments)
    {
        QDBusMessage message = QDBusMessage::createSignal(m_path, m_name, signal);
        message.setArguments(arguments);
        m_bus.send(message);
    }

    const QString m_path = QStringLiteral("/org/freedesktop/Notifications");
    const QString m_name = QStringLiteral("org.freedesktop.Notifications");
    QDBusConnection m_bus;
};

} // namespace kelo
