#pragma once

#include <QDBusConnection>
#include <map>
#include <string>

namespace support {

/// Makes and changes calendars of Evolution Data Server as another program would, over the bus. Every
/// function waits for the server, and throws std::runtime_error when it refuses.
class EdsMaker final
{
public:
    /// What a change of a recurring event is meant for.
    enum class Which { all, thisOne };

    EdsMaker();
    ~EdsMaker();
    Q_DISABLE_COPY_MOVE(EdsMaker)

    /// A local calendar; returns its identifier.
    std::string addCalendar(const std::string &title);

    /// A calendar of \a address on a CalDAV server of this machine; with an empty \a user nobody signs in.
    std::string addCalDav(const std::string &title, int port, const std::string &path,
                          const std::string &address, const std::string &user = {});

    /// Gives the password that the server asked for, as the desktop does when the user typed it.
    void signIn(const std::string &calendar, const std::string &user, const std::string &password);

    /// Gives one of the entries that describe a calendar another value: "DisplayName", "Color", "Enabled".
    void edit(const std::string &calendar, const std::string &entry, const std::string &value);

    void removeCalendar(const std::string &calendar);

    /// \a event is a VEVENT.
    void create(const std::string &calendar, const std::string &event);
    void modify(const std::string &calendar, const std::string &event, Which which = Which::all);
    void remove(const std::string &calendar, const std::string &uid, const std::string &recurrenceID = {},
                Which which = Which::all);

    /// All events and time zones of a VCALENDAR, as an import does.
    void import(const std::string &calendar, const std::string &text);

    /// Has the server look at the net again.
    void refresh(const std::string &calendar);

private:
    /// An object of one of the server's processes.
    struct Object
    {
        QString service;
        QString path;
    };

    std::string addSource(const std::string &text);
    Object source(const std::string &calendar) const;
    const Object &opened(const std::string &calendar);
    QVariantList call(const Object &object, const char *interface, const char *method,
                      const QVariantList &arguments = {}) const;
    void callCalendar(const std::string &calendar, const char *method, const QVariantList &arguments);

    QDBusConnection m_bus;
    std::map<std::string, Object> m_opened;
};

} // namespace support
