#pragma once

#include "KeloUpdates/UpdateFeed.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>
#include <memory>

namespace kelo {

/// The plug-in's object: asks the server over https, for a short time and for a few kilobytes.
class FeedChecker final : public QObject, public UpdateChecker
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "app.kelo.UpdateChecker/1")
    Q_INTERFACES(kelo::UpdateChecker)

public:
    FeedChecker();

    void check(const UpdateFeed &feed, Done done) override;
    void cancel() override;

private:
    using Fetched = std::function<void(const QByteArray &)>;

    /// Calls `fetched` with the body of at most `limit` bytes, or finishes with a fault.
    void fetch(const QUrl &address, qint64 limit, Fetched fetched);
    void finish(const CheckOutcome &outcome);

    /// They may be at work when they are done with.
    struct Abandon
    {
        void operator()(QNetworkReply *reply) const;

        void operator()(QNetworkAccessManager *network) const { network->deleteLater(); }
    };

    Done m_done;
    QTimer m_deadline;
    std::unique_ptr<QNetworkAccessManager, Abandon> m_network;
    std::unique_ptr<QNetworkReply, Abandon> m_reply;
};

} // namespace kelo
