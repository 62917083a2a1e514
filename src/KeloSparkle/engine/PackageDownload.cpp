#include "KeloSparkle/engine/PackageDownload.h"

#include "KeloSparkle/engine/Aside.h"
#include "KeloSparkle/engine/DebianPackage.h"
#include "KeloSparkle/engine/Signature.h"
#include "KeloSparkle/engine/Version.h"

#include <QDir>
#include <QRegularExpression>

namespace kelo {

namespace {

bool prepareFolder(const QString &path)
{
    // Whatever a link points to is not ours to empty.
    if (QFileInfo(path).isSymLink() && !QFile::remove(path))
        return false;
    QDir folder(path);
    if (!folder.mkpath(QStringLiteral(".")))
        return false;
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    for (const QString &old : folder.entryList(QDir::Files | QDir::System | QDir::Hidden))
        folder.remove(old);
    return true;
}

bool isNewerThan(const QString &running, const QString &version)
{
    const auto offered = Version::parse(version);
    const auto current = Version::parse(running);
    return offered && current && *current < *offered;
}

} // namespace

QString packageFileName(const Update &update)
{
    static const QRegularExpression harmless(
        QRegularExpression::anchoredPattern(QStringLiteral("[A-Za-z0-9][A-Za-z0-9._+~-]{0,120}")));
    static const QRegularExpression odd(QStringLiteral("[^A-Za-z0-9.-]"));
    QString name = update.url.fileName(QUrl::FullyDecoded);
    if (harmless.match(name).hasMatch())
        return name;
    return QStringLiteral("update-") + QString(update.version).replace(odd, QStringLiteral("_"));
}

PackageDownload::PackageDownload(QNetworkAccessManager &network, Job job, FetchLimits limits,
                                 Callbacks callbacks)
    : m_job(std::move(job)), m_callbacks(std::move(callbacks))
{
    connect(&m_verification, &QFutureWatcher<bool>::finished, this, &PackageDownload::verified);
    if (!prepare()) {
        QMetaObject::invokeMethod(
            this, [this] { fail(UpdateFault::cannotSave, m_job.folder); }, Qt::QueuedConnection);
        return;
    }
    limits.bytes = m_job.update.length;
    m_fetch = std::make_unique<HttpsFetch>(
        network, m_job.update.url, limits, [this](const QByteArray &bytes) { return write(bytes); },
        [this](const auto &failure) { fetched(failure); });
}

bool PackageDownload::prepare()
{
    m_file = std::make_shared<QTemporaryFile>(m_job.folder + QStringLiteral("/.XXXXXX.part"));
    return prepareFolder(m_job.folder) && m_file->open();
}

bool PackageDownload::write(const QByteArray &bytes)
{
    if (m_file->write(bytes) != bytes.size())
        return false;
    m_callbacks.progress(m_file->pos());
    return true;
}

void PackageDownload::fetched(const std::optional<UpdateFailure> &failure)
{
    if (failure && failure->fault == UpdateFault::feedTooLarge)
        return fail(UpdateFault::wrongLength);
    if (failure)
        return fail(failure->fault, failure->detail);
    if (!m_file->flush())
        return fail(UpdateFault::cannotSave, m_file->errorString());
    if (m_file->size() != m_job.update.length)
        return fail(UpdateFault::wrongLength);
    verify();
}

void PackageDownload::verify()
{
    // Hashing a large file takes longer than a frame.
    m_verification.setFuture(runAside([file = m_file, signature = m_job.update.signature,
                                       key = m_job.publicKey] { return isSignedBy(*file, signature, key); }));
}

void PackageDownload::verified()
{
    if (!m_verification.result())
        return fail(UpdateFault::wrongSignature);
    // A genuine old package could have been put under a new version's name.
    readDebianVersion(m_file->fileName(), this, [this](const std::optional<QString> &version) {
        if (version && !isNewerThan(m_job.runningVersion, *version))
            return fail(UpdateFault::olderVersion, *version);
        keep();
    });
}

void PackageDownload::keep()
{
    const QString path = m_job.folder + QLatin1Char('/') + packageFileName(m_job.update);
    if (!m_file->rename(path))
        return fail(UpdateFault::cannotSave, m_file->errorString());
    m_file->setAutoRemove(false);
    m_file->close();
    // The installer may run as another user.
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
    const auto done = m_callbacks.done;
    done(path);
}

void PackageDownload::fail(UpdateFault fault, const QString &detail)
{
    m_file.reset();
    const auto done = m_callbacks.done;
    done(UpdateFailure{fault, detail});
}

} // namespace kelo
