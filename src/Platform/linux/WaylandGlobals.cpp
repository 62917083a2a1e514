#include "Platform/linux/WaylandGlobals.h"

#include <array>
#include <cstring>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

namespace mivora {

namespace {

// What is said here is the start of every Wayland connection, and has been the same since version 1.0:
// numbers of 32 bits in the machine's byte order. The program needn't load libwayland for it where it then
// speaks X11.
using Word = std::uint32_t;

constexpr Word displayId = 1;
constexpr Word registryId = 2;
constexpr Word callbackId = 3;
constexpr std::size_t headerSize = 2 * sizeof(Word);

// get_registry and sync of wl_display: object, size and number of the request, the new object.
constexpr std::array<Word, 6> questions{displayId, 12U << 16U | 1U, registryId,
                                        displayId, 12U << 16U | 0U, callbackId};

QByteArray socketPath()
{
    const QByteArray name = qgetenv("WAYLAND_DISPLAY");
    return name.isEmpty() || name.startsWith('/') ? name : qgetenv("XDG_RUNTIME_DIR") + '/' + name;
}

/// Negative when nobody listens.
int connected(const QByteArray &path)
{
    sockaddr_un address{};
    if (path.isEmpty() || std::size_t(path.size()) >= sizeof(address.sun_path))
        return -1;
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.constData(), std::size_t(path.size()));
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const timeval patience{2, 0};
    setsockopt(socket, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof(patience));
    if (connect(socket, reinterpret_cast<const sockaddr *>(&address), sizeof(address)) == 0)
        return socket;
    close(socket);
    return -1;
}

Word wordAt(const QByteArray &bytes, std::size_t place)
{
    Word word = 0;
    std::memcpy(&word, bytes.constData() + place, sizeof(word));
    return word;
}

/// Takes whole events off the front of `bytes`. True when the last one has come.
bool takeEvents(QByteArray &bytes, QByteArrayList &names)
{
    while (std::size_t(bytes.size()) >= headerSize) {
        const Word object = wordAt(bytes, 0);
        const std::size_t size = wordAt(bytes, sizeof(Word)) >> 16U;
        if (size < headerSize || std::size_t(bytes.size()) < size)
            return size < headerSize;
        if (object == callbackId || object == displayId)
            return true;
        // The number of the global, then the length of its name with the zero byte, and the name.
        if (object == registryId && size > headerSize + 2 * sizeof(Word))
            names.append(QByteArray(bytes.constData() + headerSize + 2 * sizeof(Word)));
        bytes.remove(0, qsizetype(size));
    }
    return false;
}

QByteArrayList askForGlobals()
{
    QByteArrayList names;
    const int socket = connected(socketPath());
    if (socket < 0)
        return names;
    QByteArray bytes;
    std::array<char, 4096> buffer{};
    ssize_t length = send(socket, questions.data(), sizeof(questions), MSG_NOSIGNAL);
    while (length > 0 && !takeEvents(bytes, names)) {
        length = recv(socket, buffer.data(), buffer.size(), 0);
        bytes.append(buffer.data(), std::max<ssize_t>(length, 0));
    }
    close(socket);
    return names;
}

} // namespace

const QByteArrayList &waylandGlobals()
{
    static const QByteArrayList names = askForGlobals();
    return names;
}

} // namespace mivora
