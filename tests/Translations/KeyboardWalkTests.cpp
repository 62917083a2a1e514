#include "App/ConflictAlert.h"
#include "App/SubscriptionDialog.h"
#include "Calendar/CalendarFolder.h"
#include "KeloUpdates/UpdateWindow.h"
#include "Onboarding/FirstRun.h"
#include "Settings/SettingsUnderTest.h"
#include "support/AccessibleView.h"
#include "support/KeptViews.h"

#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

// Every window by its keys alone. The settings' own tests walk their pages.
namespace mivora {

static support::AccessibleView shown(QWindow *window)
{
    EXPECT_TRUE(QTest::qWaitFor([window] { return QGuiApplication::focusWindow() == window; }));
    return support::AccessibleView(*window);
}

/// Goes by Tab to the stop of this name, and presses Return.
static void press(const support::AccessibleView &view, const char *stop)
{
    for (int i = 0; i < 9 && view.focused() != QString::fromUtf8(stop); ++i)
        view.type(Qt::Key_Tab);
    EXPECT_EQ(view.focused().toStdString(), stop);
    view.type(Qt::Key_Return);
}

TEST(KeyboardWalk, ofTheWalkthroughAnswersAndGoesOnByReturn)
{
    FirstRun run(CalendarAuthorization::notDetermined);
    run.flow.show(FirstRunStep::welcome);
    const auto view = shown(run.flow.window()->window());
    view.type(Qt::Key_Enter);
    EXPECT_EQ(run.flow.window()->model().index(), 1) << "the default action, as nothing has the keyboard";
    press(view, "Allow Calendar Access");
    EXPECT_TRUE(run.source.accessAnswer);
    EXPECT_EQ(run.flow.window()->model().index(), 1);
    press(view, "Skip for now");
    EXPECT_EQ(run.flow.window()->model().index(), 2);
    view.type(Qt::Key_Escape);
    EXPECT_TRUE(run.flow.window()) << "it ends by its buttons, or as all windows do";
    view.type(Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(run.flow.window());
}

TEST(KeyboardWalk, ofTheUpdateDownloadsOnlyWhenAsked)
{
    kelo::UpdateWindow updates(sharedViews(), QStringLiteral("Mivora"));
    kelo::UpdatePage page;
    page.notes = QStringLiteral("Notes");
    page.primaryLabel = QStringLiteral("Download…");
    page.secondaryLabel = QStringLiteral("Later");
    page.primary = kelo::UpdateAction::openPage;
    updates.show(page, kelo::Attention::taken);
    const auto view = shown(updates.window());
    for (const char *stop : {"Later", "Download…", "Notes"}) {
        QSignalSpy chosen(&updates, &kelo::UpdateWindow::chosen);
        press(view, stop);
        EXPECT_EQ(chosen.value(0).value(0).value<kelo::UpdateAction>(),
                  *stop == 'L' ? page.secondary : page.primary);
    }
}

TEST(KeyboardWalk, ofTheSubscriptionTriesTellsAndNames)
{
    // In the place of the program with its command.
    const CalendarFolder folder;
    folder.write("program", "#!/bin/sh\nread address\necho \"$*|$address\" >>" + folder.path("asked") + R"(
case $2$address in
    addwebcal*) echo 'mivora.calendar: noise' >&2; echo 'mivora: gone' >&2; exit 1 ;;
    adddead*) kill $$ ;;
    addslow*) trap "echo over >>'$0.end'; exit" TERM; sleep 100 & wait ;;
    add* | list*) printf 'desktop:mivora-1\tTeam\texample.org\t3 meetings this week\t#112233\n' ;;
esac
)");
    const auto text = [&](const char *name) {
        std::ifstream file(folder.path(name));
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    std::filesystem::permissions(folder.path("program"), std::filesystem::perms::owner_all);
    SubscriptionDialog dialog(QString::fromStdString(folder.path("program")), sharedViews());
    const auto state = [&] { return dialog.page()[QStringLiteral("state")].toString(); };
    const auto isBusy = [&] { return dialog.page()[QStringLiteral("isBusy")].toBool(); };
    dialog.ask(QStringLiteral("webcal://user@example.org/secret"));
    EXPECT_TRUE(dialog.page()[QStringLiteral("explanation")].toString().contains(u" example.org."));
    auto view = shown(dialog.window());
    press(view, "Subscribe");
    EXPECT_TRUE(QTest::qWaitFor([&] { return state() == u"gone"; })) << state().toStdString();
    press(view, "Cancel");
    EXPECT_FALSE(dialog.window() && dialog.window()->isVisible());

    const auto write = [&](std::string_view letters) {
        for (const char letter : letters)
            QTest::keyClick(dialog.window(), letter);
    };
    dialog.ask();
    view = shown(dialog.window());
    for (const char *address : {"dead", "slow", "good"}) {
        EXPECT_EQ(view.focused(), QStringLiteral("Address of the calendar"));
        view.type(Qt::Key_A, Qt::ControlModifier);
        write(address);
        view.type(Qt::Key_Return);
        if (QLatin1String(address) == u"slow") {
            EXPECT_TRUE(QTest::qWaitFor([&] { return text("asked").find("|slow") != std::string::npos; }));
            view.type(Qt::Key_Escape);
            EXPECT_FALSE(isBusy());
            EXPECT_TRUE(QTest::qWaitFor([&] { return text("program.end") == "over\n"; }));
            dialog.ask();
            view = shown(dialog.window());
        }
        EXPECT_TRUE(QTest::qWaitFor([&] { return !isBusy(); }));
    }
    EXPECT_EQ(state(), QStringLiteral("3 meetings this week"));
    EXPECT_EQ(view.focused(), QStringLiteral("Name of the calendar"));
    write("-Mine");
    view.type(Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !dialog.window() || !dialog.window()->isVisible(); }));
    dialog.show({"desktop:mivora-1", "-Mine", "", std::nullopt});
    EXPECT_TRUE(QTest::qWaitFor([&] { return !isBusy(); }));
    press(shown(dialog.window()), "Remove");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !dialog.window() || !dialog.window()->isVisible(); }));
    EXPECT_EQ(text("asked"),
              "calendars add|webcal://user@example.org/secret\ncalendars add|dead\ncalendars add|slow\n"
              "calendars add|good\ncalendars rename desktop:mivora-1 -- -Mine|\n"
              "calendars list desktop:mivora-1|\ncalendars remove desktop:mivora-1|\n");
}

TEST(KeyboardWalk, ofTheAlertBlocksTheWindowThatItInterrupts)
{
    SettingsUnderTest settings;
    ConflictAlert alert(sharedViews(), QDBusConnection(QStringLiteral("none")));
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
        settings.controller.show(SettingsPage::general);
        shown(&settings.window());
        alert.show(QStringLiteral("Ctrl+J"));
        QWindow *window = QGuiApplication::modalWindow();
        ASSERT_TRUE(window);
        EXPECT_EQ(window->transientParent(), &settings.window());
        shown(window).type(key);
        EXPECT_FALSE(alert.isVisible());
    }
}

} // namespace mivora
