#include "CalendarEds/plugin/EdsSubscriptions.h"

#include "CalendarEds/plugin/EdsAccounts.h"

#include <algorithm>
#include <array>

namespace mivora {

namespace {

using namespace std::chrono_literals;
using enum SubscriptionFault;

constexpr auto fetchPatience = 40s;
constexpr auto sourcePatience = 5s;
constexpr auto timeToSettle = 500ms;
constexpr guint refreshMinutes = 15;

template<typename Extension> Extension *ownExtension(ESource *source, const char *name)
{
    return static_cast<Extension *>(static_cast<gpointer>(e_source_get_extension(source, name)));
}

ESourceSelectable *appearanceOf(ESource *source)
{
    return ownExtension<ESourceSelectable>(source, E_SOURCE_EXTENSION_CALENDAR);
}

std::unique_ptr<GUri, decltype(&g_uri_unref)> addressOf(ESource *source)
{
    return {e_source_webdav_dup_uri(ownExtension<ESourceWebdav>(source, E_SOURCE_EXTENSION_WEBDAV_BACKEND)),
            &g_uri_unref};
}

SubscribedCalendar describe(ESource *source)
{
    const gchar *host = g_uri_get_host(addressOf(source).get());
    return {.id = e_source_get_uid(source),
            .name = takeText(e_source_dup_display_name(source)),
            .host = host ? host : "",
            .color = takeText(e_source_selectable_dup_color(appearanceOf(source)))};
}

} // namespace

SubscriptionAnswer EdsSubscriptions::perform(const SubscriptionRequest &request,
                                             const std::vector<std::string> &addresses)
{
    m_registry.reset(e_source_registry_new_sync(m_cancellable, nullptr));
    if (!m_registry)
        return {storeSilent};
    m_reader.settle(false);
    SubscriptionAnswer answer = answerTo(request, addresses);
    m_reader.settle(true);
    return answer;
}

SubscriptionAnswer EdsSubscriptions::answerTo(const SubscriptionRequest &request,
                                              const std::vector<std::string> &addresses)
{
    if (request.action == SubscriptionRequest::Action::add)
        return add(request.name, addresses);
    const std::vector<Source> sources = ownSources(request.id);
    if (request.action == SubscriptionRequest::Action::fetch && request.id.empty())
        return fetch(sources, false);
    if (sources.size() != 1)
        return {unknownCalendar};
    ESource *source = sources.front().get();
    switch (request.action) {
    case SubscriptionRequest::Action::rename:
        e_source_set_display_name(source, request.name.c_str());
        return done(e_source_write_sync(source, m_cancellable, nullptr));
    case SubscriptionRequest::Action::remove:
        return done(e_source_remove_sync(source, m_cancellable, nullptr));
    default:
        return fetch(sources, false);
    }
}

SubscriptionAnswer EdsSubscriptions::done(bool isDone) const
{
    return {isDone ? none : storeSilent};
}

SubscriptionAnswer EdsSubscriptions::fetch(const std::vector<Source> &sources, bool isNew)
{
    DesktopAccounts accounts{.calendars = {}, .mailAddresses = mailAddresses(m_registry.get())};
    accounts.calendars.reserve(sources.size());
    for (const Source &source : sources)
        accounts.calendars.push_back(describeCalendar(m_registry.get(), source.get(), {}));
    m_reader.setAccounts(std::move(accounts));
    std::size_t missing = sources.size();
    std::vector<std::unique_ptr<EdsFetch>> fetches;
    fetches.reserve(sources.size());
    for (const Source &source : sources)
        fetches.push_back(std::make_unique<EdsFetch>(m_registry.get(), source.get(), isNew, m_interval,
                                                     m_reader, [&missing] { --missing; }));
    wait([&missing] { return missing == 0; }, fetchPatience);
    SubscriptionAnswer answer;
    for (std::size_t i = 0; i < sources.size(); ++i) {
        answer.calendars.push_back(describe(sources[i].get()));
        answer.calendars.back().fault = fetches[i]->fault();
    }
    return answer;
}

SubscriptionAnswer EdsSubscriptions::add(const std::string &name, const std::vector<std::string> &addresses)
{
    SubscriptionAnswer answer{noAddress};
    for (const std::string &address : addresses) {
        std::vector<Source> sources;
        sources.push_back(makeSource(name, address));
        if (!sources.front())
            return {storeSilent};
        answer = fetch(sources, true);
        answer.fault = answer.calendars.front().fault;
        if (answer.fault == unfinished)
            answer.fault = none;
        if (answer.fault == none && !g_cancellable_is_cancelled(m_cancellable))
            break;
        // The server (3.46, 3.56) may still look for credentials, and dies when what they are for goes.
        wait([] { return false; }, timeToSettle);
        // Also when nobody waits any more: what can't be fetched isn't left behind.
        e_source_remove_sync(sources.front().get(), nullptr, nullptr);
        if (answer.fault != unreachable)
            break;
    }
    return answer;
}

/// A source for the calendar at `address`, as the server has taken it in; null when it hasn't.
EdsSubscriptions::Source EdsSubscriptions::makeSource(const std::string &name,
                                                      const std::string &address) const
{
    // The escapes of an address are part of the secret.
    const std::unique_ptr<GUri, decltype(&g_uri_unref)> uri(
        g_uri_parse(address.c_str(), G_URI_FLAGS_ENCODED, nullptr), &g_uri_unref);
    const std::string id = std::string(subscriptionPrefix) + takeText(g_uuid_string_random());
    const Source source(e_source_new_with_uid(id.c_str(), nullptr, nullptr));
    e_source_set_parent(source.get(), "webcal-stub");
    e_source_set_display_name(source.get(), name.empty() ? g_uri_get_host(uri.get()) : name.c_str());
    ESourceSelectable *appearance = appearanceOf(source.get());
    e_source_backend_set_backend_name(E_SOURCE_BACKEND(appearance), "webcal");
    e_source_selectable_set_color(appearance, nextColor().c_str());
    e_source_webdav_set_uri(ownExtension<ESourceWebdav>(source.get(), E_SOURCE_EXTENSION_WEBDAV_BACKEND),
                            uri.get());
    e_source_refresh_set_interval_minutes(
        ownExtension<ESourceRefresh>(source.get(), E_SOURCE_EXTENSION_REFRESH), refreshMinutes);
    if (!e_source_registry_commit_source_sync(m_registry.get(), source.get(), m_cancellable, nullptr))
        return nullptr;
    Source taken;
    const auto isTaken = [&] {
        taken.reset(e_source_registry_ref_source(m_registry.get(), id.c_str()));
        return bool(taken);
    };
    wait(isTaken, sourcePatience);
    return taken;
}

/// Another one for each calendar, until they begin anew.
std::string EdsSubscriptions::nextColor() const
{
    static constexpr std::array colors{"#3584e4", "#2ec27e", "#e66100", "#9141ac",
                                       "#c64600", "#1a8fa3", "#c061cb", "#865e3c"};
    return colors[ownSources({}).size() % colors.size()];
}

/// The subscription `id`, or all of them when that is empty.
std::vector<EdsSubscriptions::Source> EdsSubscriptions::ownSources(const std::string &id) const
{
    std::vector<Source> sources;
    GList *calendars = e_source_registry_list_sources(m_registry.get(), E_SOURCE_EXTENSION_CALENDAR);
    for (GList *at = calendars; at; at = at->next) {
        Source source(static_cast<ESource *>(at->data));
        const std::string_view uid = e_source_get_uid(source.get());
        if (uid.starts_with(subscriptionPrefix) && (id.empty() || uid == id) &&
            e_source_has_extension(source.get(), E_SOURCE_EXTENSION_WEBDAV_BACKEND))
            sources.push_back(std::move(source));
    }
    g_list_free(calendars);
    return sources;
}

/// Runs what comes in until `isOver`, the time is, or all of it is cancelled.
void EdsSubscriptions::wait(const std::function<bool()> &isOver, std::chrono::milliseconds longest) const
{
    bool isLate = false;
    const GlibSource timer = runLater([&isLate] { isLate = true; }, longest);
    while (!isOver() && !isLate && !g_cancellable_is_cancelled(m_cancellable))
        g_main_context_iteration(g_main_context_get_thread_default(), TRUE);
}

} // namespace mivora
