#include "CalendarPeer.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <sstream>
#include <string_view>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>
#include <unordered_map>

namespace peers {

namespace {

constexpr int rounds = 10;

/// Reads files one after the other, in the plainest way there is.
class Reader
{
public:
    /// The text of a file, with a zero behind it; it lasts until the next file.
    char *read(int folder, const char *name)
    {
        const int file = ::openat(folder, name, O_RDONLY | O_CLOEXEC);
        struct stat status = {};
        ::fstat(file, &status);
        if (const auto size = std::size_t(status.st_size); size >= m_room) {
            m_room = 2 * size + 1;
            m_text = std::make_unique_for_overwrite<char[]>(m_room);
        }
        const ssize_t length = ::read(file, m_text.get(), m_room - 1);
        ::close(file);
        m_text[std::size_t(std::max<ssize_t>(length, 0))] = '\0';
        return m_text.get();
    }

private:
    std::unique_ptr<char[]> m_text;
    std::size_t m_room = 0;
};

void readFolder(DIR *folder, CalendarLibrary &library)
{
    Reader reader;
    while (const dirent *entry = ::readdir(folder)) {
        if (std::string_view(entry->d_name).ends_with(".ics"))
            library.read(entry->d_name, reader.read(::dirfd(folder), entry->d_name));
    }
}

bool isKnownZone(const std::string &name)
{
    static std::unordered_map<std::string, bool> known;
    const auto [zone, isNew] = known.try_emplace(name);
    if (isNew)
        zone->second = std::filesystem::exists("/usr/share/zoneinfo/" + name);
    return zone->second;
}

/// The mean of some rounds, in seconds.
double meanTime(const std::function<void()> &prepare, const std::function<void()> &work)
{
    std::chrono::duration<double> time{};
    for (int round = 0; round < rounds; ++round) {
        prepare();
        const auto start = std::chrono::steady_clock::now();
        work();
        time += std::chrono::steady_clock::now() - start;
    }
    return time.count() / rounds;
}

/// The name of the next file that somebody has written to.
std::string nextChange(int watch)
{
    alignas(inotify_event) char buffer[4096];
    if (::read(watch, buffer, sizeof buffer) <= 0)
        std::abort();
    return reinterpret_cast<const inotify_event *>(buffer)->name;
}

double timeOfChange(const std::string &path, DIR *folder, CalendarLibrary &library, Days days)
{
    const std::string file = path + "/0000040-4f1c-9d2e.ics";
    std::stringstream original;
    original << std::ifstream(file).rdbuf();
    const int watch = ::inotify_init1(IN_CLOEXEC);
    ::inotify_add_watch(watch, path.c_str(), IN_CLOSE_WRITE);
    Reader reader;
    std::string text;
    int version = 0;
    const double time = meanTime(
        [&] {
            text = original.str();
            text.insert(text.find("SUMMARY:") + 8, std::to_string(++version));
            ::usleep(20'000);
        },
        [&] {
            std::ofstream(file) << text;
            const std::string name = nextChange(watch);
            library.read(name, reader.read(::dirfd(folder), name.c_str()));
            library.occurrences(days);
        });
    std::ofstream(file) << original.str();
    ::close(watch);
    return time;
}

} // namespace

char *withoutKnownZones(char *text)
{
    static constexpr std::string_view begin = "BEGIN:VTIMEZONE\r\nTZID:";
    static constexpr std::string_view end = "END:VTIMEZONE\r\n";
    char *const zone = std::strstr(text, begin.data());
    char *const rest = zone ? std::strstr(zone, end.data()) : nullptr;
    if (!rest)
        return text;
    const char *const name = zone + begin.size();
    if (!isKnownZone(std::string(name, std::strcspn(name, "\r\n"))))
        return text;
    // What stands before it is short, what comes after it may be long.
    char *const rejoined = rest + end.size() - (zone - text);
    std::memmove(rejoined, text, std::size_t(zone - text));
    return withoutKnownZones(rejoined);
}

int runPeer(int argc, char **argv, CalendarLibrary &library)
{
    DIR *folder = argc >= 4 ? ::opendir(argv[1]) : nullptr;
    if (!folder) {
        std::fprintf(stderr, "%s FOLDER FROM TO [refresh|change]\n", argv[0]);
        return 2;
    }
    const Days days{std::atol(argv[2]), std::atol(argv[3])};
    const std::string_view more = argc > 4 ? argv[4] : "";
    readFolder(folder, library);
    const std::size_t count = library.occurrences(days).size();
    if (more == "refresh")
        std::printf("%.9f\n", meanTime([] {}, [&] { library.occurrences(days); }));
    else if (more == "change")
        std::printf("%.9f\n", timeOfChange(argv[1], folder, library, days));
    else
        std::printf("%zu\n", count);
    // A program that has shown its day leaves the tidying up to the system.
    std::fflush(stdout);
    std::_Exit(0);
}

} // namespace peers
