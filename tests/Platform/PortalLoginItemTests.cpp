#include "Platform/linux/PortalLoginItem.h"
#include "support/FakeLoginItem.h"
#include "support/FakePortal.h"
#include "support/PrivateBus.h"

#include <QTest>
#include <gtest/gtest.h>

using namespace mivora;

namespace {

/// The options of the requests that the portal got, when the item has them all.
bool isAskedFor(const support::FakePortal &portal, std::size_t requests)
{
    return QTest::qWaitFor([&] { return portal.backgroundRequests.size() == requests; });
}

} // namespace

TEST(PortalLoginItem, remembersWhatThePortalGrantedAndLogsWhatItRefused)
{
    if (!support::PrivateBus::isInstalled())
        GTEST_SKIP() << "dbus-daemon is not installed";
    support::PrivateBus bus;
    auto owned = std::make_unique<FakeLoginItem>();
    const FakeLoginItem &memory = *owned;
    PortalLoginItem item(std::move(owned), bus.connection());
    testing::internal::CaptureStderr();
    support::FakePortal portal(bus.connection());
    portal.backgroundResponse = 1;
    item.setEnabled(true);
    ASSERT_TRUE(isAskedFor(portal, 1));
    portal.backgroundResponse = 0;
    for (const bool wanted : {true, false}) {
        EXPECT_EQ(item.setEnabled(wanted), std::nullopt);
        EXPECT_NE(item.isEnabled(), wanted) << "before the portal has answered";
        ASSERT_TRUE(QTest::qWaitFor([&] { return item.isEnabled() == wanted; }));
        const QVariantMap &options = portal.backgroundRequests.back();
        EXPECT_EQ(options.value(QStringLiteral("autostart")), QVariant(wanted));
        EXPECT_EQ(options.value(QStringLiteral("commandline")).toStringList(),
                  QStringList(QStringLiteral("mivora")));
    }
    EXPECT_EQ(memory.requests, std::vector({true, false}));
    const std::string logged = testing::internal::GetCapturedStderr();
    EXPECT_EQ(logged.rfind("Mivora: launch at login change failed: ", 0), 0u) << logged;
    EXPECT_EQ(logged.find('\n'), logged.size() - 1) << logged;
}
