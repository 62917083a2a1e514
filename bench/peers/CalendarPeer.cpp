#include "CalendarPeer.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <fstream>
#include <functional>
#include <sstream>
#include <string_view>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

namespace peers {

namespace {

constexpr int rounds = 10;

/// Reads a file in the plainest way there is; \a text only ever grows.
std::size_t readFile(int folder, const char *name, std::string &text)
{
    const int file = ::openat(folder, name, O_RDONLY | O_CLOEXEC);

    struct stat status
    {
    };

    ::fstat(file, &status);
    if (text.size() < std::size_t(status.st_size) + 1)
        text.resize(std::size_t(status.st_size) + 1);
    const ssize_t length = ::read(file, text.data(), std::size_t(status.st_size));
    ::close(file);
    text[std::size_t(length)] = '\0';
    return std::size_t(length);
}

void readFolder(DIR *folder, CalendarLibrary &library)
{
    std::string text;
    while (const dirent *entry = ::readdir(folder)) {
        if (!std::string_view(entry->d_name).ends_with(".ics"))
            continue;
        const std::size_t length = readFile(::dirfd(folder), entry->d_name, text);
        library.read(entry->d_name, text.c_str(), length);
    }
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
            const std::size_t length = readFile(::dirfd(folder), name.c_str(), text);
            library.read(name, text.c_str(), length);
            library.occurrences(days);
        });
    std::ofstream(file) << original.str();
    ::close(watch);
    return time;
}

} // namespace

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
    const long count = library.occurrences(days);
    if (more == "refresh")
        std::printf("%.9f\n", meanTime([] {}, [&] { library.occurrences(days); }));
    else if (more == "change")
        std::printf("%.9f\n", timeOfChange(argv[1], folder, library, days));
    else
        std::printf("%ld\n", count);
    // A program that has shown its day leaves the tidying up to the system.
    std::fflush(stdout);
    std::_Exit(0);
}

} // namespace peers
