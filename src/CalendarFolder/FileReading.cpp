#include "CalendarFolder/FileReading.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace mivora {

FileStamp FileStamp::of(const struct stat &status)
{
    return {std::int64_t(status.st_mtim.tv_sec) * 1'000'000'000 + status.st_mtim.tv_nsec,
            std::int64_t(status.st_size), std::uint64_t(status.st_ino)};
}

FileDescriptor &FileDescriptor::operator=(FileDescriptor &&other) noexcept
{
    std::swap(m_number, other.m_number);
    return *this;
}

FileDescriptor::~FileDescriptor()
{
    if (isOpen())
        ::close(m_number);
}

FileDescriptor openFolder(const std::string &path)
{
    return FileDescriptor(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

ReadStatus FileReader::read(int folder, const char *name, std::int64_t limit)
{
    // Without O_NONBLOCK a pipe named like a calendar would hold us up until somebody writes to it.
    const FileDescriptor file(::openat(folder, name, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat status = {};
    if (!file.isOpen()) {
        const int reason = errno;
        m_stamp = ::fstatat(folder, name, &status, 0) == 0 ? FileStamp::of(status) : FileStamp();
        errno = reason;
        if (reason == ENXIO)
            return ReadStatus::notAFile;
        return reason == ENOENT ? ReadStatus::vanished : ReadStatus::failed;
    }
    if (::fstat(file.number(), &status) != 0)
        return ReadStatus::failed;
    if (!S_ISREG(status.st_mode))
        return ReadStatus::notAFile;
    m_stamp = FileStamp::of(status);
    if (m_stamp.size > limit)
        return ReadStatus::tooLarge;
    m_text.resize(std::max<qsizetype>(m_stamp.size + 1, 64 << 10));
    return readAll(file.number(), limit);
}

ReadStatus FileReader::readAll(int file, std::int64_t limit)
{
    constexpr qsizetype part = 4 << 20;
    for (qsizetype length = 0;;) {
        if (length == m_text.size())
            m_text.resize(2 * length);
        const qsizetype room = std::min(m_text.size() - length, part);
        const ssize_t count = ::read(file, m_text.data() + length, std::size_t(room));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return ReadStatus::failed;
        length += count;
        // A regular file gives less than was asked for at its end only.
        if (count < room) {
            m_text.resize(length);
            return ReadStatus::done;
        }
        if (length > limit)
            return ReadStatus::tooLarge;
    }
}

} // namespace mivora
