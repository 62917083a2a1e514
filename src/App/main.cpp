#include "App/commands/CommandLine.h"
#include "App/commands/Commands.h"
#include "App/commands/Output.h"
#include "Platform/linux/LinuxPlatform.h"
#include "Translations/InstallTranslations.h"

#include <QCoreApplication>

namespace {

using namespace mivora;

/// One overload for each request; commands get an event loop without a display.
struct Runner
{
    int &argc;
    char **argv;

    int operator()(const StartRequest &request) const
    {
        return runApplication(argc, argv, request.startedBy);
    }

    int operator()(const FinishedRequest &request) const
    {
        // Told once more, in the user's language. A start doesn't wait for the texts of the help.
        const QCoreApplication application(argc, argv);
        installTranslations();
        const Request translated = parseCommandLine(argc, argv);
        const auto *told = std::get_if<FinishedRequest>(&translated);
        return tell(told ? *told : request);
    }

    static int tell(const FinishedRequest &request)
    {
        if (request.exitStatus == exitDone)
            print(request.text);
        else
            std::fputs(request.text.c_str(), stderr);
        return request.exitStatus;
    }

    int operator()(const DetectRequest &request) const
    {
        const QCoreApplication application(argc, argv);
        installTranslations();
        return runDetect(request);
    }

    int operator()(const AgendaRequest &request) const
    {
        const QCoreApplication application(argc, argv);
        installTranslations();
        return runAgenda(request);
    }

    int operator()(const DefaultsRequest &request) const
    {
        const QCoreApplication application(argc, argv);
        installTranslations();
        return runDefaults(request, *makeLinuxDefaultsStore());
    }

    int operator()(const AccessRequest &request) const
    {
        const QCoreApplication application(argc, argv);
        installTranslations();
        return runAccess(request);
    }

    int operator()(const RemoteRequest &request) const
    {
        const QCoreApplication application(argc, argv);
        installTranslations();
        return runRemote(request);
    }
};

} // namespace

int main(int argc, char **argv)
{
    return std::visit(Runner{argc, argv}, parseCommandLine(argc, argv));
}
