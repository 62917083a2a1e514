#pragma once

#include "App/commands/CommandLine.h"

/// What the program does for each request of the command line. Every function returns the exit status.
namespace mivora {

class DefaultsStore;

/// Starts the application in the tray and runs it until it quits; where one runs already, brings up its
/// settings instead.
int runApplication(int &argc, char **argv, const StartRequest &request);

/// Starts the application at login: as the unit that systemd keeps for it, where it runs the session, or else
/// by itself. Does nothing where one runs already.
int startAtLogin(int argc, char **argv);

/// Performs every other request than a start, in the application object that there is.
int runCommand(const Request &request);

/// `mivora agenda`: prints the day, once or whenever it changes. `mivora events`: what happens to meetings.
int runAgenda(const AgendaRequest &request);

/// `mivora defaults`: shows and changes the settings in `store`.
int runDefaults(const DefaultsRequest &request, DefaultsStore &store);

/// `mivora calendars`: shows and changes what is subscribed to. Own addresses come from `defaults`.
int runCalendars(CalendarsRequest request, const DefaultsStore &defaults);

} // namespace mivora
