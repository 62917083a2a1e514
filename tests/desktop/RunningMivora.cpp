#include "desktop/RunningMivora.h"

#include "KeloPanel/backends/X11Connection.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusReply>
#include <QDBusVariant>
#include <QDir>
#include <QElapsedTimer>
#include <QJsonDocument>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <xcb/xproto.h>

namespace support {

namespace {

using namespace std::chrono_literals;

const QString busName = QStringLiteral("app.kelo.Mivora");
const QString itemPath = QStringLiteral("/StatusNotifierItem");
const QString menuPath = QStringLiteral("/StatusNotifierItem/Menu");
const QString menuInterface = QStringLiteral("com.canonical.dbusmenu");

// The zone's hours have the opposite sign of what is usual (POSIX).
QString zoneWithNoonNow()
{
    const int ahead = 12 - QDateTime::currentDateTimeUtc().time().hour();
    return QStringLiteral("Etc/GMT%1%2")
        .arg(ahead > 0 ? QLatin1Char('-') : QLatin1Char('+'))
        .arg(std::abs(ahead));
}

QByteArray iCalendarTime(const QDateTime &time)
{
    return time.toUTC().toString(QStringLiteral("yyyyMMdd'T'HHmmss'Z'")).toLatin1();
}

QByteArray event(const CalendarEntry &entry)
{
    const QDateTime start = QDateTime::currentDateTimeUtc().addSecs(entry.startsIn.count());
    return "BEGIN:VEVENT\r\nUID:" + entry.title.toUtf8() + "\r\nSUMMARY:" + entry.title.toUtf8() +
           "\r\nDTSTART:" + iCalendarTime(start) + "\r\nDTEND:" + iCalendarTime(start.addSecs(1800)) +
           (entry.link.isEmpty() ? QByteArray() : "\r\nURL:" + entry.link.toUtf8()) + "\r\nEND:VEVENT\r\n";
}

QByteArray calendar(const std::vector<CalendarEntry> &entries)
{
    QByteArray text = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:test\r\n";
    for (const CalendarEntry &entry : entries)
        text += event(entry);
    return text + "END:VCALENDAR\r\n";
}

QString titleOf(const kelo::DBusMenuLayout &item)
{
    const bool isSeparator = item.properties.value(QStringLiteral("type")) == QLatin1String("separator");
    return isSeparator ? QStringLiteral("-") : item.properties.value(QStringLiteral("label")).toString();
}

} // namespace

RunningMivora::RunningMivora(Desktop &desktop, const std::vector<CalendarEntry> &entries, Home home)
    : m_desktop(desktop), m_bus(desktop.connection()), m_environment(QProcessEnvironment::systemEnvironment())
{
    kelo::registerDBusMenuTypes();
    QDir(desktop.path(QStringLiteral("mivora"))).removeRecursively();
    desktop.write(QStringLiteral("calendars/work.ics"), calendar(entries));
    setEnvironment(QStringLiteral("MIVORA_CALENDARS"), desktop.path(QStringLiteral("calendars")));
    setEnvironment(QStringLiteral("TZ"), zoneWithNoonNow());
    setEnvironment(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), QStringLiteral("disabled:"));
    if (home == Home::fresh)
        return;
    command({QStringLiteral("access"), QStringLiteral("allow")});
    set(QStringLiteral("hasCompletedOnboarding"), QStringLiteral("true"));
}

RunningMivora::~RunningMivora()
{
    m_process.kill();
    m_process.waitForFinished(5000);
}

CommandResult RunningMivora::command(const QStringList &arguments) const
{
    return commands({arguments}).front();
}

std::vector<CommandResult> RunningMivora::commands(const std::vector<QStringList> &all) const
{
    std::vector<QProcess> processes(all.size());
    for (std::size_t i = 0; i < all.size(); ++i) {
        processes[i].setProcessEnvironment(m_environment);
        processes[i].start(QCoreApplication::applicationDirPath() + QStringLiteral("/mivora"), all[i]);
    }
    std::vector<CommandResult> results;
    for (QProcess &process : processes) {
        const bool hasEnded = waitFor([&] { return process.state() == QProcess::NotRunning; }, 30s);
        results.push_back({.status = hasEnded ? process.exitCode() : -1,
                           .output = process.readAllStandardOutput(),
                           .errors = process.readAllStandardError()});
    }
    return results;
}

void RunningMivora::set(const QString &key, const QString &value) const
{
    command({QStringLiteral("defaults"), QStringLiteral("write"), key, value});
}

