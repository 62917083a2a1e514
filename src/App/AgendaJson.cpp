#include "App/AgendaJson.h"

#include "App/commands/Rfc3339.h"
#include "JoinPanel/JoinPanelModel.h"
#include "MeetingTexts/MeetingTexts.h"
#include "Preferences/Preferences.h"
#include "Scheduling/LeftOut.h"
#include "Scheduling/Scheduler.h"

#include <QJsonArray>
#include <QLocale>

namespace mivora {

namespace {

QJsonValue textOrNull(const std::optional<QString> &text)
{
    return text ? QJsonValue(*text) : QJsonValue(QJsonValue::Null);
}

QJsonValue urlOrNull(const std::optional<Url> &url)
{
    return url ? QJsonValue(QString::fromUtf8(url->text())) : QJsonValue(QJsonValue::Null);
}

QJsonValue idOrNull(const std::optional<Meeting> &meeting)
{
    return meeting ? QJsonValue(QString::fromUtf8(meeting->id)) : QJsonValue(QJsonValue::Null);
}

QLatin1String authorizationName(CalendarAuthorization authorization)
{
    constexpr QLatin1String names[] = {QLatin1String("notDetermined"), QLatin1String("denied"),
                                       QLatin1String("granted")};
    return names[std::size_t(authorization)];
}

QJsonArray meetingsJson(const std::vector<Meeting> &meetings, const AgendaContext &context)
{
    QJsonArray json;
    for (const Meeting &meeting : meetings)
        json.append(meetingJson(meeting, context));
    return json;
}

QJsonObject statusItemJson(const AgendaContext &context)
{
    const TitleOptions options{context.prefs.showTitle(), context.prefs.titleWidth(), context.isDiscreet};
    const StatusText text = statusText(context.scheduler.next(), options, context.source.authorization(),
                                       context.now, context.source.isNothingToRead());
    return {{QStringLiteral("title"), text.title},
            {QStringLiteral("urgent"), text.urgent},
            {QStringLiteral("icon"), text.icon},
            {QStringLiteral("toolTip"), textOrNull(text.toolTip)}};
}

QJsonArray menuJson(const AgendaContext &context)
{
    QJsonArray json;
    kelo::Menu menu;
    fillStatusMenu(menu, menuContents(context), {});
    for (const kelo::ClosureMenuItem &item : menu.items()) {
        if (item.isSeparator)
            json.append(QJsonObject{{QStringLiteral("separator"), true}});
        else
            json.append(QJsonObject{{QStringLiteral("title"), item.title},
                                    {QStringLiteral("enabled"), item.isEnabled},
                                    {QStringLiteral("keyEquivalent"), item.keyEquivalent}});
    }
    return json;
}

QJsonValue panelJson(const AgendaContext &context)
{
    if (!context.scheduler.panelRequest())
        return QJsonValue::Null;
    const PanelText text = panelText(context.scheduler.panelRequest(), context.now, context.isDiscreet);
    return QJsonObject{{QStringLiteral("title"), text.title},
                       {QStringLiteral("timeText"), text.timeText},
                       {QStringLiteral("hasStarted"), text.hasStarted},
                       {QStringLiteral("serviceName"), textOrNull(text.serviceName)}};
}

} // namespace

QJsonObject joinLinkJson(const JoinLink &link)
{
    return {{QStringLiteral("service"), QString::fromUtf8(rawValue(link.service))},
            {QStringLiteral("webURL"), QString::fromUtf8(link.webURL.text())},
            {QStringLiteral("nativeURL"), urlOrNull(link.nativeURL)}};
}

QJsonObject meetingJson(const Meeting &meeting, const AgendaContext &context)
{
    QJsonObject json{
        {QStringLiteral("id"), QString::fromUtf8(meeting.id)},
        {QStringLiteral("title"), QString::fromUtf8(meeting.title)},
        {QStringLiteral("start"), rfc3339(meeting.start, context.zone)},
        {QStringLiteral("end"), rfc3339(meeting.end, context.zone)},
        {QStringLiteral("calendarID"), QString::fromUtf8(meeting.calendarID)},
        {QStringLiteral("calendarColor"), meeting.calendarColor
                                              ? QJsonValue(QString::fromUtf8(meeting.calendarColor->hex()))
                                              : QJsonValue(QJsonValue::Null)},
        {QStringLiteral("isAllDay"), meeting.isAllDay},
        {QStringLiteral("participation"), QString::fromUtf8(participationName(meeting.participation))},
        {QStringLiteral("attendeeCount"), qint64(meeting.attendeeCount)},
        {QStringLiteral("joinLink"), QJsonValue::Null},
        {QStringLiteral("linkToOpen"), QJsonValue::Null},
    };
    if (meeting.joinLink) {
        json[QStringLiteral("joinLink")] = joinLinkJson(*meeting.joinLink);
        json[QStringLiteral("linkToOpen")] = QString::fromUtf8(
            linkToOpen(*meeting.joinLink, context.prefs.browserServices(), context.installed).text());
    }
    if (const auto reason = context.all ? leftOutReason(meeting, context.prefs) : QLatin1String();
        !reason.isEmpty())
        json[QStringLiteral("leftOut")] = reason;
    return json;
}

MenuContents menuContents(const AgendaContext &context)
{
    return {.authorization = context.source.authorization(),
            .isNothingToRead = context.source.isNothingToRead(),
            .today = context.scheduler.todaysMeetings(),
            .tomorrow = context.scheduler.tomorrowsMeetings(),
            .now = context.now,
            .calendars = context.source.calendars(),
            .disabledCalendarIDs = context.prefs.disabledCalendarIDs(),
            .joinHotKey = context.joinHotKey,
            .canCheckForUpdates = context.canCheckForUpdates,
            .zone = context.zone};
}

QJsonObject agendaJson(const AgendaContext &context)
{
    const Scheduler &scheduler = context.scheduler;
    const auto today = context.all ? scheduler.withLeftOut(Day::today) : scheduler.todaysMeetings();
    const auto tomorrow = context.all ? scheduler.withLeftOut(Day::tomorrow) : scheduler.tomorrowsMeetings();
    return {
        {QStringLiteral("now"), rfc3339(context.now, context.zone)},
        {QStringLiteral("authorization"), authorizationName(context.source.authorization())},
        {QStringLiteral("today"), meetingsJson(today, context)},
        {QStringLiteral("tomorrow"), meetingsJson(tomorrow, context)},
        {QStringLiteral("next"), idOrNull(scheduler.next())},
        {QStringLiteral("panelRequest"), idOrNull(scheduler.panelRequest())},
        {QStringLiteral("statusItem"), statusItemJson(context)},
        {QStringLiteral("menu"), menuJson(context)},
        {QStringLiteral("panel"), panelJson(context)},
    };
}

bool showsChange(QJsonObject before, QJsonObject after)
{
    const QString time = QStringLiteral("now");
    before.remove(time);
    after.remove(time);
    return before != after;
}

} // namespace mivora
