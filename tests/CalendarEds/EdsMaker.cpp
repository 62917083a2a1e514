#include "CalendarEds/EdsMaker.h"

#include "CalendarEds/EdsWorld.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QRegularExpression>
#include <QThread>
#include <QUuid>
#include <stdexcept>

namespace support {

namespace {

using StringMap = QMap<QString, QString>;
/// The UID of an event and its RECURRENCE-ID.
using EventId = std::pair<QString, QString>;
using Objects = QMap<QDBusObjectPath, QMap<QString, QVariantMap>>;

constexpr int longestWait = 60'000;
constexpr uint noFlags = 0;
const QString managerPath = QStringLiteral("/org/gnome/evolution/dataserver/SourceManager");

QString modeOf(EdsMaker::Which which)
{
    return which == EdsMaker::Which::thisOne ? QStringLiteral("this") : QStringLiteral("all");
}

} // namespace

EdsMaker::EdsMaker()
    : m_bus(QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
                                          QUuid::createUuid().toString(QUuid::WithoutBraces)))
{
    qDBusRegisterMetaType<StringMap>();
    qDBusRegisterMetaType<EventId>();
    qDBusRegisterMetaType<QList<EventId>>();
}

EdsMaker::~EdsMaker()
{
    QDBusConnection::disconnectFromBus(m_bus.name());
}

std::string EdsMaker::addCalendar(const std::string &title)
{
    return addSource("[Data Source]\nDisplayName=" + title +
                     "\nEnabled=true\nParent=local-stub\n[Calendar]\nBackendName=local\nColor=#3584e4\n");
}

std::string EdsMaker::addCalDav(const std::string &title, int port, const std::string &path,
                                const std::string &address, const std::string &user)
{
    return addSource("[Data Source]\nDisplayName=" + title +
                     "\nEnabled=true\nParent=caldav-stub\n[Calendar]\nBackendName=caldav\n"
                     "[Authentication]\nHost=127.0.0.1\nPort=" +
                     std::to_string(port) + "\nUser=" + user + "\n[Security]\nMethod=none\n" +
                     "[WebDAV Backend]\nResourcePath=" + path + "\nEmailAddress=" + address + '\n');
}

void EdsMaker::signIn(const std::string &calendar, const std::string &user, const std::string &password)
{
    const QStringList credentials{QStringLiteral("username:") + QString::fromStdString(user),
                                  QStringLiteral("password:") + QString::fromStdString(password)};
    call(source(calendar), "Source", "InvokeAuthenticate", {credentials});
}

void EdsMaker::edit(const std::string &calendar, const std::string &entry, const std::string &value)
{
    const Object object = source(calendar);
    auto message = QDBusMessage::createMethodCall(object.service, object.path,
                                                  QStringLiteral("org.freedesktop.DBus.Properties"),
                                                  QStringLiteral("Get"));
    message << QStringLiteral("org.gnome.evolution.dataserver.Source") << QStringLiteral("Data");
    QString text = m_bus.call(message).arguments().value(0).value<QDBusVariant>().variant().toString();
    const QString name = QString::fromStdString(entry) + QLatin1Char('=');
    text.replace(QRegularExpression(QLatin1Char('^') + name + QStringLiteral(".*$"),
                                    QRegularExpression::MultilineOption),
                 name + QString::fromStdString(value));
    call(object, "Source.Writable", "Write", {text});
}

void EdsMaker::removeCalendar(const std::string &calendar)
{
    call(source(calendar), "Source.Removable", "Remove");
}

void EdsMaker::create(const std::string &calendar, const std::string &event)
{
    callCalendar(calendar, "CreateObjects", {QStringList{QString::fromStdString(event)}, noFlags});
}

void EdsMaker::modify(const std::string &calendar, const std::string &event, Which which)
{
    callCalendar(calendar, "ModifyObjects",
                 {QStringList{QString::fromStdString(event)}, modeOf(which), noFlags});
}

