#include "KeloSparkle/engine/DebianPackage.h"

#include <QProcess>

namespace kelo {

namespace {

std::optional<QString> upstreamVersion(const QByteArray &output)
{
    QString version = QString::fromLatin1(output).trimmed();
    if (version.isEmpty())
        return std::nullopt;
    version.remove(0, version.indexOf(QLatin1Char(':')) + 1);
    const auto revision = version.lastIndexOf(QLatin1Char('-'));
    return revision < 0 ? version : version.left(revision);
}

} // namespace

void readDebianVersion(const QString &path, QObject *context,
                       std::function<void(const std::optional<QString> &)> done)
{
    auto *program = new QProcess(context);
    const auto finish = [program, done = std::move(done)] {
        program->disconnect();
        // The context may be deleted in the callback.
        program->setParent(nullptr);
        program->deleteLater();
        const bool isRead = program->error() == QProcess::UnknownError &&
                            program->exitStatus() == QProcess::NormalExit && program->exitCode() == 0;
        done(isRead ? upstreamVersion(program->readAllStandardOutput()) : std::nullopt);
    };
    // Queued: finish deletes its own connection.
    QObject::connect(program, &QProcess::finished, program, finish, Qt::QueuedConnection);
    QObject::connect(program, &QProcess::errorOccurred, program, finish, Qt::QueuedConnection);
    program->start(QStringLiteral("dpkg-deb"), {QStringLiteral("-f"), path, QStringLiteral("Version")},
                   QIODevice::ReadOnly);
}

} // namespace kelo
