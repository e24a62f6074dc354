#include "LibIo/rvfFileSystem.h"

#include "LibCore/rvfMath.h"

#include <dirent.h>
#include <fnmatch.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <new>

namespace rvf {
namespace {

constexpr mode_t DIRECTORY_BIT = 0x4000;
constexpr mode_t NEW_DIRECTORY_MODE = 0775;
constexpr std::size_t LONGEST_CURRENT_PATH = 1024;

constexpr const wchar_t* SEPARATOR = L"/";
constexpr const wchar_t* HOST_PREFIX = L"//";

// A directory that is open for listing; false as a bool when it could not be opened.
class Listing {
public:
    explicit Listing(const String& path) : m_stream(::opendir(path.toUtf8().ptr())) {}
    ~Listing() {
        if (m_stream) {
            ::closedir(m_stream);
        }
    }
    Listing(const Listing&) = delete;
    Listing& operator=(const Listing&) = delete;

    explicit operator bool() const {
        return m_stream != nullptr;
    }

    const dirent* next() {
        return ::readdir(m_stream);
    }

private:
    DIR* m_stream;
};

bool isDirectory(const dirent& entry) {
    return entry.d_type == DT_DIR;
}

bool statOf(const String& path, struct stat* result) {
    return ::stat(path.toUtf8().ptr(), result) == 0;
}

bool deleteFiles(const String& directory, const std::vector<String>& names) {
    const String prefix = FileSystem::addTrailingSeparator(directory);
    bool allDeleted = true;
    for (const String& name : names) {
        allDeleted = FileSystem::deleteFile(prefix + name) && allDeleted;
    }
    return allDeleted;
}

} // namespace

String FileSystem::fromNativeSeparators(const String& path) {
    String converted(path);
    converted.replace(L"\\", SEPARATOR);
    return converted;
}

String FileSystem::toNativeSeparators(const String& path) {
    return fromNativeSeparators(path);
}

String FileSystem::addTrailingSeparator(const String& path) {
    String p = fromNativeSeparators(path);
    if (!p.isEmpty() && !p.endsWith(SEPARATOR)) {
        p += SEPARATOR;
    }
    return p;
}

String FileSystem::removeTrailingSeparator(const String& path) {
    const String p = fromNativeSeparators(path);
    size_t end = p.size();
    while (end > 0 && p[end - 1] == L'/') {
        --end;
    }
    return p.subString(0, end);
}

String FileSystem::fileName(const String& path) {
    const String p = fromNativeSeparators(path);
    if (p.isEmpty() || p.endsWith(SEPARATOR)) {
        return String();
    }
    const size_t last = p.findLast(SEPARATOR);
    if (last == String::npos) {
        return p;
    }
    if (p.startsWith(HOST_PREFIX) && last <= 1) {
        return String();
    }
    return p.subString(last + 1);
}

String FileSystem::extension(const String& path) {
    const String name = fileName(path);
    if (name == L"." || name == L"..") {
        return String();
    }
    const size_t dot = name.findLast(L".");
    return dot == String::npos || dot == 0 ? String() : name.subString(dot);
}

String FileSystem::parentPath(const String& path) {
    const String p = fromNativeSeparators(path);
    const size_t last = p.findLast(SEPARATOR);
    if (last == String::npos) {
        return p;
    }
    if (last == 0) {
        return SEPARATOR;
    }
    if (!p.startsWith(HOST_PREFIX)) {
        return p.subString(0, last);
    }
    if (last == 1) {
        return p;
    }
    const bool isHostRoot = p.find(SEPARATOR, 2) == last;
    return p.subString(0, isHostRoot ? last + 1 : last);
}

bool FileSystem::isAbsolutePath(const String& path) {
    return fromNativeSeparators(path).startsWith(SEPARATOR);
}

bool FileSystem::isRelativePath(const String& path) {
    return !isAbsolutePath(path);
}

String FileSystem::makeAbsolute(const String& path) {
    const String p = fromNativeSeparators(path);
    return p.isEmpty() || isAbsolutePath(p) ? p : currentPath() + SEPARATOR + p;
}

String FileSystem::currentPath() {
    char buffer[LONGEST_CURRENT_PATH];
    if (!::getcwd(buffer, sizeof buffer)) {
        return String();
    }
    return fromNativeSeparators(String::fromUtf8(buffer));
}

String FileSystem::tempDirectoryPath() {
    for (const char* variable : {"TMPDIR", "TMP", "TEMP", "TEMPDIR"}) {
        if (const char* value = std::getenv(variable)) {
            return String(value);
        }
    }
    return String(L"/tmp");
}

bool FileSystem::pathExists(const String& path) {
    return ::access(path.toUtf8().ptr(), R_OK) == 0;
}

bool FileSystem::fileExists(const String& path) {
    struct stat result;
    return statOf(path, &result) && (result.st_mode & DIRECTORY_BIT) == 0;
}

bool FileSystem::directoryExists(const String& path) {
    struct stat result;
    return statOf(path, &result) && (result.st_mode & DIRECTORY_BIT) != 0;
}

unsigned long long FileSystem::fileSize(const String& path) {
    struct stat result;
    return statOf(path, &result) ? static_cast<unsigned long long>(result.st_size) : 0;
}

unsigned int FileSystem::fileContentsCrc(const String& path, unsigned long long maxBytes) {
    const unsigned long long wholeSize = fileSize(path);
    const unsigned long long size = maxBytes > 0 ? std::min(maxBytes, wholeSize) : wholeSize;
    std::ifstream stream(path.toUtf8().ptr(), std::ios::binary);
    const std::unique_ptr<char[]> buffer(new (std::nothrow) char[size]());
    if (!stream || !buffer || !stream.read(buffer.get(), static_cast<std::streamsize>(size))) {
        return 0;
    }
    return Math::crc(buffer.get(), size);
}

bool FileSystem::createDirectory(const String& path) {
    return ::mkdir(path.toUtf8().ptr(), NEW_DIRECTORY_MODE) == 0;
}

bool FileSystem::createDirectoryTree(const String& path) {
    const String p = fromNativeSeparators(path);
    if (createDirectory(p) || errno == EEXIST) {
        return true;
    }
    if (errno != ENOENT) {
        return false;
    }
    // A path without a separator is its own parent: there the way up ends.
    const String parent = parentPath(p);
    if (parent.isEmpty() || parent == p || !createDirectoryTree(parent)) {
        return false;
    }
    return createDirectory(p) || errno == EEXIST;
}

bool FileSystem::copyFile(const String& source, const String& destination) {
    std::ifstream input(source.toUtf8().ptr(), std::ios::binary);
    if (!input) {
        return false;
    }
    std::ofstream output(destination.toUtf8().ptr(), std::ios::binary);
    if (!output) {
        return false;
    }
    // Writing no bytes sets the fail flag, so an empty source comes out as false.
    output << input.rdbuf();
    input.close();
    output.close();
    return !input.fail() && !output.fail();
}

bool FileSystem::deleteFile(const String& path) {
    return ::unlink(path.toUtf8().ptr()) == 0;
}

bool FileSystem::deleteDirectory(const String& path) {
    return ::rmdir(path.toUtf8().ptr()) == 0;
}

bool FileSystem::deleteAllFilesInDirectory(const String& path) {
    std::vector<String> files;
    return getDirectoryContents(path, &files, nullptr) && deleteFiles(path, files);
}

bool FileSystem::deleteDirectoryRecursive(const String& path) {
    std::vector<String> files;
    std::vector<String> directories;
    if (!getDirectoryContents(path, &files, &directories)) {
        return false;
    }
    bool allDeleted = deleteFiles(path, files);
    const String prefix = addTrailingSeparator(path);
    for (const String& name : directories) {
        allDeleted = deleteDirectoryRecursive(prefix + name) && allDeleted;
    }
    return deleteDirectory(path) && allDeleted;
}

bool FileSystem::getDirectoryContents(const String& path, std::vector<String>* files,
                                      std::vector<String>* directories) {
    Listing listing(path);
    if (!listing) {
        return false;
    }
    while (const dirent* entry = listing.next()) {
        const String name(entry->d_name);
        if (isDirectory(*entry)) {
            if (directories && name != L"." && name != L"..") {
                directories->push_back(name);
            }
        } else if (files) {
            files->push_back(name);
        }
    }
    return true;
}

std::vector<String> FileSystem::getAllFilesInDirectory(const String& path) {
    std::vector<String> files;
    getDirectoryContents(path, &files, nullptr);
    return files;
}

std::vector<String> FileSystem::findFilesInDirectory(const String& path, const String& pattern) {
    std::vector<String> files;
    Listing listing(path);
    if (!listing) {
        return files;
    }
    const CharArray utf8Pattern = pattern.toUtf8();
    while (const dirent* entry = listing.next()) {
        const bool matches = pattern.isEmpty() || ::fnmatch(utf8Pattern.ptr(), entry->d_name, 0) == 0;
        if (!isDirectory(*entry) && matches) {
            files.push_back(String(entry->d_name));
        }
    }
    return files;
}

} // namespace rvf
