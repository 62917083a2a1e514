#include "App/commands/Commands.h"

#include "App/CalendarSession.h"
#include "App/commands/Output.h"

namespace mivora {

namespace {

int printStatus()
{
    CalendarSession session({});
    session.whenLoaded([&session](bool) {
        print(session.agenda().value(QLatin1String("authorization")).toString().toUtf8() + '\n');
        QCoreApplication::exit(exitDone);
    });
    return QCoreApplication::exec();
}

int report(bool written)
{
    if (written)
        return exitDone;
    complain(CommandLineTexts::tr("%1 can't be written; check the folder's permissions")
                 .arg(AccessMemory::defaultPath()));
    return exitCouldNot;
}

} // namespace

int runAccess(const AccessRequest &request)
{
    switch (request.action) {
    case AccessRequest::Action::status:
        return printStatus();
    case AccessRequest::Action::allow:
        return report(AccessMemory().allow());
    case AccessRequest::Action::reset:
        return report(AccessMemory().reset());
    }
    return exitBadArguments;
}

} // namespace mivora
