#pragma once

#include "KeloMenuBar/backends/Presentation.h"

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QPoint>
#include <QVariantMap>
#include <functional>

namespace kelo {

/// The item as org.x.StatusIcon: the panels of Cinnamon, and of Linux Mint's MATE and Xfce, draw a text
/// beside items of this kind alone. Their monitors look for names on the bus that begin so, and ask there
/// what is to be shown by org.freedesktop.DBus.ObjectManager.
class StatusIcon final : public QDBusVirtualObject
{
    Q_OBJECT

public:
    /// Whether this name on the bus is that of a panel's monitor.
    static bool isMonitor(const QString &name);

    /// `id` names the program. `openMenu` shows the menu beside a point of the screen.
    StatusIcon(const QDBusConnection &bus, const QString &id, std::function<void(QPoint)> openMenu);
    ~StatusIcon() override;

    /// Asks for the name that monitors look for, once; `answered` is called when it is known whether it may
    /// be had, which it isn't in a sandbox.
    void claim(std::function<void()> answered);

    bool isClaimed() const { return m_claim != Claim::none; }

    bool isNamed() const { return m_claim == Claim::granted; }

    /// Shows this state from now on.
    void show(const StatusItemState &state);

    QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private:
    enum class Claim { none, asked, granted };

    void tell(const QString &path, const QString &about, const char *change,
              const QVariantList &arguments) const;
    QVariantList answer(const QDBusMessage &message) const;
    void press(const QVariantList &arguments);

    QDBusConnection m_bus;
    QString m_id;
    std::function<void(QPoint)> m_openMenu;
    QVariantMap m_properties;
    Claim m_claim = Claim::none;
};

} // namespace kelo
