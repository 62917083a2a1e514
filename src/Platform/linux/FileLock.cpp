#include "Platform/linux/FileLock.h"

#include <QFile>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

namespace mivora {

FileLock::FileLock(const QString &path, std::chrono::milliseconds patience)
{
    constexpr std::chrono::milliseconds pause(2);
    m_file = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (m_file < 0) {
        m_error = qt_error_string(errno);
        return;
    }
    while (::flock(m_file, LOCK_EX | LOCK_NB) != 0) {
        if ((errno != EWOULDBLOCK && errno != EINTR) || patience <= pause) {
            m_error = QLatin1String("locked by another process");
            return;
        }
        std::this_thread::sleep_for(pause);
        patience -= pause;
    }
}

FileLock::~FileLock()
{
    if (m_file >= 0)
        ::close(m_file);
}

} // namespace mivora
