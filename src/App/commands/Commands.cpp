#include "App/commands/Commands.h"

#include "App/AgendaJson.h"
#include "App/CalendarSession.h"
#include "App/RunningInstance.h"
#include "App/commands/Output.h"
#include "MeetingTexts/MeetingTexts.h"
#include "Meetings/JoinLinkDetector.h"

#include <QDBusConnection>
#include <QJsonDocument>

namespace mivora {

namespace {

int tell(const FinishedRequest &request)
{
    if (request.exitStatus == exitDone)
        print(QByteArray::fromStdString(request.text));
    else
        complain(QString::fromStdString(request.text));
    return request.exitStatus;
}

std::string plainText(const JoinLink &link)
{
    std::string text = serviceName(link.service).toStdString() + '\n' + link.webURL.text() + '\n';
    if (link.nativeURL)
        text += link.nativeURL->text() + '\n';
    return text;
}

/// Prints the join link of the given texts.
int runDetect(const DetectRequest &request)
{
    const auto link = detect(request.url, request.location, request.notes);
    if (request.json) {
        print(link ? QJsonDocument(joinLinkJson(*link)).toJson(QJsonDocument::Compact) + '\n'
                   : QByteArrayLiteral("null\n"));
        return exitDone;
    }
    if (!link) {
        complain(CommandLineTexts::tr("no join link found: none of the texts holds an https link"));
        return exitCouldNot;
    }
    print(QByteArray::fromStdString(plainText(*link)));
    return exitDone;
}

/// Has the running program do it.
int runRemote(const RemoteRequest &request)
{
    if (!QDBusConnection::sessionBus().isConnected()) {
        complain(CommandLineTexts::tr(
            "there is no session bus to reach Mivora on; run this in your desktop session"));
        return exitCouldNot;
    }
    const RunningInstance instance;
    if (!instance.isThere()) {
        complain(CommandLineTexts::tr("Mivora is not running; start it with `mivora`"));
        return exitCouldNot;
    }
    const CommandResult result =
        instance.perform(QString::fromStdString(request.action), QString::fromStdString(request.argument),
                         Activation::ofThisProcess());
    if (!result.isDone())
        complain(result.failure);
    return result.isDone() ? exitDone : exitCouldNot;
}

/// Shows, gives or takes back the permission to read calendars.
int runAccess(const AccessRequest &request)
{
    if (request.action == AccessRequest::Action::status) {
        CalendarSession session({});
        session.whenLoaded([&session](bool) {
            print(session.agenda().value(QLatin1String("authorization")).toString().toUtf8() + '\n');
            QCoreApplication::exit(exitDone);
        });
        return QCoreApplication::exec();
    }
    AccessMemory memory;
    if (request.action == AccessRequest::Action::allow ? memory.allow() : memory.reset())
        return exitDone;
    complain(CommandLineTexts::tr("%1 can't be written; check the folder's permissions")
                 .arg(AccessMemory::defaultPath()));
    return exitCouldNot;
}

} // namespace

int runCommand(const Request &request)
{
    if (const auto *agenda = std::get_if<AgendaRequest>(&request))
        return runAgenda(*agenda);
    if (const auto *detect = std::get_if<DetectRequest>(&request))
        return runDetect(*detect);
    if (const auto *remote = std::get_if<RemoteRequest>(&request))
        return runRemote(*remote);
    if (const auto *defaults = std::get_if<DefaultsRequest>(&request)) {
        JsonDefaultsStore store;
        return runDefaults(*defaults, store);
    }
    if (const auto *calendars = std::get_if<CalendarsRequest>(&request))
        return runCalendars(*calendars, JsonDefaultsStore());
    if (const auto *access = std::get_if<AccessRequest>(&request))
        return runAccess(*access);
    return tell(std::get<FinishedRequest>(request));
}

} // namespace mivora
