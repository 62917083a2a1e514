#pragma once

#include "Calendar/EventSource.h"
#include "Meetings/JoinLink.h"
#include "StatusBar/StatusMenu.h"
#include "StatusBar/StatusText.h"

#include <QJsonObject>
#include <QTimeZone>

namespace mivora {

class Preferences;
class Scheduler;

/// What the agenda is made from. Everything must outlive it.
struct AgendaContext
{
    const Scheduler &scheduler;
    const EventSource &source;
    const Preferences &prefs;
    const InstalledApps &installed;
    Timestamp now{};
    QTimeZone zone;
    /// The global shortcut that joins the next meeting, as it is shown; nothing when there is none.
    std::optional<QString> joinHotKey;
    bool canCheckForUpdates = false;
    /// Whether status item and panel keep titles to themselves.
    bool isDiscreet = false;
    /// Whether the meetings that the settings leave out are listed too.
    bool all = false;
};

/// {"service", "webURL", "nativeURL"}
QJsonObject joinLinkJson(const JoinLink &link);

/// A meeting as the agenda has it.
QJsonObject meetingJson(const Meeting &meeting, const AgendaContext &context);

/// What the status item's menu is made from in `context`.
MenuContents menuContents(const AgendaContext &context);

/// The public JSON form of the program's state; docs/agenda-json.md describes it.
QJsonObject agendaJson(const AgendaContext &context);

/// Whether two agendas differ in more than the time that they were made at.
bool showsChange(QJsonObject before, QJsonObject after);

} // namespace mivora
