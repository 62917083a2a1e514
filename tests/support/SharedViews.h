#pragma once

#include "KeloTheme/Appearance.h"
#include "KeloTheme/ViewLoader.h"

namespace mivora {

/// The plug-in is there once in a process, and so is the look that it shows.
inline kelo::ViewLoader &sharedViews()
{
    static kelo::Appearance appearance{QDBusConnection(QStringLiteral("none"))};
    static kelo::ViewLoader views{appearance};
    return views;
}

/// Ends the views while there is an application.
struct Views final
{
    Views() = default;

    ~Views() { sharedViews().releaseUnused(); }
    Q_DISABLE_COPY_MOVE(Views)
};

} // namespace mivora
