#pragma once

#include "KeloHotkey/HotKeyRecorder.h"

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
    Q_PROPERTY(bool useHotKey READ useHotKey WRITE setUseHotKey NOTIFY useHotKeyChanged)
    Q_PROPERTY(QString hotKeyConflict READ hotKeyConflict NOTIFY useHotKeyChanged)
    Q_PROPERTY(QObject *recorder READ recorder CONSTANT)

public:
    /// What the shortcut is at first: ⇧⌘J.
    static constexpr kelo::HotKeyCombo defaultCombo{38, kelo::commandKey | kelo::shiftKey};

    /// The preferences outlive the model. `registerHotKey` may be empty: then every combination is free.
    GeneralPageModel(Preferences &prefs, kelo::HotKeyService &service,
                     std::function<bool(const kelo::HotKeyCombo &)> registerHotKey);

    /// To be called when the page is built: what was refused on it before is forgotten.
    Q_INVOKABLE void begin() { followHotKey(); }

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

    /// What to tell of a combination that the user chose and that is in use; empty when there is none. Until
    /// another is chosen, the one before stays in force.
    const QString &hotKeyConflict() const { return m_hotKeyConflict; }

    kelo::HotKeyRecorder *recorder() { return &m_recorder; }

Q_SIGNALS:
    void leadMinutesChanged();
    void panelCornerChanged();
    void useHotKeyChanged();

private:
    void followHotKey();
    void chooseHotKey(const kelo::HotKeyCombo &combo);
    void setHotKeyState(bool use, const QString &conflict = {});

    Preferences &m_prefs;
    std::function<bool(const kelo::HotKeyCombo &)> m_registerHotKey;
    bool m_useHotKey = false;
    QString m_hotKeyConflict;
    kelo::HotKeyRecorder m_recorder;
};

} // namespace mivora
