#include "App/commands/Commands.h"

#include "App/CalendarSession.h"
#include "App/SubscriptionTexts.h"
#include "App/commands/Output.h"
#include "Platform/linux/TerminationSignals.h"

#include <iostream>
#include <unistd.h>

namespace mivora {

namespace {

std::string readAddress()
{
    if (::isatty(STDIN_FILENO))
        std::cerr << CommandLineTexts::tr("Address of the calendar:").toStdString() << ' ';
    std::string address;
    std::getline(std::cin, address);
    return address;
}

/// Of an answer that has come.
int tell(const SubscriptionAnswer &answer, const QString &host)
{
    if (answer.fault != SubscriptionFault::none) {
        complain(faultText(answer.fault, host));
        return exitCouldNot;
    }
    for (const SubscribedCalendar &calendar : answer.calendars) {
        const QStringList columns{QString::fromStdString(calendar.id), QString::fromStdString(calendar.name),
                                  QString::fromStdString(calendar.host), stateText(calendar),
                                  QString::fromStdString(calendar.color)};
        QStringList lines;
        for (const QString &column : columns)
            lines.append(singleLine(column));
        print(lines.join(QLatin1Char('\t')).toUtf8() + '\n');
    }
    return exitDone;
}

} // namespace

int runCalendars(CalendarsRequest request, const DefaultsStore &defaults)
{
    if (request.action == SubscriptionRequest::Action::add && request.address.empty())
        request.address = readAddress();
    int status = exitCouldNot;
    // A subscription that is only being tried goes again when the user has had enough.
    const TerminationSignals signalsEndIt;
    const DesktopSubscriptions subscriptions(
        request, subscriptionSetup(defaults), [&](const SubscriptionAnswer &answer) {
            status = tell(answer, QString::fromStdString(hostOf(request.address)));
            QCoreApplication::quit();
        });
    QCoreApplication::exec();
    return status;
}

} // namespace mivora
