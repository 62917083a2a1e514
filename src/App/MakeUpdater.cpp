#include "App/MakeUpdater.h"

#include "KeloUpdates/SparkleUpdater.h"
#include "Platform/Workspace.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>

namespace mivora {

namespace {

QJsonObject informationDictionary()
{
    QFile file(QCoreApplication::applicationDirPath() + QStringLiteral("/../share/mivora/info.json"));
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
}

bool hasFeed(const QJsonObject &information)
{
    return !information.value(kelo::feedKey).toString().isEmpty();
}

} // namespace

std::unique_ptr<kelo::Updater> makeUpdater(kelo::ViewLoader &views, Workspace &workspace)
{
    const auto openPage = [&workspace](const QString &url) { workspace.open(url, [](bool) {}); };
    const QJsonObject information = informationDictionary();
    if (!hasFeed(information))
        return std::make_unique<kelo::LinkUpdater>(QStringLiteral(MIVORA_CHANGELOG_PAGE), openPage);
    const kelo::ProgramName program{QStringLiteral("Mivora"), QStringLiteral(MIVORA_VERSION)};
    return std::make_unique<kelo::SparkleUpdater>(
        information, kelo::UpdaterHost{.views = views, .program = program, .openPage = openPage});
}

bool canCheckForUpdates()
{
    return hasFeed(informationDictionary());
}

} // namespace mivora
