#include "KeloPanel/backends/X11Connection.h"
#include "desktop/MivoraOnDesktop.h"
#include "support/FakeKeyboard.h"

#include <gmock/gmock.h>
#include <linux/input-event-codes.h>

// The program started for the first time, in a home that holds a calendar and nothing else.
namespace mivora {

namespace {

using namespace std::chrono_literals;
using support::RunningMivora;
using support::waitFor;

using FirstRunOnDesktop = support::MivoraOnDesktop;

} // namespace

TEST_F(FirstRunOnDesktop, isWalkedThroughWithTheKeyboardAndNeverShownAgain)
{
    desktop->startTerminal();
    support::FakeKeyboard keyboard;
    const auto type = [&](int key) {
        keyboard.tap({key});
        // Two taps of a key within a millisecond would look like one that repeats.
        waitFor(100ms);
    };
    const auto isCompleted = [&] {
        return desktop->read(QStringLiteral("mivora/mivora.json")).contains("\"hasCompletedOnboarding\": true");
    };
    RunningMivora program(*desktop, {{QStringLiteral("Design review"), 900s, {}}},
                          RunningMivora::Home::fresh);
    program.start();
    const auto hasKeyboard = [&] {
        const auto app = kelo::X11Connection().activeApp();
        return app && app->processID == program.processId();
    };
    const auto title = [&] { return program.property(QStringLiteral("Title")).toString(); };
    const auto showsCountdown = [&] { return title().startsWith(QStringLiteral("Design review · ")); };
    ASSERT_TRUE(waitFor(hasKeyboard, 30s));
    EXPECT_FALSE(showsCountdown()) << "it may not read calendars yet";
    type(KEY_ENTER);
    type(KEY_TAB);
    type(KEY_SPACE);
    EXPECT_TRUE(waitFor(showsCountdown, 20s)) << title().toStdString();
    EXPECT_EQ(program.windows().size(), 1U);
    EXPECT_FALSE(isCompleted());
    type(KEY_ENTER);
    type(KEY_ENTER);
    EXPECT_TRUE(waitFor([&] { return program.windows().empty(); }));
    EXPECT_TRUE(waitFor(isCompleted));
    EXPECT_THAT(title().toStdString(), testing::AnyOf("Design review · 15m", "Design review · 14m"));
    EXPECT_EQ(desktop->read(QStringLiteral("typed")), QByteArray())
        << "the keys were the walkthrough's alone";

    program.command({QStringLiteral("quit")});
    ASSERT_TRUE(waitFor([&] { return !program.isRunning(); }));
    program.start();
    ASSERT_TRUE(waitFor(showsCountdown, 30s)) << title().toStdString();
    EXPECT_FALSE(waitFor([&] { return !program.windows().empty(); }, 1s));
}

} // namespace mivora
