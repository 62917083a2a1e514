#pragma once

#include <QString>
#include <functional>

namespace mivora {

/// Opens links with the program that the user's desktop has chosen for them.
class Workspace
{
public:
    using Opened = std::function<void(bool)>;

    virtual ~Workspace() = default;

    /// Hands `url` to its default handler and returns at once. `done` is called later on the main thread,
    /// once: true when a handler was started, false when there is none or it failed.
    virtual void open(const QString &url, Opened done) = 0;

    /// Whether any installed program opens links of `scheme` (without the colon). Nothing is cached.
    virtual bool hasHandler(const QString &scheme) const = 0;

    /// Whether there is anything on this desktop that a link into the system settings opens.
    virtual bool leadsSomewhere(const QString &link) const = 0;
};

/// Links into the system settings, as the program names them; the platform knows what they lead to.
inline constexpr const char *calendarPrivacyLink =
    "x-apple.systempreferences:com.apple.preference.security?Privacy_Calendars";
inline constexpr const char *internetAccountsLink =
    "x-apple.systempreferences:com.apple.Internet-Accounts-Settings.extension";
/// The program that keeps the desktop's calendars and their accounts.
inline constexpr const char *calendarProgramLink = "x-apple.systempreferences:calendar-program";

} // namespace mivora
