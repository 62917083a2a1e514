#include "support/ServerProcess.h"

#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace support {

namespace {

// Runs in the child between fork and exec: only calls that are safe there, and no memory allocation.
[[noreturn]] void becomeServer(int addressPipe, pid_t parent, char *const *arguments)
{
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != parent)
        _exit(127);
    const int null = open("/dev/null", O_RDWR);
    for (const int standardFd : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        dup2(null, standardFd);
    if (addressPipe == ServerProcess::addressFd)
        fcntl(addressPipe, F_SETFD, 0);
    else
        dup2(addressPipe, ServerProcess::addressFd);
    execvp(arguments[0], arguments);
    _exit(127);
}

pid_t startServer(const std::vector<QByteArray> &command, int addressPipe)
{
    std::vector<char *> arguments;
    for (const QByteArray &argument : command)
        arguments.push_back(const_cast<char *>(argument.constData()));
    arguments.push_back(nullptr);
    const pid_t parent = getpid();
    const pid_t child = fork();
    if (child == 0)
        becomeServer(addressPipe, parent, arguments.data());
    return child;
}

// What arrives before the line feed; nothing when the other end closes or the time is over.
QByteArray readLine(int fd, std::chrono::milliseconds timeout)
{
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    QByteArray line;
    while (!line.endsWith('\n')) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            deadline - std::chrono::steady_clock::now());
        pollfd wanted{fd, POLLIN, 0};
        char character = 0;
        if (left.count() <= 0 || poll(&wanted, 1, static_cast<int>(left.count())) <= 0 ||
            read(fd, &character, 1) != 1)
            return {};
        line.append(character);
    }
    return line.trimmed();
}

void endServer(pid_t pid)
{
    if (pid <= 0)
        return;
    kill(pid, SIGTERM);
    for (int waited = 0; waited < 200; ++waited) {
        if (waitpid(pid, nullptr, WNOHANG) != 0)
            return;
        usleep(10'000);
    }
    kill(pid, SIGKILL);
    waitpid(pid, nullptr, 0);
}

} // namespace

ServerProcess::ServerProcess(std::vector<QByteArray> command, std::chrono::milliseconds timeout)
{
    int pipe[2] = {-1, -1};
    if (pipe2(pipe, O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe for " + command.front().toStdString());
    m_pid = startServer(command, pipe[1]);
    close(pipe[1]);
    m_address = readLine(pipe[0], timeout);
    close(pipe[0]);
    if (m_address.isEmpty()) {
        endServer(m_pid);
        throw std::runtime_error(command.front().toStdString() + " did not start");
    }
}

ServerProcess::~ServerProcess()
{
    endServer(m_pid);
}

} // namespace support
