#include "KeloUpdates/SparkleUpdater.h"

namespace kelo {

bool startsUpdater(const QJsonValue &publicKey)
{
    const QString key = publicKey.toString();
    return !key.isEmpty() && !key.startsWith(QLatin1String("REPLACE"));
}

SparkleUpdater::SparkleUpdater(const QJsonObject &information, const UpdaterHost &host)
    : m_controller(startsUpdater(information.value(publicKeyKey)),
                   {.address = QUrl(information.value(feedKey).toString(), QUrl::StrictMode),
                    .publicKey = information.value(publicKeyKey).toString(),
                    .runningVersion = host.program.version},
                   host)
{
}

} // namespace kelo
