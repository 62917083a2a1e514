#include "KeloSparkle/engine/HttpsFetch.h"

#include "KeloSparkle/engine/UpdateChoice.h"

#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkRequest>
#include <array>
#include <unistd.h>

namespace kelo {

namespace {

struct KnownError
{
    QNetworkReply::NetworkError error;
    UpdateFault fault;
};

// Everything else below the codes of HTTP is a matter of reaching the server.
constexpr std::array knownErrors{
    KnownError{QNetworkReply::OperationCanceledError, UpdateFault::timedOut},
    KnownError{QNetworkReply::TimeoutError, UpdateFault::timedOut},
    KnownError{QNetworkReply::SslHandshakeFailedError, UpdateFault::untrustedServer},
    KnownError{QNetworkReply::InsecureRedirectError, UpdateFault::insecure},
    KnownError{QNetworkReply::ProtocolUnknownError, UpdateFault::insecure},
    KnownError{QNetworkReply::TooManyRedirectsError, UpdateFault::refusedByServer},
};

UpdateFault faultOf(QNetworkReply::NetworkError error)
{
    const auto *known = std::find_if(knownErrors.begin(), knownErrors.end(),
                                     [&](const KnownError &candidate) { return candidate.error == error; });
    if (known != knownErrors.end())
        return known->fault;
    return error > QNetworkReply::UnknownProxyError ? UpdateFault::refusedByServer : UpdateFault::unreachable;
}

/// The bytes of memory that the process uses; 0 where the system doesn't tell (proc(5), statm).
qint64 memoryInUse()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toLongLong() * ::sysconf(_SC_PAGESIZE);
}

} // namespace

void HttpsFetch::Abort::operator()(QNetworkReply *reply) const
{
    reply->disconnect();
    reply->abort();
    // It may be the sender of the signal that is being handled.
    reply->deleteLater();
}

HttpsFetch::HttpsFetch(QNetworkAccessManager &network, const QUrl &url, const FetchLimits &limits, Sink sink,
                       Done done)
    : m_limits(limits), m_sink(std::move(sink)), m_done(std::move(done))
{
    m_deadline.setSingleShot(true);
    connect(&m_deadline, &QTimer::timeout, this, [this] { fail(UpdateFault::timedOut); });
    if (!isSecureAddress(url)) {
        m_failure = {UpdateFault::insecure, url.toDisplayString()};
        QMetaObject::invokeMethod(this, &HttpsFetch::finish, Qt::QueuedConnection);
        return;
    }
    start(network, url);
}

void HttpsFetch::start(QNetworkAccessManager &network, const QUrl &url)
{
    constexpr qint64 bufferBytes = 256 * 1024;
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setMaximumRedirectsAllowed(m_limits.redirects);
    request.setTransferTimeout(int(m_limits.silence.count()));
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    // As the file is on the server: lengths count, and nothing small unpacks to something huge.
    request.setRawHeader("Accept-Encoding", "identity");
    m_reply.reset(network.get(request));
    m_reply->setReadBufferSize(bufferBytes);
    connect(m_reply.get(), &QNetworkReply::readyRead, this, &HttpsFetch::take);
    const auto end = [this] {
        take();
        finish();
    };
    connect(m_reply.get(), &QNetworkReply::finished, this, end, Qt::QueuedConnection);
    m_deadline.start(m_limits.total);
    watchMemory();
}

void HttpsFetch::watchMemory()
{
    // Qt Network hoards header lines, the bodies of redirects and the size lines of chunks without a bound,
    // and without a word before they end. A hostile server could fill the memory within seconds.
    constexpr std::chrono::milliseconds interval(50);
    m_memoryBefore = memoryInUse();
    connect(&m_memoryWatch, &QTimer::timeout, this, [this] {
        if (memoryInUse() - m_memoryBefore > m_limits.memory)
            fail(UpdateFault::refusedByServer, QStringLiteral("The answer takes too much memory"));
    });
    m_memoryWatch.start(interval);
}

void HttpsFetch::take()
{
    const QByteArray bytes = m_reply->isOpen() ? m_reply->readAll() : QByteArray();
    if (bytes.isEmpty() || m_failure)
        return;
    m_received += bytes.size();
    if (m_received > m_limits.bytes)
        fail(UpdateFault::feedTooLarge);
    else if (!m_sink(bytes))
        fail(UpdateFault::cannotSave);
}

void HttpsFetch::fail(UpdateFault fault, const QString &detail)
{
    if (m_failure)
        return;
    m_failure = {fault, detail};
    m_memoryWatch.stop();
    // Leads to finish(), later.
    if (m_reply)
        m_reply->abort();
}

void HttpsFetch::finish()
{
    if (!m_done)
        return;
    m_deadline.stop();
    m_memoryWatch.stop();
    const auto result = outcome();
    // The fetch may be gone when this returns.
    const Done done = std::exchange(m_done, nullptr);
    done(result);
}

std::optional<UpdateFailure> HttpsFetch::outcome() const
{
    if (m_failure)
        return m_failure;
    if (m_reply->error() != QNetworkReply::NoError)
        return UpdateFailure{faultOf(m_reply->error()), m_reply->errorString()};
    constexpr int ok = 200;
    const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (status != ok)
        return UpdateFailure{UpdateFault::refusedByServer, QStringLiteral("HTTP %1").arg(status)};
    return std::nullopt;
}

} // namespace kelo
