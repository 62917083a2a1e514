#include "App/commands/Commands.h"
#include "Translations/InstallTranslations.h"

#include <QCoreApplication>

int main(int argc, char **argv)
{
    using namespace mivora;
    Request request = parseCommandLine(argc, argv);
    if (const auto *start = std::get_if<StartRequest>(&request))
        return start->startedBy == StartedBy::login ? startAtLogin(argc, argv)
                                                    : runApplication(argc, argv, *start);
    // Commands get an event loop without a display.
    const QCoreApplication application(argc, argv);
    installTranslations();
    // Help and complaints are told once more, in the user's language: a start doesn't wait for its texts.
    if (std::holds_alternative<FinishedRequest>(request))
        request = parseCommandLine(argc, argv);
    return runCommand(request);
}
