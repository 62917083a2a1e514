#pragma once

#include "KeloMenuBar/backends/BusTypes.h"
#include "support/PrivateBus.h"

#include <QDBusMessage>
#include <QObject>
#include <QStringList>

/// A program that shows status items: speaks to them over the bus as panels do, one message after the other.
class FakeHost final : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered MEMBER m_draws)

public:
    /// Takes the watcher's name on a connection of its own; the name is given up at the end.
    explicit FakeHost(support::PrivateBus &bus, bool draws = true);
    ~FakeHost() override;

    /// What was registered with this host.
    QStringList registered;
    /// The names of the signals that the item has sent, in their order.
    QStringList signalNames;

    /// Whether it draws its items, or only keeps the list of them; says so when that changes.
    void setDraws(bool draws);

    /// Calls the item, or its menu.
    QDBusMessage item(const char *method, const QVariantList &arguments);
    QDBusMessage menu(const char *method, const QVariantList &arguments);

    /// A property of the item, as a panel reads it.
    QVariant property(const char *name);

    /// Opens the menu as panels do: AboutToShow, then GetLayout.
    kelo::DBusMenuLayout open();
    void click(int id);

public Q_SLOTS:

    void RegisterStatusNotifierItem(const QString &service) { registered << service; }

private Q_SLOTS:

    void record(const QDBusMessage &message) { signalNames << message.member(); }

private:
    QDBusMessage call(const char *path, const char *interface, const char *method,
                      const QVariantList &arguments);

    QDBusConnection m_bus;
    bool m_draws = true;
};
