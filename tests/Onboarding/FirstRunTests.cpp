#include "FirstRun.h"

#include "Onboarding/CalendarStepModel.h"
#include "Onboarding/FirstMeetingModel.h"
#include "Platform/Workspace.h"
#include "support/AccessibleView.h"
#include "support/KeptViews.h"

#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace mivora {

using enum CalendarAuthorization;
using support::AccessibleView;

class FirstRunTest : public testing::Test
{
public:
    void show(FirstRunStep step)
    {
        run.flow.show(step);
        ASSERT_TRUE(window());
        ASSERT_TRUE(QTest::qWaitForWindowActive(window()));
    }

    QWindow *window() const { return run.flow.window() ? run.flow.window()->window() : nullptr; }

    int index() const { return run.flow.window()->model().index(); }

    AccessibleView view() const { return AccessibleView(*window()); }

    bool says(const char *text) const
    {
        return view().names(QAccessible::StaticText).contains(QString::fromUtf8(text));
    }

    FirstRun run{notDetermined};
};

TEST_F(FirstRunTest, beginsAtLaunchWhereThereIsSomethingToDo)
{
    run.flow.showAtLaunch();
    EXPECT_EQ(index(), 0);
    window()->close();
    EXPECT_TRUE(run.prefs.hasCompletedOnboarding());

    run.flow.showAtLaunch();
    EXPECT_FALSE(window()) << "once is enough";

    run.prefs.setHasCompletedOnboarding(false);
    run.source.access = granted;
    run.flow.showAtLaunch();
    EXPECT_EQ(index(), 2);

    const QWindow *open = window();
    run.flow.show(FirstRunStep::calendar);
    EXPECT_EQ(window(), open);
    EXPECT_EQ(index(), 1) << "an open walkthrough starts anew";
}

TEST_F(FirstRunTest, offersWhatTheAccessLeavesToDo)
{
    const QString hint = QStringLiteral(
        "Using Google or Outlook? Add the account in Online Accounts and its calendars show up here.");

    const std::tuple<CalendarAuthorization, bool, QString> rows[] = {
        {denied, true,
         QStringLiteral(
             "Open Online Accounts…|Open Evolution…|Subscribe to a calendar…|Continue|Skip for now")},
        {notDetermined, false, u"Allow Calendar Access|" + hint + u"|Continue|Skip for now"},
        {denied, false, u"Open Settings|" + hint + u"|Continue|Skip for now"},
        {granted, false, hint + u"|Continue"},
    };

    for (const auto &[access, isNothing, buttons] : rows) {
        run.source.access = access;
        run.source.isNothing = isNothing;
        show(FirstRunStep::calendar);
        EXPECT_EQ(view().names(QAccessible::PushButton).join(u'|'), buttons);
        EXPECT_TRUE(view().click(QAccessible::PushButton, buttons.section(u'|', 0, 0)));
    }
    EXPECT_TRUE(run.source.accessAnswer);
    EXPECT_EQ(run.opened,
              QStringList({QLatin1String(internetAccountsLink), QLatin1String(calendarPrivacyLink),
                           QLatin1String(internetAccountsLink)}));
    EXPECT_TRUE(says("Access granted"));
    view().type(Qt::Key_Return);
    EXPECT_EQ(run.opened.size(), 4) << "the link has the keyboard";
    EXPECT_TRUE(view().click(QAccessible::PushButton, QStringLiteral("Continue")));
    EXPECT_EQ(index(), 2);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !says("Access granted"); })) << "the step that was left is gone";
}

TEST_F(FirstRunTest, refreshesAfterEveryChangeOfTheAccessAndEveryAnswer)
{
    int refreshed = 0;
    CalendarStepModel model(
        run.source, [&] { ++refreshed; }, run.ways);
    QSignalSpy changes(&model, &CalendarStepModel::statusChanged);
    model.update();
    EXPECT_EQ(refreshed, 0) << "what the step finds at first is no change";
    run.source.access = denied;
    model.update();
    EXPECT_EQ(refreshed, 1);

    model.requestAccess();
    const auto answer = std::exchange(run.source.accessAnswer, nullptr);
    model.requestAccess();
    EXPECT_FALSE(run.source.accessAnswer) << "an answer is awaited";
    answer(false);
    EXPECT_EQ(refreshed, 2);
    EXPECT_EQ(changes.count(), 1);
    model.requestAccess();
    EXPECT_TRUE(run.source.accessAnswer);
}

TEST_F(FirstRunTest, endsWithTheNextMeetingAsItIsFound)
{
    run.source.access = granted;
    show(FirstRunStep::firstMeeting);
    EXPECT_TRUE(
        says("You're all set. The countdown appears in the tray as soon as something is on your calendar."));

    Meeting standup = makeMeeting("Daily\nstandup", at("2026-03-10T11:00:00Z"));
    standup.calendarColor = Color{226, 120, 40};
    run.source.events = {standup};
    run.scheduler.refresh();
    EXPECT_TRUE(says("Daily standup, 11:00 AM · no link"));
    EXPECT_EQ(FirstMeetingModel(run.scheduler, {}).color(), QStringLiteral("#e27828"));
    run.source.events = {withLink(standup)};
    run.scheduler.refresh();
    EXPECT_TRUE(says("Daily standup, 11:00 AM · Zoom"));

    bool isRefreshed = false;
    run.scheduler.onRefresh = [&] { isRefreshed = !run.flow.window(); };
    view().type(Qt::Key_Return);
    EXPECT_TRUE(isRefreshed) << "or the window was still there";
    EXPECT_TRUE(run.prefs.hasCompletedOnboarding());
}

} // namespace mivora
