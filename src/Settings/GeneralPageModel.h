#pragma once

#include "KeloHotkeyRecorder/HotKeyRecorder.h"
#include "Settings/SettingsActions.h"

#include <QObject>
#include <QStringList>

namespace mivora {

class Preferences;

/// The state of the General page. Reads and writes the preferences directly, and follows them.
class GeneralPageModel final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool showTitle READ showTitle WRITE setShowTitle NOTIFY showTitleChanged)
    Q_PROPERTY(int titleWidth READ titleWidth WRITE setTitleWidth NOTIFY titleWidthChanged)
    Q_PROPERTY(QString titleWidthText READ titleWidthText NOTIFY titleWidthChanged)
    Q_PROPERTY(int minTitleWidth READ minTitleWidth CONSTANT)
    Q_PROPERTY(int maxTitleWidth READ maxTitleWidth CONSTANT)
    Q_PROPERTY(bool launchAtLogin READ launchAtLogin WRITE setLaunchAtLogin NOTIFY launchAtLoginChanged)
    Q_PROPERTY(QStringList leadMinutesTexts READ leadMinutesTexts CONSTANT)
    Q_PROPERTY(int leadMinutesIndex READ leadMinutesIndex WRITE setLeadMinutesIndex NOTIFY leadMinutesChanged)
    Q_PROPERTY(QString leadMinutesText READ leadMinutesText NOTIFY leadMinutesChanged)
    Q_PROPERTY(QStringList panelCornerTexts READ panelCornerTexts CONSTANT)
    Q_PROPERTY(int panelCornerIndex READ panelCornerIndex WRITE setPanelCornerIndex NOTIFY panelCornerChanged)
    Q_PROPERTY(bool remindWithoutLink READ remindWithoutLink WRITE setRemindWithoutLink NOTIFY
                   remindWithoutLinkChanged)
    Q_PROPERTY(bool useHotKey READ useHotKey WRITE setUseHotKey NOTIFY useHotKeyChanged)
    Q_PROPERTY(QObject *recorder READ recorder CONSTANT)

public:
    /// What the shortcut is at first: ⇧⌘J.
    static constexpr kelo::HotKeyCombo defaultCombo{38, kelo::commandKey | kelo::shiftKey};

    /// The preferences outlive the model.
    GeneralPageModel(Preferences &prefs, kelo::HotKeyService &service, std::function<void()> refresh,
                     QObject *parent = nullptr);

    bool showTitle() const;
    void setShowTitle(bool show);

    int titleWidth() const;
    void setTitleWidth(int characters);
    QString titleWidthText() const;
    int minTitleWidth() const;
    int maxTitleWidth() const;

    bool launchAtLogin() const;
    void setLaunchAtLogin(bool launch);

    QStringList leadMinutesTexts() const;
    /// -1 when the stored number is none of the choices.
    int leadMinutesIndex() const;
    void setLeadMinutesIndex(int index);
    QString leadMinutesText() const;

    QStringList panelCornerTexts() const;
    int panelCornerIndex() const;
    void setPanelCornerIndex(int index);

    bool remindWithoutLink() const;
    void setRemindWithoutLink(bool remind);

    /// Whether there is a shortcut. Without one the recorder keeps its combination for the next time.
    bool useHotKey() const { return m_useHotKey; }

    void setUseHotKey(bool use);

    kelo::HotKeyRecorder *recorder() { return &m_recorder; }

Q_SIGNALS:
    void showTitleChanged();
    void titleWidthChanged();
    void launchAtLoginChanged();
    void leadMinutesChanged();
    void panelCornerChanged();
    void remindWithoutLinkChanged();
    void useHotKeyChanged();

private:
    void followPreferences();
    void followHotKey();
    void refresh() const;

    Preferences &m_prefs;
    std::function<void()> m_refresh;
    bool m_useHotKey = false;
    kelo::HotKeyRecorder m_recorder;
};

} // namespace mivora
