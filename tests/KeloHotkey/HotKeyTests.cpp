#include "KeloHotkey/HotKey.h"

#include "support/FakeHotKeyService.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

namespace kelo {

class HotKeyTest : public testing::Test
{
protected:
    FakeHotKeyService service;
    int runs = 0;
};

TEST_F(HotKeyTest, runsItsActionFromTheEventLoopForItsOwnNumberUntilItIsReleased)
{
    auto hotKey = HotKey::create(service, {}, [this] { ++runs; });
    Q_EMIT service.pressed(hotKey->id());
    Q_EMIT service.pressed(hotKey->id() + 1);
    EXPECT_EQ(runs, 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(runs, 1);

    Q_EMIT service.pressed(hotKey->id());
    hotKey.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(runs, 1) << "a press that was still queued";
    EXPECT_TRUE(service.registered.empty());
}

TEST_F(HotKeyTest, canBeReleasedByItsOwnAction)
{
    std::unique_ptr<HotKey> hotKey;
    const std::string longText(100, 'x');
    hotKey = HotKey::create(service, {}, [&, longText] {
        hotKey.reset();
        runs += longText.size() == 100;
    });
    Q_EMIT service.pressed(hotKey->id());
    QCoreApplication::processEvents();
    EXPECT_EQ(runs, 1);
}

} // namespace kelo
