// A Join panel in a process of its own, for tests of whole sessions. Reads "show", "hide" and "quit" from its
// input, one a line; writes "shown X Y WIDTH HEIGHT", "hidden" and "action VERB" to its output.

#include "desktop/PanelUnderTest.h"
#include "support/MeetingFactory.h"

#include <QGuiApplication>
#include <QSocketNotifier>
#include <QTimer>
#include <cstdio>
#include <iostream>
#include <string>
#include <unistd.h>

namespace {

using namespace mivora;

void say(const std::string &line)
{
    std::cout << line << std::endl;
}

void showPanel(PanelUnderTest &test)
{
    const Timestamp now = at("2026-03-10T08:59:00Z");
    test.panel.show(withLink(makeMeeting("review", now + Seconds(60))), now);
    const QRect frame = test.window() ? test.window()->geometry() : QRect();
    say("shown " + std::to_string(frame.x()) + " " + std::to_string(frame.y()) + " " +
        std::to_string(frame.width()) + " " + std::to_string(frame.height()));
}

void obey(PanelUnderTest &test, const std::string &command)
{
    if (command == "show") {
        showPanel(test);
    } else if (command == "hide") {
        test.panel.hide();
        say("hidden");
    } else {
        QGuiApplication::quit();
    }
}

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    PanelUnderTest test;
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &app, [&] {
        std::string line;
        if (!std::getline(std::cin, line))
            line = "quit";
        obey(test, line);
    });
    // Actions are few: looking for new ones now and then will do.
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &app, [&] {
        for (const std::string &action : std::exchange(test.actions, {}))
            say("action " + action);
    });
    watch.start(20);
    return QGuiApplication::exec();
}
