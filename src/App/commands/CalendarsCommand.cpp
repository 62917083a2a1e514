#include "App/commands/Commands.h"

#include "App/commands/Output.h"
#include "Platform/linux/TerminationSignals.h"
#include "Settings/SubscriptionTexts.h"

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
                                  QString::fromStdString(calendar.host), stateText(calendar)};
        QStringList lines;
        for (const QString &column : columns)
            lines.append(singleLine(column));
        print(lines.join(QLatin1Char('\t')).toUtf8() + '\n');
    }
    return exitDone;
}

} // namespace

int runCalendars(const CalendarsRequest &request, CalendarSubscriptions &subscriptions)
{
    const bool asksForAddress = request.action == SubscriptionRequest::Action::add && request.address.empty();
    const std::string address = asksForAddress ? readAddress() : request.address;
    int status = exitCouldNot;
    // A subscription that is only being tried goes again when the user has had enough.
    const TerminationSignals signalsEndIt;
    const auto job = subscriptions.perform({request.action, request.id, address, request.name},
                                           [&](const SubscriptionAnswer &answer) {
                                               status = tell(answer, QString::fromStdString(hostOf(address)));
                                               QCoreApplication::quit();
                                           });
    QCoreApplication::exec();
    return status;
}

} // namespace mivora
