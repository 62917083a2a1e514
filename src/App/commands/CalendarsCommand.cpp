#include "App/commands/Commands.h"

#include "App/CalendarSession.h"
#include "App/SubscriptionTexts.h"
#include "App/commands/Output.h"
#include "Platform/linux/TerminationSignals.h"

#include <QTimer>
#include <cstdlib>
#include <future>
#include <iostream>
#include <thread>
#include <unistd.h>

namespace mivora {

namespace {

using namespace std::chrono_literals;

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

/// Has `subscriptions` do it on a thread, and waits for that as long as it makes sense, or until a signal
/// ends it.
SubscriptionAnswer performOnThread(DesktopSubscriptions &subscriptions, const SubscriptionRequest &request)
{
    std::packaged_task<SubscriptionAnswer()> task([&] { return subscriptions.perform(request); });
    std::future<SubscriptionAnswer> answer = task.get_future();
    std::thread([task = std::move(task)]() mutable {
        task();
        QMetaObject::invokeMethod(QCoreApplication::instance(), &QCoreApplication::quit,
                                  Qt::QueuedConnection);
    }).detach();
    // A server that has yet to be started may take this long; the plug-in itself gives up before the second.
    QTimer::singleShot(12s, QCoreApplication::instance(), [&] {
        if (!subscriptions.isServerThere())
            QCoreApplication::quit();
    });
    QTimer::singleShot(50s, QCoreApplication::instance(), &QCoreApplication::quit);
    const TerminationSignals signalsEndIt;
    QCoreApplication::exec();
    subscriptions.stop();
    if (answer.wait_for(2s) == std::future_status::ready)
        return answer.get();
    // What hangs takes nothing along with it.
    complain(faultText(SubscriptionFault::storeSilent));
    std::_Exit(exitCouldNot);
}

SubscriptionAnswer performed(DesktopSubscriptions &subscriptions, const SubscriptionRequest &request)
{
    if (request.action == SubscriptionRequest::Action::add && hostOf(request.address).empty())
        return {SubscriptionFault::noAddress};
    bool isThere = false;
    findCalendarServer(QDBusConnection::sessionBus(), QCoreApplication::instance(),
                       [&](const std::string &service) {
                           isThere = !service.empty();
                           QCoreApplication::quit();
                       });
    QCoreApplication::exec();
    return isThere ? performOnThread(subscriptions, request) : SubscriptionAnswer{SubscriptionFault::noStore};
}

} // namespace

int runCalendars(CalendarsRequest request, const DefaultsStore &defaults)
{
    if (request.action == SubscriptionRequest::Action::add && request.address.empty())
        request.address = readAddress();
    DesktopSubscriptions subscriptions(subscriptionSetup(defaults));
    return tell(performed(subscriptions, request), QString::fromStdString(hostOf(request.address)));
}

} // namespace mivora
