#include "KeloMenuBar/backends/DBusMenu.h"
#include "KeloMenuBar/backends/NotifierItem.h"
#include "Remote/ApplicationService.h"
#include "support/Require.h"

#include <QDBusPendingCallWatcher>
#include <QDBusServer>
#include <QEventLoop>
#include <QGuiApplication>
#include <array>
#include <fuzzer/FuzzedDataProvider.h>

// Any calls with any arguments to the objects that other programs reach over the session bus: each is
// answered, and the program lives on.
namespace {

using namespace mivora;

/// What the running program exports, on a connection of its own.
struct Exported
{
    explicit Exported(const QDBusConnection &bus)
        : menu(
              bus, [this] { return built(); }, &menuObject),
          item(
              bus, QStringLiteral("mivora"), [](QPoint) { return true; }, &itemObject),
          service(bus, {.perform =
                            [](const QString &action, const QString &argument, const auto &answer) {
                                answer(argument.isEmpty() ? std::nullopt : std::optional(action));
                            },
                        .activate = [] {},
                        .agenda = [] { return QByteArray("{}"); }})
    {
        QDBusConnection(bus).registerObject(QLatin1String(kelo::NotifierItem::objectPath), &itemObject);
        QDBusConnection(bus).registerObject(QLatin1String(kelo::NotifierItem::menuPath), &menuObject);
    }

    kelo::Menu built()
    {
        kelo::Menu made;
        made.addItem(QStringLiteral("Join"), QString(), [this] { ++chosen; });
        made.addSeparator();
        made.addItem(QStringLiteral("Quit"), QStringLiteral("q"), {});
        return made;
    }

