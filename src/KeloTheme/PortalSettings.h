#pragma once

#include <QColor>
#include <QDBusConnection>
#include <QObject>
#include <optional>

class QDBusMessage;
class QDBusPendingCallWatcher;

namespace kelo {

/// What the desktop says about its looks through org.freedesktop.portal.Settings.
struct DesktopLooks
{
    enum class Preference { none, dark, light };

    Preference scheme = Preference::none;
    std::optional<QColor> accent;
    double textScale = 1;

    friend bool operator==(const DesktopLooks &, const DesktopLooks &) = default;
};

/// Reads and follows org.freedesktop.portal.Settings. Nothing waits for the answers; without the portal the
/// looks stay as they are by default.
class PortalSettings final : public QObject
{
    Q_OBJECT

public:
    explicit PortalSettings(const QDBusConnection &bus, QObject *parent = nullptr);

    const DesktopLooks &looks() const { return m_looks; }

Q_SIGNALS:
    void looksChanged();

private Q_SLOTS:
    // Takes the message as it is: QtDBus knows the type of its last argument only after the first message.
    void readOne(const QDBusMessage &signal);

private:
    void readAll();
    void finishReading(QDBusPendingCallWatcher *call);
    void change(const DesktopLooks &looks);

    QDBusConnection m_bus;
    DesktopLooks m_looks;
};

} // namespace kelo
