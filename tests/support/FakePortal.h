#pragma once

#include "Platform/linux/PortalRequest.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <vector>

namespace support {

/// A shortcut as the portal and its clients tell of it.
struct PortalBinding
{
    QString name;
    QVariantMap properties;

    friend QDBusArgument &operator<<(QDBusArgument &argument, const PortalBinding &binding)
    {
        argument.beginStructure();
        argument << binding.name << binding.properties;
        argument.endStructure();
        return argument;
    }

    friend const QDBusArgument &operator>>(const QDBusArgument &argument, PortalBinding &binding)
    {
        argument.beginStructure();
        argument >> binding.name >> binding.properties;
        argument.endStructure();
        return argument;
    }
};

/// A desktop portal with settings, global shortcuts and the start at login, and a user who answers at once.
class FakePortal final : public QDBusVirtualObject
{
public:
    struct Bound
    {
        QString session;
        PortalBinding shortcut;
    };

    explicit FakePortal(const QDBusConnection &bus, bool hasShortcuts = true)
        : m_bus(bus), m_hasShortcuts(hasShortcuts)
    {
        qDBusRegisterMetaType<QMap<QString, QVariantMap>>();
        qDBusRegisterMetaType<PortalBinding>();
        qDBusRegisterMetaType<QList<PortalBinding>>();
        m_bus.registerVirtualObject(mivora::portalPath, this, QDBusConnection::SubPath);
        m_bus.registerService(mivora::portalService);
    }

    ~FakePortal() override
    {
        m_bus.unregisterObject(mivora::portalPath, QDBusConnection::UnregisterTree);
        m_bus.unregisterService(mivora::portalService);
    }

    /// The keys of a session's shortcut are pressed.
    void activate(const QString &session)
    {
        tell("GlobalShortcuts", "Activated",
             {QVariant::fromValue(QDBusObjectPath(session)), QString(), qulonglong{0}, QVariantMap()});
    }

    /// The desktop binds a session's shortcut to other keys.
    void change(const QString &session, const QString &keys)
    {
        tell("GlobalShortcuts", "ShortcutsChanged",
             {QVariant::fromValue(QDBusObjectPath(session)), boundTo(keys)});
    }

    /// The desktop ends a session.
    void close(const QString &session) { tell("Session", "Closed", {QVariantMap()}, session); }

    /// A setting of the group has changed.
    void changeSetting(const QString &group, const QString &key, const QVariant &value)
    {
        tell("Settings", "SettingChanged", {group, key, QVariant::fromValue(QDBusVariant(value))});
    }

    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &) override
    {
        calls.append(message.member());
        if (!m_hasShortcuts || message.interface().endsWith(QLatin1String(".Registry")))
            return false;
        m_bus.send(message.createReply(reply(message)));
        return true;
    }

    /// The methods that were called, in their order.
    QStringList calls;
    /// All settings, by their groups.
    QMap<QString, QVariantMap> settings;
    std::vector<Bound> bound;
    /// What the user answers to a new session and to a new shortcut, and the keys that the desktop binds it
    /// to: none when it doesn't.
    uint sessionResponse = 0, shortcutsResponse = 0;
    std::optional<QString> boundKeys = QString();
    uint version = 1;
    QStringList closed;
    /// The options of each RequestBackground.
    std::vector<QVariantMap> backgroundRequests;
    /// What the user answers to it: 0 yes, 1 no.
    uint backgroundResponse = 0;

private:
    void tell(const char *interface, const char *signal, const QVariantList &arguments,
              const QString &path = mivora::portalPath)
    {
        auto message = QDBusMessage::createSignal(
            path, QLatin1String("org.freedesktop.portal.") + QLatin1String(interface), QLatin1String(signal));
        message.setArguments(arguments);
        m_bus.send(message);
    }

    QVariantList reply(const QDBusMessage &message)
    {
        const QString method = message.member();
        const QVariantList arguments = message.arguments();
        if (method == QLatin1String("CreateSession"))
            return respond(message, qdbus_cast<QVariantMap>(arguments.at(0)), sessionResponse);
        if (method == QLatin1String("BindShortcuts")) {
            bound.push_back({arguments.at(0).value<QDBusObjectPath>().path(),
                             qdbus_cast<QList<PortalBinding>>(arguments.at(1)).value(0)});
            return respond(message, qdbus_cast<QVariantMap>(arguments.at(3)), shortcutsResponse);
        }
        if (method == QLatin1String("RequestBackground")) {
            backgroundRequests.push_back(qdbus_cast<QVariantMap>(arguments.at(1)));
            return respond(message, backgroundRequests.back(), backgroundResponse);
        }
        if (method == QLatin1String("ReadAll"))
            return {QVariant::fromValue(settings)};
        if (method == QLatin1String("Close")) {
            closed.append(message.path());
            return {};
        }
        return {QVariant::fromValue(QDBusVariant(version))};
    }

    /// The response goes out before the call is answered, as the real portal may do it. It says of each
    /// method what that one asks for.
    QVariantList respond(const QDBusMessage &message, const QVariantMap &options, uint response)
    {
        const QString path = pathOf("request", message, options.value(QStringLiteral("handle_token")));
        const QVariant session = options.value(QStringLiteral("session_handle_token"));
        const QString autostart = QStringLiteral("autostart");
        auto signal = QDBusMessage::createTargetedSignal(message.service(), path,
                                                         QStringLiteral("org.freedesktop.portal.Request"),
                                                         QStringLiteral("Response"));
        QVariantMap results{{autostart, options.value(autostart, false)}};
        if (response == 0)
            results.insert(QStringLiteral("session_handle"), pathOf("session", message, session));
        if (message.member() == QLatin1String("BindShortcuts"))
            results.insert(QStringLiteral("shortcuts"), boundTo(boundKeys));
        m_bus.send(signal << response << results);
        return {QVariant::fromValue(QDBusObjectPath(path))};
    }

    /// The list of bound shortcuts, a(sa{sv}).
    QVariant boundTo(const std::optional<QString> &keys) const
    {
        QList<PortalBinding> list;
        if (keys && !bound.empty())
            list.append({bound.back().shortcut.name, {{QStringLiteral("trigger_description"), *keys}}});
        return QVariant::fromValue(list);
    }

    static QString pathOf(const char *kind, const QDBusMessage &message, const QVariant &token)
    {
        QString sender = message.service().mid(1);
        sender.replace(QLatin1Char('.'), QLatin1Char('_'));
        return QStringLiteral("%1/%2/%3/%4")
            .arg(mivora::portalPath, QLatin1String(kind), sender, token.toString());
    }

    QDBusConnection m_bus;
    bool m_hasShortcuts;
};

} // namespace support
