#pragma once

#include <QSocketNotifier>

namespace mivora {

/// While it lives, SIGTERM, SIGINT and SIGHUP end the event loop, so that the program takes off the screen
/// what is its own. A signal that the program was started to ignore stays ignored (nohup), and one that comes
/// while the event loop hangs ends the program all the same, some seconds later. One per process.
class TerminationSignals final
{
public:
    TerminationSignals();
    ~TerminationSignals();
    Q_DISABLE_COPY_MOVE(TerminationSignals)

private:
    QSocketNotifier m_arrived{QSocketNotifier::Read};
};

} // namespace mivora
