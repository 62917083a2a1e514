#include "App/SubscriptionTexts.h"

#include <QCoreApplication>
#include <iterator>

namespace mivora {

namespace {

struct Subscription
{
    Q_DECLARE_TR_FUNCTIONS(Subscription)

public:
    /// Of the faults, in their order.
    static constexpr const char *texts[] = {
        "",
        QT_TR_NOOP("This is not the address of a calendar. It begins with https:// or webcal://."),
        QT_TR_NOOP(
            // NOLINTNEXTLINE(bugprone-suspicious-missing-comma)
            "Subscribing needs Evolution Data Server, the desktop's calendar store: install the package "
            "evolution-data-server. A folder of iCalendar files, ~/.calendars, does without."),
        QT_TR_NOOP("The desktop's calendar store, Evolution Data Server, does not answer. Try again later."),
        QT_TR_NOOP("Mivora has not subscribed to this calendar, or no longer."),
        QT_TR_NOOP("%1 has no calendar at this address."),
        QT_TR_NOOP("%1 asks for a password. A calendar's private address needs none."),
        QT_TR_NOOP("What %1 has at this address is not a calendar, or a broken one. The address in iCalendar "
                   "format is needed."),
        QT_TR_NOOP("The certificate of %1 is not valid: somebody else may pretend to be it."),
        QT_TR_NOOP("%1 can't be reached. Check the address and the network."),
        QT_TR_NOOP("%1 takes too long to answer. Try again later."),
        QT_TR_NOOP("%1 does not hand out the calendar now. Try again later."),
        QT_TR_NOOP("This is a large calendar, and is still being read."),
    };
    static_assert(std::size(texts) == std::size_t(SubscriptionFault::unfinished) + 1);
};

} // namespace

QString faultText(SubscriptionFault fault, const QString &host)
{
    return Subscription::tr(Subscription::texts[std::size_t(fault)]).replace(QLatin1String("%1"), host);
}

QString stateText(const SubscribedCalendar &calendar)
{
    if (calendar.fault != SubscriptionFault::none)
        return faultText(calendar.fault, QString::fromStdString(calendar.host));
    return calendar.meetings == 0
               ? Subscription::tr("No meetings this week")
               : Subscription::tr("%n meeting(s) this week", nullptr, int(calendar.meetings));
}

} // namespace mivora
