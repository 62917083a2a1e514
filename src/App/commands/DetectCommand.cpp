#include "App/commands/Commands.h"

#include "App/AgendaJson.h"
#include "App/commands/Output.h"
#include "MeetingTexts/MeetingTexts.h"
#include "Meetings/JoinLinkDetector.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace mivora {

namespace {

std::string plainText(const JoinLink &link)
{
    std::string text = serviceName(link.service).toStdString() + '\n' + link.webURL.text() + '\n';
    if (link.nativeURL)
        text += link.nativeURL->text() + '\n';
    return text;
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

} // namespace mivora
