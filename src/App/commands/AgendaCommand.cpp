#include "App/commands/Commands.h"

#include "App/AgendaTable.h"
#include "App/CalendarSession.h"
#include "App/RunningInstance.h"
#include "App/commands/AgendaFollower.h"
#include "App/commands/Output.h"
#include "MeetingTexts/MeetingTexts.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QJsonDocument>
#include <future>
#include <thread>

namespace mivora {

namespace {

/// Why the named folders can't be read; nothing when they can.
std::optional<QString> problemOf(const std::vector<std::string> &folders)
{
    for (const std::string &folder : folders) {
        const QString path = QString::fromStdString(folder);
        const QFileInfo info(path);
        if (!info.exists())
            return CommandLineTexts::tr(
                       "--calendars: there is no folder \"%1\"; name one that holds iCalendar files")
                .arg(path);
        if (!info.isDir())
            return CommandLineTexts::tr("--calendars: \"%1\" is no folder; name the folder that holds it")
                .arg(path);
        if (!info.isReadable() || !info.isExecutable())
            return CommandLineTexts::tr("--calendars: \"%1\" can't be read; check its permissions").arg(path);
    }
    return std::nullopt;
}

/// The same, asked by a thread that is left to itself when a folder hangs: the store tells of that one.
std::optional<QString> problemOfThoseThatAnswer(const std::vector<std::string> &folders)
{
    constexpr std::chrono::seconds patience(1);
    std::packaged_task<std::optional<QString>()> look([folders] { return problemOf(folders); });
    auto problem = look.get_future();
    std::thread(std::move(look)).detach();
    return problem.wait_for(patience) == std::future_status::ready ? problem.get() : std::nullopt;
}

QByteArray oneLine(const QJsonObject &news)
{
    return printableJson(QJsonDocument(news).toJson(QJsonDocument::Compact)) + '\n';
}

/// What a status bar shows: the title alone, or an empty line for none.
QByteArray titleLine(const QJsonObject &agenda)
{
    const auto item = agenda.value(QLatin1String("statusItem")).toObject();
    return singleLine(item.value(QLatin1String("title")).toString().trimmed()).toUtf8() + '\n';
}

/// "09:59  MeetingDue  Standup"
QByteArray eventLine(const QJsonObject &news)
{
    const QString gap = QStringLiteral("  ");
    const QString line = shortTime(SystemClock().now(), userTimeZone(), QLocale::system()) + gap +
                         news.value(QLatin1String("event")).toString() + gap +
                         news.value(QLatin1String("meeting"))[QLatin1String("title")].toString();
    return singleLine(line).toUtf8() + '\n';
}

int show(const QJsonObject &agenda, const AgendaRequest &request)
{
    const QString authorization = agenda.value(QLatin1String("authorization")).toString();
    if (request.json)
        print(printableJson(QJsonDocument(agenda).toJson(QJsonDocument::Indented)));
    if (authorization == QLatin1String("notDetermined")) {
        complain(CommandLineTexts::tr("no access to your calendars yet; `mivora access allow` gives it"));
        return exitCouldNot;
    }
    if (authorization == QLatin1String("denied")) {
        complain(CommandLineTexts::tr(
            "no calendars can be read; add one to the desktop's calendar, put a folder of iCalendar files at "
            "~/.calendars, or name one with --calendars DIR or $MIVORA_CALENDARS"));
        return exitCouldNot;
    }
    if (!request.json)
        print(agendaTable(agenda, userTimeZone(), TableStyle::forStandardOutput()).toUtf8());
    return exitDone;
}

int follow(const AgendaRequest &request, const SessionOptions &options)
{
    const auto topic = request.events ? AgendaFollower::Topic::meetings : AgendaFollower::Topic::agenda;
    AgendaFollower follower(options, topic, [&request](const QJsonObject &news) {
        print(request.json ? oneLine(news) : request.events ? eventLine(news) : titleLine(news));
    });
    follower.start();
    return QCoreApplication::exec();
}

} // namespace

int runAgenda(const AgendaRequest &request)
{
    if (const auto problem = problemOfThoseThatAnswer(request.calendars)) {
        complain(*problem);
        return exitCouldNot;
    }
    const SessionOptions options{
        .folders = request.calendars, .at = request.at, .timePasses = request.follow};
    if (request.follow)
        return follow(request, options);
    if (options.isOwnDay()) {
        if (const auto agenda = RunningInstance().agenda(request.all))
            return show(*agenda, request);
    }
    CalendarSession session(options);
    session.whenLoaded([&](bool areComplete) {
        if (!areComplete)
            complain(CommandLineTexts::tr("the calendars took too long to load; what is shown is not all"));
        QCoreApplication::exit(show(session.agenda(request.all), request));
    });
    return QCoreApplication::exec();
}

} // namespace mivora
