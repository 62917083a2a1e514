#pragma once

#include "KeloHotkey/HotKeyCombo.h"
#include "KeloHotkey/HotKeyServices.h"
#include "Platform/linux/PortalRequest.h"

#include <memory>
#include <optional>

namespace kelo {

/// The portal for shortcuts that work everywhere.
inline const QString shortcutsInterface = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");

/// One combination bound at the portal, in a session of its own: a session can be given shortcuts only once.
class PortalShortcut final : public QObject
{
    Q_OBJECT

public:
    PortalShortcut(const HotKeyCombo &combo, const HotKeyPurpose &purpose);

    const HotKeyCombo &combo() const { return m_combo; }

    /// Empty while there is no session.
    const QString &session() const { return m_session; }

    /// Creates a session and binds the combination in it. The user may be asked. A former session is
    /// forgotten.
    void bind(const mivora::PortalPeer &peer);

    /// Ends the session. One that is just being created is ended when it is there.
    static void release(std::unique_ptr<PortalShortcut> shortcut);

private:
    void createSession();
    void sessionCreated(const QVariantMap &results);
    void bindShortcut();
    void closeSession();

    HotKeyCombo m_combo;
    HotKeyPurpose m_purpose;
    std::optional<mivora::PortalPeer> m_peer;
    QString m_session;
    /// The session is being created: until it is there it can't be closed.
    bool m_isCreating = false;
    bool m_isReleased = false;
};

} // namespace kelo
