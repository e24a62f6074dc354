#include "Tests/Support/ReferencePicture.h"

#include "OrvVisualization/Image.h"
#include "Tests/Support/TestPaths.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>

using orv::vis::Image;

namespace orvtest {
namespace {

/// What is left beside the test program.
std::string leftoverPath(const std::string& name, const std::string& kind) {
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
    return (program.parent_path() / (std::filesystem::path(name).filename().string() + kind)).string();
}

/// @param differences brightened
/// @return how many pixels are farther apart
int compare(const Image& a, const Image& b, int tolerance, Image* differences) {
    int count = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            int greatest = 0;
            for (int i = 3 * x; i < 3 * x + 3; ++i) {
                const int difference = std::abs(a.row(y)[i] - b.row(y)[i]);
                differences->row(y)[i] = static_cast<std::uint8_t>(std::min(255, 8 * difference));
                greatest = std::max(greatest, difference);
            }
            count += greatest > tolerance ? 1 : 0;
        }
    }
    return count;
}

testing::AssertionResult keepCandidate(const std::string& pngFile, const std::string& name, const std::string& why) {
    const std::string candidate = leftoverPath(name, ".candidate.png");
    std::filesystem::copy_file(pngFile, candidate, std::filesystem::copy_options::overwrite_existing);
    return testing::AssertionFailure() << name << ".png: " << why << "; look at " << candidate;
}

} // namespace

testing::AssertionResult showsReference(const std::string& pngFile, const std::string& name,
                                        const PictureTolerance& tolerance) {
    Image picture;
    orv::Str reason;
    if (!picture.readPng(pngFile, &reason) || picture.format() != Image::Format::RGB) {
        return testing::AssertionFailure() << pngFile << " is no picture without transparency: " << reason;
    }
    Image reference;
    if (!reference.readPng(testDataFolder() + "/" + name + ".png", &reason)) {
        return keepCandidate(pngFile, name, reason.toStdString());
    }
    if (picture.width() != reference.width() || picture.height() != reference.height()) {
        return keepCandidate(pngFile, name, "the size differs");
    }
    Image differences(picture.width(), picture.height());
    const int count = compare(picture, reference, tolerance.difference, &differences);
    if (count > tolerance.pixels) {
        differences.writePng(leftoverPath(name, ".difference.png"), nullptr);
        return keepCandidate(pngFile, name, std::to_string(count) + " pixels differ");
    }
    return testing::AssertionSuccess();
}

} // namespace orvtest
