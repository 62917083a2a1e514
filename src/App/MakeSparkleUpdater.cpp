#include "App/MakeUpdater.h"

#include "KeloSparkle/InformationDictionary.h"
#include "KeloSparkle/SparkleUpdater.h"

namespace mivora {

std::unique_ptr<kelo::Updater> makeUpdater(kelo::ViewLoader &views, Workspace &,
                                           const QDBusConnection &sessionBus)
{
    using kelo::InformationDictionary;
    const kelo::ProgramName program{QStringLiteral("Mivora"), QStringLiteral(MIVORA_VERSION)};
    return std::make_unique<kelo::SparkleUpdater>(
        InformationDictionary::read(InformationDictionary::programPath()),
        kelo::makeUpdaterHost(views, sessionBus, program));
}

bool canCheckForUpdates()
{
    return true;
}

} // namespace mivora