    int chosen = 0;
    QObject itemObject;
    QObject menuObject;
    kelo::DBusMenu menu;
    kelo::NotifierItem item;
    ApplicationService service;
};

struct Member
{
    const char *path;
    const char *interface;
    const char *name;
};

constexpr char properties[] = "org.freedesktop.DBus.Properties";
constexpr char item[] = "org.kde.StatusNotifierItem";
constexpr char menu[] = "com.canonical.dbusmenu";

constexpr std::array members{
    Member{applicationObjectPath, applicationInterface, "Activate"},
    Member{applicationObjectPath, applicationInterface, "Open"},
    Member{applicationObjectPath, applicationInterface, "ActivateAction"},
    Member{applicationObjectPath, agendaInterface, "Agenda"},
    Member{kelo::NotifierItem::objectPath, item, "Activate"},
    Member{kelo::NotifierItem::objectPath, item, "ContextMenu"},
    Member{kelo::NotifierItem::objectPath, item, "SecondaryActivate"},
    Member{kelo::NotifierItem::objectPath, item, "XAyatanaSecondaryActivate"},
    Member{kelo::NotifierItem::objectPath, item, "Scroll"},
    Member{kelo::NotifierItem::objectPath, item, "ProvideXdgActivationToken"},
    Member{kelo::NotifierItem::objectPath, properties, "Get"},
    Member{kelo::NotifierItem::objectPath, properties, "Set"},
    Member{kelo::NotifierItem::objectPath, properties, "GetAll"},
    Member{kelo::NotifierItem::menuPath, menu, "GetLayout"},
    Member{kelo::NotifierItem::menuPath, menu, "GetGroupProperties"},
    Member{kelo::NotifierItem::menuPath, menu, "GetProperty"},
    Member{kelo::NotifierItem::menuPath, menu, "Event"},
    Member{kelo::NotifierItem::menuPath, menu, "EventGroup"},
    Member{kelo::NotifierItem::menuPath, menu, "AboutToShow"},
    Member{kelo::NotifierItem::menuPath, menu, "AboutToShowGroup"},
    Member{kelo::NotifierItem::menuPath, properties, "GetAll"},
};

QString text(FuzzedDataProvider &data)
{
    static constexpr const char *known[] = {"clicked",  "opened",           "",   "join",
                                            "settings", "children-display", item, menu};
    if (data.ConsumeBool())
        return QString::fromLatin1(data.PickValueInArray(known));
    return QString::fromUtf8(data.ConsumeRandomLengthString(64).c_str());
}

template<typename Make> auto several(FuzzedDataProvider &data, Make make)
{
    QList<decltype(make())> list;
    for (int rest = data.ConsumeIntegralInRange(0, 8); rest > 0; --rest)
        list.append(make());
    return list;
}

int number(FuzzedDataProvider &data)
{
    return data.ConsumeBool() ? data.ConsumeIntegralInRange(-1, 8) : data.ConsumeIntegral<int>();
}

kelo::DBusMenuEvent event(FuzzedDataProvider &data)
{
    return {number(data), text(data), QDBusVariant(number(data)), data.ConsumeIntegral<uint>()};
}

QVariant argument(FuzzedDataProvider &data, int depth = 0)
{
    switch (data.ConsumeIntegralInRange(0, depth < 3 ? 10 : 5)) {
    case 0:
        return number(data);
    case 1:
        return data.ConsumeIntegral<uint>();
    case 2:
        return text(data);
    case 3:
        return data.ConsumeBool();
    case 4:
        return data.ConsumeFloatingPoint<double>();
    case 5:
        return QVariant::fromValue(several(data, [&] { return number(data); }));
    case 6:
        return QVariant::fromValue(QDBusVariant(argument(data, depth + 1)));
    case 7:
        return QStringList(several(data, [&] { return text(data); }));
    case 8:
        return QVariant(several(data, [&] { return argument(data, depth + 1); }));
    case 9:
        return QVariantMap{{text(data), argument(data, depth + 1)}};
    default:
        return QVariant::fromValue(several(data, [&] { return event(data); }));
    }
}

QDBusMessage call(FuzzedDataProvider &data)
{
    const Member &member = data.PickValueInArray(members);
    auto message = QDBusMessage::createMethodCall(
        QString(), QLatin1String(member.path), QLatin1String(member.interface), QLatin1String(member.name));
    message.setArguments(several(data, [&] { return argument(data); }));
    return message;
}

/// The program at one end and its caller at the other.
class Line
{
public:
    Line()
    {
        QObject::connect(&m_server, &QDBusServer::newConnection, [this](const QDBusConnection &bus) {
            m_exported = std::make_unique<Exported>(bus);
        });
        m_server.setAnonymousAuthenticationAllowed(true);
        m_caller = QDBusConnection::connectToPeer(m_server.address(), QStringLiteral("caller"));
        while (!m_exported)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    void send(const QDBusMessage &message)
    {
        const QDBusPendingCall pending = m_caller.asyncCall(message, 5'000);
        QDBusPendingCallWatcher watcher(pending);
        QEventLoop loop;
        QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
        if (!watcher.isFinished())
            loop.exec();
        support::require(pending.error().type() != QDBusError::NoReply &&
                             pending.error().type() != QDBusError::Disconnected,
                         "each call is answered");
    }

private:
    QDBusServer m_server{QStringLiteral("unix:tmpdir=/tmp")};
    QDBusConnection m_caller{QString()};
    std::unique_ptr<Exported> m_exported;
};

Line &line()
{
    static int argc = 1;
    static char name[] = "BusCallsFuzz";
    static char *argv[] = {name, nullptr};
    static const bool offscreen = qputenv("QT_QPA_PLATFORM", "offscreen");
    // Neither is ended: Qt's threads would outlive what they use.
    static auto *application = offscreen ? new QGuiApplication(argc, argv) : nullptr;
    static auto *line = application ? new Line : nullptr;
    return *line;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *bytes, std::size_t size)
{
    Line &bus = line();
    FuzzedDataProvider data(bytes, size);
    while (data.remaining_bytes() > 0)
        bus.send(call(data));
    return 0;
}
