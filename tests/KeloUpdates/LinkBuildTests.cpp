#include "App/MakeUpdater.h"
#include "KeloTheme/Appearance.h"
#include "KeloTheme/ViewLoader.h"
#include "support/FakeWorkspace.h"

#include <gtest/gtest.h>

namespace mivora {

TEST(LinkBuildTests, leaveUpdatesToOthersAndShowTheirPage)
{
    const QDBusConnection noBus(QStringLiteral("none"));
    kelo::Appearance appearance(noBus);
    kelo::ViewLoader views(appearance);
    FakeWorkspace workspace;
    const auto updater = makeUpdater(views, workspace, noBus);

    EXPECT_FALSE(updater->canCheckForUpdates());
    EXPECT_FALSE(canCheckForUpdates());
    EXPECT_EQ(workspace.opened, QStringList());
    updater->checkForUpdates();
    EXPECT_EQ(workspace.opened, QStringList(QStringLiteral("https://kelo.example/changes")));
}

} // namespace mivora
