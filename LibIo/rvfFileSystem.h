#pragma once

#include "LibCore/rvfExport.h"
#include "LibCore/rvfString.h"

#include <vector>

namespace rvf {

/// Paths as texts, and the folders and files that they name.
///
/// Failure is told by the result; nothing logs, asserts or throws, and `errno` is left as the system set it. Paths go
/// to the system as UTF-8. Names that come from the system are read byte by byte, so **a name with bytes above 127 does
/// not find its file again** when it is passed back; currentPath() alone reads UTF-8.
///
/// The separator is "/". Operations on a path's form first turn each backslash into "/". A path that begins with "//"
/// has a host part, which fileName() and parentPath() keep whole.
class ORV_API FileSystem {
public:
    /// @name Paths as texts. Nothing here looks at the disk, but for makeAbsolute().
    /// @{

    /// Each backslash becomes "/".
    static String fromNativeSeparators(const String& path);
    /// The same: on POSIX systems "/" is the native separator.
    static String toNativeSeparators(const String& path);

    /// With a "/" at the end; an empty path stays empty.
    static String addTrailingSeparator(const String& path);
    /// Without any "/" at the end. Beware: the root, "/", becomes the empty text.
    static String removeTrailingSeparator(const String& path);

    /// What stands behind the last "/"; empty when that ends the path, and for a host alone, as in "//host".
    static String fileName(const String& path);
    /// The file name from its last "." on, the dot included. Empty without one, and when it stands first. A dot at the
    /// end is an extension: "." for `a.`.
    static String extension(const String& path);
    /// What stands before the last "/"; a "/" at the end is not skipped, so the parent of `a/b/` is `a/b`. The root and
    /// a host are their own parents, and the parent of `//host/share` is `//host/`. Beware: a path without "/" is its
    /// own parent too.
    static String parentPath(const String& path);

    /// Whether the path begins with "/".
    static bool isAbsolutePath(const String& path);
    /// The opposite; so an empty path is relative.
    static bool isRelativePath(const String& path);
    /// A relative path behind currentPath(); "." and ".." stay in it. An empty path stays empty.
    static String makeAbsolute(const String& path);
    /// @}

    /// @name The process's folders
    /// @{

    /// The working folder; empty when the system cannot tell it, also when it has more than 1023 bytes.
    static String currentPath();
    /// The first of the environment variables TMPDIR, TMP, TEMP and TEMPDIR that is set, as it stands; "/tmp" when none
    /// is. One that is set but empty gives an empty path.
    static String tempDirectoryPath();
    /// @}

    /// @name Questions
    /// @{

    /// Whether the path can be read by this process. One that exists and cannot be read does not exist here.
    static bool pathExists(const String& path);
    /// Whether something that is no directory is there, after links. False also for sockets and block devices, whose
    /// kind has the bit of a directory set.
    static bool fileExists(const String& path);
    /// Whether a directory is there, after links; true also for sockets and block devices.
    static bool directoryExists(const String& path);
    /// Bytes in the file; 0 when it cannot be told, so a missing file looks like an empty one.
    static unsigned long long fileSize(const String& path);
    /// Math::crc() of the file, or of its first `maxBytes` bytes when that is above 0. What is read is held in memory
    /// at once. 0 when the file cannot be read.
    static unsigned int fileContentsCrc(const String& path, unsigned long long maxBytes);
    /// @}

    /// @name Changes
    /// @{

    /// Makes a directory, mode 775 less the process's mask. False when it exists already.
    static bool createDirectory(const String& path);
    /// Makes a directory and those above it. True when it exists already, also as a file.
    static bool createDirectoryTree(const String& path);
    /// Copies the bytes of a file; an existing destination is overwritten. Beware: **copying an empty file is false**,
    /// and leaves an empty destination. A source that cannot be opened leaves the destination alone. A file copied onto
    /// itself is lost.
    static bool copyFile(const String& source, const String& destination);
    /// Deletes a file, or a link, but not what it points to.
    static bool deleteFile(const String& path);
    /// Deletes a directory, which has to be empty.
    static bool deleteDirectory(const String& path);
    /// Deletes what is no directory in a directory; false when something stays. Links are deleted, not followed.
    static bool deleteAllFilesInDirectory(const String& path);
    /// Deletes a directory with all in it; false when something stays, after going on with the rest. Links in it are
    /// deleted, not followed. Beware: a link given as `path` itself is listed as the directory behind it, which is
    /// emptied; link and directory stay, and the answer is false.
    static bool deleteDirectoryRecursive(const String& path);
    /// @}

    /// @name Listings: names without path, in the system's order. Links are files here, also links to directories.
    /// @{

    /// Appends the names in a directory to the lists, either of which may be null; "." and ".." are left out.
    /// @return false, with nothing appended, when the directory cannot be read.
    static bool getDirectoryContents(const String& path, std::vector<String>* files, std::vector<String>* directories);
    /// What is no directory; empty when the directory cannot be read.
    static std::vector<String> getAllFilesInDirectory(const String& path);
    /// The same for names that match a shell pattern, `fnmatch` without flags; all of them for an empty pattern.
    static std::vector<String> findFilesInDirectory(const String& path, const String& pattern);
    /// @}
};

} // namespace rvf
