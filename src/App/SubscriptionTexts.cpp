#include "App/SubscriptionTexts.h"

#include <QCoreApplication>

namespace mivora {

namespace {

/// The context of the texts for translators.
struct Subscription
{
    Q_DECLARE_TR_FUNCTIONS(Subscription)
};

} // namespace

QString faultText(SubscriptionFault fault, const QString &host)
{
    switch (fault) {
    case SubscriptionFault::none:
        break;
    case SubscriptionFault::noAddress:
        return Subscription::tr(
            "This is not the address of a calendar. It begins with https:// or webcal://.");
    case SubscriptionFault::noStore:
        return Subscription::tr(
            "Subscribing needs Evolution Data Server, the desktop's calendar store: install "
            "the package evolution-data-server. A folder of iCalendar files, "
            "~/.calendars, does without.");
    case SubscriptionFault::storeSilent:
        return Subscription::tr(
            "The desktop's calendar store, Evolution Data Server, does not answer. Try again later.");
    case SubscriptionFault::unknownCalendar:
        return Subscription::tr("Mivora has not subscribed to this calendar, or no longer.");
    case SubscriptionFault::notFound:
        return Subscription::tr("%1 has no calendar at this address.").arg(host);
    case SubscriptionFault::needsPassword:
        return Subscription::tr("%1 asks for a password. A calendar's private address needs none.").arg(host);
    case SubscriptionFault::notACalendar:
        return Subscription::tr("What %1 has at this address is not a calendar, or a broken one. The address "
                                "in iCalendar format is needed.")
            .arg(host);
    case SubscriptionFault::badCertificate:
        return Subscription::tr("The certificate of %1 is not valid: somebody else may pretend to be it.")
            .arg(host);
    case SubscriptionFault::unreachable:
        return Subscription::tr("%1 can't be reached. Check the address and the network.").arg(host);
    case SubscriptionFault::slow:
        return Subscription::tr("%1 takes too long to answer. Try again later.").arg(host);
    case SubscriptionFault::refused:
        return Subscription::tr("%1 does not hand out the calendar now. Try again later.").arg(host);
    case SubscriptionFault::unfinished:
        return Subscription::tr("This is a large calendar, and is still being read.");
    }
    return {};
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
