#pragma once

#include <QProcess>
#include <string>
#include <vector>

namespace support {

/// Makes and changes calendars of Evolution Data Server as another program would. Every function waits for
/// the server, and throws std::runtime_error when it refuses.
class EdsMaker final
{
public:
    /// What a change of a recurring event is meant for.
    enum class Which { all, thisOne };

    EdsMaker();
    ~EdsMaker();
    Q_DISABLE_COPY_MOVE(EdsMaker)

    /// A local calendar; returns its identifier.
    std::string addCalendar(const std::string &title) { return call({"addCalendar", title}); }

    /// A calendar of \a address on a CalDAV server of this machine; with an empty \a user nobody signs in.
    std::string addCalDav(const std::string &title, int port, const std::string &path,
                          const std::string &address, const std::string &user = {})
    {
        return call({"addCalDav", title, std::to_string(port), path, address, user});
    }

    /// Gives the password that the server asked for, as the desktop does when the user typed it.
    void signIn(const std::string &calendar, const std::string &user, const std::string &password)
    {
        call({"signIn", calendar, user, password});
    }

    void rename(const std::string &calendar, const std::string &title) { call({"rename", calendar, title}); }

    void recolor(const std::string &calendar, const std::string &color)
    {
        call({"recolor", calendar, color});
    }

    void setEnabled(const std::string &calendar, bool enabled)
    {
        call({"setEnabled", calendar, enabled ? "true" : "false"});
    }

    void removeCalendar(const std::string &calendar) { call({"removeCalendar", calendar}); }

    /// \a event is a VEVENT.
    void create(const std::string &calendar, const std::string &event) { call({"create", calendar, event}); }

    void modify(const std::string &calendar, const std::string &event, Which which = Which::all)
    {
        call({"modify", calendar, event, which == Which::thisOne ? "this" : "all"});
    }

    void remove(const std::string &calendar, const std::string &uid, const std::string &recurrenceID = {},
                Which which = Which::all)
    {
        call({"remove", calendar, uid, recurrenceID, which == Which::thisOne ? "this" : "all"});
    }

    /// All events and time zones of a VCALENDAR, as an import does.
    void import(const std::string &calendar, const std::string &text) { call({"import", calendar, text}); }

    /// Has the server look at the net again.
    void refresh(const std::string &calendar) { call({"refresh", calendar}); }

private:
    /// Has the tool do the first of \a words with the others as its arguments.
    std::string call(const std::vector<std::string> &words);

    QProcess m_tool;
};

} // namespace support
