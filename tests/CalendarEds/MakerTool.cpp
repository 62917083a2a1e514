// Makes and changes calendars of Evolution Data Server as another program would: a process of its own,
// because the library shares its registry, and the thread that this belongs to, among all its users in a
// process. Reads one JSON array with a command and its arguments a line, and answers with an array of the
// result or an object with the error.

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <functional>
#include <iostream>
#include <libecal/libecal.h>
#include <map>
#include <stdexcept>

namespace support {

namespace {

/// An error argument that throws what it was given.
class Check
{
public:
    operator GError **() { return &m_error; }

    void orThrow(const char *what)
    {
        if (!m_error)
            return;
        const std::string message = std::string(what) + ": " + m_error->message;
        g_clear_error(&m_error);
        throw std::runtime_error(message);
    }

private:
    GError *m_error = nullptr;
};

ESourceSelectable *shownPart(ESource *source, const char *backend)
{
    auto *calendar =
        static_cast<ESourceBackend *>(e_source_get_extension(source, E_SOURCE_EXTENSION_CALENDAR));
    if (backend)
        e_source_backend_set_backend_name(calendar, backend);
    return E_SOURCE_SELECTABLE(calendar);
}

ESource *newSource(const std::string &title, const char *parent)
{
    ESource *source = e_source_new(nullptr, nullptr, nullptr);
    e_source_set_display_name(source, title.c_str());
    if (parent)
        e_source_set_parent(source, parent);
    return source;
}

ICalComponent *parsed(const std::string &text)
{
    ICalComponent *component = i_cal_component_new_from_string(text.c_str());
    if (!component)
        throw std::runtime_error("no iCalendar text: " + text);
    return component;
}

/// Makes and changes calendars of Evolution Data Server as another program would, with its library. Every
/// function waits for the server, and throws std::runtime_error when it refuses.
class CalendarMaker final
{
public:
    CalendarMaker()
    {
        Check check;
        m_registry = e_source_registry_new_sync(nullptr, check);
        check.orThrow("registry");
    }

    ~CalendarMaker()
    {
        for (const auto &[id, client] : m_clients)
            g_object_unref(client);
        g_object_unref(m_registry);
    }

