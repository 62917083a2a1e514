#pragma once

#include <QLatin1String>

namespace mivora {

class Preferences;
struct Meeting;

/// Why the settings leave `meeting` out: "title", "unanswered" or "withoutOthers"; empty when it counts. Main
/// thread only.
QLatin1String leftOutReason(const Meeting &meeting, const Preferences &prefs);

} // namespace mivora
