#pragma once

#include <QDBusConnection>
#include <QObject>

namespace mivora {

/// Whether a session bus has Evolution Data Server, or can start it.
class DesktopService final : public QObject
{
    Q_OBJECT

public:
    /// Begins to ask at once, and follows services that are installed later.
    explicit DesktopService(const QDBusConnection &bus, QObject *parent = nullptr);

Q_SIGNALS:
    /// Each once for a question: the name that calendars are asked by, or that there is none for now.
    void found(const QString &name);
    void missing();

private:
    Q_SLOT void ask();
    void list(const QString &method, const std::function<void()> &ifMissing);

    QDBusConnection m_bus;
    bool m_isFound = false;
};

} // namespace mivora
