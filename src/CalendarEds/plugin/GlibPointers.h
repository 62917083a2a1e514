#pragma once

#include <glib-object.h>
#include <memory>
#include <string>

/// Owners of what GLib counts and frees.
namespace mivora {

struct ObjectRelease
{
    void operator()(gpointer object) const { g_object_unref(object); }
};

/// Owns one reference.
template<typename Object> using GlibObject = std::unique_ptr<Object, ObjectRelease>;

/// One more reference to \a object.
template<typename Object> GlibObject<Object> sharedObject(Object *object)
{
    return GlibObject<Object>(static_cast<Object *>(g_object_ref(object)));
}

struct ErrorRelease
{
    void operator()(GError *error) const { g_error_free(error); }
};

using GlibError = std::unique_ptr<GError, ErrorRelease>;

/// Takes \a text, which may be null, and frees it.
inline std::string takeText(gchar *text)
{
    const std::unique_ptr<gchar, decltype(&g_free)> owner(text, &g_free);
    return text ? text : "";
}

inline std::string textOrEmpty(const gchar *text)
{
    return text ? text : "";
}

} // namespace mivora