    std::string commit(ESource *source)
    {
        Check check;
        e_source_registry_commit_source_sync(m_registry, source, nullptr, check);
        const std::string id = e_source_get_uid(source);
        g_object_unref(source);
        check.orThrow("commit");
        // The registry tells of it on its own connection.
        for (int waited = 0; waited < 500; ++waited) {
            if (ESource *known = e_source_registry_ref_source(m_registry, id.c_str())) {
                g_object_unref(known);
                return id;
            }
            g_main_context_iteration(nullptr, FALSE);
            g_usleep(10'000);
        }
        throw std::runtime_error("the registry doesn't know what it was given");
    }

    CalendarMaker(const CalendarMaker &) = delete;
    CalendarMaker &operator=(const CalendarMaker &) = delete;

    /// A local calendar; returns its identifier.
    std::string addCalendar(const std::string &title)
    {
        ESource *source = newSource(title, "local-stub");
        e_source_selectable_set_color(shownPart(source, "local"), "#3584e4");
        return commit(source);
    }

    std::string addCalDav(const std::string &title, int port, const std::string &path,
                          const std::string &address, const std::string &user)
    {
        ESource *source = newSource(title, "caldav-stub");
        shownPart(source, "caldav");
        auto *login = static_cast<ESourceAuthentication *>(
            e_source_get_extension(source, E_SOURCE_EXTENSION_AUTHENTICATION));
        e_source_authentication_set_host(login, "127.0.0.1");
        e_source_authentication_set_port(login, guint16(port));
        if (!user.empty())
            e_source_authentication_set_user(login, user.c_str());
        auto *webdav =
            static_cast<ESourceWebdav *>(e_source_get_extension(source, E_SOURCE_EXTENSION_WEBDAV_BACKEND));
        e_source_webdav_set_resource_path(webdav, path.c_str());
        e_source_webdav_set_email_address(webdav, address.c_str());
        e_source_security_set_method(
            static_cast<ESourceSecurity *>(e_source_get_extension(source, E_SOURCE_EXTENSION_SECURITY)),
            "none");
        return commit(source);
    }

    ESource *source(const std::string &calendar) const
    {
        ESource *source = e_source_registry_ref_source(m_registry, calendar.c_str());
        if (!source)
            throw std::runtime_error("no calendar " + calendar);
        return source;
    }

    void signIn(const std::string &calendar, const std::string &user, const std::string &password)
    {
        ENamedParameters *credentials = e_named_parameters_new();
        e_named_parameters_set(credentials, E_SOURCE_CREDENTIAL_USERNAME, user.c_str());
        e_named_parameters_set(credentials, E_SOURCE_CREDENTIAL_PASSWORD, password.c_str());
        ESource *account = source(calendar);
        Check check;
        e_source_invoke_authenticate_sync(account, credentials, nullptr, check);
        e_named_parameters_free(credentials);
        g_object_unref(account);
        check.orThrow("sign in");
    }

    void rename(const std::string &calendar, const std::string &title)
    {
        ESource *changed = source(calendar);
        e_source_set_display_name(changed, title.c_str());
        commit(changed);
    }

    void recolor(const std::string &calendar, const std::string &color)
    {
        ESource *changed = source(calendar);
        e_source_selectable_set_color(shownPart(changed, nullptr), color.c_str());
        commit(changed);
    }

    void setEnabled(const std::string &calendar, bool enabled)
    {
        ESource *changed = source(calendar);
        e_source_set_enabled(changed, enabled);
        commit(changed);
    }

    void removeCalendar(const std::string &calendar)
    {
        ESource *removed = source(calendar);
        Check check;
        e_source_remove_sync(removed, nullptr, check);
        g_object_unref(removed);
        check.orThrow("remove");
    }

    ECalClient *client(const std::string &calendar)
    {
        ECalClient *&known = m_clients[calendar];
        if (known)
            return known;
        ESource *opened = source(calendar);
        Check check;
        EClient *client =
            e_cal_client_connect_sync(opened, E_CAL_CLIENT_SOURCE_TYPE_EVENTS, G_MAXUINT32, nullptr, check);
        g_object_unref(opened);
        check.orThrow("connect");
        return known = E_CAL_CLIENT(client);
    }

    void create(const std::string &calendar, const std::string &event)
    {
        ICalComponent *component = parsed(event);
        Check check;
        gchar *uid = nullptr;
        e_cal_client_create_object_sync(client(calendar), component, E_CAL_OPERATION_FLAG_NONE, &uid, nullptr,
                                        check);
        g_free(uid);
        g_object_unref(component);
        check.orThrow("create");
    }

    void modify(const std::string &calendar, const std::string &event, ECalObjModType which)
    {
        ICalComponent *component = parsed(event);
        Check check;
        e_cal_client_modify_object_sync(client(calendar), component, which, E_CAL_OPERATION_FLAG_NONE,
                                        nullptr, check);
        g_object_unref(component);
        check.orThrow("modify");
    }

    void remove(const std::string &calendar, const std::string &uid, const std::string &recurrenceID,
                ECalObjModType which)
    {
        Check check;
        e_cal_client_remove_object_sync(client(calendar), uid.c_str(),
                                        recurrenceID.empty() ? nullptr : recurrenceID.c_str(), which,
                                        E_CAL_OPERATION_FLAG_NONE, nullptr, check);
        check.orThrow("remove");
    }

    /// All events and time zones of a VCALENDAR, as an import does.
    void import(const std::string &calendar, const std::string &text)
    {
        ICalComponent *component = parsed(text);
        i_cal_component_set_method(component, I_CAL_METHOD_PUBLISH);
        Check check;
        e_cal_client_receive_objects_sync(client(calendar), component, E_CAL_OPERATION_FLAG_NONE, nullptr,
                                          check);
        g_object_unref(component);
        check.orThrow("import");
    }

    void refresh(const std::string &calendar)
    {
        Check check;
        e_client_refresh_sync(E_CLIENT(client(calendar)), nullptr, check);
        check.orThrow("refresh");
    }

private:
    ESourceRegistry *m_registry = nullptr;
    std::map<std::string, ECalClient *> m_clients;
};

using Arguments = std::vector<std::string>;
using Command = std::function<std::string(CalendarMaker &, const Arguments &)>;

/// Wraps a command without result.
template<typename Function> Command done(Function function)
{
    return [function](CalendarMaker &maker, const Arguments &arguments) {
        function(maker, arguments);
        return std::string();
    };
}

ECalObjModType whichOf(const std::string &name)
{
    return name == "this" ? E_CAL_OBJ_MOD_THIS : E_CAL_OBJ_MOD_ALL;
}

const std::map<std::string, Command> commands = {
    {"addCalendar", [](auto &maker, auto &a) { return maker.addCalendar(a.at(0)); }},
    {"addCalDav",
     [](auto &maker, auto &a) {
         return maker.addCalDav(a.at(0), std::stoi(a.at(1)), a.at(2), a.at(3), a.at(4));
     }},
    {"signIn", done([](auto &maker, auto &a) { maker.signIn(a.at(0), a.at(1), a.at(2)); })},
    {"rename", done([](auto &maker, auto &a) { maker.rename(a.at(0), a.at(1)); })},
    {"recolor", done([](auto &maker, auto &a) { maker.recolor(a.at(0), a.at(1)); })},
    {"setEnabled", done([](auto &maker, auto &a) { maker.setEnabled(a.at(0), a.at(1) == "true"); })},
    {"removeCalendar", done([](auto &maker, auto &a) { maker.removeCalendar(a.at(0)); })},
    {"create", done([](auto &maker, auto &a) { maker.create(a.at(0), a.at(1)); })},
    {"modify", done([](auto &maker, auto &a) { maker.modify(a.at(0), a.at(1), whichOf(a.at(2))); })},
    {"remove", done([](auto &maker, auto &a) { maker.remove(a.at(0), a.at(1), a.at(2), whichOf(a.at(3))); })},
    {"import", done([](auto &maker, auto &a) { maker.import(a.at(0), a.at(1)); })},
    {"refresh", done([](auto &maker, auto &a) { maker.refresh(a.at(0)); })},
};

QJsonDocument answer(CalendarMaker &maker, const std::string &line)
{
    Arguments arguments;
    const QJsonArray words = QJsonDocument::fromJson(QByteArray::fromStdString(line)).array();
    for (const auto &word : words)
        arguments.push_back(word.toString().toStdString());
    const std::string name = arguments.at(0);
    arguments.erase(arguments.begin());
    return QJsonDocument(QJsonArray{QString::fromStdString(commands.at(name)(maker, arguments))});
}

} // namespace

} // namespace support

int main()
{
    try {
        support::CalendarMaker maker;
        for (std::string line; std::getline(std::cin, line);)
            std::cout << support::answer(maker, line).toJson(QJsonDocument::Compact).toStdString()
                      << std::endl;
    } catch (const std::exception &error) {
        const QJsonObject failure{{QStringLiteral("error"), QString::fromUtf8(error.what())}};
        std::cout << QJsonDocument(failure).toJson(QJsonDocument::Compact).toStdString() << std::endl;
        return 1;
    }
    return 0;
}
