#pragma once

#include "KeloSparkle/engine/PackageDownload.h"

#include "KeloSparkle/engine/Appcast.h"

#include <QNetworkAccessManager>

namespace kelo {

struct EngineLimits
{
    FetchLimits feed{.bytes = 1024 * 1024};
    /// The number of bytes is the feed's.
    FetchLimits package{.silence = std::chrono::seconds(30), .total = std::chrono::hours(1)};
};

/// The update engine on Qt Network.
class NetworkUpdateEngine final : public UpdateEngine
{
public:
    explicit NetworkUpdateEngine(const EngineLimits &limits = {}) : m_limits(limits) {}

    void check(const UpdateFeed &feed, std::function<void(const CheckOutcome &)> done) override;
    void download(const Update &update, const UpdateFeed &feed, const QString &folder,
                  std::function<void(qint64)> progress,
                  std::function<void(const DownloadOutcome &)> done) override;
    void cancel() override;

private:
    QNetworkAccessManager &network();
    void answerLater(const CheckOutcome &outcome);
    void fetched(const std::optional<UpdateFailure> &failure);
    void choose();
    void finish(const CheckOutcome &outcome);

    EngineLimits m_limits;
    /// Connections are kept for the time of one check and its download.
    std::unique_ptr<QNetworkAccessManager> m_network;
    QByteArray m_feed;
    QString m_runningVersion;
    std::function<void(const CheckOutcome &)> m_done;
    /// Alive while an answer is due that needs no network.
    std::unique_ptr<QObject> m_answer;
    /// Of the feed, which is read on another thread.
    std::unique_ptr<QFutureWatcher<std::optional<std::vector<AppcastItem>>>> m_reading;
    std::unique_ptr<HttpsFetch> m_fetch;
    std::unique_ptr<PackageDownload> m_download;
};

} // namespace kelo