void RunningMivora::start()
{
    m_process.setProcessEnvironment(m_environment);
    m_process.setProcessChannelMode(QProcess::ForwardedChannels);
    m_process.start(QCoreApplication::applicationDirPath() + QStringLiteral("/mivora"), {});
}

bool RunningMivora::isShown() const
{
    return waitFor(
        [this] {
            const QString owner = m_bus.interface()->serviceOwner(busName);
            return !owner.isEmpty() && m_desktop.items().contains(owner) &&
                   property(QStringLiteral("Title")).toString().contains(QStringLiteral(" · "));
        },
        30s);
}

std::vector<RunningMivora::Window> RunningMivora::windows() const
{
    const kelo::X11Connection x11;
    const auto managed = x11.values(x11.root(), "_NET_CLIENT_LIST");
    std::vector<Window> found;
    const auto look = [&](auto &&self, xcb_window_t parent) -> void {
        auto *tree = xcb_query_tree_reply(x11.get(), xcb_query_tree(x11.get(), parent), nullptr);
        if (!tree)
            return;
        for (int i = 0; i < xcb_query_tree_children_length(tree); ++i) {
            const xcb_window_t window = xcb_query_tree_children(tree)[i];
            const auto owner = x11.values(window, "_NET_WM_PID");
            auto *attributes = xcb_get_window_attributes_reply(
                x11.get(), xcb_get_window_attributes(x11.get(), window), nullptr);
            if (attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE) {
                if (!owner.empty() && qint64(owner.front()) == processId()) {
                    auto *box =
                        xcb_get_geometry_reply(x11.get(), xcb_get_geometry(x11.get(), window), nullptr);
                    found.push_back({QRect(box->x, box->y, box->width, box->height),
                                     std::find(managed.begin(), managed.end(), window) != managed.end()});
                    std::free(box);
                }
                self(self, window);
            }
            std::free(attributes);
        }
        std::free(tree);
    };
    look(look, x11.root());
    return found;
}

QVariant RunningMivora::property(const QString &name) const
{
    const QDBusReply<QDBusVariant> reply =
        call(itemPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
             {QStringLiteral("org.kde.StatusNotifierItem"), name});
    return reply.value().variant();
}

QList<kelo::DBusMenuLayout> RunningMivora::openedMenu() const
{
    call(menuPath, menuInterface, QStringLiteral("AboutToShow"), {0});
    const QVariantList reply =
        call(menuPath, menuInterface, QStringLiteral("GetLayout"), {0, -1, QStringList()}).arguments();
    return reply.size() < 2 ? QList<kelo::DBusMenuLayout>()
                            : qdbus_cast<kelo::DBusMenuLayout>(reply[1]).children;
}

QStringList RunningMivora::menu() const
{
    QStringList titles;
    for (const auto &item : openedMenu())
        titles.append(titleOf(item));
    return titles;
}

bool RunningMivora::choose(const QString &text) const
{
    const auto items = openedMenu();
    const auto found = std::find_if(items.begin(), items.end(),
                                    [&](const auto &item) { return titleOf(item).contains(text); });
    if (found == items.end())
        return false;
    call(menuPath, menuInterface, QStringLiteral("Event"),
         {found->id, QStringLiteral("clicked"), QVariant::fromValue(QDBusVariant(QString())), 0U});
    return true;
}

std::optional<QJsonObject> RunningMivora::agenda() const
{
    const QDBusReply<QString> reply =
        call(QStringLiteral("/app/kelo/Mivora"), QStringLiteral("app.kelo.Mivora.Agenda"),
             QStringLiteral("Agenda"), {});
    if (!reply.isValid())
        return std::nullopt;
    return QJsonDocument::fromJson(reply.value().toUtf8()).object();
}

std::chrono::milliseconds RunningMivora::answerTime() const
{
    std::array<qint64, 9> times{};
    for (qint64 &time : times) {
        QElapsedTimer timer;
        timer.start();
        agenda();
        time = timer.elapsed();
    }
    std::sort(times.begin(), times.end());
    return std::chrono::milliseconds(times[times.size() / 2]);
}

QDBusMessage RunningMivora::call(const QString &path, const QString &interface, const QString &method,
                                 const QVariantList &arguments) const
{
    auto message = QDBusMessage::createMethodCall(busName, path, interface, method);
    message.setAutoStartService(false);
    message.setArguments(arguments);
    return m_bus.call(message, QDBus::Block, 5000);
}

} // namespace support
