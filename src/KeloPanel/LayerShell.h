#pragma once

#include <QMargins>
#include <QString>
#include <QtPlugin>
#include <functional>

class QWindow;

namespace kelo {

/// Panels as surfaces of a Wayland compositor's layers (zwlr_layer_shell_v1): it places them itself, on the
/// screen in use and clear of its bars. Implemented by the plug-in mivora-layershell, since what it stands on
/// is bound to one version of Qt.
class LayerShell
{
public:
    virtual ~LayerShell() = default;

    /// Makes the new, hidden window a surface above all others, full-screen ones too, that gets no key.
    /// `scope` is its name for the compositor's own rules.
    virtual void prepare(QWindow &window, const QString &scope) = 0;

    /// Where the window stands: `distance` away from `edges`, in the middle between those that aren't named.
    virtual void place(QWindow &window, Qt::Edges edges, const QMargins &distance) = 0;

    /// Whether all keys are the window's, or none. The compositor is told at once.
    virtual void setHasKeyboard(QWindow &window, bool has) = 0;

    /// Asks in the name of any window, not only of a panel's, for a token of xdg-activation.
    virtual void requestToken(QWindow &window, std::function<void(const QString &)> take) = 0;
};

/// The session's layers, or why panels can't be in them.
struct SessionLayers
{
    LayerShell *shell = nullptr;
    QString obstacle;

    /// Asks the compositor and loads the plug-in ($MIVORA_LAYERSHELL, see PluginFile) with the first call.
    static const SessionLayers &get();
};

} // namespace kelo

Q_DECLARE_INTERFACE(kelo::LayerShell, "app.kelo.LayerShell/2")
