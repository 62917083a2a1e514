#include "Settings/GeneralPageModel.h"

#include "KeloHotkey/HotKeyService.h"
#include "Preferences/Preferences.h"

#include <QCoreApplication>
#include <algorithm>

namespace mivora {

namespace {

/// The context of the texts for translators: that of the page's view.
struct GeneralPage
{
    Q_DECLARE_TR_FUNCTIONS(GeneralPage)
};

QString textOfLead(int minutes)
{
    if (minutes == 0)
        return GeneralPage::tr("When it starts");
    return GeneralPage::tr("%n minute(s) before", nullptr, minutes);
}

QString textOfCorner(PanelCorner corner)
{
    switch (corner) {
    case PanelCorner::topRight:
        return GeneralPage::tr("Top right");
    case PanelCorner::topLeft:
        return GeneralPage::tr("Top left");
    case PanelCorner::bottomRight:
        return GeneralPage::tr("Bottom right");
    case PanelCorner::bottomLeft:
        return GeneralPage::tr("Bottom left");
    }
    return {};
}

template<typename List, typename Value> int indexIn(const List &choices, const Value &value)
{
    const auto found = std::find(choices.begin(), choices.end(), value);
    return found == choices.end() ? -1 : int(found - choices.begin());
}

template<typename List, typename Value> QStringList texts(const List &choices, QString (*text)(Value))
{
    QStringList list;
    std::transform(choices.begin(), choices.end(), std::back_inserter(list), text);
    return list;
}

} // namespace

GeneralPageModel::GeneralPageModel(Preferences &prefs, kelo::HotKeyService &service,
                                   std::function<bool(const kelo::HotKeyCombo &)> registerHotKey,
                                   std::function<void(const QString &)> copy)
    : m_prefs(prefs), m_service(service), m_registerHotKey(std::move(registerHotKey)),
      m_copy(std::move(copy)), m_useHotKey(prefs.joinHotKey()),
      m_recorder(service, prefs.joinHotKey().value_or(defaultCombo), defaultCombo)
{
    connect(&m_prefs, &Preferences::leadMinutesChanged, this, &GeneralPageModel::leadMinutesChanged);
    connect(&m_prefs, &Preferences::panelCornerChanged, this, &GeneralPageModel::panelCornerChanged);
    connect(&m_prefs, &Preferences::joinHotKeyChanged, this, &GeneralPageModel::followHotKey);
    // Later: the setting itself keeps the new value.
    connect(&m_prefs, &Preferences::launchAtLoginFailed, this, &GeneralPageModel::reload,
            Qt::QueuedConnection);
    connect(&m_recorder, &kelo::HotKeyRecorder::comboChosen, this, &GeneralPageModel::chooseHotKey);
    connect(&m_recorder, &kelo::HotKeyRecorder::keyCapsChanged, this, &GeneralPageModel::hotKeyChanged);
}

void GeneralPageModel::begin()
{
    // Who opens the page may be looking for what is wrong.
    m_service.retry();
    followHotKey();
    reload();
}

void GeneralPageModel::reload()
{
    m_prefs.readLaunchAtLogin();
}

void GeneralPageModel::followHotKey()
{
    const auto combo = m_prefs.joinHotKey();
    if (combo)
        m_recorder.setCombo(*combo);
    showHotKey(combo.has_value());
}

void GeneralPageModel::showHotKey(bool use, const QString &conflict)
{
    if (use == m_useHotKey && conflict == m_hotKeyConflict)
        return;
    m_useHotKey = use;
    m_hotKeyConflict = conflict;
    Q_EMIT hotKeyChanged();
}

QObject *GeneralPageModel::prefs() const
{
    return &m_prefs;
}

int GeneralPageModel::minTitleWidth() const
{
    return Preferences::minTitleWidth;
}

int GeneralPageModel::maxTitleWidth() const
{
    return Preferences::maxTitleWidth;
}

QStringList GeneralPageModel::leadMinutesTexts() const
{
    return texts(Preferences::leadMinuteChoices, textOfLead);
}

int GeneralPageModel::leadMinutesIndex() const
{
    return indexIn(Preferences::leadMinuteChoices, m_prefs.leadMinutes());
}

void GeneralPageModel::setLeadMinutesIndex(int index)
{
    m_prefs.setLeadMinutes(Preferences::leadMinuteChoices.at(std::size_t(index)));
}

QString GeneralPageModel::leadMinutesText() const
{
    return textOfLead(m_prefs.leadMinutes());
}

QStringList GeneralPageModel::panelCornerTexts() const
{
    return texts(allPanelCorners, textOfCorner);
}

int GeneralPageModel::panelCornerIndex() const
{
    return indexIn(allPanelCorners, m_prefs.panelCorner());
}

void GeneralPageModel::setPanelCornerIndex(int index)
{
    m_prefs.setPanelCorner(allPanelCorners.at(std::size_t(index)));
}

void GeneralPageModel::setUseHotKey(bool use)
{
    if (use == m_useHotKey)
        return;
    showHotKey(use);
    if (use)
        chooseHotKey(m_recorder.combo());
    else
        m_prefs.setJoinHotKey(std::nullopt);
}

void GeneralPageModel::chooseHotKey(const kelo::HotKeyCombo &combo)
{
    if (m_registerHotKey && !m_registerHotKey(combo)) {
        const auto &inForce = m_prefs.joinHotKey();
        m_recorder.setCombo(inForce.value_or(combo));
        showHotKey(true,
                   GeneralPage::tr("%1 is already in use. Choose a different shortcut.").arg(combo.text()));
        return;
    }
    showHotKey(true);
    m_prefs.setJoinHotKey(combo);
}

void GeneralPageModel::setHotKeyState(const kelo::HotKeyState &state)
{
    m_state = state;
    Q_EMIT hotKeyChanged();
}

QString GeneralPageModel::hotKeyText() const
{
    using enum kelo::HotKeyState::Kind;
    if (!binding().isEmpty()) {
        const QString file = compositorBinding().file;
        if (file.isEmpty())
            return GeneralPage::tr("Bind this command to a key in the settings of your desktop:");
        return GeneralPage::tr("Add this line to %1:").arg(file);
    }
    switch (m_state.kind) {
    case off:
    case impossible:
        break;
    case registered:
        if (!m_state.keys.isEmpty())
            break;
        return GeneralPage::tr("Your desktop has set no keys for it. Choose them in its settings.");
    case waiting:
        return GeneralPage::tr("Waiting for your desktop, which may be asking you.");
    case cancelled:
        return GeneralPage::tr("You declined it. Switch it on to be asked again.");
    case refused:
        return GeneralPage::tr("Your desktop refused it. Switch it off and on to try again.");
    case ended:
        return GeneralPage::tr("Your desktop has ended it. Switch it off and on to try again.");
    case taken:
        // The recorder tells of what it has just been given.
        if (!m_hotKeyConflict.isEmpty())
            break;
        return GeneralPage::tr("%1 is already in use. Choose a different shortcut.").arg(m_state.keys);
    }
    return GeneralPage::tr("Works from any app.");
}

bool GeneralPageModel::doesHotKeyFail() const
{
    using enum kelo::HotKeyState::Kind;
    return m_state.kind == refused || m_state.kind == ended ||
           (m_state.kind == taken && m_hotKeyConflict.isEmpty()) ||
           (m_state.kind == registered && m_state.keys.isEmpty());
}

QStringList GeneralPageModel::desktopKeys() const
{
    if (!m_state.areKeysOfDesktop || m_state.keys.isEmpty())
        return {};
    // Other texts than keys joined by plus signs are shown as they are.
    const QStringList parts = m_state.keys.split(QLatin1Char('+'));
    const bool isWords = parts.contains(QString()) || m_state.keys.contains(QLatin1String(", "));
    return isWords ? QStringList(m_state.keys) : parts;
}

void GeneralPageModel::configureHotKey()
{
    m_service.configure();
}

kelo::CompositorBinding GeneralPageModel::compositorBinding() const
{
    return kelo::compositorBinding(m_recorder.combo(), QStringLiteral("mivora join"));
}

QString GeneralPageModel::binding() const
{
    using enum kelo::HotKeyState::Kind;
    const auto possible = compositorBinding();
    const bool hasNoKeys = m_state.kind == registered && m_state.keys.isEmpty();
    return m_state.kind == impossible || (hasNoKeys && !possible.file.isEmpty()) ? possible.line : QString();
}

} // namespace mivora
