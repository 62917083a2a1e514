#include "CalendarEds/plugin/EdsAccounts.h"

#include "CalendarEds/plugin/Glib.h"

namespace mivora {

namespace {

using Texts = std::vector<std::string>;

template<typename Extension> Extension *extensionOf(ESource *source, const char *name)
{
    return e_source_has_extension(source, name)
               ? static_cast<Extension *>(static_cast<gpointer>(e_source_get_extension(source, name)))
               : nullptr;
}

GlibObject<ESource> parentOf(ESourceRegistry *registry, ESource *source)
{
    const std::string id = takeText(e_source_dup_parent(source));
    return GlibObject<ESource>(id.empty() ? nullptr : e_source_registry_ref_source(registry, id.c_str()));
}

void addFrom(ESource *source, Texts &addresses)
{
    if (auto *webdav = extensionOf<ESourceWebdav>(source, E_SOURCE_EXTENSION_WEBDAV_BACKEND))
        addresses.push_back(takeText(e_source_webdav_dup_email_address(webdav)));
    if (auto *local = extensionOf<ESourceLocal>(source, E_SOURCE_EXTENSION_LOCAL_BACKEND))
        addresses.push_back(takeText(e_source_local_dup_email_address(local)));
    if (auto *goa = extensionOf<ESourceGoa>(source, E_SOURCE_EXTENSION_GOA))
        addresses.push_back(takeText(e_source_goa_dup_address(goa)));
    if (auto *collection = extensionOf<ESourceCollection>(source, E_SOURCE_EXTENSION_COLLECTION))
        addresses.push_back(takeText(e_source_collection_dup_identity(collection)));
    if (auto *login = extensionOf<ESourceAuthentication>(source, E_SOURCE_EXTENSION_AUTHENTICATION))
        addresses.push_back(takeText(e_source_authentication_dup_user(login)));
}

void addIdentity(ESource *source, Texts &addresses)
{
    auto *identity = extensionOf<ESourceMailIdentity>(source, E_SOURCE_EXTENSION_MAIL_IDENTITY);
    if (!identity)
        return;
    addresses.push_back(takeText(e_source_mail_identity_dup_address(identity)));
    GHashTable *aliases = e_source_mail_identity_get_aliases_as_hash_table(identity);
    if (!aliases)
        return;
    GHashTableIter iterator;
    gpointer address = nullptr;
    g_hash_table_iter_init(&iterator, aliases);
    while (g_hash_table_iter_next(&iterator, &address, nullptr))
        addresses.push_back(static_cast<const gchar *>(address));
    g_hash_table_destroy(aliases);
}

/// Of all mail accounts, or of those that belong to `parent`.
void addIdentities(ESourceRegistry *registry, const char *parent, Texts &addresses)
{
    GList *sources = e_source_registry_list_enabled(registry, E_SOURCE_EXTENSION_MAIL_IDENTITY);
    for (GList *at = sources; at; at = at->next) {
        auto *source = static_cast<ESource *>(at->data);
        if (!parent || takeText(e_source_dup_parent(source)) == parent)
            addIdentity(source, addresses);
    }
    g_list_free_full(sources, g_object_unref);
}

Texts ownersOf(ESourceRegistry *registry, ESource *calendar, const std::string &address)
{
    Texts addresses{address};
    GlibObject<ESource> source = sharedObject(calendar);
    // An account's addresses stand with the account, or with its mail.
    for (int depth = 0; source && depth < 8; ++depth) {
        addFrom(source.get(), addresses);
        if (e_source_has_extension(source.get(), E_SOURCE_EXTENSION_COLLECTION))
            addIdentities(registry, e_source_get_uid(source.get()), addresses);
        source = parentOf(registry, source.get());
    }
    return addresses;
}

} // namespace

DesktopCalendar describeCalendar(ESourceRegistry *registry, ESource *source, const std::string &address)
{
    DesktopCalendar calendar;
    calendar.id = e_source_get_uid(source);
    calendar.title = takeText(e_source_dup_display_name(source));
    if (const auto parent = parentOf(registry, source))
        calendar.account = takeText(e_source_dup_display_name(parent.get()));
    if (auto *shown = extensionOf<ESourceSelectable>(source, E_SOURCE_EXTENSION_CALENDAR))
        calendar.color = takeText(e_source_selectable_dup_color(shown));
    calendar.ownerAddresses = ownersOf(registry, source, address);
    return calendar;
}

std::vector<std::string> mailAddresses(ESourceRegistry *registry)
{
    Texts addresses;
    addIdentities(registry, nullptr, addresses);
    return addresses;
}

} // namespace mivora
