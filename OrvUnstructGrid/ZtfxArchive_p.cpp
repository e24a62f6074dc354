#include "OrvUnstructGrid/ZtfxArchive_p.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orv::ug {
namespace {

/// Deflate makes of one byte no more than that many.
constexpr std::uint64_t LARGEST_DEFLATE_RATIO = 1032;

/// What AES adds to an entry: salt, check of the password and authentication code.
constexpr std::uint64_t AES_256_OVERHEAD = 16 + 2 + 10;

std::string systemText(int code) {
    return std::strerror(code);
}

std::string zipText(zip_error_t* problem) {
    return zip_error_strerror(problem);
}

} // namespace

/// The file as libzip reads it. It remembers where it was read last, which tells where an entry's bytes are.
class ZtfxArchive::File {
public:
    File() {
        zip_error_init(&m_error);
    }

    ~File() {
        if (m_descriptor >= 0) {
            ::close(m_descriptor);
        }
        zip_error_fini(&m_error);
    }

    File(const File&) = delete;
    File& operator=(const File&) = delete;

    bool open(const std::string& path, std::string* problem) {
        // Opening a pipe waits for a writer unless told not to.
        m_descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
        struct stat status = {};
        if (m_descriptor < 0 || ::fstat(m_descriptor, &status) != 0) {
            *problem = systemText(errno);
            return false;
        }
        if (!S_ISREG(status.st_mode)) {
            *problem = S_ISDIR(status.st_mode) ? systemText(EISDIR) : "Not a regular file";
            return false;
        }
        m_size = static_cast<std::uint64_t>(status.st_size);
        return true;
    }

    std::uint64_t size() const {
        return m_size;
    }

    std::uint64_t lastReadOffset() const {
        return m_lastReadOffset;
    }

    /// The bytes that there were, or -1.
    ssize_t read(std::uint64_t offset, void* out, std::size_t count) const {
        std::size_t done = 0;
        while (done < count) {
            const ssize_t got =
                ::pread(m_descriptor, static_cast<char*>(out) + done, count - done, static_cast<off_t>(offset + done));
            if (got == 0) {
                break;
            }
            if (got < 0 && errno != EINTR) {
                return -1;
            }
            done += got > 0 ? static_cast<std::size_t>(got) : 0;
        }
        return static_cast<ssize_t>(done);
    }

    static zip_int64_t handle(void* self, void* data, zip_uint64_t size, zip_source_cmd_t command) {
        return static_cast<File*>(self)->handle(data, size, command);
    }

private:
    zip_int64_t handle(void* data, zip_uint64_t size, zip_source_cmd_t command) {
        switch (command) {
        case ZIP_SOURCE_OPEN:
            m_position = 0;
            return 0;
        case ZIP_SOURCE_READ:
            return readNext(data, size);
        case ZIP_SOURCE_SEEK:
            return seek(data, size);
        case ZIP_SOURCE_TELL:
            return static_cast<zip_int64_t>(m_position);
        case ZIP_SOURCE_STAT:
            return tellSize(static_cast<zip_stat_t*>(data));
        case ZIP_SOURCE_ERROR:
            return zip_error_to_data(&m_error, data, size);
        case ZIP_SOURCE_CLOSE:
        case ZIP_SOURCE_FREE:
            return 0;
        case ZIP_SOURCE_SUPPORTS:
            return zip_source_make_command_bitmap(ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE, ZIP_SOURCE_STAT,
                                                  ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE, ZIP_SOURCE_SEEK, ZIP_SOURCE_TELL,
                                                  ZIP_SOURCE_SUPPORTS, -1);
        default:
            zip_error_set(&m_error, ZIP_ER_OPNOTSUPP, 0);
            return -1;
        }
    }

    zip_int64_t readNext(void* data, zip_uint64_t size) {
        m_lastReadOffset = m_position;
        const ssize_t got = read(m_position, data, size);
        if (got < 0) {
            zip_error_set(&m_error, ZIP_ER_READ, errno);
            return -1;
        }
        m_position += static_cast<std::uint64_t>(got);
        return got;
    }

    zip_int64_t seek(void* data, zip_uint64_t size) {
        const zip_int64_t position = zip_source_seek_compute_offset(m_position, m_size, data, size, &m_error);
        if (position < 0) {
            return -1;
        }
        m_position = static_cast<std::uint64_t>(position);
        return 0;
    }

