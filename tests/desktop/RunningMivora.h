#pragma once

#include "KeloMenuBar/backends/DBusMenuTypes.h"
#include "desktop/Desktop.h"

#include <QJsonObject>
#include <QRect>
#include <chrono>
#include <optional>

namespace support {

/// How a command of the program ended.
struct CommandResult
{
    int status = -1;
    QByteArray output;
    QByteArray errors;
};

/// A meeting of the calendar that the program is given.
struct CalendarEntry
{
    QString title;
    std::chrono::seconds startsIn{};
    QString link;
};

/// The real program on a desktop, seen as a host and a user see it. It has a calendar of its own and, where
/// it was used before, the permission to read it. It lives in a time zone where it is about noon, so that
/// every meeting is today's.
class RunningMivora final
{
public:
    /// Whether it was used before, or is to be started for the first time.
    enum class Home { used, fresh };

    /// A window on the screen.
    struct Window
    {
        QRect frame;
        /// By the window manager.
        bool isManaged = false;
    };

    /// Gives it its calendar and settings; nothing of an earlier run is left.
    RunningMivora(Desktop &desktop, const std::vector<CalendarEntry> &entries, Home home = Home::used);
    ~RunningMivora();
    Q_DISABLE_COPY_MOVE(RunningMivora)

    /// For commands and the program itself.
    void setEnvironment(const QString &name, const QString &value) { m_environment.insert(name, value); }

    /// Runs a command and returns when it has ended; events happen meanwhile.
    CommandResult command(const QStringList &arguments) const;
    /// The same for several that run side by side.
    std::vector<CommandResult> commands(const std::vector<QStringList> &all) const;

    /// Changes one setting, as another process.
    void set(const QString &key, const QString &value) const;

    void start();

    /// Waits until the status area shows the item with a title: the calendar has been read by then.
    bool isShown() const;

    qint64 processId() const { return m_process.processId(); }

    bool isRunning() const { return m_process.state() == QProcess::Running; }

    int exitStatus() const { return m_process.exitCode(); }

    /// Whether it wasn't a signal that ended it.
    bool endedNormally() const { return m_process.exitStatus() == QProcess::NormalExit; }

    std::vector<Window> windows() const;

    /// A property of the item, as the host reads it.
    QVariant property(const QString &name) const;

    /// The titles of the menu's entries as the host reads them after having announced the opening; "-" for a
    /// separator.
    QStringList menu() const;
    /// Has the host choose the first entry whose title contains the text; false when there is none.
    bool choose(const QString &text) const;

    /// The agenda that the program tells on the bus; nothing when it doesn't answer.
    std::optional<QJsonObject> agenda() const;

    /// How long the program takes to answer, as the middle one of several calls.
    std::chrono::milliseconds answerTime() const;

private:
    QList<kelo::DBusMenuLayout> openedMenu() const;
    QDBusMessage call(const QString &path, const QString &interface, const QString &method,
                      const QVariantList &arguments) const;

    Desktop &m_desktop;
    QDBusConnection m_bus;
    QProcessEnvironment m_environment;
    QProcess m_process;
};

} // namespace support
