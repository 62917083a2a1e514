#pragma once

#include <libecal/libecal.h>
#include <map>
#include <string>

namespace support {

/// Makes and changes calendars of Evolution Data Server as another program would, with its library. Every
/// function waits for the server, and throws std::runtime_error when it refuses.
class EdsMaker final
{
public:
    EdsMaker();
    ~EdsMaker();
    EdsMaker(const EdsMaker &) = delete;
    EdsMaker &operator=(const EdsMaker &) = delete;

    /// A local calendar; returns its identifier.
    std::string addCalendar(const std::string &title, const std::string &color = "#3584e4");
    /// An account, and a calendar in it.
    std::string addAccount(const std::string &title, const std::string &address);
    /// A calendar on a CalDAV server of this machine. Without a port there is nobody to answer.
    std::string addCalDav(const std::string &title, int port, const std::string &path,
                          const std::string &address);

    void rename(const std::string &calendar, const std::string &title);
    void recolor(const std::string &calendar, const std::string &color);
    void setEnabled(const std::string &calendar, bool enabled);
    void removeCalendar(const std::string &calendar);

    /// A VEVENT.
    void create(const std::string &calendar, const std::string &event);
    void modify(const std::string &calendar, const std::string &event,
                ECalObjModType which = E_CAL_OBJ_MOD_ALL);
    void remove(const std::string &calendar, const std::string &uid, const std::string &recurrenceID = {},
                ECalObjModType which = E_CAL_OBJ_MOD_ALL);
    /// All events and time zones of a VCALENDAR, as an import does.
    void import(const std::string &calendar, const std::string &text);

    /// Has the server look at the net again.
    void refresh(const std::string &calendar);

private:
    ESource *source(const std::string &calendar) const;
    std::string commit(ESource *source);
    void changeShown(const std::string &calendar, void (*change)(ESourceSelectable *shown, const char *value),
                     const std::string &value);
    ECalClient *client(const std::string &calendar);

    ESourceRegistry *m_registry = nullptr;
    std::map<std::string, ECalClient *> m_clients;
};

} // namespace support
