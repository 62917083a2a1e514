#include "KeloSparkle/SparkleUpdater.h"

#include "KeloSparkle/InformationDictionary.h"
#include "KeloSparkle/UpdateEngineLoader.h"

#include <QStandardPaths>
#include <memory>

namespace kelo {

namespace {

UpdateFeed feedOf(const InformationDictionary &dictionary, const QString &version)
{
    return {.address = QUrl(dictionary.value(feedKey).toString(), QUrl::StrictMode),
            .publicKey = dictionary.value(publicKeyKey).toString(),
            .runningVersion = version};
}

Starting decision(const InformationDictionary &dictionary)
{
    return startsUpdater(dictionary.value(publicKeyKey)) ? Starting::yes : Starting::no;
}

} // namespace

SparkleUpdater::SparkleUpdater(const InformationDictionary &dictionary, const UpdaterHost &host)
    : m_controller(decision(dictionary), feedOf(dictionary, host.program.version), host)
{
}

UpdaterHost makeUpdaterHost(ViewLoader &views, const QDBusConnection &sessionBus, const ProgramName &program)
{
    const auto loader = std::make_shared<UpdateEngineLoader>();
    return {
        .views = views,
        .sessionBus = sessionBus,
        .systemBus = &QDBusConnection::systemBus,
        .program = program,
        .engine = [loader] { return loader->engine(); },
        .open = openPackage,
        .reveal = [sessionBus](const QString &path,
                               PackageOpened done) { showInFileManager(sessionBus, path, std::move(done)); },
        .now = &QDateTime::currentDateTimeUtc,
        .memoryPath = UpdateMemory::defaultPath(),
        .downloadFolder =
            QStandardPaths::writableLocation(QStandardPaths::CacheLocation) + QStringLiteral("/updates")};
}

} // namespace kelo
