#pragma once

#include "KeloSparkle/UpdateEngine.h"

#include <QNetworkReply>
#include <QObject>
#include <QTimer>
#include <memory>

class QNetworkAccessManager;

namespace kelo {

struct FetchLimits
{
    qint64 bytes = 0;
    /// Without a byte arriving.
    std::chrono::milliseconds silence = std::chrono::seconds(20);
    std::chrono::milliseconds total = std::chrono::seconds(60);
    int redirects = 5;
    /// That the process may grow by meanwhile.
    qint64 memory = 256 * 1024 * 1024;
};

/// One GET over https, also after redirects, within limits. Ends by itself when it is deleted.
class HttpsFetch final : public QObject
{
public:
    /// False when the bytes could not be kept.
    using Sink = std::function<bool(const QByteArray &)>;
    /// Nothing when all of the body went to the sink. Called once, from the event loop and never from within
    /// Qt Network: the fetch and the network access manager may be deleted in it.
    using Done = std::function<void(const std::optional<UpdateFailure> &)>;

    HttpsFetch(QNetworkAccessManager &network, const QUrl &url, const FetchLimits &limits, Sink sink,
               Done done);

private:
    void start(QNetworkAccessManager &network, const QUrl &url);
    void take();
    void finish();
    void fail(UpdateFault fault, const QString &detail = {});
    void watchMemory();
    std::optional<UpdateFailure> outcome() const;

    struct Abort
    {
        void operator()(QNetworkReply *reply) const;
    };

    FetchLimits m_limits;
    Sink m_sink;
    Done m_done;
    QTimer m_deadline;
    QTimer m_memoryWatch;
    qint64 m_memoryBefore = 0;
    qint64 m_received = 0;
    /// What the fetch itself found wrong, whatever the reply says afterwards.
    std::optional<UpdateFailure> m_failure;
    std::unique_ptr<QNetworkReply, Abort> m_reply;
};

} // namespace kelo
