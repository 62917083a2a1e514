#pragma once

#include "KeloTheme/ViewWindow.h"
#include "Settings/CalendarsPageModel.h"
#include "Settings/GeneralPageModel.h"
#include "Settings/SettingsRouter.h"

#include <QObject>
#include <optional>

namespace mivora {

/// What the settings ask of the rest of the program.
struct SettingsActions
{
    /// Registers the combination in place of the one in force. False, and nothing changes, when it is in use.
    std::function<bool(const kelo::HotKeyCombo &)> registerHotKey;
    /// Puts the text on the clipboard.
    std::function<void(const QString &text)> copy;
    OwnCalendars ownCalendars{};
};

/// The settings window, and what its pages show. A window that stays closed for long gives its memory back;
/// the next one has its page and its place. Main thread only.
class SettingsWindowController final : public QObject
{
    Q_OBJECT

public:
    /// All references outlive the controller.
    SettingsWindowController(Preferences &prefs, EventSource &source, CalendarWays &ways,
                             kelo::HotKeyService &service, kelo::ViewLoader &views,
                             const SettingsActions &actions);

    /// Brings the window to the front, on the page that is given or else on the one shown last. False when
    /// the window can't be made.
    bool show(std::optional<SettingsPage> page = {});

    /// How it stands with the shortcut. To be called when the controller is made, and when that changes.
    void setHotKeyState(const kelo::HotKeyState &state) { m_general.setHotKeyState(state); }

    /// What to do about an icon that nothing shows; empty while something does.
    void setTrayHint(const QString &hint) { m_general.setProperty("trayHint", hint); }

    /// To be called when the source's calendars or its permission changed.
    void calendarsChanged();

    SettingsRouter &router() { return m_router; }

    /// Null while there is none.
    QWindow *window() const { return m_window.window(); }

private:
    SettingsRouter m_router;
    GeneralPageModel m_general;
    CalendarsPageModel m_calendars;
    kelo::ViewWindow m_window;
};

} // namespace mivora
