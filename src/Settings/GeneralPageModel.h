#pragma once

#include "KeloHotkey/CompositorBinding.h"
#include "KeloHotkey/HotKeyRecorder.h"
#include "KeloHotkey/HotKeyState.h"

#include <QObject>
#include <QStringList>
#include <functional>

namespace mivora {

class Preferences;

/// The state of the General page. Reads and writes the preferences directly, and follows them.
class GeneralPageModel final : public QObject
{
    Q_OBJECT
    /// The settings that the page shows as they are.
    Q_PROPERTY(QObject *prefs READ prefs CONSTANT)
    Q_PROPERTY(int minTitleWidth READ minTitleWidth CONSTANT)
    Q_PROPERTY(int maxTitleWidth READ maxTitleWidth CONSTANT)
    Q_PROPERTY(QStringList leadMinutesTexts READ leadMinutesTexts CONSTANT)
    Q_PROPERTY(int leadMinutesIndex READ leadMinutesIndex WRITE setLeadMinutesIndex NOTIFY leadMinutesChanged)
    Q_PROPERTY(QString leadMinutesText READ leadMinutesText NOTIFY leadMinutesChanged)
    Q_PROPERTY(QStringList panelCornerTexts READ panelCornerTexts CONSTANT)
    Q_PROPERTY(int panelCornerIndex READ panelCornerIndex WRITE setPanelCornerIndex NOTIFY panelCornerChanged)
    Q_PROPERTY(bool useHotKey READ useHotKey WRITE setUseHotKey NOTIFY hotKeyChanged)
    Q_PROPERTY(QString hotKeyText READ hotKeyText NOTIFY hotKeyChanged)
    Q_PROPERTY(bool doesHotKeyFail READ doesHotKeyFail NOTIFY hotKeyChanged)
    Q_PROPERTY(QString hotKeyConflict READ hotKeyConflict NOTIFY hotKeyChanged)
    Q_PROPERTY(QStringList desktopKeys READ desktopKeys NOTIFY hotKeyChanged)
    Q_PROPERTY(bool canConfigureHotKey READ canConfigureHotKey NOTIFY hotKeyChanged)
    Q_PROPERTY(QString binding READ binding NOTIFY hotKeyChanged)
    /// What to do about an icon that nothing shows; empty while something does.
    Q_PROPERTY(QString trayHint MEMBER trayHint NOTIFY trayHintChanged)
    Q_PROPERTY(QObject *recorder READ recorder CONSTANT)

public:
    /// What the shortcut is at first: ⇧⌘J.
    static constexpr kelo::HotKeyCombo defaultCombo{38, kelo::commandKey | kelo::shiftKey};

    /// The preferences outlive the model. `registerHotKey` may be empty: then every combination is free.
    GeneralPageModel(Preferences &prefs, kelo::HotKeyService &service,
                     std::function<bool(const kelo::HotKeyCombo &)> registerHotKey,
                     std::function<void(const QString &)> copy);

    /// To be called when the page is built: what was refused on it before is forgotten.
    Q_INVOKABLE void begin();

    QString trayHint;

    /// Asks for what is kept elsewhere, as it is now.
    void reload();

    QObject *prefs() const;

    int minTitleWidth() const;
    int maxTitleWidth() const;

    QStringList leadMinutesTexts() const;
    /// -1 when the stored number is none of the choices.
    int leadMinutesIndex() const;
    void setLeadMinutesIndex(int index);
    QString leadMinutesText() const;

    QStringList panelCornerTexts() const;
    int panelCornerIndex() const;
    void setPanelCornerIndex(int index);

    /// Whether the user wants a shortcut. Without one the recorder keeps its combination for the next time.
    bool useHotKey() const { return m_useHotKey; }

    void setUseHotKey(bool use);

    /// How it stands with the shortcut that is set.
    void setHotKeyState(const kelo::HotKeyState &state);

    /// That in words, and whether they tell of a shortcut that is wanted and doesn't work.
    QString hotKeyText() const;
    bool doesHotKeyFail() const;

    /// What to tell of a combination that the user chose and that is in use; empty when there is none. Until
    /// another is chosen, the one before stays in force.
    const QString &hotKeyConflict() const { return m_hotKeyConflict; }

    /// The keys that the desktop has set, whatever was recorded; empty where the recorded ones count.
    QStringList desktopKeys() const;

    bool canConfigureHotKey() const { return m_state.isConfigurable; }

    /// Opens the desktop's own dialog for the keys.
    Q_INVOKABLE void configureHotKey();

    /// The line of the compositor's configuration that does what the shortcut would, where only that gives it
    /// keys; else empty. hotKeyText() tells where it goes.
    QString binding() const;

    Q_INVOKABLE void copyBinding() { m_copy(binding()); }

    kelo::HotKeyRecorder *recorder() { return &m_recorder; }

Q_SIGNALS:
    void trayHintChanged();
    void leadMinutesChanged();
    void panelCornerChanged();
    void hotKeyChanged();

private:
    void followHotKey();
    void chooseHotKey(const kelo::HotKeyCombo &combo);
    void showHotKey(bool use, const QString &conflict = {});
    kelo::CompositorBinding compositorBinding() const;

    Preferences &m_prefs;
    kelo::HotKeyService &m_service;
    std::function<bool(const kelo::HotKeyCombo &)> m_registerHotKey;
    std::function<void(const QString &)> m_copy;
    kelo::HotKeyState m_state;
    bool m_useHotKey = false;
    QString m_hotKeyConflict;
    kelo::HotKeyRecorder m_recorder;
};

} // namespace mivora
