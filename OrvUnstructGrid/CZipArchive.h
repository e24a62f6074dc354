#pragma once

#include "LibCore/rvfExport.h"

#include <memory>
#include <string>

namespace orv::ug {
class ZtfxArchive;
}

/// What CZipArchive::Close() tells: a path in UTF-8.
using CZipString = std::string;

/// A zip file: read entry by entry, or made anew. Paths and names are in UTF-8.
///
/// A new archive appears at its path when Close() has written it to the end; until then, and after a crash, a file that
/// was there before is as it was. Until then all its entries are held in memory, as they were in their files.
///
/// What comes out of an archive is not trusted. Refused are entries that are encrypted or packed by anything but
/// deflate, that say a size which their packed bytes cannot have or do not have, whose checksum is wrong, and that
/// would fill the disk: above 32 MiB an entry may have no more than 100 times its packed size, also when this class has
/// written it.
///
/// All failures come back as results; nothing throws, logs or asserts. One thread at a time.
class ORV_API CZipArchive {
public:
    /// For Open().
    enum Mode : int {
        READ = 3,  ///< An archive that is there.
        CREATE = 4 ///< A new one, in place of a file of that name.
    };

    CZipArchive();
    /// What was not closed is not written.
    virtual ~CZipArchive();

    CZipArchive(const CZipArchive&) = delete;
    CZipArchive& operator=(const CZipArchive&) = delete;

    /// Creating makes sure that a file can be written in the folder, and leaves none there.
    ///
    /// @param mode a Mode
    /// @param volumeSize 0: archives are in one piece
    /// @return false when there is nothing to read or nowhere to write, for other numbers, and when an archive is open
    /// already, which stays open
    bool Open(const char* path, int mode, unsigned long long volumeSize);

    /// Adds a file to a new archive. Its contents are read here and now, so the file may be deleted right after.
    ///
    /// @param nameInZip names of folders in front are divided by "/"; no name may be there twice, none may be absolute
    /// or have a ".." in it
    /// @param compressionLevel 0 to store, 1 the fastest to 9 the smallest, -1 for the usual
    /// @param smartLevel has no effect
    /// @param bufferSize the bytes that are read at once; 0 for the usual
    /// @return false, and nothing added, also when the file is missing or no regular file
    bool AddNewFile(const char* filePath, const char* nameInZip, int compressionLevel, int smartLevel,
                    unsigned long bufferSize);

    /// Writes an entry of an archive that is read to a file. A file of that name is replaced; a link of that name is
    /// replaced too, not followed.
    ///
    /// @param index from 0, below GetCount()
    /// @param path the folder to write in; null or empty for the working folder
    /// @param fullPath whether to keep the folders in the name, which are made below `path`. Otherwise only what stands
    /// behind the last "/" or backslash counts: "a/../b" is written as "b"
    /// @param newName the name to write it under in place of the entry's own, if not null or empty, and read in the
    /// same way: with `fullPath` false a path as well as a name alone means a file in `path`
    /// @param bufferSize the bytes that are written at once; 0 for the usual
    /// @return false also for folders, and for names that would lead out of `path`; then there is no new file, and one
    /// that was there may be gone
    bool ExtractFile(unsigned long long index, const char* path, bool fullPath, const char* newName,
                     unsigned int bufferSize);

    /// Writes a new archive to the disk, or leaves one that was read. One without entries is a zip file too.
    ///
    /// @param afterException not 0 gives a new archive up: nothing is written
    /// @param updateTimeStamp has no effect: an archive is as old as its closing
    /// @return the path that was opened; empty when nothing was open, and when the archive has not been written
    CZipString Close(int afterException, bool updateTimeStamp);

    /// The number of entries, folders included; 0 when nothing is open.
    unsigned long long GetCount() const;

private:
    class Writer;

    std::string m_path;
    std::unique_ptr<orv::ug::ZtfxArchive> m_reader; ///< Null unless an archive is read.
    std::unique_ptr<Writer> m_writer;               ///< Null unless one is made.
};
