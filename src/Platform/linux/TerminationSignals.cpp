#include "Platform/linux/TerminationSignals.h"

#include <QCoreApplication>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <sys/eventfd.h>
#include <unistd.h>

namespace mivora {

namespace {

constexpr std::array endings{SIGTERM, SIGINT, SIGHUP};
constexpr unsigned secondsToEnd = 4;

int arrived = -1;

/// Only calls that are safe in a signal handler (signal-safety(7)).
void note(int)
{
    const int before = errno;
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = ::write(arrived, &one, sizeof one);
    ::alarm(secondsToEnd);
    errno = before;
}

void handle(int signal, void (*from)(int), void (*to)(int))
{
    struct sigaction action
    {
    };

    if (::sigaction(signal, nullptr, &action) != 0 || action.sa_handler != from)
        return;
    action.sa_handler = to;
    action.sa_flags = SA_RESTART;
    ::sigaction(signal, &action, nullptr);
}

} // namespace

TerminationSignals::TerminationSignals()
{
    arrived = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (arrived < 0)
        return;
    QObject::connect(&m_arrived, &QSocketNotifier::activated, &m_arrived, [this] {
        m_arrived.setEnabled(false);
        QCoreApplication::quit();
    });
    m_arrived.setSocket(arrived);
    m_arrived.setEnabled(true);
    for (const int signal : endings)
        handle(signal, SIG_DFL, note);
}

TerminationSignals::~TerminationSignals()
{
    for (const int signal : endings)
        handle(signal, note, SIG_DFL);
    m_arrived.setEnabled(false);
    if (arrived >= 0)
        ::close(std::exchange(arrived, -1));
}

} // namespace mivora
