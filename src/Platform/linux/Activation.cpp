#include "Platform/Activation.h"

#include "Platform/linux/X11Connection.h"

#include <QCoreApplication>
#include <QInputEvent>
#include <QWindow>
#include <array>
#include <utility>

namespace mivora {

namespace {

struct TokenName
{
    const char *variable = nullptr;
    QLatin1String platformData;
};

// The newer name first; launchers that know both give one token.
constexpr std::array tokenNames{TokenName{"XDG_ACTIVATION_TOKEN", QLatin1String("activation-token")},
                                TokenName{"DESKTOP_STARTUP_ID", QLatin1String("desktop-startup-id")}};
constexpr const char *tokenVariable = tokenNames.front().variable;

// The id of a startup notification tells the time after this (Startup Notification Protocol).
constexpr const char *timeMark = "_TIME";
constexpr const char *ownTokens = "mivora-";

Activation held;
int holdings = 0;
TokenRequest requestToken;
/// What the compositor gave for a window of this program, and nothing was started with.
QByteArray offered;

std::uint32_t timeOf(const Activation &activation)
{
    const auto mark = activation.token.lastIndexOf(timeMark);
    return activation.time != 0 || mark < 0
               ? activation.time
               : activation.token.mid(mark + qsizetype(qstrlen(timeMark))).toUInt();
}

// Unless the program that was started does: the launcher no longer shows that something is coming.
void release(const Activation &activation)
{
    if (!activation.token.isEmpty() && X11Connection::isAvailable())
        X11Connection().broadcastStartup("remove: ID=" + activation.token);
}

void showInFrontOnX11(QWindow &window)
{
    const X11Connection x11;
    window.create();
    if (!held.token.isEmpty())
        x11.setText(xcb_window_t(window.winId()), "_NET_STARTUP_ID", held.token);
    window.show();
    window.raise();
    // Qt would ask with the time of the last event that it saw, which may be long ago.
    if (x11.hasProperty(x11.root(), "_NET_SUPPORTING_WM_CHECK"))
        x11.activate(xcb_window_t(window.winId()), timeOf(held));
    else
        window.requestActivate();
}

// Qt takes the token from its environment: with the first showing from 6.5 on, else when it is asked to.
void showInFrontElsewhere(QWindow &window)
{
    if (!held.token.isEmpty())
        qputenv(tokenVariable, held.token);
    else if (!window.isActive())
        window.hide(); // Without a token, a new window comes to the front where one that is there doesn't.
    window.show();
    window.raise();
    if (held.token.isEmpty() || qEnvironmentVariableIsSet(tokenVariable))
        window.requestActivate();
    qunsetenv(tokenVariable);
}

} // namespace

Activation Activation::ofThisProcess()
{
    Activation found;
    for (const TokenName &name : tokenNames) {
        if (found.token.isEmpty())
            found.token = qgetenv(name.variable);
        qunsetenv(name.variable);
    }
    return found;
}

Activation Activation::fromPlatformData(const QVariantMap &data)
{
    Activation found;
    for (const TokenName &name : tokenNames) {
        if (found.token.isEmpty())
            found.token = data.value(name.platformData).toString().toUtf8();
    }
    return found;
}

QVariantMap Activation::platformData() const
{
    QVariantMap data;
    for (const TokenName &name : tokenNames) {
        if (!token.isEmpty())
            data.insert(name.platformData, QString::fromUtf8(token));
    }
    return data;
}

void holdActivation(Activation activation)
{
    release(std::exchange(held, std::move(activation)));
    const auto end = [number = ++holdings] {
        if (number == holdings)
            release(std::exchange(held, {}));
    };
    QMetaObject::invokeMethod(QCoreApplication::instance(), end, Qt::QueuedConnection);
}

void setTokenRequest(TokenRequest request)
{
    requestToken = std::move(request);
}

// A token must be asked for before it is needed: the window is gone by then. A key does with the one that
// came with the keyboard, since some compositors forget each one when they give the next.
void holdActivationOf(const QEvent &event, QWindow &window)
{
    const bool isKey = event.type() == QEvent::KeyPress;
    const bool isRelease = event.type() == QEvent::MouseButtonRelease || event.type() == QEvent::TouchEnd;
    if ((isKey || isRelease) && X11Connection::isAvailable())
        holdActivation({.time = std::uint32_t(static_cast<const QInputEvent &>(event).timestamp())});
    else if (isKey || isRelease)
        holdActivation({.token = offered});
    else if (requestToken && (event.type() == QEvent::FocusIn || event.type() == QEvent::MouseButtonPress ||
                              event.type() == QEvent::TouchBegin))
        requestToken(window, [](const QString &token) { offered = token.toUtf8(); });
}

QByteArray takeLaunchToken()
{
    static int launches = 0;
    const Activation taken = std::exchange(held, {});
    offered.clear();
    if (!taken.token.isEmpty() || !X11Connection::isAvailable())
        return taken.token;
    return ownTokens + QByteArray::number(QCoreApplication::applicationPid()) + '-' +
           QByteArray::number(++launches) + timeMark + QByteArray::number(taken.time);
}

void announceLaunch(const QByteArray &token, const QByteArray &name)
{
    if (token.startsWith(ownTokens))
        X11Connection().broadcastStartup("new: ID=" + token + " NAME=\"" + QByteArray(name).replace('"', "") +
                                         "\" SCREEN=0");
}

void showInFront(QWindow &window)
{
    X11Connection::isAvailable() ? showInFrontOnX11(window) : showInFrontElsewhere(window);
}

} // namespace mivora