void EdsMaker::remove(const std::string &calendar, const std::string &uid, const std::string &recurrenceID,
                      Which which)
{
    const QList<EventId> ids{{QString::fromStdString(uid), QString::fromStdString(recurrenceID)}};
    callCalendar(calendar, "RemoveObjects", {QVariant::fromValue(ids), modeOf(which), noFlags});
}

void EdsMaker::import(const std::string &calendar, const std::string &text)
{
    // As one that is published, whatever it was sent as.
    QString published =
        QString::fromStdString(text).remove(QRegularExpression(QStringLiteral("METHOD:.*\n")));
    published.insert(published.indexOf(QLatin1Char('\n')) + 1, QStringLiteral("METHOD:PUBLISH\r\n"));
    callCalendar(calendar, "ReceiveObjects", {published, noFlags});
}

void EdsMaker::refresh(const std::string &calendar)
{
    callCalendar(calendar, "Refresh", {});
}

std::string EdsMaker::addSource(const std::string &text)
{
    const QString id = QUuid::createUuid().toString(QUuid::Id128);
    call({QLatin1String(EdsWorld::sourcesName), managerPath}, "SourceManager", "CreateSources",
         {QVariant::fromValue(StringMap{{id, QString::fromStdString(text)}})});
    return id.toStdString();
}

EdsMaker::Object EdsMaker::source(const std::string &calendar) const
{
    const auto message = QDBusMessage::createMethodCall(QLatin1String(EdsWorld::sourcesName), managerPath,
                                                        QStringLiteral("org.freedesktop.DBus.ObjectManager"),
                                                        QStringLiteral("GetManagedObjects"));
    const auto objects = qdbus_cast<Objects>(m_bus.call(message).arguments().value(0));
    for (auto object = objects.begin(); object != objects.end(); ++object) {
        const QVariantMap properties = object->value(QStringLiteral("org.gnome.evolution.dataserver.Source"));
        if (properties.value(QStringLiteral("UID")).toString().toStdString() == calendar)
            return {QLatin1String(EdsWorld::sourcesName), object.key().path()};
    }
    throw std::runtime_error("no calendar " + calendar);
}

const EdsMaker::Object &EdsMaker::opened(const std::string &calendar)
{
    if (const auto known = m_opened.find(calendar); known != m_opened.end())
        return known->second;
    const Object factory{QLatin1String(EdsWorld::calendarName),
                         QStringLiteral("/org/gnome/evolution/dataserver/CalendarFactory")};
    const QVariantList id{QString::fromStdString(calendar)};
    // The registry tells the factory of a new calendar at its own time.
    for (int attempt = 0;; ++attempt) {
        try {
            const QVariantList answer = call(factory, "CalendarFactory", "OpenCalendar", id);
            const Object object{answer.value(1).toString(), answer.value(0).toString()};
            call(object, "Calendar", "Open");
            return m_opened[calendar] = object;
        } catch (const std::runtime_error &) {
            if (attempt == 50)
                throw;
            QThread::msleep(100);
        }
    }
}

void EdsMaker::callCalendar(const std::string &calendar, const char *method, const QVariantList &arguments)
{
    call(opened(calendar), "Calendar", method, arguments);
}

QVariantList EdsMaker::call(const Object &object, const char *interface, const char *method,
                            const QVariantList &arguments) const
{
    auto message = QDBusMessage::createMethodCall(
        object.service, object.path,
        QStringLiteral("org.gnome.evolution.dataserver.") + QLatin1String(interface), QLatin1String(method));
    message.setArguments(arguments);
    const QDBusMessage answer = m_bus.call(message, QDBus::Block, longestWait);
    if (answer.type() == QDBusMessage::ErrorMessage)
        throw std::runtime_error(std::string(method) + ": " + answer.errorMessage().toStdString());
    return answer.arguments();
}

} // namespace support