    zip_int64_t tellSize(zip_stat_t* status) const {
        zip_stat_init(status);
        status->size = m_size;
        status->valid = ZIP_STAT_SIZE;
        return sizeof *status;
    }

    int m_descriptor = -1;
    std::uint64_t m_size = 0;
    std::uint64_t m_position = 0;
    std::uint64_t m_lastReadOffset = 0;
    zip_error_t m_error;
};

ZtfxArchive::ZtfxArchive() = default;

ZtfxArchive::~ZtfxArchive() {
    if (m_zip) {
        zip_discard(m_zip);
    }
}

bool ZtfxArchive::open(const Str& path, Error* error) {
    m_path = path;
    m_file = std::make_unique<File>();
    std::string problem;
    if (!m_file->open(path.toStdString(), &problem)) {
        return ug::fail(error, "cannot open \"" + path + "\": " + problem);
    }
    zip_error_t zipError;
    zip_error_init(&zipError);
    zip_source_t* source = zip_source_function_create(&File::handle, m_file.get(), &zipError);
    m_zip = source ? zip_open_from_source(source, ZIP_RDONLY, &zipError) : nullptr;
    if (!m_zip) {
        fail("cannot be read as a zip container: " + zipText(&zipError), error);
        zip_source_free(source);
    }
    zip_error_fini(&zipError);
    return m_zip;
}

void ZtfxArchive::setPassword(const std::string& password) {
    m_password = password;
}

std::uint64_t ZtfxArchive::fileSize() const {
    return m_file->size();
}

bool ZtfxArchive::findEntry(const std::string& name, ZtfxEntry* entry, Error* error) const {
    entry->name = name;
    zip_stat_t status;
    if (zip_stat(m_zip, name.c_str(), ZIP_FL_ENC_RAW, &status) != 0) {
        return fail(*entry, "the entry is missing", error);
    }
    return accept(status, entry, error);
}

std::uint64_t ZtfxArchive::entryCount() const {
    return static_cast<std::uint64_t>(zip_get_num_entries(m_zip, 0));
}

bool ZtfxArchive::entryAt(std::uint64_t index, ZtfxEntry* entry, Error* error) const {
    zip_stat_t status;
    if (zip_stat_index(m_zip, index, ZIP_FL_ENC_GUESS, &status) != 0 || !(status.valid & ZIP_STAT_NAME)) {
        return fail("has no entry " + std::to_string(index), error);
    }
    entry->name = status.name;
    return accept(status, entry, error);
}

bool ZtfxArchive::accept(const zip_stat_t& status, ZtfxEntry* entry, Error* error) const {
    const bool isEncrypted = status.encryption_method != ZIP_EM_NONE;
    if (isEncrypted != !m_password.empty() || (isEncrypted && status.encryption_method != ZIP_EM_AES_256)) {
        return fail(*entry,
                    m_password.empty() ? "encrypted, in a file that is not"
                                       : "not encrypted by AES-256, as the file is",
                    error);
    }
    if (status.comp_method != ZIP_CM_STORE && status.comp_method != ZIP_CM_DEFLATE) {
        return fail(*entry, Str("compressed by method %1, expected stored or deflated").arg(int(status.comp_method)),
                    error);
    }
    const bool isStored = status.comp_method == ZIP_CM_STORE;
    const std::uint64_t overhead = isEncrypted ? AES_256_OVERHEAD : 0;
    const std::uint64_t packed = status.comp_size >= overhead ? status.comp_size - overhead : 0;
    const bool fits = status.comp_size <= fileSize() &&
                      (isStored ? status.size == packed : status.size / LARGEST_DEFLATE_RATIO <= packed);
    if (!fits) {
        return fail(*entry,
                    "cannot have " + std::to_string(status.size) + " bytes, packed to " +
                        std::to_string(status.comp_size) + " in a file of " + std::to_string(fileSize()),
                    error);
    }
    entry->index = status.index;
    entry->size = status.size;
    entry->packedSize = packed;
    entry->isPlain = isStored && !isEncrypted;
    return true;
}

