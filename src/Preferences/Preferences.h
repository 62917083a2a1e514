#pragma once

#include "KeloHotkey/HotKeyCombo.h"
#include "Meetings/Service.h"
#include "Preferences/PanelCorner.h"

#include <QObject>
#include <QStringList>
#include <array>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace mivora {

class DefaultsStore;
class LoginItem;

/// The user's settings. Every setter writes through to the store at once and announces a real change; a
/// change made by another process is read in and announced the same way. Main thread only.
class Preferences : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool showTitle READ showTitle WRITE setShowTitle NOTIFY showTitleChanged)
    Q_PROPERTY(int titleWidth READ titleWidth WRITE setTitleWidth NOTIFY titleWidthChanged)
    Q_PROPERTY(bool hideTitleWhileInhibited READ hideTitleWhileInhibited WRITE setHideTitleWhileInhibited
                   NOTIFY hideTitleWhileInhibitedChanged)
    Q_PROPERTY(bool remindWithoutLink READ remindWithoutLink WRITE setRemindWithoutLink NOTIFY
                   remindWithoutLinkChanged)
    Q_PROPERTY(QStringList ignoredTitles READ ignoredTitles WRITE setIgnoredTitles NOTIFY ignoredChanged)
    Q_PROPERTY(bool ignoreUnanswered READ ignoreUnanswered WRITE setIgnoreUnanswered NOTIFY ignoredChanged)
    Q_PROPERTY(
        bool ignoreWithoutOthers READ ignoreWithoutOthers WRITE setIgnoreWithoutOthers NOTIFY ignoredChanged)
    Q_PROPERTY(bool launchAtLogin READ launchAtLogin WRITE setLaunchAtLogin NOTIFY launchAtLoginChanged)

public:
    static constexpr int minTitleWidth = 8;
    static constexpr int maxTitleWidth = 60;
    static constexpr std::array leadMinuteChoices{0, 1, 2, 5};

    /// Reads all settings from `store`. `loginItem` is only asked and changed for the standard store.
    /// Both must outlive the preferences.
    Preferences(DefaultsStore &store, LoginItem &loginItem, QObject *parent = nullptr);

    /// Whether the next meeting's title stands beside the countdown.
    bool showTitle() const { return m_showTitle; }

    void setShowTitle(bool show);

    /// The greatest number of characters of that title: 8 to 60 when read; stored as given.
    int titleWidth() const { return m_titleWidth; }

    void setTitleWidth(int characters);

    /// Whether titles are hidden while the desktop holds notifications back.
    bool hideTitleWhileInhibited() const { return m_hideTitleWhileInhibited; }

    void setHideTitleWhileInhibited(bool hide);

    /// How many minutes before the start the panel is shown: 0, 1, 2 or 5.
    int leadMinutes() const { return m_leadMinutes; }

    void setLeadMinutes(int minutes);

    PanelCorner panelCorner() const { return m_panelCorner; }

    void setPanelCorner(PanelCorner corner);

    /// Whether meetings without a link get a panel too.
    bool remindWithoutLink() const { return m_remindWithoutLink; }

    void setRemindWithoutLink(bool remind);

    /// The global shortcut that joins the next meeting, if there is one.
    const std::optional<kelo::HotKeyCombo> &joinHotKey() const { return m_joinHotKey; }

    /// Announces joinHotKeyWasSet() even when `combo` is what was set before.
    void setJoinHotKey(const std::optional<kelo::HotKeyCombo> &combo);

    /// The calendars whose events are ignored.
    const std::set<std::string> &disabledCalendarIDs() const { return m_disabledCalendarIDs; }

    void setDisabledCalendarIDs(const std::set<std::string> &ids);

    /// What leftOutReason() goes by: patterns of titles, in which `*` stands for any characters and `?` for
    /// one...
    const QStringList &ignoredTitles() const { return m_ignoredTitles; }

    void setIgnoredTitles(const QStringList &patterns);

    /// ... whether invitations are left out that the user hasn't answered or only tentatively ...
    bool ignoreUnanswered() const { return m_ignoreUnanswered; }

    void setIgnoreUnanswered(bool ignore);

    /// ... and whether events in which nobody else takes part.
    bool ignoreWithoutOthers() const { return m_ignoreWithoutOthers; }

    void setIgnoreWithoutOthers(bool ignore);

    /// The services whose links open in the browser even where their app is installed.
    const std::set<Service> &browserServices() const { return m_browserServices; }

    void setBrowserServices(const std::set<Service> &services);

    bool hasCompletedOnboarding() const { return m_hasCompletedOnboarding; }

    void setHasCompletedOnboarding(bool completed);

    /// Mirrors the desktop's login item; not stored. Keeps the new value even when the change failed.
    bool launchAtLogin() const { return m_launchAtLogin; }

    void setLaunchAtLogin(bool launch);

    /// Takes in what the login item is now: the desktop's own settings can change it, and a change can fail.
    void readLaunchAtLogin();

Q_SIGNALS:
    void showTitleChanged();
    void titleWidthChanged();
    void hideTitleWhileInhibitedChanged();
    void leadMinutesChanged();
    void panelCornerChanged();
    void remindWithoutLinkChanged();
    void joinHotKeyChanged();
    void disabledCalendarIDsChanged();
    /// One of the three is another.
    void ignoredChanged();
    void browserServicesChanged();
    void hasCompletedOnboardingChanged();
    void launchAtLoginChanged();
    void launchAtLoginFailed();
    /// "MivoraJoinHotKeyChanged": posted every time that the shortcut is set, equal or not.
    void joinHotKeyWasSet();

private:
    using Changed = void (Preferences::*)();

    void readStore();
    template<typename T> void assign(T &member, const T &value, Changed changed);

    DefaultsStore &m_store;
    LoginItem &m_loginItem;
    bool m_showTitle = true;
    int m_titleWidth = 24;
    bool m_hideTitleWhileInhibited = false;
    int m_leadMinutes = 1;
    PanelCorner m_panelCorner = PanelCorner::topRight;
    bool m_remindWithoutLink = false;
    std::optional<kelo::HotKeyCombo> m_joinHotKey;
    std::set<std::string> m_disabledCalendarIDs;
    QStringList m_ignoredTitles;
    bool m_ignoreUnanswered = false;
    bool m_ignoreWithoutOthers = false;
    std::set<Service> m_browserServices;
    bool m_hasCompletedOnboarding = false;
    bool m_launchAtLogin = false;
};

} // namespace mivora
