#include "KeloSparkle/PackageOpener.h"

#include "Platform/linux/LateGio.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QUrl>
#include <memory>

// GIO uses "signals" as a name.
#undef signals
#include <gio/gio.h>

namespace kelo {

namespace {

/// Runs on the main thread, from the event loop.
void launched(GObject *, GAsyncResult *result, void *data)
{
    const std::unique_ptr<PackageOpened> done(static_cast<PackageOpened *>(data));
    (*done)(KELO_GIO(g_app_info_launch_default_for_uri_finish)(result, nullptr));
}

} // namespace

void openPackage(const QString &path, PackageOpened done)
{
    const auto launch = KELO_GIO(g_app_info_launch_default_for_uri_async);
    if (!launch) {
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [done = std::move(done)] { done(false); }, Qt::QueuedConnection);
        return;
    }
    const QByteArray uri = QUrl::fromLocalFile(path).toEncoded();
    launch(uri.constData(), nullptr, nullptr, launched, new PackageOpened(std::move(done)));
}

void showInFileManager(const QDBusConnection &bus, const QString &path, PackageOpened done)
{
    if (!bus.isConnected())
        return done(false);
    const QString name = QStringLiteral("org.freedesktop.FileManager1");
    QDBusMessage request = QDBusMessage::createMethodCall(
        name, QStringLiteral("/org/freedesktop/FileManager1"), name, QStringLiteral("ShowItems"));
    request << QStringList{QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded)} << QString();
    auto *call = new QDBusPendingCallWatcher(bus.asyncCall(request));
    QObject::connect(call, &QDBusPendingCallWatcher::finished, call, [call, done = std::move(done)] {
        call->deleteLater();
        done(!call->isError());
    });
}

} // namespace kelo
