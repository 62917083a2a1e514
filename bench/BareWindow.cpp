#include "BareWindow.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <unistd.h>

namespace mivora {

BareWindow showBareWindow()
{
    QProcess program;
    program.start(QCoreApplication::applicationDirPath() + QStringLiteral("/bare-qml-window"), {});
    program.waitForFinished();
    const QList<QByteArray> told = program.readAllStandardOutput().simplified().split(' ');
    return {told.value(0).toDouble() / 1e3, told.value(1).toDouble() / 1024};
}

double residentMegabytes()
{
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QFile::ReadOnly))
        return 0;
    return double(statm.readAll().split(' ').value(1).toLong()) * double(sysconf(_SC_PAGESIZE)) /
           (1024.0 * 1024);
}

} // namespace mivora
