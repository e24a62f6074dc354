#pragma once

#include "OrvCore/Str.h"
#include "OrvUnstructGrid/Error.h"

#include <zip.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace orv::ug {

/// An entry of a container, whose sizes have been found possible: it lies in the file, and what it says it unpacks to
/// is no more than its packed bytes can be.
struct ZtfxEntry {
    std::string name;
    std::uint64_t index = 0;
    std::uint64_t size = 0;
    std::uint64_t packedSize = 0; ///< Of which `size` is no more than can be.
    bool isPlain = false;         ///< Neither compressed nor encrypted.
};

/// A zip container that is read entry by entry and held open in between.
///
/// All texts of failures begin with the path.
class ZtfxArchive {
public:
    ZtfxArchive();
    ~ZtfxArchive();

    ZtfxArchive(const ZtfxArchive&) = delete;
    ZtfxArchive& operator=(const ZtfxArchive&) = delete;

    /// Refuses what is not a regular file or not a zip container. Once per object.
    bool open(const Str& path, Error* error);

    /// From now on every entry must be encrypted, and with this password; before, none may be.
    void setPassword(const std::string& password);

    std::uint64_t fileSize() const;

    /// False with a text when the entry is missing, impossible, or encrypted against the expectation.
    bool findEntry(const std::string& name, ZtfxEntry* entry, Error* error) const;

    std::uint64_t entryCount() const;

    /// The same with the entry at an index, whose name comes in UTF-8 whatever it was written in. False also when
    /// there is none.
    bool entryAt(std::uint64_t index, ZtfxEntry* entry, Error* error) const;

    /// The whole of an entry. False with a text when it has more than `largestSize` bytes or cannot be read.
    bool readText(const ZtfxEntry& entry, std::uint64_t largestSize, std::string* text, Error* error) const;

    /// Where the bytes of a plain entry begin in the file.
    bool locate(const ZtfxEntry& entry, std::uint64_t* offset, Error* error) const;

    /// Reads at a place in the file. False when it has fewer bytes or the disk fails.
    bool readAt(std::uint64_t offset, void* out, std::size_t count) const;

    /// Fills the error with "PATH: text", or "PATH, entry 'NAME': text". Always false.
    bool fail(const Str& text, Error* error) const;
    bool fail(const ZtfxEntry& entry, const Str& text, Error* error) const;

private:
    friend class ZtfxEntryReader;
    class File;

    bool accept(const zip_stat_t& status, ZtfxEntry* entry, Error* error) const;
    zip_file_t* openEntry(const ZtfxEntry& entry, Error* error) const;

    Str m_path;
    std::string m_password;
    std::unique_ptr<File> m_file;
    zip_t* m_zip = nullptr;
};

/// Reads the bytes of one entry, from the first on.
class ZtfxEntryReader {
public:
    ZtfxEntryReader(const ZtfxArchive& archive, const ZtfxEntry& entry);
    ~ZtfxEntryReader();

    ZtfxEntryReader(const ZtfxEntryReader&) = delete;
    ZtfxEntryReader& operator=(const ZtfxEntryReader&) = delete;

    bool open(Error* error);

    /// The next bytes; false with a text when there are fewer.
    bool read(void* out, std::size_t count, Error* error);

    /// False with a text when there are more bytes, or when those that were read are not those that were written.
    /// Plain entries are not checked here: the caller has a checksum that is quicker than the container's own.
    bool finish(Error* error);

private:
    bool failToRead(Error* error);

    const ZtfxArchive& m_archive;
    const ZtfxEntry& m_entry;
    zip_file_t* m_stream = nullptr; ///< Null for a plain entry.
    std::uint64_t m_offset = 0;     ///< The next byte in the file, for a plain entry.
};

} // namespace orv::ug
