#pragma once

#include <QLibrary>

// GIO uses "signals" as a name.
#undef signals
#include <gio/gio.h>

/// The function of GIO or GObject that is declared with this name; it must not be linked then. Null where
/// there is no GIO.
#define KELO_GIO(function) reinterpret_cast<decltype(&(function))>(mivora::gioFunction(#function))

namespace mivora {

/// A function of GIO's library, which is loaded when it is first asked for: it brings seven others, and many
/// days have no use for it.
inline QFunctionPointer gioFunction(const char *name)
{
    return QLibrary::resolve(QStringLiteral("gio-2.0"), 0, name);
}

} // namespace mivora
