#pragma once

#include "support/ServerProcess.h"

#include <QSize>

namespace support {

/// An X server without a screen (Xvfb) that belongs to one test, under the first free display number.
class PrivateDisplay final
{
public:
    /// Throws std::runtime_error when the server can't be started.
    explicit PrivateDisplay(QSize size = {1280, 800});

    /// Whether Xvfb can be run at all; a test that needs a display is skipped without it.
    static bool isInstalled();

    /// For the DISPLAY variable: ":7".
    QByteArray name() const { return ':' + m_server.address(); }

    /// Makes this the display of the process and of the programs that it starts from now on.
    void enter() const { qputenv("DISPLAY", name()); }

private:
    ServerProcess m_server;
};

} // namespace support
