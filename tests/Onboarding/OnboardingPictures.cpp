#include "FirstRun.h"
#include "KeloOnboarding/OnboardingModel.h"
#include "Translations/InstallTranslations.h"

#include <QDir>
#include <QGuiApplication>
#include <QQuickWindow>
#include <QTest>

// Draws every step and state of the walkthrough into the folder of the first argument. MIVORA_APPEARANCE and
// QT_SCALE_FACTOR choose the look; "-reverse" mirrors it.

namespace mivora {

namespace {

enum class Next { none, withLink, withoutLink };

struct Picture
{
    const char *name;
    FirstRunStep step;
    CalendarAuthorization access;
    Next next = Next::none;
    int tabs = 0;
};

constexpr Picture pictures[] = {
    {"welcome", FirstRunStep::welcome, CalendarAuthorization::notDetermined},
    {"calendar-not-determined", FirstRunStep::calendar, CalendarAuthorization::notDetermined},
    {"calendar-denied", FirstRunStep::calendar, CalendarAuthorization::denied},
    {"calendar-granted", FirstRunStep::calendar, CalendarAuthorization::granted},
    {"calendar-focus-button", FirstRunStep::calendar, CalendarAuthorization::denied, Next::none, 1},
    {"calendar-focus-hint", FirstRunStep::calendar, CalendarAuthorization::denied, Next::none, 2},
    {"calendar-focus-skip", FirstRunStep::calendar, CalendarAuthorization::denied, Next::none, 3},
    {"first-meeting", FirstRunStep::firstMeeting, CalendarAuthorization::granted, Next::withLink},
    {"first-without-link", FirstRunStep::firstMeeting, CalendarAuthorization::granted, Next::withoutLink},
    {"first-none", FirstRunStep::firstMeeting, CalendarAuthorization::granted},
};

Meeting example(Next next)
{
    const Timestamp start = at("2026-03-10T10:30:00Z");
    if (next == Next::withLink)
        return withLink(makeMeeting("Design review", start));
    Meeting meeting = makeMeeting("Quarterly planning with everybody who has a part in the new release and "
                                  "its documentation",
                                  start);
    meeting.calendarColor = Color{226, 120, 40};
    return meeting;
}

void draw(const Picture &picture, const QDir &folder)
{
    FirstRun run(picture.access);
    if (picture.next != Next::none)
        run.source.events = {example(picture.next)};
    run.scheduler.refresh();
    run.flow.show(picture.step);
    auto *window = qobject_cast<QQuickWindow *>(run.flow.window()->window());
    QTest::qWait(200);
    for (int i = 0; i < picture.tabs; ++i)
        QTest::keyClick(window, Qt::Key_Tab);
    QTest::qWait(50);
    window->grabWindow().save(folder.filePath(QLatin1String(picture.name) + QStringLiteral(".png")));
    window->close();
    QTest::qWait(0);
}

} // namespace

} // namespace mivora

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    mivora::installTranslations();
    QGuiApplication::setQuitOnLastWindowClosed(false);
    const QDir folder(application.arguments().value(1, QStringLiteral(".")));
    folder.mkpath(QStringLiteral("."));
    for (const auto &picture : mivora::pictures)
        mivora::draw(picture, folder);
    return 0;
}
