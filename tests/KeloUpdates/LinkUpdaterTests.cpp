#include "KeloUpdates/LinkUpdater.h"

#include <QStringList>
#include <gtest/gtest.h>

namespace kelo {

TEST(LinkUpdaterTests, offersNoCheckAndOpensTheChangelog)
{
    QStringList opened;
    const QString page = QStringLiteral("https://kelo.example/mivora/changes");
    const std::unique_ptr<Updater> updater =
        std::make_unique<LinkUpdater>(page, [&](const QString &url) { opened << url; });

    EXPECT_FALSE(updater->canCheckForUpdates());
    EXPECT_EQ(opened, QStringList());
    updater->checkForUpdates();
    EXPECT_EQ(opened, QStringList(page));
}

} // namespace kelo
