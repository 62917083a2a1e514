#pragma once

#include "Meetings/Meeting.h"
#include "Platform/Pasteboard.h"
#include "Platform/Workspace.h"

#include <QObject>
#include <functional>
#include <optional>

namespace mivora {

class Preferences;
class Scheduler;

/// Asks the desktop which meeting apps are installed, anew at every question.
class WorkspaceInstalledApps final : public InstalledApps
{
public:
    /// `workspace` must outlive this.
    explicit WorkspaceInstalledApps(const Workspace &workspace) : m_workspace(workspace) {}

    bool isInstalled(Service service) const override;

private:
    const Workspace &m_workspace;
};

/// What the user can do with a meeting. Main thread only; everything given must outlive it.
class MeetingCommands final : public QObject
{
    Q_OBJECT

public:
    MeetingCommands(Scheduler &scheduler, const Preferences &prefs, const InstalledApps &installed,
                    Workspace &workspace, Pasteboard &pasteboard);

    /// Opens the meeting's link and remembers that it was joined, also when opening fails then. Does nothing
    /// for a meeting without a link.
    void join(const Meeting &meeting);

    /// Joins joinableMeeting(); returns whether there was one.
    bool joinNext();

    /// Puts the web link of joinableMeeting() on the clipboard; returns whether there was one.
    bool copyNext();

    /// The meeting that has the panel, or else the first of today's that has a link.
    std::optional<Meeting> joinableMeeting() const;

Q_SIGNALS:
    /// A link could not be opened and was copied: the text to show for a moment.
    void linkCopied(const QString &message);

private:
    void fallBackToClipboard(const JoinLink &link);

    Scheduler &m_scheduler;
    const Preferences &m_prefs;
    const InstalledApps &m_installed;
    Workspace &m_workspace;
    Pasteboard &m_pasteboard;
};

} // namespace mivora
