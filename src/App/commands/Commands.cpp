#include "App/commands/Commands.h"

#include "App/AgendaJson.h"
#include "App/CalendarSession.h"
#include "App/RunningInstance.h"
#include "App/commands/Output.h"
#include "MeetingTexts/MeetingTexts.h"
#include "Meetings/JoinLinkDetector.h"
#include "Platform/linux/LinuxPlatform.h"

#include <QDBusConnection>
#include <QJsonDocument>
#include <QJsonObject>
#include <cstdio>

namespace mivora {

namespace {

int tell(const FinishedRequest &request)
{
    if (request.exitStatus == exitDone)
        print(request.text);
    else
        std::fputs(request.text.c_str(), stderr);
    return request.exitStatus;
}

std::string plainText(const JoinLink &link)
{
    std::string text = serviceName(link.service).toStdString() + '\n' + link.webURL.text() + '\n';
    if (link.nativeURL)
        text += link.nativeURL->text() + '\n';
    return text;
}

int printStatus()
{
    CalendarSession session({});
    session.whenLoaded([&session](bool) {
        print(session.agenda().value(QLatin1String("authorization")).toString().toUtf8() + '\n');
        QCoreApplication::exit(exitDone);
    });
    return QCoreApplication::exec();
}

int report(bool written)
{
    if (written)
        return exitDone;
    complain(CommandLineTexts::tr("%1 can't be written; check the folder's permissions")
                 .arg(AccessMemory::defaultPath()));
    return exitCouldNot;
}

} // namespace

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
    print(plainText(*link));
    return exitDone;
}

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
        instance.perform(QString::fromStdString(request.action), QString::fromStdString(request.page));
    if (!result.isDone())
        complain(result.failure);
    return result.isDone() ? exitDone : exitCouldNot;
}

int runAccess(const AccessRequest &request)
{
    switch (request.action) {
    case AccessRequest::Action::status:
        return printStatus();
    case AccessRequest::Action::allow:
        return report(AccessMemory().allow());
    case AccessRequest::Action::reset:
        return report(AccessMemory().reset());
    }
    return exitBadArguments;
}

int runCommand(const Request &request)
{
    if (const auto *agenda = std::get_if<AgendaRequest>(&request))
        return runAgenda(*agenda);
    if (const auto *detect = std::get_if<DetectRequest>(&request))
        return runDetect(*detect);
    if (const auto *remote = std::get_if<RemoteRequest>(&request))
        return runRemote(*remote);
    if (const auto *defaults = std::get_if<DefaultsRequest>(&request))
        return runDefaults(*defaults, *makeLinuxDefaultsStore());
    if (const auto *access = std::get_if<AccessRequest>(&request))
        return runAccess(*access);
    return tell(std::get<FinishedRequest>(request));
}

} // namespace mivora
