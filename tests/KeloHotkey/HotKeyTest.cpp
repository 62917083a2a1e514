#include "KeloHotkey/HotKey.h"

#include <QCoreApplication>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

using namespace kelo;

namespace {

class FakeService final : public HotKeyService
{
public:
    bool canRegister() const override { return true; }

    bool registerHotKey(const HotKeyCombo &, std::uint32_t id) override
    {
        asked.push_back(id);
        return accepts;
    }

    void unregisterHotKey(std::uint32_t id) override { unregistered.push_back(id); }

    void suspend() override {}

    void resume() override {}

    bool accepts = true;
    std::vector<std::uint32_t> asked;
    std::vector<std::uint32_t> unregistered;
};

void runQueuedEvents()
{
    QCoreApplication::processEvents();
}

} // namespace

TEST(HotKey, takesTheNextNumberEvenWhenRefused)
{
    FakeService service;
    const auto first = HotKey::create(service, {}, [] {});
    service.accepts = false;
    EXPECT_EQ(HotKey::create(service, {}, [] {}), nullptr);
    service.accepts = true;
    const auto third = HotKey::create(service, {}, [] {});
    ASSERT_TRUE(first && third);
    EXPECT_EQ(third->id(), first->id() + 2);
    EXPECT_THAT(service.asked, testing::ElementsAre(first->id(), first->id() + 1, third->id()));
    EXPECT_TRUE(service.unregistered.empty());
}

TEST(HotKey, runsItsActionFromTheEventLoopForItsOwnNumber)
{
    FakeService service;
    int runs = 0;
    const auto hotKey = HotKey::create(service, {}, [&] { ++runs; });
    Q_EMIT service.pressed(hotKey->id());
    Q_EMIT service.pressed(hotKey->id() + 1);
    EXPECT_EQ(runs, 0);
    runQueuedEvents();
    EXPECT_EQ(runs, 1);
}

TEST(HotKey, ignoresAQueuedPressOnceReleased)
{
    FakeService service;
    int runs = 0;
    auto hotKey = HotKey::create(service, {}, [&] { ++runs; });
    const std::uint32_t id = hotKey->id();
    Q_EMIT service.pressed(id);
    hotKey.reset();
    runQueuedEvents();
    EXPECT_EQ(runs, 0);
    EXPECT_THAT(service.unregistered, testing::ElementsAre(id));
}

TEST(HotKey, canBeReleasedByItsOwnAction)
{
    FakeService service;
    int runs = 0;
    std::unique_ptr<HotKey> hotKey;
    const std::string longText(100, 'x');
    hotKey = HotKey::create(service, {}, [&, longText] {
        hotKey.reset();
        runs += longText.size() == 100;
    });
    Q_EMIT service.pressed(hotKey->id());
    runQueuedEvents();
    EXPECT_EQ(runs, 1);
}

TEST(HotKey, outlivesItsService)
{
    auto service = std::make_unique<FakeService>();
    auto hotKey = HotKey::create(*service, {}, [] {});
    service.reset();
    hotKey.reset();
}
