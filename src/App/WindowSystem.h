#pragma once

#include <QByteArray>
#include <QString>

namespace mivora {

/// Where the program's windows go, as QT_QPA_PLATFORM names it; empty when no display can be reached. X11
/// wherever it is to be had, in Wayland sessions as well: only there can a program place its windows.
QByteArray findWindowSystem();

/// What to tell the user when there is none.
QString missingDisplayText();

} // namespace mivora
