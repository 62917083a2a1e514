#include "CalendarEds/EdsMaker.h"

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

} // namespace

EdsMaker::EdsMaker()
{
    Check check;
    m_registry = e_source_registry_new_sync(nullptr, check);
    check.orThrow("registry");
}

EdsMaker::~EdsMaker()
{
    for (const auto &[id, client] : m_clients)
        g_object_unref(client);
    g_object_unref(m_registry);
}

std::string EdsMaker::commit(ESource *source)
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

std::string EdsMaker::addCalendar(const std::string &title, const std::string &color)
{
    ESource *source = newSource(title, "local-stub");
    e_source_selectable_set_color(shownPart(source, "local"), color.c_str());
    return commit(source);
}

std::string EdsMaker::addAccount(const std::string &title, const std::string &address)
{
    ESource *account = newSource(title, nullptr);
    auto *collection =
        static_cast<ESourceCollection *>(e_source_get_extension(account, E_SOURCE_EXTENSION_COLLECTION));
    e_source_backend_set_backend_name(E_SOURCE_BACKEND(collection), "none");
    e_source_collection_set_identity(collection, address.c_str());
    const std::string id = commit(account);
    ESource *calendar = newSource("Calendar of " + title, id.c_str());
    shownPart(calendar, "local");
    return commit(calendar);
}

std::string EdsMaker::addCalDav(const std::string &title, int port, const std::string &path,
                                const std::string &address)
{
    ESource *source = newSource(title, "caldav-stub");
    shownPart(source, "caldav");
    auto *login = static_cast<ESourceAuthentication *>(
        e_source_get_extension(source, E_SOURCE_EXTENSION_AUTHENTICATION));
    e_source_authentication_set_host(login, "127.0.0.1");
    e_source_authentication_set_port(login, guint16(port));
    auto *webdav =
        static_cast<ESourceWebdav *>(e_source_get_extension(source, E_SOURCE_EXTENSION_WEBDAV_BACKEND));
    e_source_webdav_set_resource_path(webdav, path.c_str());
    e_source_webdav_set_email_address(webdav, address.c_str());
    e_source_security_set_method(
        static_cast<ESourceSecurity *>(e_source_get_extension(source, E_SOURCE_EXTENSION_SECURITY)), "none");
    return commit(source);
}

ESource *EdsMaker::source(const std::string &calendar) const
{
    ESource *source = e_source_registry_ref_source(m_registry, calendar.c_str());
    if (!source)
        throw std::runtime_error("no calendar " + calendar);
    return source;
}

void EdsMaker::rename(const std::string &calendar, const std::string &title)
{
    ESource *changed = source(calendar);
    e_source_set_display_name(changed, title.c_str());
    commit(changed);
}

void EdsMaker::recolor(const std::string &calendar, const std::string &color)
{
    ESource *changed = source(calendar);
    e_source_selectable_set_color(shownPart(changed, nullptr), color.c_str());
    commit(changed);
}

void EdsMaker::setEnabled(const std::string &calendar, bool enabled)
{
    ESource *changed = source(calendar);
    e_source_set_enabled(changed, enabled);
    commit(changed);
}

void EdsMaker::removeCalendar(const std::string &calendar)
{
    ESource *removed = source(calendar);
    Check check;
    e_source_remove_sync(removed, nullptr, check);
    g_object_unref(removed);
    check.orThrow("remove");
}

ECalClient *EdsMaker::client(const std::string &calendar)
{
    ECalClient *&known = m_clients[calendar];
    if (known)
        return known;
    ESource *opened = source(calendar);
    Check check;
    EClient *client = e_cal_client_connect_sync(opened, E_CAL_CLIENT_SOURCE_TYPE_EVENTS, 10, nullptr, check);
    g_object_unref(opened);
    check.orThrow("connect");
    return known = E_CAL_CLIENT(client);
}

void EdsMaker::create(const std::string &calendar, const std::string &event)
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

void EdsMaker::modify(const std::string &calendar, const std::string &event, ECalObjModType which)
{
    ICalComponent *component = parsed(event);
    Check check;
    e_cal_client_modify_object_sync(client(calendar), component, which, E_CAL_OPERATION_FLAG_NONE, nullptr,
                                    check);
    g_object_unref(component);
    check.orThrow("modify");
}

void EdsMaker::remove(const std::string &calendar, const std::string &uid, const std::string &recurrenceID,
                      ECalObjModType which)
{
    Check check;
    e_cal_client_remove_object_sync(client(calendar), uid.c_str(),
                                    recurrenceID.empty() ? nullptr : recurrenceID.c_str(), which,
                                    E_CAL_OPERATION_FLAG_NONE, nullptr, check);
    check.orThrow("remove");
}

void EdsMaker::import(const std::string &calendar, const std::string &text)
{
    ICalComponent *component = parsed(text);
    i_cal_component_set_method(component, I_CAL_METHOD_PUBLISH);
    Check check;
    e_cal_client_receive_objects_sync(client(calendar), component, E_CAL_OPERATION_FLAG_NONE, nullptr, check);
    g_object_unref(component);
    check.orThrow("import");
}

void EdsMaker::refresh(const std::string &calendar)
{
    Check check;
    e_client_refresh_sync(E_CLIENT(client(calendar)), nullptr, check);
    check.orThrow("refresh");
}

} // namespace support