bool ZtfxArchive::readText(const ZtfxEntry& entry, std::uint64_t largestSize, std::string* text, Error* error) const {
    if (entry.size > largestSize) {
        return fail(
            entry, "has " + std::to_string(entry.size) + " bytes, expected no more than " + std::to_string(largestSize),
            error);
    }
    // Never as a plain one: there is no other checksum over a text than the container's.
    ZtfxEntry packed = entry;
    packed.isPlain = false;
    ZtfxEntryReader reader(*this, packed);
    text->resize(entry.size);
    return reader.open(error) && reader.read(text->data(), text->size(), error) && reader.finish(error);
}

// libzip keeps the place to itself, but reads the first byte there.
bool ZtfxArchive::locate(const ZtfxEntry& entry, std::uint64_t* offset, Error* error) const {
    zip_file_t* stream = openEntry(entry, error);
    if (!stream) {
        return false;
    }
    char first = 0;
    const bool isRead = zip_fread(stream, &first, 1) == 1;
    zip_fclose(stream);
    *offset = m_file->lastReadOffset();
    if (!isRead || *offset > fileSize() || entry.size > fileSize() - *offset) {
        return fail(entry, "the entry reaches beyond the end of the file", error);
    }
    return true;
}

bool ZtfxArchive::readAt(std::uint64_t offset, void* out, std::size_t count) const {
    return m_file->read(offset, out, count) == static_cast<ssize_t>(count);
}

bool ZtfxArchive::fail(const Str& text, Error* error) const {
    return ug::fail(error, m_path + ": " + text);
}

bool ZtfxArchive::fail(const ZtfxEntry& entry, const Str& text, Error* error) const {
    return ug::fail(error, m_path + ", entry '" + entry.name + "': " + text);
}

zip_file_t* ZtfxArchive::openEntry(const ZtfxEntry& entry, Error* error) const {
    const char* password = m_password.empty() ? nullptr : m_password.c_str();
    zip_file_t* stream = zip_fopen_index_encrypted(m_zip, entry.index, 0, password);
    if (!stream) {
        zip_error_t* problem = zip_get_error(m_zip);
        if (zip_error_code_zip(problem) == ZIP_ER_WRONGPASSWD) {
            fail("the password is wrong", error);
        } else {
            fail(entry, "cannot be opened: " + zipText(problem), error);
        }
    }
    return stream;
}

ZtfxEntryReader::ZtfxEntryReader(const ZtfxArchive& archive, const ZtfxEntry& entry)
    : m_archive(archive), m_entry(entry) {}

ZtfxEntryReader::~ZtfxEntryReader() {
    if (m_stream) {
        zip_fclose(m_stream);
    }
}

bool ZtfxEntryReader::open(Error* error) {
    if (m_entry.isPlain) {
        return m_archive.locate(m_entry, &m_offset, error);
    }
    m_stream = m_archive.openEntry(m_entry, error);
    return m_stream;
}

bool ZtfxEntryReader::read(void* out, std::size_t count, Error* error) {
    if (!m_stream) {
        m_offset += count;
        return m_archive.readAt(m_offset - count, out, count) || failToRead(error);
    }
    for (std::size_t done = 0; done < count;) {
        const zip_int64_t got = zip_fread(m_stream, static_cast<char*>(out) + done, count - done);
        if (got <= 0) {
            return failToRead(error);
        }
        done += static_cast<std::size_t>(got);
    }
    return true;
}

bool ZtfxEntryReader::finish(Error* error) {
    char more = 0;
    const zip_int64_t got = m_stream ? zip_fread(m_stream, &more, 1) : 0;
    if (got > 0) {
        return m_archive.fail(m_entry, "has more bytes than it says", error);
    }
    return got == 0 || failToRead(error);
}

bool ZtfxEntryReader::failToRead(Error* error) {
    std::string reason = "ends too early";
    if (m_stream && zip_error_code_zip(zip_file_get_error(m_stream)) != ZIP_ER_OK) {
        reason = zipText(zip_file_get_error(m_stream));
    }
    // The check of a password lets one wrong one in 65536 pass.
    const char* suspicion = m_archive.m_password.empty() ? "" : ", or the password is wrong";
    return m_archive.fail(m_entry, "damaged: " + reason + suspicion, error);
}

} // namespace orv::ug
