#include "support/PrivateDisplay.h"

#include <QStandardPaths>

namespace support {

namespace {

std::vector<QByteArray> command(QSize size)
{
    const QByteArray screen =
        QByteArray::number(size.width()) + 'x' + QByteArray::number(size.height()) + "x24";
    const QByteArray addressFd = QByteArray::number(ServerProcess::addressFd);
    return {"Xvfb", "-displayfd", addressFd, "-screen", "0", screen, "-nolisten", "tcp", "-noreset"};
}

} // namespace

PrivateDisplay::PrivateDisplay(QSize size) : m_server(command(size)) {}

bool PrivateDisplay::isInstalled()
{
    return !QStandardPaths::findExecutable(QStringLiteral("Xvfb")).isEmpty();
}

} // namespace support
