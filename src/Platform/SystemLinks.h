#pragma once

namespace mivora {

/// Links into the system settings, as the program names them; the platform knows what they lead to.
inline constexpr const char *calendarPrivacyLink =
    "x-apple.systempreferences:com.apple.preference.security?Privacy_Calendars";
inline constexpr const char *internetAccountsLink =
    "x-apple.systempreferences:com.apple.Internet-Accounts-Settings.extension";

} // namespace mivora
