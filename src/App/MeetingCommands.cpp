#include "App/MeetingCommands.h"

#include "MeetingTexts/MeetingTexts.h"
#include "Preferences/Preferences.h"
#include "Scheduling/Scheduler.h"

#include <QPointer>

namespace mivora {

bool WorkspaceInstalledApps::isInstalled(Service service) const
{
    switch (service) {
    case Service::zoom:
        return m_workspace.hasHandler(QStringLiteral("zoommtg"));
    case Service::teams:
        return m_workspace.hasHandler(QStringLiteral("msteams"));
    case Service::facetime:
        // The app's link is the web link itself: whatever opens it is right.
        return true;
    case Service::meet:
    case Service::webex:
    case Service::other:
        return false;
    }
    return false;
}

MeetingCommands::MeetingCommands(Scheduler &scheduler, const Preferences &prefs,
                                 const InstalledApps &installed, Workspace &workspace, Pasteboard &pasteboard)
    : m_scheduler(scheduler), m_prefs(prefs), m_installed(installed), m_workspace(workspace),
      m_pasteboard(pasteboard)
{
}

void MeetingCommands::join(const Meeting &meeting)
{
    if (!meeting.joinLink)
        return;
    // Copies: the meeting may belong to the scheduler, whose lists the refresh replaces.
    const JoinLink link = *meeting.joinLink;
    const std::string id = meeting.id;
    const Url url = linkToOpen(link, m_prefs.browserServices(), m_installed);

    // Before opening: the panel goes away at once and stays away, whatever becomes of the link.
    m_scheduler.markJoined(id);
    m_workspace.open(QString::fromStdString(url.text()), [self = QPointer(this), link](bool opened) {
        if (!opened && self)
            self->fallBackToClipboard(link);
    });
}

bool MeetingCommands::joinNext()
{
    const auto meeting = joinableMeeting();
    if (meeting)
        join(*meeting);
    return meeting && meeting->joinLink;
}

bool MeetingCommands::copyNext()
{
    const auto meeting = joinableMeeting();
    if (!meeting || !meeting->joinLink)
        return false;
    m_pasteboard.setText(QString::fromStdString(meeting->joinLink->webURL.text()));
    return true;
}

std::optional<Meeting> MeetingCommands::joinableMeeting() const
{
    if (m_scheduler.panelRequest())
        return m_scheduler.panelRequest();
    for (const Meeting &meeting : m_scheduler.todaysMeetings()) {
        if (meeting.joinLink)
            return meeting;
    }
    return std::nullopt;
}

void MeetingCommands::fallBackToClipboard(const JoinLink &link)
{
    m_pasteboard.setText(QString::fromStdString(link.webURL.text()));
    Q_EMIT linkCopied(tr("Couldn't open %1. Link copied.").arg(serviceName(link.service)));
}

} // namespace mivora
