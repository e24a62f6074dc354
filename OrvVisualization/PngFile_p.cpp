#include "OrvVisualization/PngFile_p.h"

#include "OrvCore/FileReplacement_p.h"
#include "OrvVisualization/Image.h"

#include <png.h>

#include <cerrno>
#include <cstring>
#include <string_view>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orv::vis {
namespace {

/// More than the largest picture needs that is allowed.
constexpr std::size_t MAXIMUM_FILE_SIZE = Image::MAXIMUM_PIXELS * 9;

/// libpng's own way of reading and writing whole pictures: it jumps over its own frames alone, and what has gone wrong
/// is in the message.
class PngImage {
public:
    PngImage() {
        m_png.version = PNG_IMAGE_VERSION;
    }

    ~PngImage() {
        png_image_free(&m_png);
    }

    PngImage(const PngImage&) = delete;
    PngImage& operator=(const PngImage&) = delete;

    png_image* operator->() {
        return &m_png;
    }

    png_image* get() {
        return &m_png;
    }

private:
    png_image m_png = {};
};

bool failWith(const char* action, const Str& path, const Str& problem, Str* reason) {
    if (reason) {
        *reason = Str("cannot ") + action + " \"" + path + "\": " + problem;
    }
    return false;
}

bool failToWrite(const Str& path, const Str& problem, Str* reason) {
    return failWith("write", path, problem, reason);
}

bool failToRead(const Str& path, const Str& problem, Str* reason) {
    return failWith("read", path, problem, reason);
}

png_uint_32 pngFormatOf(Image::Format format) {
    return format == Image::Format::RGBA ? PNG_FORMAT_RGBA : PNG_FORMAT_RGB;
}

bool readBytes(int descriptor, std::vector<char>* bytes) {
    for (std::size_t done = 0; done < bytes->size();) {
        const ssize_t count = ::read(descriptor, bytes->data() + done, bytes->size() - done);
        if (count > 0) {
            done += std::size_t(count);
        } else if (count == 0) {
            bytes->resize(done);
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

bool readRegularFile(int descriptor, const Str& path, std::vector<char>* bytes, Str* reason) {
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0) {
        return failToRead(path, std::strerror(errno), reason);
    }
    if (!S_ISREG(status.st_mode)) {
        return failToRead(path, S_ISDIR(status.st_mode) ? "Is a directory" : "Not a regular file", reason);
    }
    if (std::size_t(status.st_size) > MAXIMUM_FILE_SIZE) {
        return failToRead(path, "the file is too large for a picture", reason);
    }
    bytes->resize(std::size_t(status.st_size));
    return readBytes(descriptor, bytes) || failToRead(path, std::strerror(errno), reason);
}

bool readFile(const Str& path, std::vector<char>* bytes, Str* reason) {
    // Without waiting for somebody at the other end of a pipe.
    const int descriptor = ::open(path.toStdString().c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) {
        return failToRead(path, std::strerror(errno), reason);
    }
    const bool isRead = readRegularFile(descriptor, path, bytes, reason);
    ::close(descriptor);
    return isRead;
}

} // namespace

bool writePngFile(const Image& image, const Str& path, Str* reason) {
    if (image.isEmpty()) {
        return failToWrite(path, "the picture has no pixels", reason);
    }
    PngImage png;
    png->width = png_uint_32(image.width());
    png->height = png_uint_32(image.height());
    png->format = pngFormatOf(image.format());
    std::vector<char> bytes(PNG_IMAGE_PNG_SIZE_MAX(*png.get()));
    png_alloc_size_t size = bytes.size();
    if (!png_image_write_to_memory(png.get(), bytes.data(), &size, 0, image.bytes().data(), 0, nullptr)) {
        return failToWrite(path, png->message, reason);
    }
    FileReplacement file;
    if (!file.open(path, reason)) {
        return false;
    }
    file.write(std::string_view(bytes.data(), size));
    return file.commit(reason);
}

bool readPngFile(const Str& path, Image* image, Str* reason) {
    std::vector<char> bytes;
    if (!readFile(path, &bytes, reason)) {
        return false;
    }
    PngImage png;
    if (!png_image_begin_read_from_memory(png.get(), bytes.data(), bytes.size())) {
        return failToRead(path, png->message, reason);
    }
    if (png->width > png_uint_32(Image::MAXIMUM_SIDE) || png->height > png_uint_32(Image::MAXIMUM_SIDE) ||
        !Image::isValidSize(int(png->width), int(png->height))) {
        return failToRead(
            path, Str("a picture of %1 x %2 is too large").arg(double(png->width)).arg(double(png->height)), reason);
    }
    const bool hasAlpha = (png->format & PNG_FORMAT_FLAG_ALPHA) != 0;
    Image read(int(png->width), int(png->height), hasAlpha ? Image::Format::RGBA : Image::Format::RGB);
    png->format = pngFormatOf(read.format());
    if (!png_image_finish_read(png.get(), nullptr, read.bytes().data(), 0, nullptr)) {
        return failToRead(path, png->message, reason);
    }
    *image = std::move(read);
    return true;
}

} // namespace orv::vis
