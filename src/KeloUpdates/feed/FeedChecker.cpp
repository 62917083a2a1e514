#include "KeloUpdates/feed/FeedChecker.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QVersionNumber>
#include <sodium.h>
#include <utility>

namespace kelo {

namespace {

constexpr std::chrono::seconds patience(20);
constexpr qint64 longestFeed = 64 * 1024;

UpdateFault faultOf(QNetworkReply::NetworkError error)
{
    if (error == QNetworkReply::SslHandshakeFailedError)
        return UpdateFault::untrustedServer;
    // The codes of HTTP come after those of the way to the server.
    return error > QNetworkReply::UnknownProxyError ? UpdateFault::refusedByServer : UpdateFault::unreachable;
}

bool isSecure(const QUrl &address)
{
    return address.isValid() && address.scheme() == QLatin1String("https") && !address.host().isEmpty();
}

QByteArray decodedKey(const QString &base64)
{
    const auto key =
        QByteArray::fromBase64Encoding(base64.trimmed().toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
    return key && key.decoded.size() == crypto_sign_PUBLICKEYBYTES ? key.decoded : QByteArray();
}

bool isSignedBy(const QByteArray &publicKey, const QByteArray &document, const QByteArray &signature)
{
    const auto bytes = [](const QByteArray &array) {
        return reinterpret_cast<const unsigned char *>(array.constData());
    };
    return signature.size() == crypto_sign_BYTES && sodium_init() >= 0 &&
           crypto_sign_verify_detached(bytes(signature), bytes(document), quint64(document.size()),
                                       bytes(publicKey)) == 0;
}

/// Null when `text` is no version.
QVersionNumber versionOf(const QString &text)
{
    qsizetype suffix = 0;
    const auto version = QVersionNumber::fromString(text, &suffix).normalized();
    return suffix == text.size() ? version : QVersionNumber();
}

CheckOutcome read(const QByteArray &document, const QString &runningVersion)
{
    const QJsonObject feed = QJsonDocument::fromJson(document).object();
    const auto text = [&](const char *key) { return feed.value(QLatin1String(key)).toString(); };
    Update update{.version = text("version"),
                  .date = QDate::fromString(text("date"), Qt::ISODate),
                  .notes = text("notes"),
                  .page = text("page")};
    const QVersionNumber version = versionOf(update.version);
    if (version.isNull() || !update.date.isValid() || !isSecure(QUrl(update.page, QUrl::StrictMode)))
        return UpdateFault::malformedFeed;
    if (version <= versionOf(runningVersion))
        return NoUpdate{};
    return update;
}

} // namespace

void FeedChecker::Abandon::operator()(QNetworkReply *reply) const
{
    reply->disconnect();
    reply->abort();
    reply->deleteLater();
}

FeedChecker::FeedChecker()
{
    m_deadline.setSingleShot(true);
    connect(&m_deadline, &QTimer::timeout, this, [this] { finish(UpdateFault::unreachable); });
}

void FeedChecker::check(const UpdateFeed &feed, Done done)
{
    cancel();
    m_done = std::move(done);
    m_network.reset(new QNetworkAccessManager);
    const QByteArray key = decodedKey(feed.publicKey);
    if (key.isEmpty() || !isSecure(feed.address)) {
        QMetaObject::invokeMethod(
            m_network.get(), [this] { finish(UpdateFault::unusableFeed); }, Qt::QueuedConnection);
        return;
    }
    m_deadline.start(patience);
    QUrl signatureAddress = feed.address;
    signatureAddress.setPath(feed.address.path() + QLatin1String(".sig"));
    const auto verify = [this, key, version = feed.runningVersion](const QByteArray &document,
                                                                   const QByteArray &signature) {
        const bool isGenuine = isSignedBy(key, document, signature);
        finish(isGenuine ? read(document, version) : UpdateFault::notGenuine);
    };
    fetch(feed.address, longestFeed, [this, signatureAddress, verify](const QByteArray &document) {
        fetch(signatureAddress, crypto_sign_BYTES,
              [verify, document](const QByteArray &signature) { verify(document, signature); });
    });
}

void FeedChecker::fetch(const QUrl &address, qint64 limit, Fetched fetched)
{
    QNetworkRequest request(address);
    // A publisher who moves takes the address along: nobody else is followed.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    // As the file is on the server: nothing small unpacks to something huge.
    request.setRawHeader("Accept-Encoding", "identity");
    m_reply.reset(m_network->get(request));
    m_reply->setReadBufferSize(limit + 1);
    connect(m_reply.get(), &QNetworkReply::readyRead, this, [this, limit] {
        if (m_reply->bytesAvailable() > limit)
            finish(UpdateFault::refusedByServer);
    });
    connect(m_reply.get(), &QNetworkReply::finished, this, [this, fetched = std::move(fetched)] {
        constexpr int ok = 200;
        const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        if (m_reply->error() != QNetworkReply::NoError)
            finish(faultOf(m_reply->error()));
        else if (status != ok)
            finish(UpdateFault::refusedByServer);
        else
            fetched(m_reply->readAll());
    });
}

void FeedChecker::finish(const CheckOutcome &outcome)
{
    const Done done = std::exchange(m_done, nullptr);
    cancel();
    done(outcome);
}

void FeedChecker::cancel()
{
    m_done = nullptr;
    m_deadline.stop();
    m_reply.reset();
    m_network.reset();
}

} // namespace kelo
