#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <vector>

namespace support {

/// A desktop portal with global shortcuts and the start at login, and a user who answers at once.
class FakePortal final : public QDBusVirtualObject
{
    Q_OBJECT

public:
    enum class Shortcuts { Present, Missing };

    struct Bound
    {
        QString session;
        QString name;
        QString description;
        QString trigger;
    };

    explicit FakePortal(const QDBusConnection &bus, Shortcuts shortcuts = Shortcuts::Present);
    ~FakePortal() override;

    /// The keys of a session's shortcut are pressed.
    void activate(const QString &session);

    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

    std::vector<Bound> bound;
    QStringList closed;
    /// What the user answers to BindShortcuts: 0 yes, 1 no.
    uint bindResponse = 0;
    /// The options of each RequestBackground.
    std::vector<QVariantMap> backgroundRequests;
    /// What the user answers to it: 0 yes, 1 no.
    uint backgroundResponse = 0;

private:
    QVariantList reply(const QDBusMessage &message);
    QVariantList createSession(const QDBusMessage &message);
    QVariantList bindShortcuts(const QDBusMessage &message);
    QVariantList requestBackground(const QDBusMessage &message);
    QVariantList respond(const QDBusMessage &message, const QVariantMap &options, uint response,
                         const QVariantMap &results);

    QDBusConnection m_bus;
    Shortcuts m_shortcuts;
};

} // namespace support
