#pragma once

#include <QByteArrayList>

namespace mivora {

/// The interfaces that the session's Wayland compositor offers to this program, by their names; empty without
/// a compositor, or when it doesn't answer soon. Asked with the first call, in one round trip.
const QByteArrayList &waylandGlobals();

} // namespace mivora
