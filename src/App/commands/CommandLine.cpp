#include "App/commands/CommandLine.h"

#include "App/commands/Output.h"
#include "App/commands/Rfc3339.h"

#include <CLI/CLI.hpp>

namespace mivora {

namespace {

std::string utf8(const QString &text)
{
    return text.toStdString();
}

std::string description()
{
    return utf8(QCoreApplication::translate(
        "CommandLine",
        "Shows a countdown to your next meeting and joins it.\n"
        "Without a command: start, or open the settings of the one that runs.\n\n"
        "Calendars are read from your desktop's accounts and from folders of iCalendar files:\n"
        "$MIVORA_CALENDARS (separated by colons), or ~/.calendars and ~/.local/share/calendars."));
}

/// Adds a command with a request of its own, which its options write into, and which is the `result` when the
/// command was given.
template<typename Wanted>
std::pair<CLI::App *, Wanted &> addCommand(CLI::App &app, const char *name, const QString &text,
                                           Request &result)
{
    auto request = std::make_shared<Wanted>();
    auto *command = app.add_subcommand(name, utf8(text));
    command->callback([request, &result] { result = *request; });
    return {command, *request};
}

void addAgenda(CLI::App &app, Request &result)
{
    const auto [agenda, request] = addCommand<AgendaRequest>(
        app, "agenda", CommandLineTexts::tr("Print today's meetings, the next one and its countdown"),
        result);
    agenda->add_flag("--json", request.json,
                     utf8(CommandLineTexts::tr("Print one JSON object (with --follow, one a line)")));
    agenda->add_flag("--follow", request.follow,
                     utf8(CommandLineTexts::tr("Go on and print a line whenever something changes")));
    agenda
        ->add_flag("--all", request.all,
                   utf8(CommandLineTexts::tr("Show what the settings leave out too, with the reason")))
        ->excludes("--follow");
    agenda
        ->add_option_function<std::string>(
            "--at",
            [&request = request](const std::string &text) {
                request.at = timestampFromRfc3339(text);
                if (!request.at)
                    throw CLI::ValidationError(
                        "--at", utf8(CommandLineTexts::tr("expected an RFC 3339 time such as %1, got \"%2\"")
                                         .arg(QStringLiteral("2026-03-28T09:00:00+01:00"),
                                              QString::fromStdString(text))));
            },
            utf8(CommandLineTexts::tr("Show the agenda of this time (RFC 3339)")))
        ->type_name("TIME");
    agenda
        ->add_option("--calendars", request.calendars,
                     utf8(CommandLineTexts::tr("Read this folder of iCalendar files instead of your own")))
        ->type_name("DIR")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

void addEvents(CLI::App &app, Request &result)
{
    const auto [events, request] = addCommand<AgendaRequest>(
        app, "events",
        CommandLineTexts::tr("Print a line whenever a meeting is due, joined, started or ended"), result);
    request.follow = request.events = true;
    events->add_flag("--json", request.json, utf8(CommandLineTexts::tr("Print one JSON object a line")));
}

void addDetect(CLI::App &app, Request &result)
{
    const auto [detect, request] = addCommand<DetectRequest>(
        app, "detect", CommandLineTexts::tr("Print the join link of an event's texts"), result);
    detect->add_flag("--json", request.json, utf8(CommandLineTexts::tr("Print a JSON object, or null")));
    const auto addText = [detect = detect](const char *name, auto &text, const QString &help) {
        detect->add_option(name, text, utf8(help))->type_name("TEXT")->expected(1);
    };
    addText("--url", request.url, CommandLineTexts::tr("The event's URL"));
    addText("--location", request.location, CommandLineTexts::tr("The event's location"));
    addText("--notes", request.notes, CommandLineTexts::tr("The event's notes"));
}

void addRemoteCommands(CLI::App &app, Request &result)
{
    const auto add = [&](const char *name, const QString &text) {
        const auto [command, request] = addCommand<RemoteRequest>(app, name, text, result);
        request.action = name;
        return std::pair<CLI::App *, RemoteRequest &>(command, request);
    };
    add("join", CommandLineTexts::tr("Join the meeting of the panel, or else the next one with a link"));
    add("snooze", CommandLineTexts::tr("Hide the panel for a minute"));
    add("dismiss", CommandLineTexts::tr("Hide the panel of this meeting"));
    add("copy", CommandLineTexts::tr("Copy the join link of the meeting that would be joined"));
    add("show", CommandLineTexts::tr("Show today's meetings in a small window"));
    const auto [window, request] = add("settings", CommandLineTexts::tr("Open the settings"));
    window->add_option("page", request.argument, utf8(CommandLineTexts::tr("The page to open")))
        ->check(CLI::IsMember({"general", "calendars"}))
        ->option_text("[general|calendars]");
    const auto [title, wish] =
        add("title", CommandLineTexts::tr("Hide titles in the tray and on the panel, or show them again"));
    title->add_option("action", wish.argument, utf8(CommandLineTexts::tr("What becomes of them")))
        ->required()
        ->check(CLI::IsMember({"hide", "show", "toggle"}))
        ->option_text("hide|show|toggle");
    add("quit", CommandLineTexts::tr("End the running program"));
}

void addDefaults(CLI::App &app, Request &result)
{
    const auto [defaults, request] = addCommand<DefaultsRequest>(
        app, "defaults", CommandLineTexts::tr("Read and write the settings store; lists are JSON arrays"),
        result);
    defaults->require_subcommand(1);
    const auto action = [defaults = defaults, &request = request](const char *name, const std::string &text,
                                                                  DefaultsRequest::Action value) {
        auto *command = defaults->add_subcommand(name, text);
        command->callback([&request, value] { request.action = value; });
        if (value != DefaultsRequest::Action::list)
            command->add_option("key", request.key, utf8(CommandLineTexts::tr("The setting's key")))
                ->required()
                ->type_name("KEY");
        return command;
    };
    action("list", utf8(CommandLineTexts::tr("Print all settings")), DefaultsRequest::Action::list);
    action("read", utf8(CommandLineTexts::tr("Print one setting")), DefaultsRequest::Action::read);
    auto *write =
        action("write", utf8(CommandLineTexts::tr("Set one setting")), DefaultsRequest::Action::write);
    write->add_option("value", request.value, utf8(CommandLineTexts::tr("The new value")))
        ->required()
        ->type_name("VALUE");
    action("delete", utf8(CommandLineTexts::tr("Remove one setting, so that its default holds")),
           DefaultsRequest::Action::remove);
}

void addAccess(CLI::App &app, Request &result)
{
    const auto [access, request] = addCommand<AccessRequest>(
        app, "access", CommandLineTexts::tr("Show, give or take back the permission to read your calendars"),
        result);
    access->require_subcommand(0, 1);
    const auto action = [access = access, &request = request](const char *name, const std::string &text,
                                                              AccessRequest::Action value) {
        access->add_subcommand(name, text)->callback([&request, value] { request.action = value; });
    };
    action("status", utf8(CommandLineTexts::tr("Print granted, denied or notDetermined")),
           AccessRequest::Action::status);
    action("allow", utf8(CommandLineTexts::tr("Let Mivora read your calendars")),
           AccessRequest::Action::allow);
    action("reset", utf8(CommandLineTexts::tr("Forget the permission")), AccessRequest::Action::reset);
}

void addCalendars(CLI::App &app, Request &result)
{
    using Action = SubscriptionRequest::Action;
    const auto [calendars, request] = addCommand<CalendarsRequest>(
        app, "calendars",
        CommandLineTexts::tr("Subscribe to calendars by their addresses, and list these calendars"), result);
    calendars->require_subcommand(0, 1);
    const auto action = [calendars = calendars, &request = request](const char *name, const QString &text,
                                                                    Action value) {
        auto *command = calendars->add_subcommand(name, utf8(text));
        command->callback([&request, value] { request.action = value; });
        return command;
    };
    const auto addID = [&request = request](CLI::App *command) {
        return command
            ->add_option("id", request.id, utf8(CommandLineTexts::tr("The calendar's ID, as listed")))
            ->required()
            ->type_name("ID");
    };
    const auto addName = [&request = request](CLI::App *command, const char *name) {
        return command->add_option(name, request.name, utf8(CommandLineTexts::tr("The calendar's name")))
            ->type_name("NAME");
    };
    addID(action("list", CommandLineTexts::tr("Fetch the subscribed calendars now and print them"),
                 Action::fetch))
        ->required(false);
    auto *add = action("add", CommandLineTexts::tr("Subscribe to a calendar"), Action::add);
    add->add_option("address", request.address,
                    utf8(CommandLineTexts::tr(
                        "An https: or webcal: address; read from standard input when it isn't given")))
        ->type_name("ADDRESS");
    addName(add, "--name");
    addID(action("remove", CommandLineTexts::tr("Remove a subscribed calendar"), Action::remove));
    auto *rename = action("rename", CommandLineTexts::tr("Rename a subscribed calendar"), Action::rename);
    addID(rename);
    addName(rename, "name")->required();
}

/// Translates what the parser puts around the texts of `app` and its commands.
void translateHeadings(CLI::App &app)
{
    const std::string options = utf8(CommandLineTexts::tr("Options"));
    for (const CLI::Option *option : app.get_options())
        app.get_option(option->get_name())->group(options);
    app.get_formatter()->label("Usage", utf8(CommandLineTexts::tr("Usage")));
    app.get_formatter()->label("OPTIONS", utf8(CommandLineTexts::tr("OPTIONS")));
    app.get_formatter()->label("SUBCOMMAND", utf8(CommandLineTexts::tr("SUBCOMMAND")));
    for (CLI::App *command : app.get_subcommands({})) {
        command->group(utf8(CommandLineTexts::tr("Subcommands")));
        translateHeadings(*command);
    }
}

/// The command that was given last, down to the one that has the arguments in question.
const CLI::App &innermost(const CLI::App &app)
{
    const auto given = app.get_subcommands();
    return given.empty() ? app : innermost(*given.back());
}

/// What may follow `command`, for a message: the commands below it, else its options.
QString expectedAfter(const CLI::App &command)
{
    QStringList names;
    for (const CLI::App *below : command.get_subcommands({}))
        names.append(QString::fromStdString(below->get_name()));
    if (names.isEmpty()) {
        for (const CLI::Option *option : command.get_options())
            names.append(QString::fromStdString(option->get_name()));
    }
    return names.join(QLatin1String(", "));
}

/// One line that names the argument and what was expected.
QString problem(const CLI::App &app, const CLI::ParseError &error)
{
    const CLI::App &command = innermost(app);
    const auto extra = app.remaining(true);
    if (dynamic_cast<const CLI::ExtrasError *>(&error) ||
        (dynamic_cast<const CLI::RequiredError *>(&error) && !extra.empty()))
        return CommandLineTexts::tr("\"%1\" was not expected; expected %2")
            .arg(extra.empty() ? QString() : QString::fromStdString(extra.front()), expectedAfter(command));
    if (dynamic_cast<const CLI::RequiredError *>(&error) && !command.get_subcommands({}).empty())
        return CommandLineTexts::tr("%1: expected one of %2")
            .arg(QString::fromStdString(command.get_name()), expectedAfter(command));
    return QString::fromUtf8(error.what());
}

} // namespace

Request parseCommandLine(int argc, const char *const *argv)
{
    if (const QString link = QString::fromLocal8Bit(argc == 2 ? argv[1] : ""); isCalendarLink(link))
        return StartRequest{.startedBy = StartedBy::user, .link = link};
    CLI::App app(description(), "mivora");
    app.set_version_flag("--version", "mivora " MIVORA_VERSION,
                         utf8(CommandLineTexts::tr("Print the version and end")));
    app.set_help_flag("-h,--help", utf8(CommandLineTexts::tr("Print this help and end")));
    app.require_subcommand(0, 1);
    Request result;
    app.add_flag_callback(
        "--service", [&result] { result = StartRequest{StartedBy::sessionBus}; },
        utf8(CommandLineTexts::tr("Start for the session bus, which asks for what it wants then")));
    app.add_flag_callback(
        "--at-login", [&result] { result = StartRequest{StartedBy::login}; },
        utf8(CommandLineTexts::tr("Start with the session, as a service of systemd where that runs it")));
    addAgenda(app, result);
    addEvents(app, result);
    addDetect(app, result);
    addRemoteCommands(app, result);
    addDefaults(app, result);
    addAccess(app, result);
    addCalendars(app, result);
    translateHeadings(app);

    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp &) {
        const auto given = app.get_subcommands();
        return FinishedRequest{given.empty() ? app.help() : given.front()->help("mivora"), exitDone};
    } catch (const CLI::CallForVersion &version) {
        return FinishedRequest{std::string(version.what()) + '\n', exitDone};
    } catch (const CLI::ParseError &error) {
        return FinishedRequest{
            utf8(CommandLineTexts::tr("%1 (mivora --help lists the arguments)").arg(problem(app, error))),
            exitBadArguments};
    }
    return result;
}

} // namespace mivora
