#pragma once

#include "support/ServerProcess.h"

namespace support {

/// An X server without a screen (Xvfb) that belongs to one test, under the first free display number.
class PrivateDisplay final
{
public:
    /// For the DISPLAY variable: ":7".
    QByteArray name() const { return ':' + m_server.address(); }

    /// Makes this the display of the process and of the programs that it starts from now on.
    void enter() const { qputenv("DISPLAY", name()); }

private:
    ServerProcess m_server{
        QStringLiteral("Xvfb"),
        QStringLiteral("-displayfd 1 -screen 0 1280x800x24 -nolisten tcp -noreset").split(QLatin1Char(' '))};
};

} // namespace support
