// Takes pictures of both pages of the settings in each state and puts them on sheets:
// settings-pictures FOLDER. Run it with MIVORA_APPEARANCE=light or dark.

#include "Settings/SettingsUnderTest.h"
#include "Translations/InstallTranslations.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QWindow>
#include <QtCore/qtestsupport_core.h>
#include <functional>

namespace {

using namespace mivora;

std::vector<CalendarInfo> everydayCalendars()
{
    return {{"1", "Personal", "", Color{0x34, 0xa8, 0x53}},
            {"2", "Work", "Google", Color{0x42, 0x85, 0xf4}},
            {"3", "Holidays in Norway", "Google", Color{0x8e, 0x5c, 0xd9}},
            {"4", "Family", "iCloud", Color{0xf2, 0x9c, 0x1f}},
            {"5", "Birthdays", "iCloud", std::nullopt}};
}

std::vector<CalendarInfo> unusualCalendars()
{
    std::string endless = "Everything that anybody in research, design and platform has ever planned";
    while (endless.size() < 300)
        endless += ", and then some";
    return {
        {"1", endless, endless, Color{0x34, 0xa8, 0x53}},
        {"2", "\xF0\x9F\x9A\x80 Launches \xF0\x9F\x8E\x89 \xE4\xBC\x9A\xE8\xAD\xB0", endless,
         Color{0xf4, 0xb4, 0}},
        {"3", "", "\xF0\x9F\x8F\xA2", Color{0x42, 0x85, 0xf4}},
        {"4",
         "\xD7\xA4\xD7\x92\xD7\x99\xD7\xA9\xD7\x95\xD7\xAA \xD7\xA9\xD7\x9C \xD7\xA6\xD7\x95\xD7\x95\xD7\xAA",
         "\xF0\x9F\x8F\xA2", std::nullopt}};
}

struct State
{
    SettingsPage page = SettingsPage::general;
    std::function<void(SettingsUnderTest &)> prepare = [](SettingsUnderTest &) {};
    std::function<void(SettingsUnderTest &)> act = [](SettingsUnderTest &) {};
    Qt::LayoutDirection direction = Qt::LeftToRight;
};

void tap(SettingsUnderTest &test, Qt::Key key, int count = 1)
{
    for (int i = 0; i < count; ++i) {
        for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, key, Qt::NoModifier);
            QCoreApplication::sendEvent(test.controller.window(), &event);
        }
    }
}

const std::vector<State> &states()
{
    const auto everyday = [](SettingsUnderTest &test) {
        test.source.known = everydayCalendars();
        test.prefs.setDisabledCalendarIDs({"3"});
        test.prefs.setBrowserServices({Service::zoom});
    };
    const auto withShortcut = [](SettingsUnderTest &test) {
        test.prefs.setJoinHotKey(kelo::HotKeyCombo{9, kelo::controlKey | kelo::optionKey});
    };
    static const std::vector<State> all{
        {},
        {.prepare =
             [withShortcut](SettingsUnderTest &test) {
                 withShortcut(test);
                 test.prefs.setShowTitle(false);
                 test.prefs.setRemindWithoutLink(true);
             },
         .act = [](SettingsUnderTest &test) { tap(test, Qt::Key_Tab, 3); }},
        {.prepare = withShortcut,
         .act =
             [](SettingsUnderTest &test) {
                 tap(test, Qt::Key_Tab, 4);
                 tap(test, Qt::Key_Space);
             }},
        {.prepare = withShortcut,
         .act =
             [](SettingsUnderTest &test) {
                 tap(test, Qt::Key_Tab, 8);
                 tap(test, Qt::Key_Space);
             }},
        {.page = SettingsPage::calendars, .prepare = everyday},
        {.page = SettingsPage::calendars,
         .prepare = [](SettingsUnderTest &test) { test.source.known = unusualCalendars(); },
         .act = [](SettingsUnderTest &test) { tap(test, Qt::Key_Tab, 2); }},
        {.page = SettingsPage::calendars,
         .prepare = [](SettingsUnderTest &test) { test.source.access = CalendarAuthorization::denied; }},
        {.page = SettingsPage::calendars, .prepare = everyday, .direction = Qt::RightToLeft},
        {.prepare = withShortcut, .direction = Qt::RightToLeft},
    };
    return all;
}

QImage picture(const State &state)
{
    QGuiApplication::setLayoutDirection(state.direction);
    SettingsUnderTest test;
    state.prepare(test);
    test.controller.show(state.page);
    QTest::qWait(400);
    state.act(test);
    QTest::qWait(400);
    QWindow *window = test.controller.window();
    QImage image = window->screen()->grabWindow(window->winId()).toImage();
    window->close();
    return image;
}

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    mivora::installTranslations();
    QGuiApplication::setQuitOnLastWindowClosed(false);
    int number = 0;
    bool isSaved = true;
    for (const State &state : states()) {
        const QString file = app.arguments().value(1) + QStringLiteral("/settings-%1.png").arg(++number);
        isSaved = picture(state).save(file) && isSaved;
    }
    return isSaved ? 0 : 1;
}
