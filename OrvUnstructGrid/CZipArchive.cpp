#include "OrvUnstructGrid/CZipArchive.h"

#include "OrvCore/FileReplacement_p.h"
#include "OrvUnstructGrid/ZtfxArchive_p.h"
#include "OrvUnstructGrid/ZtfxSink_p.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using orv::FileReplacement;
using orv::ug::ZtfxArchive;
using orv::ug::ZtfxEntry;
using orv::ug::ZtfxEntryReader;
using orv::ug::ZtfxSink;

namespace {

constexpr std::size_t USUAL_BUFFER_SIZE = 65536;
constexpr std::size_t LARGEST_BUFFER_SIZE = 1 << 20;

// Deflate makes up to 1032 bytes of one, and files of any use about ten: a larger entry than this, with more than that
// many bytes for one, is there to fill the disk.
constexpr std::uint64_t LARGE_ENTRY = 32 << 20;
constexpr std::uint64_t LARGEST_RATIO_OF_LARGE = 100;

/// The record at the end of every zip file, when there is nothing else in it.
constexpr std::string_view EMPTY_ARCHIVE("PK\5\6\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0", 22);

std::size_t bufferBytes(unsigned long asked) {
    return asked == 0 ? USUAL_BUFFER_SIZE : std::min<std::size_t>(asked, LARGEST_BUFFER_SIZE);
}

bool isEmpty(const char* text) {
    return !text || !*text;
}

/// Whether a name with folders stays below the folder that it is put in.
bool staysBelow(std::string_view name) {
    if (name.find('\\') != std::string_view::npos) {
        return false;
    }
    for (std::size_t start = 0; start <= name.size();) {
        const std::size_t end = std::min(name.find('/', start), name.size());
        const std::string_view piece = name.substr(start, end - start);
        if (piece.empty() || piece == "." || piece == "..") {
            return false;
        }
        start = end + 1;
    }
    return true;
}

std::string withoutFolders(const std::string& name) {
    const std::size_t slash = name.find_last_of("/\\");
    return slash == std::string::npos ? name : name.substr(slash + 1);
}

bool makeFoldersAbove(const std::string& path, std::size_t start) {
    for (std::size_t slash = path.find('/', start); slash != std::string::npos; slash = path.find('/', slash + 1)) {
        if (::mkdir(path.substr(0, slash).c_str(), 0777) != 0 && errno != EEXIST) {
            return false;
        }
    }
    return true;
}

/// What was in a file, in memory that libzip may free.
struct Contents {
    std::unique_ptr<void, decltype(&std::free)> bytes{nullptr, &std::free};
    std::size_t size = 0;
    time_t time = 0;
};

bool readAll(int descriptor, char* out, std::size_t size, std::size_t chunkSize) {
    for (std::size_t done = 0; done < size;) {
        const ssize_t got = ::read(descriptor, out + done, std::min(chunkSize, size - done));
        if (got == 0 || (got < 0 && errno != EINTR)) {
            return false;
        }
        done += got > 0 ? static_cast<std::size_t>(got) : 0;
    }
    return true;
}

std::optional<Contents> readFile(const char* path, std::size_t chunkSize) {
    // Opening a pipe waits for a writer unless told not to.
    const int descriptor = ::open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) {
        return std::nullopt;
    }
    Contents contents;
    struct stat status = {};
    bool isRead = ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    if (isRead) {
        contents.size = static_cast<std::size_t>(status.st_size);
        contents.time = status.st_mtime;
        // Nothing at all for an empty file: libzip forgets a buffer without bytes.
        contents.bytes.reset(contents.size > 0 ? std::malloc(contents.size) : nullptr);
        isRead = (contents.bytes || contents.size == 0) &&
                 readAll(descriptor, static_cast<char*>(contents.bytes.get()), contents.size, chunkSize);
    }
    ::close(descriptor);
    return isRead ? std::optional<Contents>(std::move(contents)) : std::nullopt;
}

/// A file that takes the place of what has its name, and goes away again unless it is kept.
class NewFile {
public:
    explicit NewFile(const std::string& path) : m_path(path) {
        ::unlink(path.c_str());
        // Never what somebody has put there in the meantime, in a folder that all may write in.
        m_descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    }

    ~NewFile() {
        if (m_descriptor >= 0) {
            ::close(m_descriptor);
            ::unlink(m_path.c_str());
        }
    }

    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    bool isOpen() const {
        return m_descriptor >= 0;
    }

    bool write(const char* bytes, std::size_t size) {
        for (std::size_t done = 0; done < size;) {
            const ssize_t written = ::write(m_descriptor, bytes + done, size - done);
            if (written == 0 || (written < 0 && errno != EINTR)) {
                return false;
            }
            done += written > 0 ? static_cast<std::size_t>(written) : 0;
        }
        return true;
    }

    bool keep() {
        const bool isClosed = ::close(m_descriptor) == 0;
        m_descriptor = -1;
        if (!isClosed) {
            ::unlink(m_path.c_str());
        }
        return isClosed;
    }

private:
    std::string m_path;
    int m_descriptor = -1;
};

