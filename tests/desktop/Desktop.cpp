#include "desktop/Desktop.h"

#include "KeloPanel/backends/X11Connection.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QStandardPaths>
#include <QThread>
#include <stdexcept>

namespace support {

namespace {

const QStringList programs{QStringLiteral("openbox"), QStringLiteral("xfce4-panel"), QStringLiteral("xterm"),
                           QStringLiteral("xdotool"), QStringLiteral("dbus-daemon")};

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

Desktop::Desktop() : m_bus(m_home.busServices())
{
    m_bus.enter();
    start(QStringLiteral("openbox"), {});
    start(QStringLiteral("xfce4-panel"), {QStringLiteral("--disable-wm-check")});
    if (!waitFor(hasTaskBar, std::chrono::seconds(60)))
        throw std::runtime_error("the task bar doesn't appear");
    start(QStringLiteral("xterm"),
          {QStringLiteral("-geometry"), QStringLiteral("60x12+80+320"), QStringLiteral("-e"),
           QStringLiteral("cat > '%1'").arg(m_home.path(QStringLiteral("typed")))});
    if (!waitFor(terminalIsActive, std::chrono::seconds(60)))
        throw std::runtime_error("the terminal doesn't get the keyboard");
}

Desktop::~Desktop()
{
    for (auto program = m_programs.rbegin(); program != m_programs.rend(); ++program) {
        (*program)->terminate();
        if (!(*program)->waitForFinished(5000))
            (*program)->kill();
    }
}

void Desktop::start(const QString &program, const QStringList &arguments)
{
    auto process = std::make_unique<QProcess>();
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    process->start(program, arguments);
    m_programs.push_back(std::move(process));
}

QByteArray Desktop::typed() const
{
    return m_home.read(QStringLiteral("typed"));
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
    return waitFor([&] { return process->state() == QProcess::NotRunning; }, std::chrono::seconds(30)) &&
           process->exitStatus() == QProcess::NormalExit && process->exitCode() == 0;
}

} // namespace support
