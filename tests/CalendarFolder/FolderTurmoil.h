#pragma once

#include "CalendarFolder/LoadedStore.h"

#include <filesystem>
#include <fstream>
#include <random>

namespace mivora {

/// Does at random to the calendar folders "one" and "two" what programs do to theirs.
class FolderTurmoil final
{
public:
    explicit FolderTurmoil(unsigned seed) : m_chance(seed)
    {
        for (const char *name : {"one/work", "two/acme/team", "elsewhere/folder", "away"})
            m_folder.makeFolder(name);
    }

    std::vector<std::string> roots() const { return {m_folder.path("one"), m_folder.path("two")}; }

    /// What was done so far, a line for each step.
    const std::string &story() const { return m_story; }

    void step()
    {
        const Kind &kind = kinds[std::size_t(below(int(std::size(kinds))))];
        m_story.append(kind.name);
        (this->*kind.act)();
        m_story.append(1, '\n');
    }

    /// Ends what is begun, so that all of it can be known.
    void finish()
    {
        while (!m_writers.empty())
            endWriting();
    }

private:
    using Path = std::filesystem::path;

    struct Kind
    {
        const char *name;
        void (FolderTurmoil::*act)();
    };

    struct Writer
    {
        std::ofstream file;
        std::string rest;
    };

    static constexpr const char *folders[] = {"one",      "one/work",      "one/home", "two",
                                              "two/acme", "two/acme/team", "two/work", "elsewhere/folder"};

    int below(int count) { return std::uniform_int_distribution(0, count - 1)(m_chance); }

    template<typename Text, std::size_t count> Text oneOf(Text const (&texts)[count])
    {
        return texts[std::size_t(below(int(count)))];
    }

    Path path(const std::string &relative)
    {
        m_story.append(1, ' ').append(relative);
        return m_folder.path(relative);
    }

    Path anyFolder() { return path(oneOf(folders)); }

    Path anyFile()
    {
        const char *const names[] = {"x.ics", "x.ics", "y.ics", "z.ics", ".x.ics", "x.ics.tmp"};
        const std::string folder = oneOf(folders);
        return path(folder + '/' + oneOf(names));
    }

    std::string text()
    {
        const char *const starts[] = {"20260310T090000Z", "20260310T140000Z", "20260720T090000Z"};
        const char *const more[] = {"", "", "RRULE:FREQ=DAILY\r\n", "ATTENDEE:mailto:me@example.com\r\n"};
        std::string text = eventText("Event " + std::to_string(++m_texts), oneOf(starts), oneOf(more));
        if (below(3) == 0)
            text.insert(text.find("BEGIN:VEVENT"), "X-WR-CALNAME:Name " + std::to_string(m_texts) + "\r\n");
        return text;
    }

    void write() { std::ofstream(anyFile()) << text(); }

    void beginWriting()
    {
        const std::string whole = text();
        const std::size_t part = std::size_t(below(int(whole.size())));
        m_writers.push_back({std::ofstream(anyFile()), whole.substr(part)});
        m_writers.back().file << whole.substr(0, part) << std::flush;
    }

    void goOnWriting()
    {
        if (!m_writers.empty())
            m_writers.back().file << std::exchange(m_writers.back().rest, {}) << std::flush;
    }

    void endWriting()
    {
        goOnWriting();
        if (!m_writers.empty())
            m_writers.pop_back();
    }

    void truncate() { std::ofstream(anyFile()) << text().substr(0, std::size_t(below(2) * 150)); }

    void remove() { std::filesystem::remove(anyFile(), m_error); }

    void rename()
    {
        const Path from = anyFile();
        std::filesystem::rename(from, anyFile(), m_error);
    }

    void link()
    {
        const Path from = anyFile();
        std::filesystem::create_hard_link(from, anyFile(), m_error);
    }

    void linkByName()
    {
        const Path from = anyFile();
        std::filesystem::create_symlink(from, anyFile(), m_error);
    }

    void describe()
    {
        const char *const names[] = {"displayname", "color", "owner"};
        const char *const texts[] = {"Name\nsecond line", "#123456", "me@example.com"};
        const int which = below(3);
        std::ofstream(anyFolder() / names[which]) << texts[which];
    }

    void makeFolder() { std::filesystem::create_directories(anyFolder(), m_error); }

    void removeFolder() { std::filesystem::remove_all(anyFolder(), m_error); }

    void renameFolder()
    {
        const Path from = anyFolder();
        std::filesystem::rename(from, anyFolder(), m_error);
    }

    void linkFolder()
    {
        const Path from = anyFolder();
        std::filesystem::create_directory_symlink(from, anyFolder(), m_error);
    }

    void takeRootAway()
    {
        const std::string root = below(2) == 0 ? "one" : "two";
        const Path from = path(root), to = path("away/" + root);
        std::filesystem::rename(from, to, m_error);
        if (m_error)
            std::filesystem::rename(to, from, m_error);
    }

    void pause()
    {
        waitFor([] { return false; }, std::chrono::milliseconds(below(25)));
    }

    static constexpr Kind kinds[] = {
        {"write", &FolderTurmoil::write},
        {"write", &FolderTurmoil::write},
        {"begin to write", &FolderTurmoil::beginWriting},
        {"begin to write", &FolderTurmoil::beginWriting},
        {"go on writing", &FolderTurmoil::goOnWriting},
        {"end writing", &FolderTurmoil::endWriting},
        {"truncate", &FolderTurmoil::truncate},
        {"truncate", &FolderTurmoil::truncate},
        {"remove", &FolderTurmoil::remove},
        {"rename", &FolderTurmoil::rename},
        {"link", &FolderTurmoil::link},
        {"link by name", &FolderTurmoil::linkByName},
        {"describe", &FolderTurmoil::describe},
        {"make folder", &FolderTurmoil::makeFolder},
        {"remove folder", &FolderTurmoil::removeFolder},
        {"rename folder", &FolderTurmoil::renameFolder},
        {"link folder", &FolderTurmoil::linkFolder},
        {"take root away or back", &FolderTurmoil::takeRootAway},
        {"pause", &FolderTurmoil::pause},
        {"pause", &FolderTurmoil::pause},
    };

    CalendarFolder m_folder;
    std::mt19937 m_chance;
    std::vector<Writer> m_writers;
    std::error_code m_error;
    int m_texts = 0;
    std::string m_story;
};

} // namespace mivora
