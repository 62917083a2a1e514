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
    folder.write("program", R"(#!/bin/sh
trap 'kill $!; echo over >>"$0.asked"; exit' TERM
read address
echo "$*|$address" >>"$0.asked"
case $2$address in
    addwebcal*) echo 'mivora.calendar: noise' >&2; echo 'mivora: gone' >&2; exit 1 ;;
    addslow*) sleep 100 & wait ;;
    add* | list*) printf 'desktop:mivora-1\tTeam\texample.org\t3 meetings this week\t#112233\n' ;;
esac
)");
    std::filesystem::permissions(folder.path("program"), std::filesystem::perms::owner_all);
    const auto asked = [&] {
        std::ifstream file(folder.path("program.asked"));
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    SubscriptionDialog dialog(QString::fromStdString(folder.path("program")), sharedViews());
    const auto isHidden = [&] { return !dialog.window() || !dialog.window()->isVisible(); };
    const auto is = [&](const char *key) { return dialog.page()[QLatin1String(key)]; };
    dialog.ask(QStringLiteral("webcal://user@example.org/secret"));
    EXPECT_TRUE(is("explanation").toString().contains(u" example.org."));
    auto view = shown(dialog.window());
    press(view, "Subscribe");
    EXPECT_TRUE(waitFor([&] { return is("state") == QStringLiteral("gone"); }));

    const auto enter = [&](std::string_view text) {
        view = shown(dialog.window());
        view.type(Qt::Key_A, Qt::ControlModifier);
        for (const char letter : text)
            QTest::keyClick(dialog.window(), letter);
        view.type(Qt::Key_Return);
    };
    dialog.ask();
    enter("slow");
    EXPECT_TRUE(waitFor([&] { return asked().ends_with("|slow\n"); }));
    view.type(Qt::Key_Escape);
    EXPECT_TRUE(waitFor([&] { return asked().ends_with("over\n"); })) << "it can take back what it tries";
    dialog.ask();
    enter("good");
    EXPECT_TRUE(waitFor([&] { return is("state") == QStringLiteral("3 meetings this week"); }));
    enter("-Mine");
    EXPECT_TRUE(waitFor(isHidden));
    dialog.show({"desktop:mivora-1", "-Mine", "", std::nullopt});
    EXPECT_TRUE(waitFor([&] { return !is("isBusy").toBool(); }));
    press(shown(dialog.window()), "Remove");
    EXPECT_TRUE(waitFor(isHidden));
    EXPECT_EQ(
        asked(),
        "calendars add|webcal://user@example.org/secret\ncalendars add|slow\nover\n"
        "calendars add|good\ncalendars rename desktop:mivora-1 -- -Mine|\ncalendars list desktop:mivora-1|\n"
        "calendars remove desktop:mivora-1|\n");
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
