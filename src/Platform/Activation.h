#pragma once

#include <QByteArray>
#include <QVariantMap>
#include <cstdint>
#include <functional>

class QEvent;
class QWindow;

namespace mivora {

/// What comes with a click or a key of the user's that was made elsewhere, and lets the window or the program
/// that it asks for come to the front.
struct Activation
{
    /// A token of xdg-activation, or the id of a startup notification: they are passed on in the same way.
    /// Empty for none.
    QByteArray token{};
    /// When the user acted, on the X server's clock; 0 when that isn't known.
    std::uint32_t time = 0;

    /// What a launcher gave this process in its environment (XDG_ACTIVATION_TOKEN, DESKTOP_STARTUP_ID). It is
    /// taken out of there: a program that this one starts would take it for its own.
    static Activation ofThisProcess();

    /// What is among the platform data of a call of org.freedesktop.Application, and the reverse.
    static Activation fromPlatformData(const QVariantMap &data);
    QVariantMap platformData() const;

    friend bool operator==(const Activation &, const Activation &) = default;
};

/// Lets `activation` hold for what is shown or started until control is back in the event loop. Main thread
/// only.
void holdActivation(Activation activation);

/// The same with what an event of the window gives: the time of a key that goes down or a button that is
/// released, or on Wayland the token that was asked for when the window was turned to.
void holdActivationOf(const QEvent &event, QWindow &window);

/// Asks the Wayland compositor for a token in the name of a window that the user has just turned to; it is
/// handed over when it comes, if it comes.
using TokenRequest = std::function<void(QWindow &window, std::function<void(const QString &)> take)>;

/// Where there is nobody who can ask, programs that are started may stay behind the others.
void setTokenRequest(TokenRequest request);

/// The token with which a program that is about to be started may come to the front: the one that holds now,
/// which is over then, or on X11 a new one. Empty for none.
QByteArray takeLaunchToken();

/// Tells the desktop that `name` is being started with this token, unless somebody else has.
void announceLaunch(const QByteArray &token, const QByteArray &name);

/// Shows the window before all others and gives it the keyboard, with the activation that holds now.
void showInFront(QWindow &window);

} // namespace mivora
