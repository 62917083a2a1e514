#include "App/commands/Commands.h"

#include "App/RunningInstance.h"
#include "App/commands/Output.h"

#include <QDBusConnection>

namespace mivora {

int runRemote(const RemoteRequest &request)
{
    if (!QDBusConnection::sessionBus().isConnected()) {
        complain(CommandLineTexts::tr(
            "there is no session bus to reach Mivora on; run this in your desktop session"));
        return exitCouldNot;
    }
    const RunningInstance instance;
    if (!instance.isThere()) {
        complain(CommandLineTexts::tr("Mivora is not running; start it with `mivora`"));
        return exitCouldNot;
    }
    const auto failure =
        instance.perform(QString::fromStdString(request.action), QString::fromStdString(request.page));
    if (failure)
        complain(*failure);
    return failure ? exitCouldNot : exitDone;
}

} // namespace mivora
