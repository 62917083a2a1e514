#include "App/ConflictAlert.h"
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
