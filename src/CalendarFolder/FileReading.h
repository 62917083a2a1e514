#pragma once

#include <QByteArray>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

struct stat;

/// Reads files of folders that others write to: safe against devices and pipes with a harmless name, files
/// that shrink or vanish meanwhile, and files too large for memory.
namespace mivora {

/// Tells one state of a file from another.
struct FileStamp
{
    std::int64_t modified = 0; ///< nanoseconds since 1970
    std::int64_t size = 0;
    std::uint64_t inode = 0;

    friend bool operator==(const FileStamp &, const FileStamp &) = default;

    static FileStamp of(const struct stat &status);
};

/// A file descriptor that closes itself.
class FileDescriptor
{
public:
    explicit FileDescriptor(int number = -1) : m_number(number) {}

    FileDescriptor(FileDescriptor &&other) noexcept : m_number(std::exchange(other.m_number, -1)) {}

    FileDescriptor &operator=(FileDescriptor &&other) noexcept;
    ~FileDescriptor();

    int number() const { return m_number; }

    bool isOpen() const { return m_number >= 0; }

private:
    int m_number = -1;
};

enum class ReadStatus { done, vanished, notAFile, tooLarge, failed };

/// Reads whole files, one after the other, into memory that it uses again.
class FileReader
{
public:
    /// No calendar file is larger; what is, is refused.
    static constexpr std::int64_t largestFile = std::int64_t(512) << 20;

    /// Reads the file `name` of the open folder `folder`. failed leaves the reason in errno.
    ReadStatus read(int folder, const char *name, std::int64_t limit = largestFile);

    /// What the last read() gave; valid until the next one.
    std::string_view text() const { return {m_text.constData(), std::size_t(m_text.size())}; }

    const FileStamp &stamp() const { return m_stamp; }

    /// Gives the memory back.
    void trim() { m_text.clear(); }

private:
    ReadStatus readAll(int file, std::int64_t limit);

    /// Grows without filling itself with zeros first, which costs as much as a tenth of the reading.
    QByteArray m_text;
    FileStamp m_stamp;
};

/// The open folder `path`, or a closed descriptor with the reason in errno.
FileDescriptor openFolder(const std::string &path);

} // namespace mivora
