#include "KeloSparkle/engine/NetworkUpdateEngine.h"

#include "KeloSparkle/engine/Signature.h"
#include "KeloSparkle/engine/UpdateChoice.h"

#include <gnu/libc-version.h>

namespace kelo {

namespace {

/// What a binary package needs of a system, on every distribution alike: the version of its C library.
QString systemVersion()
{
    return QString::fromLatin1(gnu_get_libc_version());
}

} // namespace

QNetworkAccessManager &NetworkUpdateEngine::network()
{
    if (!m_network)
        m_network = std::make_unique<QNetworkAccessManager>();
    return *m_network;
}

void NetworkUpdateEngine::check(const UpdateFeed &feed, std::function<void(const CheckOutcome &)> done)
{
    cancel();
    m_feed.clear();
    if (decodePublicKey(feed.publicKey).isEmpty()) {
        m_answer = std::make_unique<QObject>();
        QMetaObject::invokeMethod(
            m_answer.get(),
            [done = std::move(done)] {
                done(UpdateFailure{UpdateFault::unusableKey, {}});
            },
            Qt::QueuedConnection);
        return;
    }
    const auto sink = [this](const QByteArray &bytes) {
        m_feed += bytes;
        return true;
    };
    m_fetch = std::make_unique<HttpsFetch>(
        network(), feed.address, m_limits.feed, sink,
        [this, version = feed.runningVersion, done = std::move(done)](
            const std::optional<UpdateFailure> &failure) { fetched(failure, version, done); });
}

void NetworkUpdateEngine::fetched(const std::optional<UpdateFailure> &failure, const QString &runningVersion,
                                  const std::function<void(const CheckOutcome &)> &done)
{
    if (failure)
        return done(*failure);
    const auto items = parseAppcast(m_feed);
    m_feed.clear();
    if (!items)
        return done(UpdateFailure{UpdateFault::malformedFeed, {}});
    done(chooseUpdate(*items, {runningVersion, systemVersion()}));
}

void NetworkUpdateEngine::download(const Update &update, const UpdateFeed &feed, const QString &folder,
                                   std::function<void(qint64)> progress,
                                   std::function<void(const DownloadOutcome &)> done)
{
    cancel();
    m_download = std::make_unique<PackageDownload>(
        network(), PackageDownload::Job{update, decodePublicKey(feed.publicKey), feed.runningVersion, folder},
        m_limits.package, PackageDownload::Callbacks{std::move(progress), std::move(done)});
}

void NetworkUpdateEngine::cancel()
{
    m_answer.reset();
    m_fetch.reset();
    m_download.reset();
    m_network.reset();
}

} // namespace kelo
