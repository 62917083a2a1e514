#pragma once

#include "PlannedMeetings.h"

namespace mivora {

/// What a person with a watch, the planned meetings and a good memory would have on the screen.
class ExpectedPanel
{
public:
    /// The user's settings, kept in step with the application's by the test.
    int leadMinutes = 1;
    bool remindsWithoutLink = false;
    std::set<std::string> hiddenCalendars;

    /// Takes note of the time. \a zone is the user's.
    void look(const PlannedMeetings &planned, Timestamp now, const QTimeZone &zone);

    /// The meetings of the rest of the day, by their start.
    const std::vector<PlannedMeeting> &agenda() const { return m_agenda; }

    /// The title of the meeting whose panel is to be on the screen; empty for none.
    std::string title() const { return m_shown ? m_shown->uid : std::string(); }

    bool hasLink() const { return m_shown && m_shown->hasLink; }

    /// How often a panel came up where there was none.
    int showings() const { return m_showings; }

    /// The user wants to see the shown panel again a minute after \a now, or not at all.
    void snooze(Timestamp now) { m_quietUntil[shown()] = now + std::chrono::minutes(1); }

    void settle() { m_settled.insert(shown()); }

    /// The program has ended, with all that was decided.
    void forgetAll();

private:
    /// What the user decides is about a meeting at its time: moved, it is another one.
    using Occurrence = std::pair<std::string, Timestamp>;

    static Occurrence occurrence(const PlannedMeeting &meeting) { return {meeting.uid, meeting.start}; }

    Occurrence shown() const { return m_shown ? occurrence(*m_shown) : Occurrence(); }

    bool isAboutToStart(const PlannedMeeting &meeting, Timestamp now) const;

    std::vector<PlannedMeeting> m_agenda;
    std::optional<PlannedMeeting> m_shown;
    std::map<Occurrence, Timestamp> m_quietUntil;
    std::set<Occurrence> m_settled;
    int m_showings = 0;
};

} // namespace mivora
