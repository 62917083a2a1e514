#include "desktop/Desktop.h"

#include "KeloPanel/backends/X11Connection.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QThread>
#include <csignal>
#include <stdexcept>

namespace support {

namespace {

using namespace std::chrono_literals;

const QStringList programs{QStringLiteral("openbox"), QStringLiteral("xfce4-panel"), QStringLiteral("xterm"),
                           QStringLiteral("xdotool"), QStringLiteral("dbus-daemon")};

const QString watcher = QStringLiteral("org.kde.StatusNotifierWatcher");

// One panel along the upper edge: the status area at its left end, then the task bar.
constexpr const char *panelConfiguration = R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="28"/>
      <property name="plugin-ids" type="array">
        <value type="int" value="1"/>
        <value type="int" value="2"/>
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="systray"/>
    <property name="plugin-2" type="string" value="tasklist"/>
  </property>
</channel>
)";

bool hasTaskBar()
{
    const kelo::X11Connection x11;
    const auto area = x11.values(x11.root(), "_NET_WORKAREA");
    const auto desktop = x11.values(x11.root(), "_NET_DESKTOP_GEOMETRY");
    return area.size() >= 4 && desktop.size() == 2 && (area[2] < desktop[0] || area[3] < desktop[1]);
}

bool terminalIsActive()
{
    const auto app = kelo::X11Connection().activeApp();
    return app && app->name == QLatin1String("XTerm");
}

} // namespace

bool waitFor(const std::function<bool()> &isTrue, std::chrono::milliseconds timeout)
{
    const QDeadlineTimer deadline(timeout);
    while (!isTrue()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QThread::msleep(2);
    }
    return true;
}

void waitFor(std::chrono::milliseconds time)
{
    waitFor([] { return false; }, time);
}

bool Desktop::isInstalled()
{
    return std::all_of(programs.begin(), programs.end(),
                       [](const QString &name) { return !QStandardPaths::findExecutable(name).isEmpty(); });
}

Desktop::Desktop() : m_bus(busServices()), m_connection(m_bus.connection())
{
    m_bus.enter();
    write(QStringLiteral("xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml"), panelConfiguration);
    start(QStringLiteral("openbox"), {});
    startPanel();
    if (!waitFor(hasTaskBar, 60s))
        throw std::runtime_error("the task bar doesn't appear");
}

Desktop::~Desktop()
{
    thawPanel();
    killPanel();
    for (auto program = m_programs.rbegin(); program != m_programs.rend(); ++program) {
        (*program)->kill();
        (*program)->waitForFinished(5000);
    }
}

// The folder of what the bus may start: the settings service that a panel needs, and nothing else. The home
// comes before the bus, whose services would live in that of the person who runs the tests otherwise.
QString Desktop::busServices() const
{
    for (const char *variable :
         {"HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR"})
        qputenv(variable, m_home.path().toLocal8Bit());
    const QString name = QStringLiteral("/org.xfce.Xfconf.service");
    const QString folder = path(QStringLiteral("services"));
    QDir().mkpath(folder);
    QFile::link(QStringLiteral("/usr/share/dbus-1/services") + name, folder + name);
    return folder;
}

void Desktop::write(const QString &relative, const QByteArray &content, bool isProgram) const
{
    const QString file = path(relative);
    QDir().mkpath(QFileInfo(file).path());
    QFile out(file);
    if (!out.open(QFile::WriteOnly) || out.write(content) != content.size())
        throw std::runtime_error("can't write " + file.toStdString());
    if (isProgram)
        out.setPermissions(out.permissions() | QFile::ExeOwner | QFile::ExeUser);
}

QByteArray Desktop::read(const QString &relative) const
{
    QFile file(path(relative));
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList Desktop::items() const
{
    if (!m_connection.interface()->isServiceRegistered(watcher))
        return {};
    auto call = QDBusMessage::createMethodCall(watcher, QStringLiteral("/StatusNotifierWatcher"),
                                               QStringLiteral("org.freedesktop.DBus.Properties"),
                                               QStringLiteral("Get"));
    call << watcher << QStringLiteral("RegisteredStatusNotifierItems");
    const QDBusReply<QDBusVariant> reply = m_connection.call(call, QDBus::Block, 5000);
    QStringList names;
    for (const QString &item : reply.value().variant().toStringList())
        names.append(item.section(QLatin1Char('/'), 0, 0));
    return names;
}

void Desktop::killPanel()
{
    m_panel.kill();
    m_panel.waitForFinished(5000);
}

void Desktop::startPanel()
{
    m_panel.setStandardOutputFile(QProcess::nullDevice());
    m_panel.setStandardErrorFile(QProcess::nullDevice());
    m_panel.start(QStringLiteral("xfce4-panel"), {QStringLiteral("--disable-wm-check")});
    if (!waitFor([this] { return m_connection.interface()->isServiceRegistered(watcher).value(); }, 60s))
        throw std::runtime_error("the status area doesn't appear");
}

void Desktop::freezePanel()
{
    ::kill(pid_t(m_panel.processId()), SIGSTOP);
}

void Desktop::thawPanel()
{
    if (m_panel.state() == QProcess::Running)
        ::kill(pid_t(m_panel.processId()), SIGCONT);
}

void Desktop::startTerminal()
{
    start(QStringLiteral("xterm"),
          {QStringLiteral("-geometry"), QStringLiteral("60x12+80+320"), QStringLiteral("-e"),
           QStringLiteral("cat > '%1'").arg(path(QStringLiteral("typed")))});
    if (!waitFor(terminalIsActive, 60s))
        throw std::runtime_error("the terminal doesn't get the keyboard");
}

std::unique_ptr<QProcess> Desktop::startActing(const QStringList &xdotoolArguments)
{
    auto process = std::make_unique<QProcess>();
    process->start(QStringLiteral("xdotool"), xdotoolArguments);
    return process;
}

bool Desktop::act(const QStringList &xdotoolArguments)
{
    const auto process = startActing(xdotoolArguments);
    return waitFor([&] { return process->state() == QProcess::NotRunning; }, 30s) &&
           process->exitStatus() == QProcess::NormalExit && process->exitCode() == 0;
}

void Desktop::start(const QString &program, const QStringList &arguments)
{
    auto process = std::make_unique<QProcess>();
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    process->start(program, arguments);
    m_programs.push_back(std::move(process));
}

} // namespace support
