#pragma once

#include "KeloSparkle/engine/HttpsFetch.h"

#include <QFutureWatcher>
#include <QTemporaryFile>

namespace kelo {

/// Downloads one package and verifies it: first its length, then its signature, then that a Debian package
/// is not older than what is running. Until then the file has a nameless place in the folder; it gets its
/// name last, and is deleted when anything is wrong or the download is deleted.
class PackageDownload final : public QObject
{
public:
    struct Job
    {
        Update update;
        /// 32 bytes.
        QByteArray publicKey;
        QString runningVersion;
        QString folder;
    };

    struct Callbacks
    {
        std::function<void(qint64)> progress;
        /// The download may be deleted in it.
        std::function<void(const DownloadOutcome &)> done;
    };

    PackageDownload(QNetworkAccessManager &network, Job job, FetchLimits limits, Callbacks callbacks);

private:
    bool prepare();
    bool write(const QByteArray &bytes);
    void fetched(const std::optional<UpdateFailure> &failure);
    void verify();
    void verified();
    void keep();
    void fail(UpdateFault fault, const QString &detail = {});

    Job m_job;
    Callbacks m_callbacks;
    /// Shared with the thread that verifies.
    std::shared_ptr<QTemporaryFile> m_file;
    QFutureWatcher<bool> m_verification;
    std::unique_ptr<HttpsFetch> m_fetch;
};

/// The name to give the package: the last part of the address's path where that is a harmless file name,
/// else "update-VERSION".
QString packageFileName(const Update &update);

} // namespace kelo
