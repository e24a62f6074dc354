#include "Tests/OrvPlot2d/ReferencePicture.h"

#include "Tests/Support/TestPaths.h"

#include <cairo.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <memory>

namespace orvtest {
namespace {

constexpr int MOST_DIFFERENCE = 48;
constexpr int MOST_PIXELS = 20;

class Picture {
public:
    explicit Picture(const std::string& file)
        : m_surface(cairo_image_surface_create_from_png(file.c_str()), cairo_surface_destroy) {}

    bool isValid() const {
        return cairo_surface_status(m_surface.get()) == CAIRO_STATUS_SUCCESS;
    }

    int width() const {
        return cairo_image_surface_get_width(m_surface.get());
    }

    int height() const {
        return cairo_image_surface_get_height(m_surface.get());
    }

    /// Four bytes for each pixel.
    const unsigned char* row(int y) const {
        return cairo_image_surface_get_data(m_surface.get()) + y * cairo_image_surface_get_stride(m_surface.get());
    }

private:
    std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> m_surface;
};

int differentPixels(const Picture& a, const Picture& b) {
    int count = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            int difference = 0;
            for (int channel = 0; channel < 3; ++channel) {
                difference = std::max(difference, std::abs(a.row(y)[4 * x + channel] - b.row(y)[4 * x + channel]));
            }
            count += difference > MOST_DIFFERENCE ? 1 : 0;
        }
    }
    return count;
}

testing::AssertionResult keepCandidate(const std::string& pngFile, const std::string& name, const std::string& why) {
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
    const std::filesystem::path candidate = program.parent_path() / (name + ".candidate.png");
    std::filesystem::copy_file(pngFile, candidate, std::filesystem::copy_options::overwrite_existing);
    return testing::AssertionFailure() << name << ".png: " << why << "; look at " << candidate.string();
}

} // namespace

testing::AssertionResult showsReference(const std::string& pngFile, const std::string& name) {
    const Picture picture(pngFile);
    if (!picture.isValid()) {
        return testing::AssertionFailure() << pngFile << " is no PNG";
    }
    const Picture reference(testDataFolder() + "/plots/" + name + ".png");
    if (!reference.isValid()) {
        return keepCandidate(pngFile, name, "there is no such picture to compare with");
    }
    if (picture.width() != reference.width() || picture.height() != reference.height()) {
        return keepCandidate(pngFile, name, "the size differs");
    }
    const int count = differentPixels(picture, reference);
    if (count > MOST_PIXELS) {
        return keepCandidate(pngFile, name, std::to_string(count) + " pixels differ");
    }
    return testing::AssertionSuccess();
}

} // namespace orvtest
