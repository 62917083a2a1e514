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
        namespace fs = std::filesystem;
        using T = FolderTurmoil;
        const std::pair<const char *, std::function<void()>> kinds[] = {
            {"write", [this] { std::ofstream(anyFile()) << text(); }},
            {"write", [this] { std::ofstream(anyFile()) << text(); }},
            {"begin to write", [this] { beginWriting(); }},
            {"begin to write", [this] { beginWriting(); }},
            {"end writing", [this] { finish(); }},
            {"truncate", [this] { std::ofstream(anyFile()) << text().substr(0, below(2) * 150); }},
            {"truncate", [this] { std::ofstream(anyFile()) << text().substr(0, below(2) * 150); }},
            {"remove", [this] { fs::remove(anyFile(), m_error); }},
            {"rename", [this] { between(&T::anyFile, fs::rename); }},
            {"link", [this] { between(&T::anyFile, fs::create_hard_link); }},
            {"put in place", [this] { putInPlace(); }},
            {"link by name", [this] { between(&T::anyFile, fs::create_symlink); }},
            {"name", [this] { std::ofstream(anyFolder() / "displayname") << "Name\nsecond line"; }},
            {"colour", [this] { std::ofstream(anyFolder() / "color") << "#123456"; }},
            {"owner", [this] { std::ofstream(anyFolder() / "owner") << "me@example.com"; }},
            {"make folder", [this] { fs::create_directories(anyFolder(), m_error); }},
            {"remove folder", [this] { fs::remove_all(anyFolder(), m_error); }},
            {"rename folder", [this] { between(&T::anyFolder, fs::rename); }},
            {"link folder", [this] { between(&T::anyFolder, fs::create_directory_symlink); }},
            {"take root away or back", [this] { takeRootAwayOrBack(); }},
            {"pause", [this] { waitFor([] { return false; }, std::chrono::milliseconds(below(25))); }},
        };
        const auto &[name, act] = kinds[below(int(std::size(kinds)))];
        m_story.append("\n").append(name);
        act();
    }

    /// Ends what is begun, so that all of it can be known.
    void finish()
    {
        for (Writer &writer : m_writers)
            writer.file << writer.rest;
        m_writers.clear();
    }

private:
    using Path = std::filesystem::path;

    struct Writer
    {
        std::ofstream file;
        std::string rest;
    };

    std::size_t below(int count)
    {
        return std::size_t(std::uniform_int_distribution(0, count - 1)(m_chance));
    }

    const char *oneOf(std::initializer_list<const char *> texts)
    {
        return *(texts.begin() + below(int(texts.size())));
    }

    Path path(const std::string &relative)
    {
        m_story.append(1, ' ').append(relative);
        return m_folder.path(relative);
    }

    Path anyFolder()
    {
        return path(oneOf({"one", "one/work", "one/home", "two", "two/acme", "two/acme/team", "two/work",
                           "elsewhere/folder"}));
    }

    Path anyFile()
    {
        const Path folder = anyFolder();
        const char *name = oneOf({"x.ics", "x.ics", "y.ics", "z.ics", ".x.ics", "x.ics.tmp"});
        m_story.append(1, '/').append(name);
        return folder / name;
    }

    std::string text()
    {
        std::string text =
            eventText("Event " + std::to_string(++m_texts),
                      oneOf({"20260310T090000Z", "20260310T140000Z", "20260720T090000Z"}),
                      oneOf({"", "", "RRULE:FREQ=DAILY\r\n", "ATTENDEE:mailto:me@example.com\r\n"}));
        if (below(3) == 0)
            text.insert(text.find("BEGIN:VEVENT"), "X-WR-CALNAME:Name " + std::to_string(m_texts) + "\r\n");
        return text;
    }

    void beginWriting()
    {
        const std::string whole = text();
        const std::size_t part = below(int(whole.size()));
        m_writers.push_back({std::ofstream(anyFile()), whole.substr(part)});
        m_writers.back().file << whole.substr(0, part) << std::flush;
    }

    /// As a careful writer does, who overwrites nothing.
    void putInPlace()
    {
        const Path temporary = anyFolder() / "new.tmp";
        std::ofstream(temporary) << text();
        std::filesystem::create_hard_link(temporary, anyFile(), m_error);
        std::filesystem::remove(temporary, m_error);
    }

    void takeRootAwayOrBack()
    {
        const std::string root = oneOf({"one", "two"});
        const Path from = path(root), to = path("away/" + root);
        std::filesystem::rename(from, to, m_error);
        if (m_error)
            std::filesystem::rename(to, from, m_error);
    }

    /// From one file or folder to another.
    void between(Path (FolderTurmoil::*any)(),
                 void (*act)(const Path &from, const Path &to, std::error_code &error))
    {
        const Path from = (this->*any)();
        act(from, (this->*any)(), m_error);
    }

    CalendarFolder m_folder;
    std::mt19937 m_chance;
    std::vector<Writer> m_writers;
    std::error_code m_error;
    int m_texts = 0;
    std::string m_story;
};

} // namespace mivora