bool copyEntry(const ZtfxArchive& archive, const ZtfxEntry& entry, const std::string& path, std::size_t chunkSize) {
    ZtfxEntryReader reader(archive, entry);
    if (!reader.open(nullptr)) {
        return false;
    }
    NewFile file(path);
    if (!file.isOpen()) {
        return false;
    }
    std::vector<char> chunk(std::min<std::uint64_t>(chunkSize, entry.size));
    for (std::uint64_t left = entry.size; left > 0;) {
        const std::size_t count = std::min<std::uint64_t>(chunk.size(), left);
        if (!reader.read(chunk.data(), count, nullptr) || !file.write(chunk.data(), count)) {
            return false;
        }
        left -= count;
    }
    return reader.finish(nullptr) && file.keep();
}

} // namespace

/// A new archive. Its entries wait in memory, because libzip writes all at once, at the end.
class CZipArchive::Writer {
public:
    explicit Writer(const std::string& path) : m_path(path), m_sink(path) {
        zip_source_t* target = m_sink.makeSource();
        m_zip = target ? zip_open_from_source(target, ZIP_CREATE | ZIP_TRUNCATE, nullptr) : nullptr;
        if (!m_zip) {
            zip_source_free(target);
        }
    }

    ~Writer() {
        if (m_zip) {
            zip_discard(m_zip);
        }
    }

    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    bool isOpen() const {
        return m_zip;
    }

    std::uint64_t count() const {
        return static_cast<std::uint64_t>(zip_get_num_entries(m_zip, 0));
    }

    bool add(Contents contents, const char* name, int level) {
        // Adding takes the bytes over, refusing gives them back with the source.
        zip_source_t* source = zip_source_buffer(m_zip, contents.bytes.get(), contents.size, 1);
        if (!source) {
            return false;
        }
        contents.bytes.release();
        const zip_int64_t index = zip_file_add(m_zip, name, source, ZIP_FL_ENC_UTF_8);
        if (index < 0) {
            zip_source_free(source);
            return false;
        }
        const auto place = static_cast<zip_uint64_t>(index);
        zip_file_set_mtime(m_zip, place, contents.time, 0);
        if (level >= 0) {
            zip_set_file_compression(m_zip, place, level == 0 ? ZIP_CM_STORE : ZIP_CM_DEFLATE,
                                     static_cast<zip_uint32_t>(level));
        }
        return true;
    }

    bool write() {
        if (count() == 0) {
            return writeEmpty();
        }
        if (zip_close(m_zip) != 0) {
            return false;
        }
        m_zip = nullptr;
        return true;
    }

private:
    // libzip writes no file at all when there are no entries.
    bool writeEmpty() const {
        FileReplacement file;
        if (!file.open(m_path, nullptr)) {
            return false;
        }
        file.write(EMPTY_ARCHIVE);
        return file.commit(nullptr);
    }

    std::string m_path;
    ZtfxSink m_sink;
    zip_t* m_zip = nullptr;
};

CZipArchive::CZipArchive() = default;

CZipArchive::~CZipArchive() = default;

bool CZipArchive::Open(const char* path, int mode, unsigned long long volumeSize) {
    if (m_reader || m_writer || isEmpty(path) || volumeSize != 0) {
        return false;
    }
    if (mode == READ) {
        auto reader = std::make_unique<ZtfxArchive>();
        // libzip takes a file of no bytes for an archive without entries.
        if (reader->open(path, nullptr) && reader->fileSize() > 0) {
            m_reader = std::move(reader);
        }
    } else if (mode == CREATE && FileReplacement().open(path, nullptr)) {
        auto writer = std::make_unique<Writer>(path);
        if (writer->isOpen()) {
            m_writer = std::move(writer);
        }
    }
    m_path = path;
    return m_reader || m_writer;
}

bool CZipArchive::AddNewFile(const char* filePath, const char* nameInZip, int compressionLevel, int /*smartLevel*/,
                             unsigned long bufferSize) {
    if (!m_writer || isEmpty(filePath) || isEmpty(nameInZip) || !staysBelow(nameInZip) || compressionLevel < -1 ||
        compressionLevel > 9) {
        return false;
    }
    std::optional<Contents> contents = readFile(filePath, bufferBytes(bufferSize));
    return contents && m_writer->add(std::move(*contents), nameInZip, compressionLevel);
}

bool CZipArchive::ExtractFile(unsigned long long index, const char* path, bool fullPath, const char* newName,
                              unsigned int bufferSize) {
    ZtfxEntry entry;
    if (!m_reader || !m_reader->entryAt(index, &entry, nullptr) || entry.name.ends_with('/') ||
        (entry.size > LARGE_ENTRY && entry.size / LARGEST_RATIO_OF_LARGE > entry.packedSize)) {
        return false;
    }
    const std::string asked = isEmpty(newName) ? entry.name : newName;
    const std::string name = fullPath ? asked : withoutFolders(asked);
    if (!staysBelow(name)) {
        return false;
    }
    const std::string folder = isEmpty(path) ? std::string() : std::string(path) + "/";
    if (!makeFoldersAbove(folder + name, folder.size())) {
        return false;
    }
    // Never read as a plain one, whose checksum nobody would look at.
    entry.isPlain = false;
    return copyEntry(*m_reader, entry, folder + name, bufferBytes(bufferSize));
}

CZipString CZipArchive::Close(int afterException, bool /*updateTimeStamp*/) {
    const bool isDone = m_reader || (m_writer && afterException == 0 && m_writer->write());
    m_reader.reset();
    m_writer.reset();
    return isDone ? m_path : CZipString();
}

unsigned long long CZipArchive::GetCount() const {
    if (m_reader) {
        return m_reader->entryCount();
    }
    return m_writer ? m_writer->count() : 0;
}
