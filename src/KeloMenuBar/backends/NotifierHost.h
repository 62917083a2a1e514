#pragma once

#include "KeloMenuBar/Presentation.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

namespace kelo {

/// Looks for the program that shows status items: the owner of org.kde.StatusNotifierWatcher, whenever it
/// comes, goes or is replaced. Nobody is waited for: a watcher that does not answer is taken at its best.
class NotifierHost final : public QObject
{
    Q_OBJECT

public:
    explicit NotifierHost(const QDBusConnection &bus, QObject *parent = nullptr);

    /// Makes the current host show the item at the default path of our connection. The answer is not waited
    /// for: a host that does not answer just shows nothing.
    void registerItem();

Q_SIGNALS:
    /// There is a host, or another one than before; it knows of no item yet.
    void appeared(const kelo::StatusHost &host);
    /// There is no host, or no longer.
    void absent();
    /// Whether the watcher has somebody to draw its items, as it says itself; it may be a program that only
    /// keeps their list. Only after appeared().
    void drawnChanged(bool isDrawn);

private Q_SLOTS:
    void askDrawn();
    void loseBus();

private:
    void setOwner(const QString &owner);
    void askProcess();
    void askIndicator();

    QDBusConnection m_bus;
    QDBusServiceWatcher m_watcher;
    // The unique name; empty if there is no host.
    QString m_owner;
    StatusHost m_host;
};

} // namespace kelo
