#pragma once

#include <QLibrary>

namespace mivora {

/// A function of GIO's library, which is loaded when it is first asked for: it brings seven others, and many
/// days have no link to open. Null where there is none.
inline QFunctionPointer gioFunction(const char *name)
{
    return QLibrary::resolve(QStringLiteral("gio-2.0"), 0, name);
}

} // namespace mivora

/// The function of GIO or GObject that is declared with this name; it must not be linked then.
#define KELO_GIO(function) reinterpret_cast<decltype(&function)>(mivora::gioFunction(#function))
