#include "KeloSparkle/engine/NetworkUpdateEngine.h"

#include "KeloSparkle/engine/Aside.h"
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
    m_runningVersion = feed.runningVersion;
    m_done = std::move(done);
    if (decodePublicKey(feed.publicKey).isEmpty())
        return answerLater(UpdateFailure{UpdateFault::unusableKey, {}});
    const auto sink = [this](const QByteArray &bytes) {
        m_feed += bytes;
        return true;
    };
    m_fetch = std::make_unique<HttpsFetch>(network(), feed.address, m_limits.feed, sink,
                                           [this](const auto &failure) { fetched(failure); });
}

void NetworkUpdateEngine::answerLater(const CheckOutcome &outcome)
{
    m_answer = std::make_unique<QObject>();
    QMetaObject::invokeMethod(
        m_answer.get(), [this, outcome] { finish(outcome); }, Qt::QueuedConnection);
}

void NetworkUpdateEngine::fetched(const std::optional<UpdateFailure> &failure)
{
    if (failure)
        return finish(*failure);
    m_reading = std::make_unique<QFutureWatcher<std::optional<std::vector<AppcastItem>>>>();
    // Queued: the watcher is deleted when the user cancels in the callback.
    QObject::connect(
        m_reading.get(), &QFutureWatcherBase::finished, m_reading.get(), [this] { choose(); },
        Qt::QueuedConnection);
    m_reading->setFuture(runAside([xml = std::exchange(m_feed, {})] { return parseAppcast(xml); }));
}

void NetworkUpdateEngine::choose()
{
    const auto items = m_reading->result();
    if (!items)
        return finish(UpdateFailure{UpdateFault::malformedFeed, {}});
    finish(chooseUpdate(*items, {m_runningVersion, systemVersion()}));
}

void NetworkUpdateEngine::finish(const CheckOutcome &outcome)
{
    const auto done = std::exchange(m_done, nullptr);
    done(outcome);
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
    m_reading.reset();
    m_fetch.reset();
    m_download.reset();
    m_network.reset();
}

} // namespace kelo
