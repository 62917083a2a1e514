#pragma once

#include "KeloSparkle/UpdateEngine.h"
#include "KeloSparkle/engine/Appcast.h"

#include <vector>

namespace kelo {

/// What is running, on what.
struct RunningProgram
{
    QString version;
    /// What minimum system versions are compared with.
    QString systemVersion;
};

/// The newest release of \a items for this system, if it is newer than what is running; a failure when that
/// one can't be trusted: no signature, an address that isn't https, no sensible length.
CheckOutcome chooseUpdate(const std::vector<AppcastItem> &items, const RunningProgram &running);

/// Whether \a url is an https address with a host and without a user.
bool isSecureAddress(const QUrl &url);

} // namespace kelo
