#include "App/commands/Commands.h"

#include "App/AppDelegate.h"
#include "App/ApplicationService.h"
#include "App/CalendarSession.h"
#include "App/RunningInstance.h"
#include "App/WindowSystem.h"
#include "App/commands/Output.h"
#include "KeloHotkey/HotKeyServices.h"
#include "MeetingTexts/MeetingTexts.h"
#include "Platform/linux/ClipboardPasteboard.h"
#include "Platform/linux/LinuxSystemEvents.h"
#include "Platform/linux/PortalLoginItem.h"
#include "Platform/linux/PortalRequest.h"
#include "Platform/linux/TerminationSignals.h"
#include "Translations/InstallTranslations.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QThread>
#include <cstdlib>
#include <memory>
#include <optional>
#include <unistd.h>
#include <utility>

namespace mivora {

namespace {

Q_LOGGING_CATEGORY(log, "kelo.app")

/// Or shows it `link`.
int openSettingsOfRunningOne(const Activation &activation, const QString &link)
{
    // One that is just starting has its name before it can answer. A call waits longer than this by itself.
    const QDeadlineTimer patience(std::chrono::seconds(3));
    do {
        if (RunningInstance().activate(activation, link))
            return exitDone;
        QThread::msleep(100);
    } while (!patience.hasExpired());
    complain(CommandLineTexts::tr(
        "Mivora runs already but does not answer; end it with `pkill -x mivora` and start it again"));
    return exitCouldNot;
}

/// While it lives, Qt starts on `platform`. What the programs see that are started later is as it was.
class QtPlatform final
{
public:
    explicit QtPlatform(const QByteArray &platform) { qputenv(variable, platform); }

    ~QtPlatform()
    {
        if (m_before.isNull())
            qunsetenv(variable);
        else
            qputenv(variable, m_before);
    }
    Q_DISABLE_COPY_MOVE(QtPlatform)

private:
    static constexpr const char *variable = "QT_QPA_PLATFORM";
    const QByteArray m_before = qgetenv(variable);
};

/// While it lives, a window system that can't be reached ends the program in one line: Qt itself would abort,
/// and leave a crash report. What it says on the way there is held back, and told when the end didn't come.
class WindowSystemStart final
{
public:
    WindowSystemStart() { previous = qInstallMessageHandler(receive); }

    ~WindowSystemStart()
    {
        qInstallMessageHandler(previous);
        for (const QString &warning : std::exchange(warnings, {}))
            qWarning("%s", qUtf8Printable(warning));
    }
    Q_DISABLE_COPY_MOVE(WindowSystemStart)

private:
    static void receive(QtMsgType type, const QMessageLogContext &context, const QString &text)
    {
        if (type == QtFatalMsg) {
            complain(CommandLineTexts::tr("the display can't be used: %1")
                         .arg(warnings.value(0, text.section(QLatin1Char('\n'), 0, 0))));
            std::_Exit(exitCouldNot);
        }
        if (type == QtDebugMsg)
            previous(type, context, text);
        else
            warnings.append(text);
    }

    static inline QtMessageHandler previous = nullptr;
    static inline QStringList warnings;
};

int run(const StartRequest &request, const Activation &activation)
{
    JsonDefaultsStore defaults;
    const std::unique_ptr<LoginItem> loginItem = makeLoginItem();
    GioWorkspace workspace;
    ClipboardPasteboard pasteboard;
    // Without a system bus there are only fewer events.
    LinuxSystemEvents systemEvents(LinuxSystemEvents::Sources::ofTheSystem(QDBusConnection::systemBus()));
    const SystemClock clock;
    const auto hotKeys = kelo::makeHotKeyService(
        {.name = QStringLiteral("join-next-meeting"),
         .description = QGuiApplication::translate("Application", "Join the next meeting"),
         .command = QStringLiteral("mivora join")});
    AccessMemory access;
    const QDBusConnection bus = QDBusConnection::sessionBus();
    AppDelegate delegate(
        {.workspace = workspace,
         .pasteboard = pasteboard,
         .loginItem = *loginItem,
         .defaults = defaults,
         .systemEvents = systemEvents,
         .hotKeys = *hotKeys,
         .clock = clock,
         .bus = bus,
         .source = makeCalendarSource({.folders = {}, .now = clock.now(), .zone = userTimeZone()}, defaults,
                                      access)});
    const ApplicationService service(bus, delegate, request.startedBy);
    // The bus hands over what it was asked meanwhile as soon as the name is taken: somebody must be there by
    // then.
    if (!claimApplicationName(bus))
        return openSettingsOfRunningOne(activation, request.link);
    holdActivation(activation);
    delegate.launch();
    if (!request.link.isEmpty())
        delegate.offerCalendar(request.link);
    return QGuiApplication::exec();
}

} // namespace

int startAtLogin(int argc, char **argv)
{
    QByteArray program;
    {
        const QCoreApplication application(argc, argv);
        if (RunningInstance running; running.isThere() || running.startByManager())
            return exitDone;
        program = QFile::encodeName(QCoreApplication::applicationFilePath());
    }
    execl(program.constData(), argv[0], static_cast<char *>(nullptr));
    return exitCouldNot;
}

int runApplication(int &argc, char **argv, const StartRequest &request)
{
    const WindowSystemChoice windows = chooseWindowSystem(SessionWindows::current());
    if (windows.platform.isEmpty()) {
        const QCoreApplication application(argc, argv);
        installTranslations();
        complain(CommandLineTexts::tr("there is no display: neither DISPLAY nor WAYLAND_DISPLAY is set"));
        return exitCouldNot;
    }
    const Activation activation = Activation::ofThisProcess();
    QGuiApplication::setApplicationName(QStringLiteral("mivora"));
    // What the titles of windows end with.
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Mivora"));
    QGuiApplication::setDesktopFileName(QStringLiteral("app.kelo.Mivora"));
    // Qt asks portals too, from its start on.
    introduceToPortal(QDBusConnection::sessionBus());
    std::optional<WindowSystemStart> start(std::in_place);
    std::optional<QtPlatform> platform(std::in_place, windows.platform);
    QGuiApplication application(argc, argv);
    platform.reset();
    start.reset();
    const TerminationSignals signalsEndIt;
    QGuiApplication::setQuitOnLastWindowClosed(false);
    installTranslations();
    if (RunningInstance().isThere())
        return openSettingsOfRunningOne(activation, request.link);
    qCInfo(log).noquote() << "Windows are on" << QGuiApplication::platformName() << "since" << windows.reason;
    return run(request, activation);
}

} // namespace mivora
