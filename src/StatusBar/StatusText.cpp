#include "StatusBar/StatusText.h"

#include "MeetingTexts/MeetingTexts.h"
#include "MeetingTexts/TitleText.h"

#include <QCoreApplication>

namespace mivora {

QString statusTitleText(const Meeting &meeting, int titleWidth, Timestamp now)
{
    return shortenedTitle(titleText(meeting.title), titleWidth) + QStringLiteral(" · ") +
           countdownText(meeting.start - now);
}

bool isUrgent(const Meeting &meeting, Timestamp now)
{
    return now >= meeting.start - Seconds(60) && now < meeting.end;
}

StatusItemState statusItemState(const std::optional<Meeting> &next, const TitleOptions &options,
                                CalendarAuthorization authorization, Timestamp now)
{
    StatusItemState state;
    if (options.isShown && next) {
        state.title = QLatin1Char(' ') + statusTitleText(*next, options.width, now);
        state.urgent = isUrgent(*next, now);
    }
    if (authorization == CalendarAuthorization::granted) {
        state.icon = QStringLiteral("calendar.badge.clock");
    } else {
        state.icon = QStringLiteral("calendar.badge.exclamationmark");
        state.toolTip = QCoreApplication::translate("StatusItem", "Mivora needs Calendar access");
    }
    return state;
}

} // namespace mivora
