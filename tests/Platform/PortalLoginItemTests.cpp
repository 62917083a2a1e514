#include "Platform/linux/PortalLoginItem.h"
#include "support/FakeLoginItem.h"
#include "support/FakePortal.h"
#include "support/PrivateBus.h"

#include <QTest>
#include <gmock/gmock.h>

using namespace mivora;

TEST(PortalLoginItem, remembersWhatThePortalGrantedAndLogsWhatItRefused)
{
    support::PrivateBus bus;
    auto owned = std::make_unique<FakeLoginItem>();
    const FakeLoginItem &memory = *owned;
    PortalLoginItem item(std::move(owned), bus.connection());
    testing::internal::CaptureStderr();
    support::FakePortal portal(bus.connection());
    portal.backgroundResponse = 1;
    item.setEnabled(true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return portal.backgroundRequests.size() == 1; }));
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
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                testing::MatchesRegex("Mivora: launch at login change failed: [^\n]*\n"));
}
