#include "StatusBar/StatusText.h"

#include "MeetingTexts/MeetingTexts.h"
#include "MeetingTexts/TitleText.h"

#include <QCoreApplication>

namespace mivora {

StatusText statusText(const std::optional<Meeting> &next, const TitleOptions &options,
                      CalendarAuthorization authorization, Timestamp now, bool isNothingToRead)
{
    StatusText text;
    if (options.isShown && next) {
        const QString title = !options.isDiscreet ? titleText(next->title)
                              : next->joinLink    ? serviceName(next->joinLink->service)
                                                  : discreetTitle();
        text.title = QLatin1Char(' ') + shortenedTitle(title, options.width) + QStringLiteral(" · ") +
                     countdownText(next->start - now);
        text.urgent = now >= next->start - Seconds(60) && now < next->end;
    }
    if (authorization == CalendarAuthorization::granted) {
        text.icon = QStringLiteral("calendar.badge.clock");
    } else {
        text.icon = QStringLiteral("calendar.badge.exclamationmark");
        text.toolTip = QCoreApplication::translate("StatusItem", "Mivora needs Calendar access");
    }
    if (isNothingToRead)
        text.toolTip = QCoreApplication::translate("StatusItem", "Mivora found no calendar");
    return text;
}

} // namespace mivora
