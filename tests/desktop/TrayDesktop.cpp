#include "desktop/TrayDesktop.h"

#include "desktop/Desktop.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>
#include <QStandardPaths>
#include <csignal>
#include <stdexcept>

namespace support {

namespace {

using namespace std::chrono_literals;

const QStringList programs{QStringLiteral("openbox"), QStringLiteral("xfce4-panel"),
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

} // namespace

bool TrayDesktop::isInstalled()
{
    return std::all_of(programs.begin(), programs.end(),
                       [](const QString &name) { return !QStandardPaths::findExecutable(name).isEmpty(); });
}

TrayDesktop::TrayDesktop() : m_bus(m_home.busServices()), m_connection(m_bus.connection())
{
    m_bus.enter();
    m_home.write(QStringLiteral("xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml"), panelConfiguration);
    start(QStringLiteral("openbox"), {});
    startPanel();
}

TrayDesktop::~TrayDesktop()
{
    thawPanel();
    killPanel();
    for (auto program = m_programs.rbegin(); program != m_programs.rend(); ++program) {
        (*program)->kill();
        (*program)->waitForFinished(5000);
    }
}

QProcessEnvironment TrayDesktop::environment() const
{
    return QProcessEnvironment::systemEnvironment();
}

QStringList TrayDesktop::items() const
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

void TrayDesktop::killPanel()
{
    m_panel.kill();
    m_panel.waitForFinished(5000);
}

void TrayDesktop::startPanel()
{
    m_panel.setStandardOutputFile(QProcess::nullDevice());
    m_panel.setStandardErrorFile(QProcess::nullDevice());
    m_panel.start(QStringLiteral("xfce4-panel"), {QStringLiteral("--disable-wm-check")});
    if (!waitFor([this] { return m_connection.interface()->isServiceRegistered(watcher).value(); }, 60s))
        throw std::runtime_error("the status area doesn't appear");
}

void TrayDesktop::freezePanel()
{
    ::kill(pid_t(m_panel.processId()), SIGSTOP);
}

void TrayDesktop::thawPanel()
{
    if (m_panel.state() == QProcess::Running)
        ::kill(pid_t(m_panel.processId()), SIGCONT);
}

bool TrayDesktop::act(const QStringList &xdotoolArguments)
{
    QProcess process;
    process.start(QStringLiteral("xdotool"), xdotoolArguments);
    return waitFor([&] { return process.state() == QProcess::NotRunning; }, 30s) &&
           process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

void TrayDesktop::start(const QString &program, const QStringList &arguments)
{
    auto process = std::make_unique<QProcess>();
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    process->start(program, arguments);
    m_programs.push_back(std::move(process));
}

} // namespace support
