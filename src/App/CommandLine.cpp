#include "App/CommandLine.h"

#include "App/Output.h"
#include "App/Rfc3339.h"

#include <CLI/CLI.hpp>

namespace mivora {

namespace {

constexpr const char *description =
    "Shows a countdown to your next meeting and joins it.\n"
    "Without a command: start, or open the settings of the one that runs.\n\n"
    "Calendars are read from your desktop's accounts and from folders of iCalendar files:\n"
    "$MIVORA_CALENDARS (separated by colons), or ~/.calendars and ~/.local/share/calendars.";

/// The parser writes into the requests; the one whose command was given is the result.
struct Requests
{
    StartRequest start;
    AgendaRequest agenda;
    DetectRequest detect;
    RemoteRequest settings;
    DefaultsRequest defaults;
    AccessRequest access;
};

void addAgenda(CLI::App &app, AgendaRequest &request)
{
    auto *agenda = app.add_subcommand("agenda", "Print today's meetings, the next one and its countdown");
    agenda->add_flag("--json", request.json, "Print one JSON object (with --follow, one a line)");
    agenda->add_flag("--follow", request.follow, "Go on and print a line whenever something changes");
    agenda
        ->add_option_function<std::string>(
            "--at",
            [&request](const std::string &text) {
                request.at = timestampFromRfc3339(text);
                if (!request.at)
                    throw CLI::ValidationError("--at", "expected an RFC 3339 time such as "
                                                       "2026-03-28T09:00:00+01:00, got \"" +
                                                           text + '"');
            },
            "Show the agenda of this time (RFC 3339)")
        ->type_name("TIME");
    agenda
        ->add_option("--calendars", request.calendars,
                     "Read this folder of iCalendar files instead of your own")
        ->type_name("DIR")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

void addDetect(CLI::App &app, DetectRequest &request)
{
    auto *detect = app.add_subcommand("detect", "Print the join link of an event's texts");
    detect->add_flag("--json", request.json, "Print a JSON object, or null");
    detect->add_option("--url", request.url, "The event's URL")->type_name("TEXT")->expected(1);
    detect->add_option("--location", request.location, "The event's location")
        ->type_name("TEXT")
        ->expected(1);
    detect->add_option("--notes", request.notes, "The event's notes")->type_name("TEXT")->expected(1);
}

void addRemoteCommands(CLI::App &app, RemoteRequest &settings)
{
    app.add_subcommand("join", "Join the meeting of the panel, or else the next one with a link");
    app.add_subcommand("snooze", "Hide the panel for a minute");
    app.add_subcommand("dismiss", "Hide the panel of this meeting");
    app.add_subcommand("copy", "Copy the join link of the meeting that would be joined");
    auto *window = app.add_subcommand("settings", "Open the settings");
    window->add_option("page", settings.page, "The page to open")
        ->check(CLI::IsMember({"general", "calendars"}))
        ->option_text("[general|calendars]");
    app.add_subcommand("quit", "End the running program");
}

void addDefaults(CLI::App &app, DefaultsRequest &request)
{
    auto *defaults =
        app.add_subcommand("defaults", "Read and write the settings store; lists are JSON arrays");
    defaults->require_subcommand(1);
    const auto action = [&](const char *name, const char *text, DefaultsRequest::Action value) {
        auto *command = defaults->add_subcommand(name, text);
        command->callback([&request, value] { request.action = value; });
        if (value != DefaultsRequest::Action::list)
            command->add_option("key", request.key, "The setting's key")->required()->type_name("KEY");
        return command;
    };
    action("list", "Print all settings", DefaultsRequest::Action::list);
    action("read", "Print one setting", DefaultsRequest::Action::read);
    auto *write = action("write", "Set one setting", DefaultsRequest::Action::write);
    write->add_option("value", request.value, "The new value")->required()->type_name("VALUE");
    action("delete", "Remove one setting, so that its default holds", DefaultsRequest::Action::remove);
}

void addAccess(CLI::App &app, AccessRequest &request)
{
    auto *access =
        app.add_subcommand("access", "Show, give or take back the permission to read your calendars");
    access->require_subcommand(0, 1);
    const auto action = [&](const char *name, const char *text, AccessRequest::Action value) {
        access->add_subcommand(name, text)->callback([&request, value] { request.action = value; });
    };
    action("status", "Print granted, denied or notDetermined", AccessRequest::Action::status);
    action("allow", "Let Mivora read your calendars", AccessRequest::Action::allow);
    action("reset", "Forget the permission", AccessRequest::Action::reset);
}

/// The command that was given last, down to the one that has the arguments in question.
const CLI::App &innermost(const CLI::App &app)
{
    const auto given = app.get_subcommands();
    return given.empty() ? app : innermost(*given.back());
}

/// What may follow \a command, for a message: the commands below it, else its options.
std::string expectedAfter(const CLI::App &command)
{
    std::string names;
    const auto append = [&names](const std::string &name) { names += (names.empty() ? "" : ", ") + name; };
    for (const CLI::App *below : command.get_subcommands({}))
        append(below->get_name());
    if (names.empty()) {
        for (const CLI::Option *option : command.get_options())
            append(option->get_name());
    }
    return names;
}

/// One line that names the argument and what was expected.
std::string problem(const CLI::App &app, const CLI::ParseError &error)
{
    const CLI::App &command = innermost(app);
    const auto extra = app.remaining(true);
    if (dynamic_cast<const CLI::ExtrasError *>(&error) ||
        (dynamic_cast<const CLI::RequiredError *>(&error) && !extra.empty()))
        return '"' + (extra.empty() ? std::string() : extra.front()) + "\" was not expected; expected " +
               expectedAfter(command);
    if (dynamic_cast<const CLI::RequiredError *>(&error) && !command.get_subcommands({}).empty())
        return command.get_name() + ": expected one of " + expectedAfter(command);
    return error.what();
}

Request chosenRequest(const CLI::App &app, Requests &requests)
{
    const auto given = app.get_subcommands();
    if (given.empty())
        return requests.start;
    const std::string name = given.front()->get_name();
    if (name == "agenda")
        return requests.agenda;
    if (name == "detect")
        return requests.detect;
    if (name == "defaults")
        return requests.defaults;
    if (name == "access")
        return requests.access;
    requests.settings.action = name;
    return requests.settings;
}

} // namespace

Request parseCommandLine(int argc, const char *const *argv)
{
    CLI::App app(description, "mivora");
    app.set_version_flag("--version", "mivora " MIVORA_VERSION, "Print the version and end");
    app.set_help_flag("-h,--help", "Print this help and end");
    app.require_subcommand(0, 1);
    Requests requests;
    app.add_flag_callback(
        "--service", [&requests] { requests.start.startedBy = StartedBy::sessionBus; },
        "Start for the session bus, which asks for what it wants then");
    addAgenda(app, requests.agenda);
    addDetect(app, requests.detect);
    addRemoteCommands(app, requests.settings);
    addDefaults(app, requests.defaults);
    addAccess(app, requests.access);

    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp &) {
        const auto given = app.get_subcommands();
        return FinishedRequest{given.empty() ? app.help() : given.front()->help("mivora"), exitDone};
    } catch (const CLI::CallForVersion &version) {
        return FinishedRequest{std::string(version.what()) + '\n', exitDone};
    } catch (const CLI::ParseError &error) {
        return FinishedRequest{"mivora: " + singleLine(problem(app, error)) +
                                   " (mivora --help lists the arguments)\n",
                               exitBadArguments};
    }
    return chosenRequest(app, requests);
}

} // namespace mivora
